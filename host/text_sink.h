// Where a text is written: a buffer of the caller, which may be too small.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "text/utf8_characters.h"

namespace KelmoLibs::Host {

/// Writes at most `capacity` bytes, the zero at the end included, and never a part of a character.
/// What comes behind the first character that has no room is only counted.
class TextSink {
 public:
  /// `buffer` may be null if `capacity` is 0.
  TextSink(char* buffer, std::size_t capacity) noexcept
      : begin_(buffer),
        next_(buffer),
        hasZero_(capacity != 0),
        room_(capacity - (hasZero_ ? 1 : 0)) {}

  /// Whether nothing can be written, not even the zero: the caller asks for the size.
  bool OnlyMeasures() const noexcept { return !hasZero_; }

  /// Precondition: `text` is UTF-8.
  void Append(std::string_view text) noexcept {
    if (text.size() <= room_) {
      next_ = std::copy(text.begin(), text.end(), next_);
      room_ -= text.size();
    } else {
      Cut(text);
    }
  }

  /// Writes the zero. Returns the size of the whole text without it.
  std::size_t Finish() noexcept {
    if (hasZero_) {
      *next_ = '\0';
    }
    return static_cast<std::size_t>(next_ - begin_) + lost_;
  }

 private:
  void Cut(std::string_view text) noexcept {
    std::size_t size = room_;
    while (size > 0 && Localize::IsContinuation(text[size])) {
      --size;
    }
    next_ = std::copy_n(text.begin(), size, next_);
    lost_ += text.size() - size;
    room_ = 0;
  }

  char* begin_;
  char* next_;
  bool hasZero_;
  std::size_t room_;  // without the zero
  std::size_t lost_ = 0;
};

}  // namespace KelmoLibs::Host
