// UTF-8 to wide text, and back. The rules are the library's own, because the standard libraries'
// decoders differ on exactly the inputs that matter (overlong forms, written surrogates, characters
// beyond U+FFFF).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace KelmoLibs::Localize {

/// Length in bytes of the longest front part of `bytes` that is whole, well-formed characters. Not
/// well-formed are truncated and overlong sequences, surrogates (U+D800 to U+DFFF), anything beyond
/// U+10FFFF and stray bytes.
std::size_t WellFormedUtf8Length(std::string_view bytes) noexcept;

/// How many code units DecodeUtf8 makes of `wellFormed`.
std::size_t WideLength(std::string_view wellFormed) noexcept;

/// Writes the characters of `wellFormed`, which WellFormedUtf8Length must have accepted whole, to `text`, and
/// returns where they end. There must be room for one code unit for each byte, and one more: the place behind the
/// characters is written too, and means nothing. A character beyond U+FFFF becomes a surrogate pair where wchar_t has
/// 16 bits and one wchar_t where it has 32.
wchar_t* DecodeUtf8(std::string_view wellFormed, wchar_t* text) noexcept;

/// The same as a text of its own.
std::wstring DecodeUtf8(std::string_view wellFormed);

/// Appends `character`, which must not be beyond U+10FFFF, as UTF-8.
void AppendUtf8(char32_t character, std::string& bytes);

}  // namespace KelmoLibs::Localize
