// What the tool says that the library reads of a dictionary file.
#include "lang/reading/dictionary_file.h"

#include <gtest/gtest.h>

#include <string>

namespace KelmoLibs::Lang {
namespace {

std::string Entries(const std::vector<Entry>& entries) {
  std::string text;
  for (const Entry& entry : entries) {
    text += '(';
    text += entry.key;
    text += '=';
    text += entry.text;
    text += ')';
  }
  return text;
}

struct Row {
  const char* name;
  std::string bytes;
  std::string id;
  std::string entries;
  std::string lostEntries;
};

TEST(DictionaryFile, ReadsWhatTheLibraryReads) {
  const Row rows[] = {
      {"LF", "de Deutsch\na b\n\nc\td e \n", "de", "(a=b)(c=d e)", ""},
      {"CR LF", "de\r\na b\r\n\r\nc d\r\n", "de", "(a=b)(c=d)", ""},
      {"a byte that is not UTF-8 ends the file in the middle of its line", "de\na b\xE9 c\nd e\n",
       "de", "(a=b)", "(d=e)"},
      {"0x1A ends the file", "de\na b\x1A\nd e\n", "de", "(a=b)", "(d=e)"},
      {"CR as line end makes one line", "de\ra b\rc d\r", "de\ra", "", "(a=b)(c=d)"},
      {"UTF-16 is not read",
       std::string("\xFF\xFE"
                   "d\0e\0\n\0a\0 \0b\0",
                   14),
       "", "", "(a=b)"},
      {"two CRs before the LF: one stays, and is trimmed", "de\r\r\na b\r\r\nc\r\r\n", "de\r",
       "(a=b)(c\r=)", ""},
      {"no LF at the end", "de\na b", "de", "(a=b)", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const DictionaryFile file("de.txt", "de.txt", row.bytes);
    EXPECT_EQ(file.Id(), row.id);
    EXPECT_EQ(Entries(file.Entries()), row.entries);
    EXPECT_EQ(Entries(file.LostEntries()), row.lostEntries);
  }
}

TEST(DictionaryFile, GivesEmptyTextsAPlace) {
  const DictionaryFile file("de.txt", "de.txt", "de\nkey\n\xFFlost\nlast");
  const char* const bytes = file.Source().Bytes().data();
  EXPECT_EQ(file.DisplayName().data(), bytes + 2);
  EXPECT_EQ(file.Entries().at(0).text.data(), bytes + 6);
  EXPECT_EQ(file.LostEntries().at(0).text.data(), bytes + 17);
}

}  // namespace
}  // namespace KelmoLibs::Lang
