// UTF-8 to wide text, and back. The rules are the library's own, because the standard libraries'
// decoders differ on exactly the inputs that matter (overlong forms, written surrogates, characters
// beyond U+FFFF).
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace KelmoLibs::Localize {

/// Length in bytes of the longest front part of `bytes` that is whole, well-formed characters. Not
/// well-formed are truncated and overlong sequences, surrogates (U+D800 to U+DFFF), anything beyond
/// U+10FFFF and stray bytes.
std::size_t WellFormedUtf8Length(std::string_view bytes) noexcept;

/// How many code units DecodeUtf8 makes of `wellFormed`, which WellFormedUtf8Length must have accepted
/// whole.
std::size_t WideLength(std::string_view wellFormed) noexcept;

/// Writes the characters of `wellFormed` to `text`, `length` code units, which must be its WideLength,
/// and no zero. A character beyond U+FFFF becomes a surrogate pair where wchar_t has 16 bits and one wchar_t where it
/// has 32.
void DecodeUtf8(std::string_view wellFormed, wchar_t* text, std::size_t length) noexcept;

/// The same as a text of its own. Allocates its exact size.
std::wstring DecodeUtf8(std::string_view wellFormed);

/// Writes `text` as UTF-8 to the `size` bytes at `bytes` and returns how many it takes. Nothing, where
/// it takes more, or holds what is no character: half a surrogate pair, or beyond U+10FFFF.
std::optional<std::size_t> WriteUtf8(std::wstring_view text, char* bytes,
                                     std::size_t size) noexcept;

/// Appends `character`, which must not be beyond U+10FFFF, as UTF-8.
void AppendUtf8(char32_t character, std::string& bytes);

/// How `text` and `wellFormed` compare, character by character, without decoding the whole: negative,
/// 0 or positive. Texts in UTF-8 have the same order by their bytes.
int CompareWithUtf8(std::wstring_view text, std::string_view wellFormed) noexcept;

}  // namespace KelmoLibs::Localize
