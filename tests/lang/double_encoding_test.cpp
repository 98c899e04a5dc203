// Letters that were turned into UTF-8 twice, and real texts that look like them.
#include "lang/unicode/double_encoding.h"

#include <gtest/gtest.h>

#include <string>

#include "lang/unicode/code_page.h"

namespace KelmoLibs::Lang {
namespace {

struct Row {
  const char* name;
  std::string text;
  std::string part;     // empty: nothing is found
  std::string letters;  // what they were
};

TEST(DoubleEncoding, IsFoundAndNotSeenInRealTexts) {
  const Row rows[] = {
      {"German", "fÃ¼r", "Ã¼", "ü"},
      {"a capital at the start", "Ã–ffnen", "Ã–", "Ö"},
      {"French, at the end", "enregistrÃ©", "Ã©", "é"},
      {"Polish", "zamknÄ…Ä‡", "Ä…Ä‡", "ąć"},
      {"Turkish", "KapatÄ±ldÄ±", "Ä±", "ı"},
      {"Romanian", "DeschideÈ›i", "È›", "ț"},
      {"Spanish mark", "Â¿Guardar?", "Â¿", "¿"},
      {"degree", "20 Â°C", "Â°", "°"},
      {"quotation mark", "itâ€™s", "â€™", "’"},
      {"euro", "5 â‚¬", "â‚¬", "€"},
      {"emoji", "ðŸ˜€", "ðŸ˜€", "😀"},
      {"Vietnamese", "Viá»‡t", "á»‡", "ệ"},
      {"Cyrillic in windows-1252", "Ð¤Ð°Ð¹Ð»", "Ð¤Ð°Ð¹Ð»", "Файл"},
      {"Greek", "Î±Ï€ÏŒ", "Î±Ï€ÏŒ", "από"},
      {"Cyrillic in windows-1251", "Р¤Р°Р№Р»", "Р¤Р°Р№Р»", "Файл"},
      {"German in windows-1251", "fГјr", "Гј", "ü"},
      {"number sign in windows-1251", "в„– 5", "в„–", "№"},
      {"plain", "plain text", "", ""},
      {"German, real", "für Äpfel, Öl…, ß", "", ""},
      {"Portuguese, ellipsis behind a capital", "AMANHÃ…", "", ""},
      {"Portuguese, quotation mark behind a capital", "“IRMÔ", "", ""},
      {"French, guillemets with no-break spaces", "«\u00A0préparé\u00A0»", "", ""},
      {"French, letters", "Â, Ê, Î", "", ""},
      {"angstrom squared", "5 Å²", "", ""},
      {"Spanish capital", "ESPAÑ…", "", ""},
      {"Russian, io behind Er", "Рёбра и Сёмга", "", ""},
      {"Russian, guillemet behind Er", "«СССР»", "", ""},
      {"Goethe", "Гёте", "", ""},
      {"Russian, volt", "220 В±5 В·А", "", ""},
      {"Ukrainian", "Рівень, РІК, РІЧКА, Їжа", "", ""},
      {"one Greek letter that fits", "Î±", "", ""},
  };
  for (const Row& row : rows) {
    const std::optional<DoubleEncoded> found = FindDoubleEncoded(row.text);
    EXPECT_EQ(found.has_value(), !row.part.empty()) << row.name;
    if (found) {
      EXPECT_EQ(found->part, row.part) << row.name;
      EXPECT_EQ(found->letters, row.letters) << row.name;
    }
  }
}

// Each letter of the Latin, Greek and Cyrillic alphabets, twice between lower-case letters.
TEST(DoubleEncoding, IsFoundInAllLettersOfEurope) {
  for (char32_t letter = 0xC0; letter < 0x450; ++letter) {
    const bool isLetter = letter < 0x180 || (letter >= 0x391 && letter <= 0x3C9) ||
                          (letter >= 0x410 && letter <= 0x44F);
    if (!isLetter) {
      continue;
    }
    const std::string bytes = {static_cast<char>(0xC0U | (letter >> 6U)),
                               static_cast<char>(0x80U | (letter & 0x3FU))};
    std::string twice;
    for (const char byte : bytes) {
      const char32_t character =
          CharacterOf(CodePage::kWindows1252, byte).value_or(static_cast<unsigned char>(byte));
      twice += Utf8FromCodePage(CodePage::kWindows1252, {&byte, 1});
      if (character < 0xA0) {  // a byte that windows-1252 has no character for
        twice.resize(twice.size() - 3);
        twice += {static_cast<char>(0xC2), byte};
      }
    }
    const std::optional<DoubleEncoded> found = FindDoubleEncoded("a" + twice + twice + "b");
    ASSERT_TRUE(found) << static_cast<unsigned>(letter);
    EXPECT_EQ(found->letters, bytes + bytes);
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
