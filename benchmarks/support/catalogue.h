// Generated dictionaries, the same in every run.
#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/encode_utf8.h"

namespace benchmarks {

enum class Language { kEnglish, kGerman, kRussian };

struct Entry {
  std::wstring key;
  std::wstring text;
};

using Catalogue = std::vector<Entry>;

/// Entries with distinct keys: ASCII, 12 to 32 characters. The texts are words, 10 to 40
/// characters. A larger catalogue begins with the smaller one.
Catalogue MakeCatalogue(Language language, std::size_t size);

/// Distinct keys that look like those of catalogues, but that no catalogue has.
std::vector<std::wstring> MakeMissingKeys(std::size_t size);

/// Writes a catalogue as a dictionary file.
void WriteDictionary(const std::filesystem::path& file, const std::string& id,
                     const Catalogue& catalogue);

/// A generator that gives the same numbers in every run.
std::mt19937_64 MakeRandomNumbers();

/// A random number below `limit`. Distributions are not used: each standard library has its own.
inline std::size_t Below(std::size_t limit, std::mt19937_64& random) { return random() % limit; }

/// Zero-terminated keys as a host holds them, in UTF-8 or wide, one after the other in memory.
template <class Character>
class HostKeys {
 public:
  explicit HostKeys(const std::vector<std::wstring>& keys) {
    std::vector<std::size_t> offsets;
    for (const std::wstring& key : keys) {
      offsets.push_back(characters_.size());
      if constexpr (std::is_same_v<Character, char>) {
        characters_ += EncodeUtf8(key);
      } else {
        characters_ += key;
      }
      characters_ += Character();
    }
    for (const std::size_t offset : offsets) {
      pointers_.push_back(characters_.data() + offset);
    }
  }
  HostKeys(const HostKeys&) = delete;
  HostKeys& operator=(const HostKeys&) = delete;

  const std::vector<const Character*>& Pointers() const { return pointers_; }

  /// Each key `times` times, shuffled.
  std::vector<const Character*> Repeated(std::size_t times) const {
    std::vector<const Character*> repeated;
    for (std::size_t time = 0; time < times; ++time) {
      repeated.insert(repeated.end(), pointers_.begin(), pointers_.end());
    }
    std::mt19937_64 random = MakeRandomNumbers();
    std::shuffle(repeated.begin(), repeated.end(), random);
    return repeated;
  }

 private:
  std::basic_string<Character> characters_;
  std::vector<const Character*> pointers_;
};

}  // namespace benchmarks
