// Generated dictionaries, the same in every run.
#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

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

/// Zero-terminated keys as a host holds them, one after the other in memory.
template <class Character>
class HostKeys {
 public:
  explicit HostKeys(const std::vector<std::wstring>& keys) {
    std::size_t length = 0;
    for (const std::wstring& key : keys) {
      length += key.size() + 1;
    }
    characters_.reserve(length);  // growing would invalidate the pointers
    for (const std::wstring& key : keys) {
      pointers_.push_back(characters_.data() + characters_.size());
      characters_.insert(characters_.end(), key.begin(), key.end());
      characters_.push_back(Character());
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
  std::vector<Character> characters_;
  std::vector<const Character*> pointers_;
};

}  // namespace benchmarks
