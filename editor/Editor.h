#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "txapi/txapi.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>

/// What a call of a registered function gave back.
struct CallResult {
    bool found = false;                 ///< there is a function of that name, and the arguments suit its prototype
    cmStringT error;                    ///< when not found: why
    std::optional<std::int32_t> number; ///< the result of an "int" function
    cmStringT text;                     ///< the result of a "TXPSZ" function; null for the others
};

/// One argument of a call. A variable passed by handle may be filled by the function.
class CallArgument {
public:
    CallArgument(int value) : m_number(value) {}
    CallArgument(const char* text) : m_text(text) {}
    CallArgument(const cmStringT& text) : m_text(text) {}
    static CallArgument variable(TXHVAR handle)
    {
        CallArgument argument(0);
        argument.m_variable = handle;
        return argument;
    }

private:
    friend class Editor;
    std::int32_t m_number = 0;
    cmStringT m_text;  ///< null for a number
    TXHVAR m_variable = 0;
};

/// One row of the browser tree.
struct TreeRow {
    cmStringT caption;
    std::int32_t flags = 0;
    TXHVAR userData = 0;  ///< the tree's own copy, or 0
    std::int32_t dateColumn = -1;  ///< -1 while no date was set
    TXDATETIME date{};
};

/// Which status pass an editor is told of, and when. The calls come on the editor's thread, from its loop.
struct EditorObserver {
    std::function<void()> statusChanged;
    std::function<void(const cmStringT& path)> passBegan;
    std::function<void(const cmStringT& path, std::int32_t status)> passEnded;
};

/// The editor as its host sees it: the object behind the services of txapi.h. One at a time; the thread that makes it is
/// the editor's thread, and a service that belongs there aborts the program when it is called from another one.
/// All operations are for the editor's thread, but those marked "any thread".
class Editor {
public:
    Editor();
    ~Editor();
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    // --- What the module finds ---
    void setFeatureAvailable(bool available);
    /// An integer variable of the editor's, as the settings are.
    void setSetting(cmROStringT name, std::int32_t value);
    std::optional<std::int32_t> setting(cmROStringT name) const;
    void removeSetting(cmROStringT name);
    /// A macro function without arguments that returns a string.
    void defineMacro(cmROStringT name, std::function<cmStringT()> body);
    /// A class of the editor's macro language.
    void defineClass(cmROStringT name, const cmArray<cmStringT>& fields);
    void setProperty(std::int32_t number, const cmStringT& value);
    void setProperty(std::int32_t number, std::int32_t value);
    void removeProperty(std::int32_t number);
    /// Where the editor keeps private data; the system's folder for temporary files until it is set.
    void setDirectory(const cmStringT& directory);

    // --- Calls ---
    /// The prototypes that were registered, in order.
    cmArray<cmStringT> prototypes() const;
    /// Calls a registered function by its name. Arguments past its prototype are reachable for it through
    /// the argument services only.
    CallResult call(cmROStringT name, const cmArray<CallArgument>& arguments);
    /// The function that the module offered at a native callback slot, or null.
    TXPFN callback(std::int32_t slot) const;

    // --- What the module wrote ---
    /// Any thread. The version-control record of a path; nothing when there is none.
    std::optional<TXVCRECORD> record(cmROStringT path) const;
    /// Any thread. All records, ordered by path.
    cmArray<std::pair<cmStringT, TXVCRECORD>> records() const;
    /// Any thread. Forgets all records that `tool` wrote, and those without a tool.
    void clearRecords(std::int32_t tool);
    const cmArray<TreeRow>& tree() const;
    /// Handles (variables, XML documents) that are in use now; for leak checks. Any thread.
    std::size_t openDocuments() const;

    // --- Events ---
    void setObserver(EditorObserver observer);
    /// Takes the lines of the debug log, from any thread; null for none.
    void setDebugSink(std::function<void(cmROStringT line)> sink);
    /// Any thread. Lets `task` run on the editor's thread, from its loop.
    void post(std::function<void()> task);
    /// The editor's event loop: runs posted tasks, timers and observers until `done` holds, asked after each of
    /// them and at least every 50 ms, or until `timeoutMs` have passed (-1: no limit). Returns whether it holds.
    bool runUntil(const std::function<bool()>& done, std::int32_t timeoutMs);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
    friend Parts& currentEditorParts();
};
