// Files in UTF-16, which some editors call "Unicode".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace KelmoLibs::Lang {

enum class Utf16 : std::uint8_t { kNo, kLittleEndian, kBigEndian };

/// The byte order of the byte-order mark that `bytes` begin with; kNo if they do not.
Utf16 Utf16Mark(std::string_view bytes) noexcept;

/// Whether `bytes` are UTF-16: they begin with its byte-order mark, or most of the first ones come
/// in pairs of a character and a zero.
Utf16 FindUtf16(std::string_view bytes) noexcept;

/// Translates UTF-16, without its byte-order mark, to UTF-8. Half a surrogate pair becomes U+FFFD,
/// and so does a single byte at the end.
std::string Utf8FromUtf16(std::string_view bytes, bool isBigEndian);

}  // namespace KelmoLibs::Lang
