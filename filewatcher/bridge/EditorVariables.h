#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "txapi/txapi.h"

#include <cstddef>
#include <cstdint>

// Functions that fill the editor's containers. For the editor's thread only. A handle may be 0, which stands for a variable that
// is missing: nothing is stored then, and its elements are missing, too.

/// The element of an array or a hash table; it is created when there is none. 0 when that fails.
TXHVAR madeElement(TXHVAR array, std::int32_t index);
TXHVAR madeElement(TXHVAR table, TXPSZ key);
void storeText(TXHVAR variable, const cmStringT& text);
void storeInt(TXHVAR variable, std::int32_t value);

/// Makes sure that an array holds at most `length` elements. An array that is longer is emptied.
void shortenEditorArray(TXHVAR array, std::size_t length);
/// Replaces the elements of an array by these texts.
void storeTexts(TXHVAR array, const cmArray<cmStringT>& texts);
