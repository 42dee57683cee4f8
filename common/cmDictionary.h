#pragma once

#include <map>
#include <unordered_map>

/// Hash dictionary with value semantics. Keys need std::hash and ==.
template <class Key, class Value>
using cmDictionary = std::unordered_map<Key, Value>;

/// Ordered dictionary with value semantics. Iterates in ascending order of its keys.
template <class Key, class Value>
using cmSortedDictionary = std::map<Key, Value>;
