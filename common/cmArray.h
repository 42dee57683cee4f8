#pragma once

#include <vector>

/// Dynamic array with value semantics.
template <class T>
using cmArray = std::vector<T>;
