// Conversion between UTF-8 and wide text. The library does not use the decoders of the standard
// libraries, because these differ in overlong sequences, encoded surrogates and characters beyond
// U+FFFF.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace KelmoLibs::Localize {

/// Length in bytes of the longest prefix of `bytes` that consists of complete, well-formed
/// characters. Truncated and overlong sequences, surrogates (U+D800 to U+DFFF), values beyond
/// U+10FFFF and stray bytes are not well-formed.
std::size_t WellFormedUtf8Length(std::string_view bytes) noexcept;

/// Number of wchar_t that DecodeUtf8 makes of `wellFormed`.
std::size_t WideLength(std::string_view wellFormed) noexcept;

/// Decodes `wellFormed` to `text` and returns the end of the characters there. A character beyond
/// U+FFFF becomes a surrogate pair if wchar_t has 16 bits, and one wchar_t if it has 32.
///
/// Preconditions: WellFormedUtf8Length accepts all of `wellFormed`; `text` has room for
/// WideLength(wellFormed) + 1 wchar_t (one more than the bytes is always enough). The wchar_t
/// behind the characters may be overwritten with any value.
wchar_t* DecodeUtf8(std::string_view wellFormed, wchar_t* text) noexcept;

/// The same as a new string.
std::wstring DecodeUtf8(std::string_view wellFormed);

/// Writes `character` as UTF-8 to `bytes`, which has room for four, and returns their number.
/// Precondition: it is not beyond U+10FFFF.
std::size_t EncodeUtf8(char32_t character, char* bytes) noexcept;

/// Appends `character` as UTF-8. Precondition: it is not beyond U+10FFFF.
void AppendUtf8(char32_t character, std::string& bytes);

}  // namespace KelmoLibs::Localize
