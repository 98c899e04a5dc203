// The rule decomposed-letter. Marks are escapes.
#include <gtest/gtest.h>

#include "tests/lang/findings_of.h"

namespace KelmoLibs::Lang {
namespace {

std::string Found(const std::string& name, const std::string& bytes, const std::string& base = "") {
  std::vector<MadeUpFile> files = {{name, bytes}};
  if (!base.empty()) {
    files.push_back({"en.txt", base, false});
  }
  return FindingsOf(files, base.empty() ? std::nullopt : std::optional<std::uint32_t>(1),
                    RuleId::kDecomposedLetter, RuleId::kDecomposedLetter);
}

TEST(DecomposedLetters, AreFoundAmongComposedOnes) {
  struct Row {
    const char* name;
    const char* file;
    std::string bytes;
    const char* expected;
  };
  const Row rows[] = {
      {"Latin", "fr.txt", u8"fr\na\tété\nb\te\u0301te\n",
       "fr.txt:3:3 warning decomposed-letter b decomposed-letter.message\n"},
      {"Cyrillic", "ru.txt", u8"ru\na\tмой\nb\tмои\u0306\n",
       "ru.txt:3:5 warning decomposed-letter b decomposed-letter.message\n"},
      {"two marks", "vi.txt", u8"vi\na\tệ\nb\te\u0323\u0302\n",
       "vi.txt:3:3 warning decomposed-letter b decomposed-letter.message\n"},
      {"Korean", "ko.txt", u8"ko\na\t한\nb\t\u1112\u1161\u11AB\n",
       "ko.txt:3:3 warning decomposed-letter b decomposed-letter.message\n"},
      {"Japanese", "ja.txt", u8"ja\na\tガ\nb\tカ\u3099\n",
       "ja.txt:3:3 warning decomposed-letter b decomposed-letter.message\n"},
      {"only the first one of a text", "fr.txt", u8"fr\na\tété\nb\te\u0301te\u0301\n",
       "fr.txt:3:3 warning decomposed-letter b decomposed-letter.message\n"},
      {"whole file", "fr.txt", u8"fr\na\tE\u0301te\nb\te\u0301te\u0301\n", ""},
      {"no composed form", "fr.txt", u8"fr\na\tété\nb\tx\u0301\n", ""},
      {"mark alone", "fr.txt", u8"fr\na\tété\nb\t\u0301\n", ""},
      {"stress", "ru.txt", u8"ru\na\tмой\nb\tзамо\u0301к\n", ""},
      {"Korean letters alone", "ko.txt", u8"ko\na\t한\nb\t\u1112\n", ""},
      {"kana without a voiced form", "ja.txt", u8"ja\na\tガ\nb\tん\u3099\n", ""},
      {"UTF-16", "fr.txt",
       std::string("\xFF\xFE"
                   "f\0r\0\xCC\0",
                   8),
       ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Found(row.file, row.bytes), row.expected);
  }
}

TEST(DecomposedLetters, OfTheBaseAreRight) {
  const std::string text = u8"fr\na\tété\nb\te\u0301\n";
  EXPECT_EQ(Found("fr.txt", text, u8"en\na\tx\nb\tthe letter e\u0301\n"), "");
  EXPECT_NE(Found("fr.txt", text, u8"en\na\tx\nb\tthe letter\n"), "");
  EXPECT_NE(Found("fr.txt", text, u8"en\na\tx\n"), "");
}

}  // namespace
}  // namespace KelmoLibs::Lang
