// The words of one life of the library: what its files hold and what its host asks for.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "tests/support/random_numbers.h"

/// Few words, so that files and host name the same ones. A third of them hold a character that is chosen
/// anew for each life, out of all of Unicode: within the life it then stands in every place, time and again.
class Vocabulary {
 public:
  explicit Vocabulary(RandomNumbers& random);

  RandomNumbers& Random() { return random_; }

  /// Mostly one of this life. In UTF-8, and as wide text.
  std::string Character();
  std::wstring WideCharacter();

  /// An id, a key, a word of a text, in UTF-8.
  std::string Word();

  /// A character: alone, in front of `text`, behind it, on both of its sides, or between two of them.
  std::string Decorated(std::string_view text);

  /// `text` with a small change. May hold what is no character.
  std::wstring Changed(std::wstring text);

  /// A name that a file can have on each system, always the same, without its extension.
  const std::wstring& FileName() const { return fileName_; }

 private:
  RandomNumbers& random_;
  std::array<char32_t, 4> characters_ = {};
  std::wstring fileName_;
};
