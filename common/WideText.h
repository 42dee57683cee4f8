#pragma once

#include "common/cmString.h"

#include <string>

// For Windows back ends only: our text is UTF-8, system calls take UTF-16. Invalid sequences become U+FFFD.

std::wstring wideText(cmROStringT text);
cmStringT narrowText(std::wstring_view text);
