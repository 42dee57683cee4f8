#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "txapi/txapi.h"

// How the module fills the editor's containers; for the editor's thread only.

/// Makes an array hold `length` elements at most: nothing is left of what stood there before.
void shortenEditorArray(TXHVAR array, std::size_t length);
/// Makes an array hold these texts and nothing else.
void storeTexts(TXHVAR array, const cmArray<cmStringT>& texts);
