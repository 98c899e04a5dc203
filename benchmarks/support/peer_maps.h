// Hash maps of other libraries in which a host might keep its texts, used as those libraries
// recommend: with capacity for all entries from the start, and looked up by a view of the key.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <type_traits>

#ifdef KELMO_HAS_ABSL
#include <absl/container/flat_hash_map.h>
#endif
#ifdef KELMO_HAS_BOOST
#include <boost/unordered/unordered_flat_map.hpp>
#endif

#include "benchmarks/support/catalogue.h"

namespace benchmarks {

/// Marks a hash function of string views as one for lookups by strings and by views.
template <class Hash>
struct TransparentHash {
  using is_transparent = void;
  std::size_t operator()(std::wstring_view text) const { return Hash()(text); }
};

#ifdef KELMO_HAS_ABSL
using AbslFlatHashMap =
    absl::flat_hash_map<std::wstring, std::wstring, TransparentHash<absl::Hash<std::wstring_view>>,
                        std::equal_to<>>;
#endif

#ifdef KELMO_HAS_BOOST
// The standard library's hash was the fastest here: as fast as absl::Hash, and nearly three times
// as fast as boost::hash. Its bits need no further mixing.
struct BoostHash : TransparentHash<std::hash<std::wstring_view>> {
  using is_avalanching = void;  // NOLINT(readability-identifier-naming): Boost's name
};
using BoostFlatMap =
    boost::unordered_flat_map<std::wstring, std::wstring, BoostHash, std::equal_to<>>;
#endif

template <class Map, class = void>
struct IsHashMap : std::false_type {};
template <class Map>
struct IsHashMap<Map, std::void_t<typename Map::hasher>> : std::true_type {};

/// The catalogue must outlive a map of views.
template <class Map>
Map MakeMap(const Catalogue& catalogue) {
  Map map;
  if constexpr (IsHashMap<Map>::value) {
    map.reserve(catalogue.size());
  }
  for (const Entry& entry : catalogue) {
    map.emplace(entry.key, entry.text);
  }
  return map;
}

/// The text of `key`, or null. Finds the length of the key first.
template <class Map>
const wchar_t* FindText(const Map& map, const wchar_t* key) {
  const auto found = map.find(std::wstring_view(key));
  return found != map.end() ? found->second.c_str() : nullptr;
}

}  // namespace benchmarks
