// Keys that a table of records wants to put into the same place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "storage/text_hash.h"

/// 300 keys whose hashes have no upper 12 bits: they have one home, or few, in a table of any size in the tests.
inline const std::vector<std::wstring>& CollidingKeys() {
  static const std::vector<std::wstring> keys = [] {
    constexpr std::size_t kCount = 300;
    std::vector<std::wstring> found;
    std::wstring key = L"collide_####";
    for (std::uint64_t i = 0; found.size() < kCount; ++i) {
      std::uint64_t rest = i;
      for (std::size_t place = 8; place < key.size(); ++place) {
        key[place] = static_cast<wchar_t>(L'0' + rest % 64);
        rest /= 64;
      }
      if (KelmoLibs::Localize::HashText(key) >> 52U == 0) {
        found.push_back(key);
      }
    }
    return found;
  }();
  return keys;
}
