// The words of one lifetime of the library, for its files and for the arguments of its host.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "tests/support/random_numbers.h"

/// Few words, so that files and host often use the same ones. A third of them contain a character
/// that is chosen from all of Unicode for each lifetime, and occurs there often and in every
/// position.
class Vocabulary {
 public:
  explicit Vocabulary(RandomNumbers& random);

  RandomNumbers& Random() { return random_; }

  /// Mostly one of this lifetime's characters, in UTF-8 or as wide text.
  std::string Character();
  std::wstring WideCharacter();

  /// An id, key or word of a text, in UTF-8.
  std::string Word();

  /// A character: alone, before or behind `text`, on both sides of it, or between two copies of it.
  std::string Decorated(std::string_view text);

  /// `text` with a small change. May contain invalid characters.
  std::wstring Changed(std::wstring text);

  /// A file name without extension that is valid on every system; the same for the whole lifetime.
  const std::wstring& FileName() const { return fileName_; }

 private:
  RandomNumbers& random_;
  std::array<char32_t, 4> characters_ = {};
  std::wstring fileName_;
};
