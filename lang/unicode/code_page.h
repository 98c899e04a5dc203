// The 8-bit encodings that editors call "ANSI", "OEM" or "Cyrillic".
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace KelmoLibs::Lang {

/// In the order of kAllCodePages. In each of them, bytes below 0x80 are ASCII.
enum class CodePage : std::uint8_t { kWindows1250, kWindows1251, kWindows1252, kCp866, kKoi8R };

constexpr std::array<CodePage, 5> kAllCodePages = {CodePage::kWindows1250, CodePage::kWindows1251,
                                                   CodePage::kWindows1252, CodePage::kCp866,
                                                   CodePage::kKoi8R};

/// "windows-1252", "cp866", "koi8-r": as a user names it.
std::string_view CodePageName(CodePage page) noexcept;

/// The code page with that name. Case does not count, and "cp1252" is "windows-1252".
std::optional<CodePage> FindCodePage(std::string_view name);

/// The character of `byte`; nothing if the code page has none.
std::optional<char32_t> CharacterOf(CodePage page, char byte) noexcept;

/// The byte of `character`; nothing if the code page has none.
std::optional<char> ByteOf(CodePage page, char32_t character) noexcept;

/// `bytes` as UTF-8. A byte without a character becomes U+FFFD.
std::string Utf8FromCodePage(CodePage page, std::string_view bytes);

}  // namespace KelmoLibs::Lang
