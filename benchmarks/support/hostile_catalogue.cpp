#include "benchmarks/support/hostile_catalogue.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/hash.h"

namespace benchmarks {
namespace {

constexpr std::string_view kLetters = "abcdefghijklmnop";
constexpr std::size_t kKeyLength = 16;

}  // namespace

Catalogue MakeHostileCatalogue(std::size_t size) {
  // The bucket is that of the upper half of the hash, in parts of 2^32.
  const std::uint64_t limit = (std::uint64_t{1} << 32U) / (size / 8);
  std::mt19937_64 random = MakeRandomNumbers();
  Catalogue catalogue = MakeCatalogue(Language::kEnglish, size);
  std::string key(kKeyLength, '\0');
  for (auto entry = catalogue.begin(); entry != catalogue.end();) {
    std::uint64_t bits = random();
    for (char& letter : key) {
      letter = kLetters[bits % kLetters.size()];
      bits /= kLetters.size();
    }
    for (const char last : kLetters) {  // faster than a random number for each
      key.back() = last;
      if (KelmoLibs::Localize::HashBytes(key) >> 32U < limit && entry != catalogue.end()) {
        entry->key.assign(key.begin(), key.end());
        ++entry;
      }
    }
  }
  return catalogue;
}

}  // namespace benchmarks
