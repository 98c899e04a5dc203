// Keys that a host asks for, in the form in which dictionaries hold keys: UTF-8.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "frame/ascii_word.h"
#include "frame/hash.h"

namespace KelmoLibs::Localize {

/// Most keys: 8 to 32 characters, all ASCII. Each step is the same for all of them, so that the
/// processor need not guess how long a key is.
class ShortAsciiKey {
 public:
  static constexpr bool MayBe(std::wstring_view text) noexcept {
    return WordPlaces::Cover(text.size());
  }

  /// Of a text that MayBe one.
  explicit ShortAsciiKey(std::wstring_view text) noexcept : length_(text.size()) {
    const WordPlaces places(length_);
    AsciiWords ascii;
    words_ = {ascii.At(text.data()), ascii.At(text.data() + places.second),
              ascii.At(text.data() + places.third), ascii.At(text.data() + places.last)};
    isAscii_ = ascii.AreAll();
  }

  /// False: it is none after all.
  bool IsAscii() const noexcept { return isAscii_; }

  /// HashBytes of the key's bytes.
  std::uint64_t Hash() const noexcept { return HashWords(words_, length_); }

  bool Is(std::string_view bytes) const noexcept {
    return bytes.size() == length_ && AreSame(words_, WordsAt(bytes.data(), WordPlaces(length_)));
  }

 private:
  std::size_t length_;
  FourWords words_;
  bool isAscii_;
};

/// Any key.
class AnyKey {
 public:
  /// Keys of more bytes are not hashed: a host's key needs no more memory than this.
  static constexpr std::size_t kMostBytes = 256;

  explicit AnyKey(std::wstring_view text) noexcept;

  /// False of a key that is longer, and of one that no file can have: half a surrogate pair, or what
  /// is no character.
  bool IsHashed() const noexcept { return isHashed_; }

  /// Where IsHashed(), HashBytes of the key's bytes; else another hash of it.
  std::uint64_t Hash() const noexcept { return hash_; }

  /// Of a hashed key.
  bool Is(std::string_view bytes) const noexcept {
    return bytes == std::string_view(bytes_.data(), length_);
  }

 private:
  bool isHashed_;
  std::size_t length_;
  std::uint64_t hash_;
  std::array<char, kMostBytes> bytes_;
};

}  // namespace KelmoLibs::Localize
