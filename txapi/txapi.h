#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "txapi/EditorNumbers.h"
#include "txapi/TMIterator.h"
#include "txapi/TMString.h"
#include "txapi/TXEXPORT.h"

#include <cstdint>

// The editor's services as the module calls them.
//
// Linking: a service whose comment begins with a number is exported by that ordinal, without a name; the others are exported by
// name. txapi.def holds the same numbers.
// Threads: call a service on the editor's thread only, unless its comment or the heading of its section says "any thread".
// Failure: no service throws. A service that finds nothing returns 0, which is never a valid handle or index. A service that is
// given an invalid handle does nothing and returns 0. A "negative status" says no more than that the call failed.
// Text: all strings are UTF-8. The caller owns every argument; the editor copies what it keeps. Output references must refer to
// objects of the caller, which then owns their content.
// Numbers: EditorNumbers.h names the properties, callback slots, path kinds and the like, VersionControlTools.h the tools.

// --- Kinds of arguments and results of registered functions ---------------------------------------------------

/// A NUL-terminated 8-bit string, UTF-8. An argument belongs to the caller and is valid during the call. A result belongs to
/// the function that returned it and stays valid after the return, until that function is called again.
using TXPSZ = const char*;
/// A variable passed by reference; read or fill it through the variable services.
using TXHREFVAR = TXHVAR;
using TMStringConst = const tamarin::TMString&;  ///< input, valid during the call
using TMStringByRef = tamarin::TMString&;        ///< output; holds the caller's text until the function changes it
/// Address of any function. The prototype or the callback slot that goes with it determines its real type.
using TXPFN = void (*)();

/// The editor's version-control record of one file. The module reads and writes the two statuses, `state` and `tool`; it keeps
/// the four unnamed strings, which are the editor's own, as it read them.
struct TXVCRECORD {
    cmStringT first;
    cmStringT second;
    cmStringT repositoryStatus;  ///< tokens separated by "|"
    cmStringT localStatus;       ///< tokens separated by "|"
    cmStringT fifth;
    cmStringT sixth;
    std::int32_t state = 0;  ///< txVCStateUnknown, txVCStateOutsideRepository, or a state of the editor's own
    std::int32_t tool = 0;   ///< number of the tool that wrote the record (VersionControlTools.h)
};

/// A date with its time of day in the local time zone: full year, month and day from 1, 24-hour clock.
struct TXDATETIME {
    std::int32_t year, month, day, hour, minute, second;
};

extern "C" {

// --- Registration and calls ---------------------------------------------------------------------------------

/// 195. Makes `function` callable from the macro language under the name in `prototype`, as in
/// "int module:name(TXPSZ, int)". `flags` and `reserved` must be 0. The function must stay loaded while it is registered; a
/// second registration of the same name replaces the first. Returns 0, or a negative status when the prototype cannot be read.
TXAPI std::int32_t txRegisterFunction(TXPSZ prototype, std::int32_t flags, std::int32_t reserved, TXPFN function);
/// 1056. The feature gate: returns 1 when this edition of the editor offers the module's features, else 0.
TXAPI std::int32_t txFeatureAvailable();
/// 15. Returns the index of the macro function (`kind` txKindFunction) or variable (txKindVariable) `name`; 0 when there is none.
TXAPI std::int32_t txFindName(TXPSZ name, std::int32_t kind);
/// 311. Returns 1 when the name with this index is a function that can be called, else 0.
TXAPI std::int32_t txIsCallable(std::int32_t index);
/// 16. Calls the macro function with this index and waits for it. `flags` must be 0; `arguments` holds `count` handles and may
/// be null when `count` is 0. Returns 0 and leaves the function's result in the variable txLastResult, or returns a negative
/// status.
TXAPI std::int32_t txCallFunction(std::int32_t flags, std::int32_t index, std::int32_t count, const TXHVAR* arguments);
/// Returns how many arguments the registered function that runs now was given, those beyond its prototype included. Returns 0
/// outside such a call.
TXAPI std::int32_t txArgumentCount();
/// Returns the handle of argument `number`, counted from 1, of the registered function that runs now; 0 when there is no such
/// argument. The handle is valid during that call.
TXAPI TXHVAR txArgument(std::int32_t number);
/// Sets the function of a native callback slot of the editor; it replaces the slot's previous one. The editor calls it on its
/// own thread. The function must stay loaded while it is set.
TXAPI void txSetCallback(std::int32_t slot, TXPFN function);

// --- Variables ------------------------------------------------------------------------------------------------
//
// The handle of an element is valid while its container holds the element: a container that is freed, or is given another
// value, invalidates the handles of all its elements.

/// 32. Returns the handle of the variable with this index (see txFindName); 0 when there is none. The editor owns the variable.
TXAPI TXHVAR txVariable(std::int32_t index);
/// 18. Returns the integer value: that of a number, or of a string that is a decimal number; 0 for anything else. A value that
/// does not fit into 32 bits becomes the nearest one that does.
TXAPI std::int32_t txHvarGetInt(TXHVAR variable);
/// 19. Replaces the variable's value by a 32-bit integer.
TXAPI void txHvarSetInt(TXHVAR variable, std::int32_t value);
/// 913. Replaces the variable's value by a 64-bit integer.
TXAPI void txHvarSetInt64(TXHVAR variable, std::int64_t value);
/// Copies the string value into `value`: a string as it is, a number in decimal, anything else as the empty string. Returns 1,
/// or 0 when the handle is invalid; `value` is then unchanged.
TXAPI std::int32_t txHvarGetString(TXHVAR variable, cmStringT& value);
/// Replaces the variable's value by a string.
TXAPI void txHvarSetString(TXHVAR variable, const cmStringT& value);
/// 1001. Sets `flag` to 1 when the variable's integer value is not 0, else to 0. Returns 0, or a negative status when the handle
/// is invalid; `flag` is then unchanged.
TXAPI std::int32_t txHvarGetFlag(TXHVAR variable, std::int32_t* flag);
/// 266. Returns the number of elements; 0 when the variable is no array.
TXAPI std::int32_t txHvarArrayLength(TXHVAR array);
/// 78. Returns the handle of element `index`, counted from 0; 0 when there is none. With `create` txCreateMissing a variable that
/// is no array becomes an empty one first, and the array grows to hold the element. The array owns the element.
TXAPI TXHVAR txHvarArrayElement(TXHVAR array, std::int32_t index, std::int32_t create);
/// 79. Returns the handle of the element at `key`; 0 when there is none. With `create` txCreateMissing a variable that is no hash
/// table becomes an empty one first, and the element is added. The table owns the element.
TXAPI TXHVAR txHvarHashElement(TXHVAR table, TXPSZ key, std::int32_t create);
/// Moves the iterator on and returns the next element of its innermost container; 0 at the end. Elements may be added and
/// removed between two calls.
TXAPI TXHVAR txHvarNextElement(tamarin::TMIterator& iterator);
/// Replaces the variable's value by a new instance of a class of the macro language, all its fields empty. Returns 0, or a
/// negative status when there is no such class.
TXAPI std::int32_t txHvarInitInstance(TXHVAR variable, TXPSZ className);
/// Returns the handle of a field of a class instance; 0 when the class has no field of that name. The instance owns the field.
TXAPI TXHVAR txHvarField(TXHVAR instance, TXPSZ field);

// --- Editor properties ----------------------------------------------------------------------------------------

/// 34. Returns the handle of the variable behind a numbered property; 0 when the property is not set. The editor owns it.
TXAPI TXHVAR txProperty(std::int32_t number);
/// Copies the string value of a property into `value`; empty when the property is not set.
TXAPI void txGetStringProperty(std::int32_t number, cmStringT& value);
/// Sets a property to a string.
TXAPI void txSetStringProperty(std::int32_t number, const cmStringT& value);
/// Returns the integer value of a property; 0 when the property is not set.
TXAPI std::int32_t txGetIntProperty(std::int32_t number);
/// Sets a property to an integer.
TXAPI void txSetIntProperty(std::int32_t number, std::int32_t value);

// --- Version control; any thread ------------------------------------------------------------------------------

/// 884. Copies the record of `path` (absolute, native separators) into `record` and returns 1. Returns 0 when the editor has no
/// record of it; `record` is then unchanged.
TXAPI std::int32_t txVCGetRecord(const tamarin::TMString& path, TXVCRECORD& record);
/// 883. Stores the record of `path` (absolute, native separators) in place of the one that the editor has.
TXAPI void txVCSetRecord(const tamarin::TMString& path, const TXVCRECORD& record);
/// 989. Notifies the editor that records have changed; it shows them later, on its own thread.
TXAPI void txVCStatusChanged();
/// 1204. Notifies the editor that a status pass over the watched directory `path` begins.
TXAPI void txVCPassBegin(const tamarin::TMString& path);
/// Tells the editor in words, the tool's or the system's, what the pass over `path` did not answer. Called at most once a pass,
/// before txVCPassEnd. When the pass ends with an error status: why it failed. When it ends with 0: why the server gave no
/// answer; the local status is right then, but what is newer in the repository is not known.
TXAPI void txVCPassError(const tamarin::TMString& path, const cmStringT& reason);
/// 1205. Notifies the editor that the pass has ended: `status` is 0, or the negative code of what ended it early.
TXAPI void txVCPassEnd(const tamarin::TMString& path, std::int32_t status);
/// Notifies the editor that a part of the load of the repository `path` has ended (txGitLoadBranches, then txGitLoadCommits).
/// `status` is 0, or the negative code of what failed; what could be read is shown all the same. `message` tells a person why;
/// it is empty with the status 0, and with -1 for commits when there are none. A load that is closed or replaced tells nothing.
TXAPI void txGitLoadEnd(const tamarin::TMString& path, std::int32_t part, std::int32_t status, const tamarin::TMString& message);
/// Tells the editor why a query of the Git browser or a fetch for live diff has failed, or lacks a part of its answer, in the
/// words of the tool or of the system. Called at most once each, before its result can be seen. A code that tells all (no memory,
/// no feature, nothing differs) comes without it.
TXAPI void txQueryError(const cmStringT& reason);

// --- XML; any thread ------------------------------------------------------------------------------------------
//
// Different threads may use different documents at the same time, but only one thread at a time may use a document. A node is
// an index into its document, from 1; it is valid until the document is closed.

/// 737. Parses an XML document; external entities are never fetched. Returns the document's handle, above 0, which the caller
/// must close with txXMLClose, or a negative status when the text is no well-formed document.
TXAPI std::int32_t txXMLLoadText(const cmStringT& text);
/// 306. Returns the document element; 0 when there is no such document.
TXAPI std::int32_t txXMLRoot(std::int32_t document);
/// 1005. Fills `nodes`, which it empties first, with the nodes that the XPath expression `path` selects, in document order.
/// Returns their number, or a negative status when there is no such document or the expression selects no nodes but a value.
TXAPI std::int32_t txXMLSelect(std::int32_t document, TXPSZ path, cmArray<std::int32_t>& nodes);
/// 600. Returns the first child element named `name`; 0 when there is none.
TXAPI std::int32_t txXMLChild(std::int32_t document, std::int32_t node, TXPSZ name);
/// Copies the attribute `name` into `value` and returns 1. Returns 0 and empties `value` when the node has no such attribute.
TXAPI std::int32_t txXMLCFGGetAttributeCMString(std::int32_t document, std::int32_t node, TXPSZ name, cmStringT& value);
/// 575. Closes the document and frees it. Does nothing for a handle that is not open.
TXAPI void txXMLClose(std::int32_t document);

// --- Files ------------------------------------------------------------------------------------------------------

/// 567; any thread. Returns the kind of a path without looking at the disk: txPathLocal, txPathRelative, or another number for a
/// path of any other kind.
TXAPI std::int32_t txPathKind(const tamarin::TMString& path);
/// Any thread. Sets `absolute` to the absolute form of `path`, relative to `directory`; an empty `directory` stands for the
/// current one. With `normalise` not 0 it resolves "." and ".." by the text alone. A URL stays as it is.
TXAPI void txAbsolute(const tamarin::TMString& path, const tamarin::TMString& directory, std::int32_t normalise,
                      tamarin::TMString& absolute);
/// Any thread. Returns 1 when the file system of `path` reports file times, else 0.
TXAPI std::int32_t txFileSupportsGetFileTime(const tamarin::TMString& path);
/// 798. Sets `directory` to a directory of the editor, without a trailing separator; `which` is txDirectoryPrivate. It is
/// empty when there is no such directory.
TXAPI void txDirectory(std::int32_t which, tamarin::TMString& directory);

// --- Browser tree -----------------------------------------------------------------------------------------------

/// Removes all nodes and frees their copies of user data.
TXAPI void txTreeClear();
/// Sets the model behind the tree, or none with null. The module keeps owning it: the editor only stores the pointer, and reads
/// the model through the callback slots.
TXAPI void txTreeSetModel(void* model);
/// Returns the number of rows.
TXAPI std::int32_t txTreeRowCount();
/// Inserts a node below node `after`, or as the first when `after` is 0. The tree keeps a deep copy of the variable `userData`
/// (0: none). Returns the new node, above 0, which stays valid until txTreeClear; 0 when there is no node `after`.
TXAPI std::int32_t txTreeAdd(std::int32_t after, const cmStringT& caption, std::int32_t flags, TXHVAR userData);
/// Sets the date that a node shows in column `column`.
TXAPI void txTreeSetDate(std::int32_t node, std::int32_t column, const TXDATETIME& date);
/// Returns the handle of a new, empty variable. The caller owns it and frees it with txHvarFree.
TXAPI TXHVAR txHvarAlloc();
/// Frees a variable that txHvarAlloc made, with all its elements. Does nothing for any other handle.
TXAPI void txHvarFree(TXHVAR variable);
/// Returns the index of the picture `name`; 0 when there is none.
TXAPI std::int32_t txFindPicture(TXPSZ name);

// --- Timers and log ----------------------------------------------------------------------------------------------

/// Calls `routine` on the editor's thread every `ms` milliseconds until txKillTimer. Returns the timer's id, 0 or more, or -1
/// when `routine` is null.
TXAPI std::int32_t txSetTimer(std::int32_t ms, void (*routine)());
/// Stops a timer: its routine is not called again. The routine itself may call this.
TXAPI void txKillTimer(std::int32_t timer);
/// Any thread. Writes `line` and a line end to the editor's debug log.
TXAPI void txDebugLog(TXPSZ line);

}  // extern "C"
