#include "host/dictionary_bytes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/native_files.h"
#include "tests/host/text_dump.h"
#include "tests/support/invalid_utf8.h"

namespace {

using namespace std::string_literals;
using KelmoLibs::Host::ProblemList;
using KelmoLibs::Host::ReadDictionaryBytes;
using KelmoLibs::Host::ReadingOptions;
using KelmoLibs::Host::TextCollection;
using KelmoLibs::Localize::ControlZEndsText;

constexpr ReadingOptions kStrict;
constexpr ReadingOptions kLenient = {true, false, false};

// Texts and problems of files that are read one after the other, as file 0, 1 and so on.
std::string Read(const std::vector<std::string>& files, const ReadingOptions& options) {
  TextCollection texts;
  ProblemList problems;
  for (std::size_t i = 0; i < files.size(); ++i) {
    ReadDictionaryBytes(files[i], std::to_string(i), options, texts, &problems);
  }
  EXPECT_EQ(problems.Lost(), 0U);
  return Dump(texts) + Dump(problems);
}

struct ReadCase {
  const char* name;
  std::string bytes;
  std::string strict;
  std::string lenient;
};

void ExpectEach(const std::vector<ReadCase>& cases) {
  for (const ReadCase& row : cases) {
    EXPECT_EQ(Read({row.bytes}, kStrict), row.strict) << row.name;
    EXPECT_EQ(Read({row.bytes}, kLenient), row.lenient) << row.name;
  }
}

struct SameCase {
  const char* name;
  std::string bytes;
  std::string expected;
};

void ExpectSame(const std::vector<SameCase>& cases) {
  for (const SameCase& row : cases) {
    EXPECT_EQ(Read({row.bytes}, kStrict), row.expected) << row.name;
    EXPECT_EQ(Read({row.bytes}, kLenient), row.expected) << row.name << ", lenient";
  }
}

TEST(DictionaryBytes, GivesTheLinesOfAFile) {
  ExpectSame({
      {"nothing", "", "203 1 0:0:0 - - -\n"},
      {"an empty line", "\n", "|\n206 1 0:1:1 - - it begins with \"\"\n"},
      {"a header", "en", "en|\n"},
      {"a header with its line end", "en\n", "en|\n"},
      {"a header with a name", "en English  (UK) \nk t\n", "en|English  (UK)\n0:2 k=t\n"},
      {"a header with tabs", "en\t\tEnglish\t\n", "en|English\n"},
      {"a header with blanks only behind the id", "en  \t \n", "en|\n"},
      {"a header with blanks in front of the id", " en\n",
       "|en\n206 1 0:1:1 - - it begins with \"\"\n"},
      {"a last line without its end", "en\nk t", "en|\n0:2 k=t\n"},
      {"empty lines count", "en\n\n\nk t\n\nl u\n", "en|\n0:4 k=t\n0:6 l=u\n"},
      {"a key without a text", "en\nk\nl \n", "en|\n0:2 k=\n0:3 l=\n"},
      {"a text of blanks keeps all but the first", "en\nk   \n", "en|\n0:2 k=  \n"},
      {"the empty key", "en\n t\n", "en|\n0:2 =t\n"},
      {"a tab separates", "en\nk\tt u\n", "en|\n0:2 k=t u\n"},
      {"a zero in key and text", "en\nk\0l t\0u\n"s, "en|\n0:2 k\0l=t\0u\n"s},
      {"a byte-order mark inside", "en\nk \xEF\xBB\xBFt\n", "en|\n0:2 k=\xEF\xBB\xBFt\n"},
  });
}

TEST(DictionaryBytes, TakesCrLfForLf) {
  ExpectSame({
      {"each line", "en\r\nk t\r\n\r\nl u\r\n", "en|\n0:2 k=t\n0:4 l=u\n"},
      {"only the CR in front of the LF", "en\r\r\nk\r\r\n",
       "en\r|\n0:2 k\r=\n206 1 0:1:1 en\r - it begins with \"en\r\"\n"},
      {"a lone CR is no line end", "en\nk\rl t\ru\n", "en|\n0:2 k\rl=t\ru\n"},
      {"a CR at the end of the file stays in a key", "en\nk\r", "en|\n0:2 k\r=\n"},
      {"and is trimmed from a text", "en\nk t\r", "en|\n0:2 k=t\n"},
      {"and makes no name", "en \r", "en|\n"},
      {"a line of one CR", "en\n\r\nk t\n", "en|\n0:3 k=t\n"},
  });
}

TEST(DictionaryBytes, KeepsTheFirstTextOfAKey) {
  ExpectSame({
      {"twice", "en\nk t\nk u\n", "en|\n0:2 k=t\n101 1 0:3:1 en k the text of 0:2 stays\n"},
      {"also an empty one", "en\nk\nk u\n",
       "en|\n0:2 k=\n101 1 0:3:1 en k the text of 0:2 stays\n"},
      {"three times", "en\nk t\nk t\nk t\n",
       "en|\n0:2 k=t\n101 1 0:3:1 en k the text of 0:2 stays\n101 1 0:4:1 en k the text of 0:2 "
       "stays\n"},
      {"case counts", "en\nk t\nK u\n", "en|\n0:2 k=t\n0:3 K=u\n"},
  });
  const std::string both =
      "en|A\n0:2 k=t\n1:3 l=v\nde|C\n2:2 k=w\n101 1 1:2:1 en k the text of 0:2 stays\n";
  EXPECT_EQ(Read({"en A\nk t\n", "en B\nk u\nl v\n", "de C\nk w\n"}, kStrict), both);
}

TEST(DictionaryBytes, StrictStopsAtBytesThatAreNotUtf8AndLenientSkipsThem) {
  ExpectEach({
      {"in a text", "en\nk t\xFFu\nl v\n", "en|\n0:2 k=t\n201 2 0:2:4 en - 7 bytes dropped\n",
       "en|\n0:2 k=tu\n0:3 l=v\n201 2 0:2:4 en - 1 byte dropped\n"},
      {"in a key", "en\nab\xFF t\n", "en|\n0:2 ab=\n201 2 0:2:3 en - 4 bytes dropped\n",
       "en|\n0:2 ab=t\n201 2 0:2:3 en - 1 byte dropped\n"},
      {"in the id", "e\xFFn A\nk t\n",
       "e|\n206 1 0:1:1 e - it begins with \"e\"\n201 2 0:1:2 e - 9 bytes dropped\n",
       "en|A\n0:2 k=t\n201 2 0:1:2 - - 1 byte dropped\n"},
      {"the first byte",
       "\xFF"
       "en\n",
       "201 2 0:1:1 - - 4 bytes dropped\n203 1 0:0:0 - - -\n",
       "en|\n201 2 0:1:1 - - 1 byte dropped\n"},
      {"nothing else", "\xFF", "201 2 0:1:1 - - 1 byte dropped\n203 1 0:0:0 - - -\n",
       "|\n201 2 0:1:1 - - 1 byte dropped\n206 1 0:1:1 - - it begins with \"\"\n"},
      {"the last byte", "en\nk t\xC3", "en|\n0:2 k=t\n201 2 0:2:4 en - 1 byte dropped\n",
       "en|\n0:2 k=t\n201 2 0:2:4 en - 1 byte dropped\n"},
      {"at the start of a line", "en\n\xFFk t\n", "en|\n201 2 0:2:1 en - 5 bytes dropped\n",
       "en|\n0:2 k=t\n201 2 0:2:1 en - 1 byte dropped\n"},
      {"between CR and LF", "en\nk\r\xFF\nl\n", "en|\n0:2 k\r=\n201 2 0:2:3 en - 4 bytes dropped\n",
       "en|\n0:2 k=\n0:3 l=\n201 2 0:2:3 en - 1 byte dropped\n"},
      {"a line of nothing else", "en\n\xFF\xFE\nk t\n", "en|\n201 2 0:2:1 en - 7 bytes dropped\n",
       "en|\n0:3 k=t\n201 2 0:2:1 en - 2 bytes dropped\n"},
      {"several runs in a line", "en\nk \xFFt\xC3\xC3u\xFF\n",
       "en|\n0:2 k=\n201 2 0:2:3 en - 7 bytes dropped\n",
       "en|\n0:2 k=tu\n201 2 0:2:3 en - 1 byte dropped\n201 2 0:2:5 en - 2 bytes dropped\n"
       "201 2 0:2:8 en - 1 byte dropped\n"},
      {"columns are characters", "en\nk \xC3\xA4\xF0\x9F\x98\x80\xFFu\n",
       "en|\n0:2 k=\xC3\xA4\xF0\x9F\x98\x80\n201 2 0:2:5 en - 3 bytes dropped\n",
       "en|\n0:2 k=\xC3\xA4\xF0\x9F\x98\x80u\n201 2 0:2:5 en - 1 byte dropped\n"},
      {"in front of a character of four bytes", "en\nk \xFF\xF0\x9F\x98\x80\n",
       "en|\n0:2 k=\n201 2 0:2:3 en - 6 bytes dropped\n",
       "en|\n0:2 k=\xF0\x9F\x98\x80\n201 2 0:2:3 en - 1 byte dropped\n"},
      {"problems come in the order of their lines", "en\nk t\nk u\nl \xFFv\nl w\n",
       "en|\n0:2 k=t\n0:4 l=\n101 1 0:3:1 en k the text of 0:2 stays\n201 2 0:4:3 en - 7 bytes "
       "dropped\n",
       "en|\n0:2 k=t\n0:4 l=v\n101 1 0:3:1 en k the text of 0:2 stays\n201 2 0:4:3 en - 1 byte "
       "dropped\n"
       "101 1 0:5:1 en l the text of 0:4 stays\n"},
  });
}

TEST(DictionaryBytes, DropsEveryKindOfInvalidUtf8) {
  for (const InvalidUtf8& row : kInvalidUtf8) {
    const std::string bytes(row.bytes);
    const std::string dropped = std::to_string(bytes.size() + 2) + " bytes dropped\n";
    EXPECT_EQ(Read({"en\nk t" + bytes + "u\n"}, kStrict),
              "en|\n0:2 k=t\n201 2 0:2:4 en - " + dropped)
        << row.name;
    // Behind it, everything that is UTF-8 again stays.
    TextCollection texts;
    ProblemList problems;
    ReadDictionaryBytes("en\nk t" + bytes + "\nl v\n", "0", kLenient, texts, &problems);
    ASSERT_EQ(texts.languages.front()->Entries().size(), 2U) << row.name;
    const std::string text(texts.languages.front()->Entries().front()->Text());
    EXPECT_EQ(text.substr(0, 1), "t") << row.name;
    std::size_t kept = text.size() - 1;
    for (const auto& problem : problems.All()) {
      kept += std::stoul(problem.detail);
    }
    EXPECT_EQ(kept, bytes.size()) << row.name << ": each byte is kept or told";
  }
}

TEST(DictionaryBytes, LenientSkipsAByteOrderMark) {
  const std::string mark = "\xEF\xBB\xBF";
  ExpectEach({
      {"a file", mark + "en A\nk t\n", mark + "en|A\n0:2 k=t\n202 2 0:1:1 - - -\n",
       "en|A\n0:2 k=t\n202 0 0:1:1 - - -\n"},
      {"nothing behind it", mark, mark + "|\n202 2 0:1:1 - - -\n",
       "202 0 0:1:1 - - -\n203 1 0:0:0 - - -\n"},
      {"only the first one", mark + mark + "en\n", mark + mark + "en|\n202 2 0:1:1 - - -\n",
       mark + "en|\n202 0 0:1:1 - - -\n"},
      {"a part of one",
       "\xEF\xBB"
       "en\n",
       "201 2 0:1:1 - - 5 bytes dropped\n203 1 0:0:0 - - -\n",
       "en|\n201 2 0:1:1 - - 2 bytes dropped\n"},
      {"columns count what people see", mark + "e\xFFn\n",
       mark + "e|\n202 2 0:1:1 - - -\n201 2 0:1:3 \xEF\xBB\xBF"
              "e - 3 bytes dropped\n",
       "en|\n202 0 0:1:1 - - -\n201 2 0:1:2 - - 1 byte dropped\n"},
  });
}

TEST(DictionaryBytes, LenientReadsABackslashAndAnNAsALineBreak) {
  const std::vector<ReadCase> cases = {
      {"one", "en\nk a\\nb\n", "en|\n0:2 k=a\\nb\n",
       "en|\n0:2 k=a\nb\n205 0 0:2:0 en k 1 line break\n"},
      {"several", "en\nk \\n\\n\n", "en|\n0:2 k=\\n\\n\n",
       "en|\n0:2 k=\n\n\n205 0 0:2:0 en k 2 line breaks\n"},
      {"in two texts", "en\nk a\\nb\nl c\\nd\n", "en|\n0:2 k=a\\nb\n0:3 l=c\\nd\n",
       "en|\n0:2 k=a\nb\n0:3 l=c\nd\n205 0 0:2:0 en k 1 line break\n"
       "205 0 0:3:0 en l 1 line break\n"},
      {"behind a backslash", "en\nk a\\\\nb\n", "en|\n0:2 k=a\\\\nb\n",
       "en|\n0:2 k=a\\\nb\n205 0 0:2:0 en k 1 line break\n"},
      {"not in a key", "en\na\\nb t\n", "en|\n0:2 a\\nb=t\n", "en|\n0:2 a\\nb=t\n"},
      {"not in a header", "en c\\nd\n", "en|c\\nd\n", "en|c\\nd\n"},
      {"not a capital letter, not a backslash at the end", "en\nk \\N\\\n", "en|\n0:2 k=\\N\\\n",
       "en|\n0:2 k=\\N\\\n"},
      {"a repeated key tells only that", "en\nk t\nk \\n\n",
       "en|\n0:2 k=t\n101 1 0:3:1 en k the text of 0:2 stays\n",
       "en|\n0:2 k=t\n101 1 0:3:1 en k the text of 0:2 stays\n"},
      {"not across bytes that are skipped: they are gone", "en\nk a\\\xFFnb\n",
       "en|\n0:2 k=a\\\n201 2 0:2:5 en - 4 bytes dropped\n",
       "en|\n0:2 k=a\nb\n201 2 0:2:5 en - 1 byte dropped\n205 0 0:2:0 en k 1 line break\n"},
  };
  ExpectEach(cases);
}

TEST(DictionaryBytes, ReadsLineBreaksThatAreAskedForWithoutAProblem) {
  ReadingOptions strict;
  strict.readsLineBreaks = true;
  ReadingOptions lenient = kLenient;
  lenient.readsLineBreaks = true;
  const std::vector<ReadCase> cases = {
      {"one", "en\nk a\\nb\n", "en|\n0:2 k=a\nb\n", "en|\n0:2 k=a\nb\n"},
      {"several", "en\nk \\n\\n\n", "en|\n0:2 k=\n\n\n", "en|\n0:2 k=\n\n\n"},
      {"not in a key", "en\na\\nb t\n", "en|\n0:2 a\\nb=t\n", "en|\n0:2 a\\nb=t\n"},
      {"not in a header", "en c\\nd\n", "en|c\\nd\n", "en|c\\nd\n"},
      {"a repeated key is told", "en\nk t\nk \\n\n",
       "en|\n0:2 k=t\n101 1 0:3:1 en k the text of 0:2 stays\n",
       "en|\n0:2 k=t\n101 1 0:3:1 en k the text of 0:2 stays\n"},
      {"bytes that are not UTF-8 are dropped as without it",
       "en\nk a\\n\xFF"
       "b\n",
       "en|\n0:2 k=a\n\n201 2 0:2:6 en - 3 bytes dropped\n",
       "en|\n0:2 k=a\nb\n201 2 0:2:6 en - 1 byte dropped\n"},
      {"a byte-order mark is skipped only by a lenient load",
       "\xEF\xBB\xBF"
       "en\nk \\n\n",
       "\xEF\xBB\xBF"
       "en|\n0:2 k=\n\n202 2 0:1:1 - - -\n",
       "en|\n0:2 k=\n\n202 0 0:1:1 - - -\n"},
  };
  for (const ReadCase& row : cases) {
    EXPECT_EQ(Read({row.bytes}, strict), row.strict) << row.name;
    EXPECT_EQ(Read({row.bytes}, lenient), row.lenient) << row.name << ", lenient";
  }
}

TEST(DictionaryBytes, ControlZEndsTheTextOnWindows) {
  const std::vector<SameCase> windows = {
      {"at the end", "en\nk t\n\x1A", "en|\n0:2 k=t\n204 0 0:3:1 en - 0 bytes dropped\n"},
      {"in a text", "en\nk t\x1Au\nl v\n", "en|\n0:2 k=t\n204 2 0:2:4 en - 6 bytes dropped\n"},
      {"alone", "\x1A", "204 0 0:1:1 - - 0 bytes dropped\n203 1 0:0:0 - - -\n"},
      {"twice", "en\n\x1A\x1A", "en|\n204 2 0:2:1 en - 1 byte dropped\n"},
      {"behind a CR", "en\nk\r\x1A\n", "en|\n0:2 k\r=\n204 2 0:2:3 en - 1 byte dropped\n"},
      {"in front of bytes that are not UTF-8", "en\nk t\x1A\xFF\n",
       "en|\n0:2 k=t\n204 2 0:2:4 en - 2 bytes dropped\n"},
  };
  const std::vector<SameCase> elsewhere = {
      {"at the end", "en\nk t\n\x1A", "en|\n0:2 k=t\n0:3 \x1A=\n"},
      {"in a text", "en\nk t\x1Au\nl v\n", "en|\n0:2 k=t\x1Au\n0:3 l=v\n"},
  };
  ExpectSame(ControlZEndsText() ? windows : elsewhere);
  const std::vector<ReadCase> windowsWithFaults = {
      {"behind bytes that are not UTF-8", "en\nk \xFF\xA4t\x1A\nl\n",
       "en|\n0:2 k=\n201 2 0:2:3 en - 7 bytes dropped\n",
       "en|\n0:2 k=t\n201 2 0:2:3 en - 2 bytes dropped\n204 2 0:2:6 en - 3 bytes dropped\n"},
  };
  const std::vector<ReadCase> elsewhereWithFaults = {
      {"behind bytes that are not UTF-8", "en\nk \xFF\xA4t\x1A\nl\n",
       "en|\n0:2 k=\n201 2 0:2:3 en - 7 bytes dropped\n",
       "en|\n0:2 k=t\x1A\n0:3 l=\n201 2 0:2:3 en - 2 bytes dropped\n"},
  };
  ExpectEach(ControlZEndsText() ? windowsWithFaults : elsewhereWithFaults);
}

TEST(DictionaryBytes, NeedsNoListOfProblems) {
  for (const ReadingOptions& options : {kStrict, kLenient}) {
    TextCollection texts;
    ReadDictionaryBytes(
        "\xEF\xBB\xBF"
        "en\nk a\\n\nk u\nl \xFF\n\x1A",
        "f", options, texts, nullptr);
    EXPECT_EQ(texts.languages.size(), 1U);
    EXPECT_GE(texts.languages.front()->Entries().size(), 2U);
  }
}

TEST(DictionaryBytes, TellsAFirstLineThatDoesNotBeginWithTheIdOfALanguage) {
  struct Case {
    const char* id;
    bool isId;
  };
  for (const Case& row : {Case{"de", true},
                          Case{"gsw", true},
                          Case{"de-AT", true},
                          Case{"sr_Latn_RS", true},
                          Case{"es-419", true},
                          Case{"zh-Hant-TW", true},
                          Case{"DE", true},
                          Case{"d", false},
                          Case{"This", false},
                          Case{"deutsch", false},
                          Case{"d1", false},
                          Case{"de-", false},
                          Case{"-de", false},
                          Case{"de--AT", false},
                          Case{"de.UTF-8", false},
                          Case{"de-abcdefghi", false},
                          Case{"de-abcdefgh", true},
                          Case{"d{", false},
                          Case{"d@", false},
                          Case{"d[", false},
                          Case{"d`", false},
                          Case{"az-AZ-09", true},
                          Case{"de-:", false},
                          Case{"de-/", false},
                          Case{"abc", true},
                          Case{"abcd", false},
                          Case{"de_", false},
                          Case{"de-12345678-1", true},
                          Case{"de-123456789-1", false},
                          Case{"\u00E4\u00F6", false},
                          Case{"menu.file", false}}) {
    const std::string id = row.id;
    const std::string told = "206 1 0:1:1 " + id + " - it begins with \"" + id + "\"\n";
    EXPECT_EQ(Read({id + " name\nk t\n"}, kStrict),
              id + "|name\n0:2 k=t\n" + (row.isId ? "" : told));
  }
}

TEST(DictionaryBytes, TakesTheFirstNameOfALanguage) {
  EXPECT_EQ(Read({"de\nk t\n", "de  \n", "de Deutsch\n", "de German\n"}, kStrict),
            "de|Deutsch\n0:2 k=t\n");
}

TEST(DictionaryBytes, LetsOtherFilesRepeatTheKeysOfAnOverride) {
  ReadingOptions override;
  override.isOverride = true;
  TextCollection texts;
  ProblemList problems;
  ReadDictionaryBytes("en\nk own\nk again\n", "own", override, texts, &problems);
  ReadDictionaryBytes("en\nk t\nl t\nl u\n", "1", {}, texts, &problems);
  std::vector<std::string> lines;
  for (const auto& problem : problems.All()) {
    lines.push_back(Print(problem));
  }
  EXPECT_EQ(lines, (std::vector<std::string>{
                       "own:3:1: warning: EL101. Key already declared. (the text of own:2 stays) "
                       "(key \"k\") (language \"en\")",
                       "1:4:1: warning: EL101. Key already declared. (the text of 1:3 stays) (key "
                       "\"l\") (language \"en\")"}));
  EXPECT_EQ(texts.languages[0]->Entries()[0]->Text(), "own");
}

TEST(DictionaryBytes, AnOverrideDoesNotChangeTheMenu) {
  constexpr bool kOwn = true;
  constexpr bool kProgram = false;
  struct File {
    bool isOverride;
    const char* header;
  };
  struct Case {
    const char* name;
    std::vector<File> files;
    const char* menu;
  };
  const std::vector<Case> cases = {
      {"of the second language",
       {{kOwn, "de Meins"}, {kProgram, "en English"}, {kProgram, "de Deutsch"}},
       "en|English\nde|Deutsch\n"},
      {"of all languages, in another order",
       {{kOwn, "de D"}, {kOwn, "en E"}, {kProgram, "en English"}, {kProgram, "de Deutsch"}},
       "en|English\nde|Deutsch\n"},
      {"behind the program", {{kProgram, "en English"}, {kOwn, "en Mine"}}, "en|English\n"},
      {"gives no name to a language of the program",
       {{kOwn, "en Mine"}, {kProgram, "en"}, {kOwn, "en Mine too"}},
       "en|\n"},
      {"between two files of the program, of which the second has the name",
       {{kProgram, "en"}, {kOwn, "en Mine"}, {kProgram, "en English"}, {kProgram, "en American"}},
       "en|English\n"},
      {"a language that only overrides have is behind the others",
       {{kOwn, "fr Fran\u00E7ais"}, {kProgram, "en English"}, {kProgram, "de Deutsch"}},
       "en|English\nde|Deutsch\nfr|Fran\u00E7ais\n"},
      {"several of them stay in their order",
       {{kOwn, "fr F"}, {kProgram, "en E"}, {kOwn, "it I"}, {kProgram, "de D"}, {kOwn, "cs C"}},
       "en|E\nde|D\nfr|F\nit|I\ncs|C\n"},
      {"also if the program has one between them",
       {{kOwn, "fr F"}, {kOwn, "de Meins"}, {kOwn, "it I"}, {kProgram, "de Deutsch"}},
       "de|Deutsch\nfr|F\nit|I\n"},
      {"the first name of the overrides",
       {{kOwn, "fr"}, {kOwn, "fr F"}, {kOwn, "fr G"}, {kProgram, "en E"}},
       "en|E\nfr|F\n"},
      {"overrides alone", {{kOwn, "de D"}, {kOwn, "en E"}, {kOwn, "de"}}, "de|D\nen|E\n"},
  };
  for (const Case& row : cases) {
    TextCollection texts;
    for (const File& file : row.files) {
      ReadingOptions options;
      options.isOverride = file.isOverride;
      ReadDictionaryBytes(file.header, "f", options, texts, nullptr);
    }
    EXPECT_EQ(Dump(texts), row.menu) << row.name;
  }
}

// With room for only one more, each file would copy what all earlier ones have added.
TEST(DictionaryBytes, RarelyMovesTheListsOfFilesAndLanguages) {
  TextCollection texts;
  std::size_t moves = 0;
  for (int i = 0; i < 1000; ++i) {
    const std::size_t capacities = texts.files.capacity() + texts.languages.capacity();
    ReadDictionaryBytes("l" + std::to_string(i) + "\nk t\n", "f", kStrict, texts, nullptr);
    moves += texts.files.capacity() + texts.languages.capacity() != capacities ? 1U : 0U;
  }
  EXPECT_EQ(texts.files.size(), 1000U);
  EXPECT_LT(moves, 20U);
}

// More entries than the table's first capacity, and than the estimate says.
TEST(DictionaryBytes, ReadsManyEntriesInTheOrderOfTheFile) {
  constexpr int kEntries = 20000;
  std::string bytes = "en\n";
  for (int i = 0; i < kEntries; ++i) {
    bytes += "key" + std::to_string(i) + ' ' + std::string(i < 100 ? 300 : 1, 'x') + '\n';
  }
  TextCollection texts;
  ReadDictionaryBytes(bytes, "f", kStrict, texts, nullptr);
  const auto& entries = texts.languages.front()->Entries();
  ASSERT_EQ(entries.size(), static_cast<std::size_t>(kEntries));
  for (int i = 0; i < kEntries; ++i) {
    const std::string key = "key" + std::to_string(i);
    ASSERT_EQ(entries[static_cast<std::size_t>(i)]->Key(), key);
    ASSERT_EQ(texts.languages.front()->Find(KelmoLibs::Host::KeyBytes(key)),
              entries[static_cast<std::size_t>(i)]);
  }
}

}  // namespace
