// The rule foreign-letter.
#include <gtest/gtest.h>

#include "tests/lang/text_rule_results.h"

namespace KelmoLibs::Lang {
namespace {

constexpr const char* kSentence = "The matrix is singular.";

void Expect(const TextRow& row) {
  SCOPED_TRACE(row.name);
  EXPECT_EQ(ResultsOf(CheckForeignLetters, row), row.expected);
}

TEST(ForeignLetters, OfOtherLanguagesAreFound) {
  const TextRow rows[] = {
      {"Czech in Polish", "pl", "Check your rights", u8"Zkontrolujte svoje přístupová",
       u8"warning foreign-letter.letter ř"},
      {"Polish in German", "de", "Open the file", u8"To jest błąd",
       u8"warning foreign-letter.letter ł"},
      {"Vietnamese in French", "fr", "Open the file", u8"Hãy mở tập tin",
       u8"warning foreign-letter.letter ậ"},
      {"Ukrainian in Russian", "ru", "Select all", u8"Вид\u0456лити все",
       u8"warning foreign-letter.letter \u0456"},
      {"Russian in Ukrainian", "uk", "Select all", u8"Выделить все",
       u8"warning foreign-letter.letter ы"},
      {"Serbian in Bulgarian", "bg", "Select all", u8"Изабери \u0458едан",
       u8"warning foreign-letter.letter \u0458"},
      {"without a base", "ru", "", u8"Вид\u0456лити все", u8"warning foreign-letter.letter \u0456"},
      {"Norwegian by another code", "nb", "Open the file", u8"To jest błąd",
       u8"warning foreign-letter.letter ł"},
      // Right ones.
      {"name", "de", "by Nikšić", u8"Von Hrvoje Nikšić", ""},
      {"name at the begin", "de", "Šegan wrote it", u8"Šegan hat das geschrieben", ""},
      {"word from another language", "de", "with a coffee", u8"mit dem café dort", ""},
      {"letter of the base", "de", "the word být", u8"das Wort být hier", ""},
      {"letter as a symbol", "de", "angle ř", u8"der Winkel ř hier", ""},
      {"two words", "de", "Czech", u8"čeština (cs)", ""},
      {"a word", "ru", "Ukrainian", u8"Укра\u0457нська", ""},
      {"short word in Cyrillic letters", "ru", "i and all", u8"\u0456 все", ""},
      {"stressed letter", "bg", "Select it", u8"Избери \u045D сега", ""},
      {"unknown language", "xx", "Open the file", u8"To jest błąd", ""},
  };
  for (const TextRow& row : rows) {
    Expect(row);
  }
}

TEST(ForeignLetters, OfOtherScriptsAreFound) {
  const TextRow rows[] = {
      {"Russian in German", "de", kSentence, u8"Матрица вырождена.",
       u8"warning foreign-letter.script Матрица"},
      {"Chinese in German", "de", kSentence, u8"矩阵是奇异的",
       u8"warning foreign-letter.script (all)"},
      {"Arabic in French", "fr", kSentence, u8"المصفوفة", u8"warning foreign-letter.script (all)"},
      {"Chinese in Russian", "ru", kSentence, u8"Матрица 矩阵是奇异的",
       u8"warning foreign-letter.script 矩阵是奇异的"},
      // Right ones.
      {"name of a language", "de", "Chinese (Simplified)", u8"中文（简体）", ""},
      {"script of the base", "de", u8"The word 矩阵是 is Chinese", u8"Das Wort 矩阵是 hier", ""},
      {"Greek letters", "de", "The angle is in degrees", u8"Der Winkel Δφψ", ""},
      {"Cyrillic unit", "de", "Speed is in MB", u8"Tempo in МБ", ""},
      {"without a base", "de", "", u8"Матрица вырождена.", ""},
  };
  for (const TextRow& row : rows) {
    Expect(row);
  }
}

TEST(ForeignLetters, AreAllThatTextsHave) {
  const TextRow rows[] = {
      {"Chinese in Japanese", "ja", "Error", u8"无法写入文件，请检查您的访问权限。",
       "warning foreign-letter.no_kana (all)"},
      {"Japanese", "ja", "Error", u8"剛性マトリックス特異支持条件確認。", ""},
      {"Japanese words", "ja", "Error", u8"浮動小数点例外発生", ""},
      {"few ideographs", "ja", "Error", u8"処理中止。", ""},
      {"message of a service in Russian", "ru", kSentence, "QUERY LENGTH LIMIT EXCEEDED",
       "warning foreign-letter.no_letter (all)"},
      {"French in Japanese", "ja", kSentence, "Le fichier ne va pas",
       "warning foreign-letter.no_letter (all)"},
      {"text of the base", "ru", kSentence, kSentence, ""},
      {"words of the base", "ru", "Copyright (C) 2022 Free Software Foundation",
       "Free Software Foundation 2022 Copyright", ""},
      {"names", "ru", "Your names", "Yuri Myasoedov, Stas Solovey", ""},
      {"addresses", "ru", "The addresses of all authors", "one two three four@example.org", ""},
      {"in Latin letters by its id", "sr-Latn", kSentence, "Jedan dva tri meseca", ""},
      {"of a language in Latin letters", "sw", kSentence, "Tumbo halina thamani", ""},
  };
  for (const TextRow& row : rows) {
    Expect(row);
  }
}

TEST(ForeignLetters, OfTheWrongKeyboardAreFound) {
  const TextRow rows[] = {
      {"Russian", "ru", "Cancel", "Jnvtyf", "warning foreign-letter.layout (all)"},
      {"letters on keys of marks", "ru", "Save", "Cj[hfybnm",
       "warning foreign-letter.layout (all)"},
      {"Ukrainian", "uk", "Open", "Dslrhbnb", "warning foreign-letter.layout (all)"},
      {"accelerator", "ru", "&Cancel", "J&nvtyf", "warning foreign-letter.layout (all)"},
      {"Bulgarian has another layout", "bg", "Cancel", "Jnvtyf", ""},
      {"word with vowels", "ru", "Save", "Midnight Commander", ""},
      {"word of the base", "ru", "Press Ctrl+Shft", "Ctrlx Shft", ""},
      {"word of no vowels on either layout", "ru", "Hex", "Xhtml", ""},
      {"abbreviation", "ru", "Page", "XHTMLS", ""},
      {"short word", "ru", "Hex", "Crtl", ""},
      {"hard sign at the begin", "ru", "Key", "Shrjkt", ""},
      {"name in a program", "ru", "File", "lib_xml.dll", ""},
  };
  for (const TextRow& row : rows) {
    Expect(row);
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
