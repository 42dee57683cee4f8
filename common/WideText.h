#pragma once

#include "common/cmString.h"

#include <string>

// For Win32 back ends only: text is UTF-8 inside and UTF-16 in system calls. What is no valid text becomes U+FFFD.

std::wstring wideText(cmROStringT text);
cmStringT narrowText(std::wstring_view text);
