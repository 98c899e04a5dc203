#include "benchmarks/support/hostile_catalogue.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "storage/text_hash.h"

namespace benchmarks {
namespace {

constexpr std::wstring_view kLetters = L"abcdefghijklmnop";
constexpr std::size_t kKeyLength = 16;

}  // namespace

Catalogue MakeHostileCatalogue(std::size_t size) {
  // The upper half of the hash, divided by 2^32, selects the home bucket (storage/record_table.h).
  const std::uint64_t limit = (std::uint64_t{1} << 32U) / (size / 8);
  std::mt19937_64 random = MakeRandomNumbers();
  Catalogue catalogue = MakeCatalogue(Language::kEnglish, size);
  std::wstring key(kKeyLength, '\0');
  for (auto entry = catalogue.begin(); entry != catalogue.end();) {
    std::uint64_t bits = random();
    for (wchar_t& letter : key) {
      letter = kLetters[bits % kLetters.size()];
      bits /= kLetters.size();
    }
    for (const wchar_t last : kLetters) {  // faster than a random number for each key
      key.back() = last;
      if (KelmoLibs::Localize::HashText(key) >> 32U < limit && entry != catalogue.end()) {
        entry->key = key;
        ++entry;
      }
    }
  }
  return catalogue;
}

}  // namespace benchmarks
