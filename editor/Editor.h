#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "editor/EditorExport.h"
#include "editor/Variable.h"
#include "txapi/txapi.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

/// What a call of a registered function gave back.
struct CallResult {
    bool found = false;                  ///< there is a function of that name, and the arguments suit its prototype
    cmStringT error;                     ///< when not found: why
    std::optional<std::int32_t> number;  ///< the result of an "int" function
    cmStringT text;                      ///< the result of a "TXPSZ" function; null for the others
};

/// One argument of a call. A variable passed by handle may be filled by the function.
class CallArgument {
public:
    CallArgument(std::int32_t value) : m_kind(Kind::number), m_number(value) {}
    CallArgument(const char* text) : m_kind(Kind::text), m_text(text) {}
    CallArgument(const cmStringT& text) : m_kind(Kind::text), m_text(text) {}
    static CallArgument variable(TXHVAR handle)
    {
        CallArgument argument(handle);
        argument.m_kind = Kind::variable;
        return argument;
    }

    bool isNumber() const { return m_kind == Kind::number; }
    bool isVariable() const { return m_kind == Kind::variable; }
    std::int32_t number() const { return m_number; }
    TXHVAR handle() const { return m_number; }
    const cmStringT& text() const { return m_text; }

private:
    enum class Kind { number, text, variable };
    Kind m_kind;
    std::int32_t m_number = 0;  ///< the handle, for a variable
    cmStringT m_text;
};

/// One row of the browser tree.
struct TreeRow {
    cmStringT caption;
    std::int32_t flags = 0;
    TXHVAR userData = 0;           ///< the tree's own copy, or 0
    std::int32_t dateColumn = -1;  ///< -1 while no date was set
    TXDATETIME date{};
};

struct EditorParts;

/// What the editor is told of version control. The calls come on the editor's thread, from its loop, in the order in which
/// the services were called.
struct EditorObserver {
    std::function<void()> statusChanged;
    std::function<void(const cmStringT& path)> passBegan;
    std::function<void(const cmStringT& path, std::int32_t status)> passEnded;
};

/// The editor as its host sees it: the object behind the services of txapi.h. One at a time; the thread that makes it is
/// the editor's thread, and a service that belongs there aborts the program when it is called from another one.
/// All operations are for the editor's thread, but those marked "any thread". While there is no Editor the services answer
/// 0 or empty; no other thread may be inside a service when it is destroyed.
class EDITOR_API Editor {
public:
    Editor();
    ~Editor();
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    // --- What the module finds ---
    /// Available until told otherwise.
    void setFeatureAvailable(bool available);
    /// An integer variable of the editor's, as the settings are.
    void setSetting(cmROStringT name, std::int32_t value);
    std::optional<std::int32_t> setting(cmROStringT name) const;
    void removeSetting(cmROStringT name);
    /// A macro function without arguments that returns a string.
    void defineMacro(cmROStringT name, std::function<cmStringT()> body);
    /// A class of the editor's macro language, with the fields of its instances.
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
    /// What a variable holds, or null for an invalid handle; valid until the variable changes.
    const VariableValue* value(TXHVAR variable) const;
    /// The function that the module offered at a native callback slot, or null.
    TXPFN callback(std::int32_t slot) const;
    /// The model that it handed over for the browser tree, or null.
    void* treeModel() const;

    // --- What the module wrote ---
    /// Any thread. The version-control record of a path; nothing when there is none.
    std::optional<TXVCRECORD> record(cmROStringT path) const;
    /// Any thread. All records, ordered by path.
    cmArray<std::pair<cmStringT, TXVCRECORD>> records() const;
    /// Any thread. Forgets all records that `tool` wrote, and those without a tool.
    void clearRecords(std::int32_t tool);
    /// The rows of the browser tree from the top; valid until the module changes it.
    const std::deque<TreeRow>& tree() const;
    /// Any thread. How many XML documents are open now; for leak checks, as the next.
    std::size_t openDocuments() const;
    /// How many variables there are now; elements of others are not counted.
    std::size_t openVariables() const;

    // --- Events ---
    void setObserver(EditorObserver observer);
    /// Takes the lines of the debug log, without their line ends: on the thread that logs, one at a time. Null for none.
    void setDebugSink(std::function<void(cmROStringT line)> sink);
    /// Any thread. Lets `task` run on the editor's thread, from its loop.
    void post(std::function<void()> task);
    /// The editor's event loop: runs posted tasks, timers and observers until `done` holds, asked after each of
    /// them and at least every 50 ms, or until `timeoutMs` have passed (-1: no limit; 0: what is due now still runs).
    /// Returns whether it holds. Tasks, timers and observers may call it in turn.
    bool runUntil(const std::function<bool()>& done, std::int32_t timeoutMs);

private:
    const std::unique_ptr<EditorParts> m_parts;
};
