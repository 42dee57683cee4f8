#pragma once

#include <map>
#include <unordered_map>

/// Hash dictionary with value semantics; keys need std::hash and ==.
template <class Key, class Value>
using cmDictionary = std::unordered_map<Key, Value>;

/// Ordered dictionary with value semantics; walks its keys in ascending order.
template <class Key, class Value>
using cmSortedDictionary = std::map<Key, Value>;
