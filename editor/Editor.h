#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "editor/Variable.h"
#include "txapi/TXEXPORT.h"
#include "txapi/txapi.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

/// The result of calling a registered function.
struct CallResult {
    bool found = false;                  ///< whether a function of that name exists and the arguments suit its prototype
    cmStringT error;                     ///< the reason when `found` is false
    std::optional<std::int32_t> number;  ///< the result of an "int" function
    cmStringT text;                      ///< the result of a "TXPSZ" function; null for the others
};

/// One argument of a call: a number, a string, or a variable by handle, which the function may change.
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
    TXHVAR userData = 0;           ///< handle of the tree's own copy; 0 when there is none
    std::int32_t dateColumn = -1;  ///< -1 when no date is set
    TXDATETIME date{};
};

struct EditorParts;

/// Functions that the editor calls when the version-control services are called. They run on the editor's thread, in its event
/// loop, in the order of the service calls. A null function is skipped.
struct EditorObserver {
    std::function<void()> statusChanged;
    std::function<void(const cmStringT& path)> passBegan;
    std::function<void(const cmStringT& path, const cmStringT& reason)> passFailed;  ///< before passEnded
    std::function<void(const cmStringT& path, std::int32_t status)> passEnded;
    std::function<void(const cmStringT& path, std::int32_t part, std::int32_t status, const cmStringT& message)> gitLoadEnded;
};

/// The stand-in editor: the object behind the services of txapi.h. Only one may exist at a time; a second one aborts the program.
/// The thread that creates it is the editor's thread. A service or operation that belongs to the editor's thread aborts the
/// program when another thread calls it; operations marked "any thread" do not. While no Editor exists, the services return 0 or
/// empty values. No other thread may be inside a service while the Editor is destroyed.
class EDITOR_API Editor {
public:
    Editor();
    ~Editor();
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    // --- What the module finds ---
    /// The answer of the feature gate; true at first.
    void setFeatureAvailable(bool available);
    /// Sets an integer variable of the macro language; the settings are such variables.
    void setSetting(cmROStringT name, std::int32_t value);
    /// The integer value of a variable; nothing when there is none.
    std::optional<std::int32_t> setting(cmROStringT name) const;
    void removeSetting(cmROStringT name);
    /// Defines a macro function without arguments. `body` runs on the editor's thread and returns the result.
    void defineMacro(cmROStringT name, std::function<cmStringT()> body);
    /// Defines a class of the macro language by the fields of its instances.
    void defineClass(cmROStringT name, const cmArray<cmStringT>& fields);
    void setProperty(std::int32_t number, const cmStringT& value);
    void setProperty(std::int32_t number, std::int32_t value);
    void removeProperty(std::int32_t number);
    /// Sets the folder for private data. Until it is set, that is the system's folder for temporary files.
    void setDirectory(const cmStringT& directory);

    // --- Calls ---
    /// The registered prototypes, in the order of registration.
    cmArray<cmStringT> prototypes() const;
    /// Calls a registered function by name and waits for it. There must be at least as many arguments as the prototype has
    /// parameters; the function reads further ones through the argument services.
    CallResult call(cmROStringT name, const cmArray<CallArgument>& arguments);
    /// The value of a variable, valid until the variable changes; null for an invalid handle.
    const VariableValue* value(TXHVAR variable) const;
    /// The function that the module has set at a callback slot; null when there is none.
    TXPFN callback(std::int32_t slot) const;
    /// The model that the module has set for the browser tree; null when there is none.
    void* treeModel() const;

    // --- What the module wrote ---
    /// Any thread. A copy of the version-control record of a path; nothing when there is none.
    std::optional<TXVCRECORD> record(cmROStringT path) const;
    /// Any thread. Copies of all records, ordered by path.
    cmArray<std::pair<cmStringT, TXVCRECORD>> records() const;
    /// Any thread. Copies of the records whose status, local or repository, has changed since the last call, in no order. A
    /// record that was removed is not among them.
    cmArray<std::pair<cmStringT, TXVCRECORD>> takeChangedRecords();
    /// Any thread. Removes the records that `tool` wrote; with 0 those without a tool.
    void clearRecords(std::int32_t tool);
    /// With `kept` false the browser tree is that of an editor which draws the rows itself: it asks the callback slots for those
    /// that can be seen, and tells the module that no row is missing, so that none is made. Call it before there are rows.
    void keepTreeRows(bool kept);
    /// The rows of the browser tree from the top; valid until the module changes it. None when they are not kept.
    const std::deque<TreeRow>& tree() const;
    /// Any thread. Why a query or a fetch has failed since the last call of this; null when none has.
    cmStringT takeQueryError();
    /// Any thread. How many XML documents are open now; for leak checks.
    std::size_t openDocuments() const;
    /// How many variables exist now, without elements; for leak checks.
    std::size_t openVariables() const;

    // --- Events ---
    void setObserver(EditorObserver observer);
    /// Sets the receiver of the debug log's lines (without line ends), or none with null. It runs on the thread that logs, for
    /// one line at a time, and must not log itself.
    void setDebugSink(std::function<void(cmROStringT line)> sink);
    /// Any thread. Queues `task` for the event loop, which runs it on the editor's thread.
    void post(std::function<void()> task);
    /// The event loop: runs posted tasks, timers and observers until `done` returns true or `timeoutMs` milliseconds have passed.
    /// -1 is no limit; with 0 everything that is due now still runs. `done` is checked after each of them and at least every
    /// 50 ms. Returns the last answer of `done`. Tasks, timers and observers may call it again.
    bool runUntil(const std::function<bool()>& done, std::int32_t timeoutMs);

private:
    const std::unique_ptr<EditorParts> m_parts;
};
