#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "txapi/EditorNumbers.h"
#include "txapi/TMIterator.h"
#include "txapi/TMString.h"
#include "txapi/TXEXPORT.h"

#include <cstdint>

// The editor's services, as the module calls them. Those with a number in front are reached by that ordinal
// (txapi.def holds the same numbers), the others by name. "Any thread" services may be called from everywhere;
// all others only on the editor's thread. A service that finds nothing answers 0: an invalid handle or index. The numbers of
// properties, callback slots and the like are in EditorNumbers.h.

// --- Kinds of arguments and results of registered functions ---------------------------------------------------

/// A NUL-terminated 8-bit string, UTF-8. As an argument it belongs to the caller and is valid during the call; as a
/// result it belongs to the function, which keeps it alive after returning.
using TXPSZ = const char*;
/// A variable passed by reference: read or filled through the variable services.
using TXHREFVAR = TXHVAR;
using TMStringConst = const tamarin::TMString&;
using TMStringByRef = tamarin::TMString&;
/// Address of any function; the prototype that goes with it tells its true type.
using TXPFN = void (*)();

/// The editor's version-control record of one file. The unnamed strings are the editor's own.
struct TXVCRECORD {
    cmStringT first;
    cmStringT second;
    cmStringT repositoryStatus;  ///< tokens separated by "|"
    cmStringT localStatus;       ///< tokens separated by "|"
    cmStringT fifth;
    cmStringT sixth;
    std::int32_t state = 0;  ///< txVCStateUnknown, txVCStateOutsideRepository, or the editor's own
    std::int32_t tool = 0;   ///< the tool that wrote the record; VersionControlTools.h has the numbers
};

/// A date with its time of day, in the local time zone.
struct TXDATETIME {
    std::int32_t year, month, day, hour, minute, second;
};

extern "C" {

// --- Registration and calls ---------------------------------------------------------------------------------

/// 195. Makes `function` callable under the name in `prototype` ("int module:name(TXPSZ, int)"). `flags` and
/// `reserved` are 0. Returns 0, or a negative status when the prototype cannot be read.
TXAPI std::int32_t txRegisterFunction(TXPSZ prototype, std::int32_t flags, std::int32_t reserved, TXPFN function);
/// 1056. Whether the editor's edition offers this module's features. 0: it does not.
TXAPI std::int32_t txFeatureAvailable();
/// 15. Index of the macro function or variable `name`, or 0. `kind` is txKindFunction or txKindVariable.
TXAPI std::int32_t txFindName(TXPSZ name, std::int32_t kind);
/// 311. Whether the function with this index can be called.
TXAPI std::int32_t txIsCallable(std::int32_t index);
/// 16. Calls a macro function; `flags` is 0, `arguments` holds `count` handles. Its result is then the variable
/// txLastResult. Returns 0, or a negative status.
TXAPI std::int32_t txCallFunction(std::int32_t flags, std::int32_t index, std::int32_t count, const TXHVAR* arguments);
/// How many arguments the running call of a registered function was given, those past its prototype included.
TXAPI std::int32_t txArgumentCount();
/// Handle of the running call's argument `number`, counted from 1, or 0.
TXAPI TXHVAR txArgument(std::int32_t number);
/// Offers `function` to the editor at one of its native callback slots.
TXAPI void txSetCallback(std::int32_t slot, TXPFN function);

// --- Variables ------------------------------------------------------------------------------------------------

/// 32. Handle of the variable with this index, or 0.
TXAPI TXHVAR txVariable(std::int32_t index);
/// 18. The integer value; 0 for a variable that holds none.
TXAPI std::int32_t txHvarGetInt(TXHVAR variable);
/// 19.
TXAPI void txHvarSetInt(TXHVAR variable, std::int32_t value);
/// 913.
TXAPI void txHvarSetInt64(TXHVAR variable, std::int64_t value);
/// Copies the string value (numbers in decimal) into `value`; 0 when the handle is invalid, else 1.
TXAPI std::int32_t txHvarGetString(TXHVAR variable, cmStringT& value);
TXAPI void txHvarSetString(TXHVAR variable, const cmStringT& value);
/// 1001. Reads the variable as a flag into `flag` (0 or 1). Returns 0, or a negative status when the handle is invalid.
TXAPI std::int32_t txHvarGetFlag(TXHVAR variable, std::int32_t* flag);
/// 266. The number of elements; 0 when the variable is no array.
TXAPI std::int32_t txHvarArrayLength(TXHVAR array);
/// 78. Element `index` (from 0). With txCreateMissing the variable is made an array and grows as needed.
TXAPI TXHVAR txHvarArrayElement(TXHVAR array, std::int32_t index, std::int32_t create);
/// 79. The element at `key`. With txCreateMissing the variable is made a hash table and the element is made.
TXAPI TXHVAR txHvarHashElement(TXHVAR table, TXPSZ key, std::int32_t create);
/// The next element of the iterator's innermost container, or 0 at its end; the iterator moves on.
TXAPI TXHVAR txHvarNextElement(tamarin::TMIterator& iterator);
/// Makes the variable a fresh instance of an editor-language class. 0, or a negative status when there is no such class.
TXAPI std::int32_t txHvarInitInstance(TXHVAR variable, TXPSZ className);
/// The field of a class instance, or 0 when its class has none of that name.
TXAPI TXHVAR txHvarField(TXHVAR instance, TXPSZ field);

// --- Editor properties ----------------------------------------------------------------------------------------

/// 34. The variable behind a numbered property, or 0.
TXAPI TXHVAR txProperty(std::int32_t number);
/// The string and integer forms of a numbered property; an unset one is empty or 0.
TXAPI void txGetStringProperty(std::int32_t number, cmStringT& value);
TXAPI void txSetStringProperty(std::int32_t number, const cmStringT& value);
TXAPI std::int32_t txGetIntProperty(std::int32_t number);
TXAPI void txSetIntProperty(std::int32_t number, std::int32_t value);

// --- Version control; any thread ------------------------------------------------------------------------------

/// 884. Reads the record of `path` (absolute, native separators). 0 when the editor has none: `record` is left as it is.
TXAPI std::int32_t txVCGetRecord(const tamarin::TMString& path, TXVCRECORD& record);
/// 883. Writes it.
TXAPI void txVCSetRecord(const tamarin::TMString& path, const TXVCRECORD& record);
/// 989. Tells the editor that version-control status changed.
TXAPI void txVCStatusChanged();
/// 1204. A status pass over a watched directory begins.
TXAPI void txVCPassBegin(const tamarin::TMString& path);
/// 1205. It has ended: 0, or the status that cut it short.
TXAPI void txVCPassEnd(const tamarin::TMString& path, std::int32_t status);

// --- XML; any thread, a document from one thread at a time ------------------------------------------------------

/// 737. Loads a document from text; entities from outside are never fetched. Returns a handle above 0 or a negative status.
TXAPI std::int32_t txXMLLoadText(const cmStringT& text);
/// 306. The document element of a loaded document, or 0.
TXAPI std::int32_t txXMLRoot(std::int32_t document);
/// 1005. The nodes that an XPath expression selects, in document order; `nodes` is emptied first. Returns their number or a
/// negative status.
TXAPI std::int32_t txXMLSelect(std::int32_t document, TXPSZ path, cmArray<std::int32_t>& nodes);
/// 600. The first child element of that name, or 0.
TXAPI std::int32_t txXMLChild(std::int32_t document, std::int32_t node, TXPSZ name);
/// Copies an attribute into `value`; 0 when the node has none of that name (`value` becomes empty), else 1.
TXAPI std::int32_t txXMLCFGGetAttributeCMString(std::int32_t document, std::int32_t node, TXPSZ name, cmStringT& value);
/// 575. Closes the document; its nodes are invalid from then on.
TXAPI void txXMLClose(std::int32_t document);

// --- Files ------------------------------------------------------------------------------------------------------

/// 567; any thread. txPathLocal, txPathRelative, or another number for a path of any other kind.
TXAPI std::int32_t txPathKind(const tamarin::TMString& path);
/// Any thread. The absolute form of `path`; an empty `directory` stands for the current one. `normalise` resolves . and ..
TXAPI void txAbsolute(const tamarin::TMString& path, const tamarin::TMString& directory, std::int32_t normalise,
                      tamarin::TMString& absolute);
/// Any thread. Whether the file system of `path` can report file times.
TXAPI std::int32_t txFileSupportsGetFileTime(const tamarin::TMString& path);
/// 798. A directory of the editor's, such as txDirectoryPrivate. Ends without a separator.
TXAPI void txDirectory(std::int32_t which, tamarin::TMString& directory);

// --- Browser tree -----------------------------------------------------------------------------------------------

TXAPI void txTreeClear();
/// Hands the model behind the tree to the editor, which calls it through its callback slots.
TXAPI void txTreeSetModel(void* model);
TXAPI std::int32_t txTreeRowCount();
/// Adds a node after node `after` (0: as the first). `userData` is copied; 0 for none. Returns the new node, above 0.
TXAPI std::int32_t txTreeAdd(std::int32_t after, const cmStringT& caption, std::int32_t flags, TXHVAR userData);
TXAPI void txTreeSetDate(std::int32_t node, std::int32_t column, const TXDATETIME& date);
/// A new variable for the caller's own use, such as a node's user data; freed by txHvarFree.
TXAPI TXHVAR txHvarAlloc();
TXAPI void txHvarFree(TXHVAR variable);
/// Index of a picture by name, or 0.
TXAPI std::int32_t txFindPicture(TXPSZ name);

// --- Timers and log ----------------------------------------------------------------------------------------------

/// Calls `routine` on the editor's thread every `ms` milliseconds until it is killed. Returns the timer's id, 0 or more; -1
/// for a null routine.
TXAPI std::int32_t txSetTimer(std::int32_t ms, void (*routine)());
TXAPI void txKillTimer(std::int32_t timer);
/// Any thread. Adds a line to the editor's debug log; a line end is added.
TXAPI void txDebugLog(TXPSZ line);

}  // extern "C"
