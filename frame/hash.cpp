#include "frame/hash.h"

namespace KelmoLibs::Localize {

std::uint64_t HashBytes(std::string_view bytes) noexcept {
  if (bytes.size() < kWordBytes) {
    std::uint64_t word = 0;
    for (const char byte : bytes) {
      word = (word << 8U) | static_cast<unsigned char>(byte);
    }
    return HashWords({word, 0, 0, 0}, bytes.size());
  }
  std::uint64_t hash = bytes.size();
  for (; bytes.size() > kFourWordsBytes; bytes.remove_prefix(kFourWordsBytes)) {
    hash = HashWords(WordsAt(bytes.data(), WordPlaces(kFourWordsBytes)), hash);
  }
  // What is left overlaps what has been mixed, where there is less of it than a word.
  const std::size_t left = std::max(bytes.size(), kWordBytes);
  const char* const from = bytes.data() + bytes.size() - left;
  return HashWords(WordsAt(from, WordPlaces(left)), hash);
}

}  // namespace KelmoLibs::Localize
