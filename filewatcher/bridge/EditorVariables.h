#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "txapi/txapi.h"

// Functions that fill the editor's containers. For the editor's thread only.

/// Makes sure that an array holds at most `length` elements. An array that is longer is emptied.
void shortenEditorArray(TXHVAR array, std::size_t length);
/// Replaces the elements of an array by these texts.
void storeTexts(TXHVAR array, const cmArray<cmStringT>& texts);
