// Wide text as UTF-8, independent of the library's code.
#pragma once

#include <string>
#include <string_view>

inline std::string EncodeUtf8(char32_t c) {
  const auto byte = [](char32_t value) { return static_cast<char>(value); };
  if (c < 0x80) {
    return {byte(c)};
  }
  if (c < 0x800) {
    return {byte(0xC0 + c / 64), byte(0x80 + c % 64)};
  }
  if (c < 0x10000) {
    return {byte(0xE0 + c / 4096), byte(0x80 + c / 64 % 64), byte(0x80 + c % 64)};
  }
  return {byte(0xF0 + c / 262144), byte(0x80 + c / 4096 % 64), byte(0x80 + c / 64 % 64),
          byte(0x80 + c % 64)};
}

/// `text` may hold surrogate pairs, but no lone surrogate.
inline std::string EncodeUtf8(std::wstring_view text) {
  std::string bytes;
  char32_t high = 0;
  for (const wchar_t unit : text) {
    const auto c = static_cast<char32_t>(unit);
    if (c >= 0xD800 && c < 0xDC00) {
      high = c;
    } else if (c >= 0xDC00 && c < 0xE000) {
      bytes += EncodeUtf8(0x10000 + (high - 0xD800) * 0x400 + (c - 0xDC00));
    } else {
      bytes += EncodeUtf8(c);
    }
  }
  return bytes;
}
