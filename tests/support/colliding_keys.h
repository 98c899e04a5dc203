// Keys whose records have the same home in a RecordTable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "storage/text_hash.h"

/// 300 keys whose hashes have 12 zero bits at the top: they have one home, or a few, in every table
/// of the tests.
inline const std::vector<std::wstring>& CollidingKeys() {
  static const std::vector<std::wstring> keys = [] {
    constexpr std::size_t kCount = 300;
    std::vector<std::wstring> collidingKeys;
    std::wstring key = L"collide_####";
    for (std::uint64_t i = 0; collidingKeys.size() < kCount; ++i) {
      std::uint64_t rest = i;
      for (std::size_t offset = 8; offset < key.size(); ++offset) {
        key[offset] = static_cast<wchar_t>(L'0' + rest % 64);
        rest /= 64;
      }
      if (KelmoLibs::Localize::HashText(key) >> 52U == 0) {
        collidingKeys.push_back(key);
      }
    }
    return collidingKeys;
  }();
  return keys;
}
