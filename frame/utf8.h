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

/// The characters of `wellFormed`, which WellFormedUtf8Length must have accepted whole. A character
/// beyond U+FFFF becomes a surrogate pair where wchar_t has 16 bits and one wchar_t where it
/// has 32. Allocates the result's exact size.
std::wstring DecodeUtf8(std::string_view wellFormed);

/// Appends `character`, which must not be beyond U+10FFFF, as UTF-8.
void AppendUtf8(char32_t character, std::string& bytes);

/// How `text` and DecodeUtf8(wellFormed) compare, code unit by code unit: negative, 0 or positive,
/// as std::wstring::compare gives it, without decoding the whole.
int CompareWithUtf8(std::wstring_view text, std::string_view wellFormed) noexcept;

}  // namespace KelmoLibs::Localize
