// The tables of the code pages, against those of Python.
#include "lang/unicode/code_page.h"

#include <gtest/gtest.h>

#include <array>

namespace KelmoLibs::Lang {
namespace {

// 0: the code page has no such byte.
constexpr std::array<std::array<char32_t, 256>, kAllCodePages.size()> kOfPython = {{
#include "code_pages_of_python.inc"
}};

TEST(CodePage, HasTheCharactersThatPythonHas) {
  for (std::size_t page = 0; page < kAllCodePages.size(); ++page) {
    SCOPED_TRACE(CodePageName(kAllCodePages[page]));
    for (std::size_t byte = 0; byte < 256; ++byte) {
      const std::optional<char32_t> character =
          CharacterOf(kAllCodePages[page], static_cast<char>(byte));
      EXPECT_EQ(character.has_value(), kOfPython[page][byte] != 0 || byte == 0) << byte;
      EXPECT_EQ(character.value_or(0), kOfPython[page][byte]) << byte;
    }
  }
}

TEST(CodePage, FindsTheByteOfACharacter) {
  for (const CodePage page : kAllCodePages) {
    for (int byte = 0; byte < 256; ++byte) {
      if (const auto character = CharacterOf(page, static_cast<char>(byte))) {
        EXPECT_EQ(ByteOf(page, *character), static_cast<char>(byte));
      }
    }
    EXPECT_EQ(ByteOf(page, 0x4E2D), std::nullopt);
  }
}

TEST(CodePage, TranslatesToUtf8) {
  EXPECT_EQ(Utf8FromCodePage(CodePage::kWindows1252, "caf\xE9 \x81"), "caf\u00E9 \uFFFD");
}

TEST(CodePage, IsFoundByItsNames) {
  for (const CodePage page : kAllCodePages) {
    EXPECT_EQ(FindCodePage(CodePageName(page)), page);
  }
  EXPECT_EQ(FindCodePage("CP1251"), CodePage::kWindows1251);
  EXPECT_EQ(FindCodePage("Windows-1252"), CodePage::kWindows1252);
  EXPECT_EQ(FindCodePage("KOI8-R"), CodePage::kKoi8R);
  for (const char* const name : {"", "cp", "cp125", "windows", "1252", "latin1", "utf-8"}) {
    EXPECT_EQ(FindCodePage(name), std::nullopt) << name;
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
