// The words of a text, without placeholders, tags and escapes.
#pragma once

#include <cstddef>
#include <string_view>

namespace KelmoLibs::Lang {

struct Word {
  std::string_view letters;  // and the marks on them; a view into the text
  std::string_view before;  // what stands between the word before, or the begin of the text, and it
};

/// Behind a placeholder, tag, escape or entity of `text` that begins at `position`; `position` if
/// none begins there. Precondition: position < text.size().
std::size_t BehindNoWord(std::string_view text, std::size_t position) noexcept;

class WordReader {
 public:
  /// `text` is UTF-8.
  explicit WordReader(std::string_view text) noexcept : text_(text) {}

  /// The next word; false at the end of the text. %s, %(name)s, \n, {name}, ${name}, $name, <tag>
  /// and &entity; are not words.
  bool Next(Word& word) noexcept;

 private:
  std::size_t BehindLetters(std::size_t position) const noexcept;

  std::string_view text_;
  std::size_t position_ = 0;
};

}  // namespace KelmoLibs::Lang
