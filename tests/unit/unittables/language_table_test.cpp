#include "unittables/language_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <set>
#include <string>
#include <vector>

#include "tests/support/allocation_probe.h"
#include "tests/support/encode_utf8.h"
#include "tests/support/invalid_utf8.h"
#include "tests/support/localized_units.h"
#include "tests/support/read_all.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/test_platform.h"

namespace KelmoLibs::Localize {
namespace {

using namespace std::string_literals;

using allocation_probe::CallWithFailingAllocation;
using allocation_probe::Failing;
using allocation_probe::LeakCheck;
using allocation_probe::Outcome;
using Messages = std::vector<std::wstring>;

class LanguageTable : public testing::Test {
 protected:
  std::int32_t Load(const std::wstring& fileName) {
    return LoadLanguageUnitTable(folder_.HostPath(), fileName, table_, messages_);
  }
  std::int32_t WriteAndLoad(const std::wstring& fileName, const std::string& bytes) {
    folder_.Write(fileName, bytes);
    return Load(fileName);
  }
  std::wstring PathOf(const std::wstring& fileName) const {
    return folder_.HostPath() + L'\\' + fileName;
  }
  std::wstring NotFound(const std::wstring& fileName) const {
    return L"EV111. Dictionary file not found or corrupted\nDictionary: " + PathOf(fileName);
  }
  std::wstring BadLine(const std::wstring& line, const std::wstring& fileName) const {
    return L"EV101. Error parse string.\nString: " + line + L"\nDictionary: " + PathOf(fileName);
  }

  const ScratchFolder folder_;
  LocalizedUnitTable table_;
  ErrorList messages_;
};

TEST(LanguageUnitTableName, PutsTheLanguageBetweenItsParts) {
  EXPECT_EQ(LanguageUnitTableName(L"ru"), L"LANG/ru-val.txt");
  EXPECT_EQ(LanguageUnitTableName(L""), L"LANG/-val.txt");
  EXPECT_EQ(LanguageUnitTableName(L"De\\..\\x y"), L"LANG/De\\..\\x y-val.txt");
  EXPECT_EQ(kNeutralUnitTableName, L"lang-val.text");
}

// ---- One file

struct File {
  const char* name;
  std::string bytes;
  std::int32_t status;
  LocalizedUnitTable table;
  Messages badLines;  // each listed as EV101
};

TEST_F(LanguageTable, ReadsEveryFileAsWritten) {
  const std::wstring em = L"\u043C";                      // Cyrillic
  const std::wstring metr = L"\u043C\u0435\u0442\u0440";  // meter
  const std::wstring emoji = sizeof(wchar_t) == 2 ? L"" : L"\U0001F600";
  const File files[] = {
      {"a unit, and its code again",
       "ru\tRussian\n10001\t\xD0\xBC\t\xD0\xBC\xD0\xB5\xD1\x82\xD1\x80\n10001\tm\tmeter\n",
       0,
       {{L"ru", {{10001, {em, metr}}}}},
       {}},
      {"CR LF", "de German\r\n1 m Meter\r\n", 0, {{L"de", {{1, {L"m", L"Meter"}}}}}, {}},
      {"no line end at the end", "de German\n1 m Meter", 0, {{L"de", {{1, {L"m", L"Meter"}}}}}, {}},
      {"only a header", "de German", 0, {{L"de", {}}}, {}},
      {"a header with a comment", "de German // one\n", 0, {{L"de", {}}}, {}},
      {"a name of two words",
       "de German\n10001\tm2\tsquare meter\n",
       0,
       {{L"de", {{10001, {L"m2", L"square meter"}}}}},
       {}},
      {"a name of many words, blanks at its end kept",
       "de German\n1 m a b\tc d \t\n",
       0,
       {{L"de", {{1, {L"m", L"a b\tc d \t"}}}}},
       {}},
      {"two fields", "de German\n1 m\n2 n name\n", 0, {{L"de", {{2, {L"n", L"name"}}}}}, {L"1 m"}},
      {"one field", "de German\n1\n2 n name\n", 0, {{L"de", {{2, {L"n", L"name"}}}}}, {L"1"}},
      {"a comment among the lines",
       "de German\n//comment\n2 n name\n",
       0,
       {{L"de", {{2, {L"n", L"name"}}}}},
       {L"//comment"}},
      {"a comment after a unit",
       "de German\n2 n name // comment\n",
       0,
       {{L"de", {{2, {L"n", L"name "}}}}},
       {}},
      {"a comment that leaves two fields",
       "de German\n2 n // name\n",
       0,
       {{L"de", {}}},
       {L"2 n // name"}},
      {"empty lines", "de German\n\n\r\n1 m Meter\n\n", 0, {{L"de", {{1, {L"m", L"Meter"}}}}}, {}},
      {"a line of blanks is not empty", "de German\n \t\n", 0, {{L"de", {}}}, {L" \t"}},
      {"a line of a CR is not empty", "de German\n\r\r\n", 0, {{L"de", {}}}, {L"\r"}},
      {"a code without digits",
       "de German\nabc m Meter\n",
       0,
       {{L"de", {{0, {L"m", L"Meter"}}}}},
       {}},
      {"codes of every kind, one of them twice",
       "de German\n12abc a A\n-5 b B\n99999999999 c C\n2147483647 d D\n+7 e E\n",
       0,
       {{L"de",
         {{-5, {L"b", L"B"}}, {7, {L"e", L"E"}}, {12, {L"a", L"A"}}, {2147483647, {L"c", L"C"}}}}},
       {}},
      {"an invalid line twice is listed once",
       "de German\n1 m\n1 m\n1  m\n",
       0,
       {{L"de", {}}},
       {L"1 m", L"1  m"}},
      {"control characters are blanks in fields and stay in messages",
       "de German\n1\x01m\x02name\n2\x01m\n",
       0,
       {{L"de", {{1, {L"m", L"name"}}}}},
       {L"2\x01m"}},
      {"a NUL is a blank", "de German\n1\0m\0na\0me\n"s, 0, {{L"de", {{1, {L"m", L"na me"}}}}}, {}},
      {"a character beyond U+FFFF is two blanks on Windows and one character on Linux",
       "de German\n1 m n \xF0\x9F\x98\x80\n",
       0,
       {{L"de", {{1, {L"m", emoji.empty() ? L"n   " : L"n " + emoji}}}}},
       {}},
      {"a byte-order mark is the beginning of the key",
       "\xEF\xBB\xBFru Russian\n1 m M\n",
       0,
       {{L"\uFEFFru", {{1, {L"m", L"M"}}}}},
       {}},
      {"a header between blanks", " \tde\t German\n", 0, {{L"de", {}}}, {}},
      {"an empty file", "", -2, {}, {}},
      {"a header of one field", "de\n1 m Meter\n", -2, {}, {}},
      {"a header of three", "de German x\n1 m Meter\n", -2, {}, {}},
      {"a header with a blank at its end",
       "de German \n1 m M\n",
       0,
       {{L"de", {{1, {L"m", L"M"}}}}},
       {}},
      {"a header that is a comment", "// de German\nde German\n1 m Meter\n", -2, {}, {}},
      {"an empty first line", "\nde German\n", -2, {}, {}},
      {"a first line of blanks", " \t \nde German\n", -2, {}, {}},
  };
  for (const File& file : files) {
    SCOPED_TRACE(file.name);
    table_.clear();
    messages_.Clear();
    for (int repeat = 0; repeat < 2; ++repeat) {  // the second time nothing changes
      EXPECT_EQ(WriteAndLoad(L"x.txt", file.bytes), file.status);
      EXPECT_EQ(table_, file.table);
      Messages expected;
      for (const std::wstring& line : file.badLines) {
        expected.push_back(BadLine(line, L"x.txt"));
      }
      if (file.status != 0) {
        expected = {NotFound(L"x.txt")};
      }
      EXPECT_EQ(ReadAll(messages_), expected);
    }
  }
}

TEST_F(LanguageTable, TheEndOfFileCharacterEndsAFileOnWindowsOnly) {
  EXPECT_EQ(WriteAndLoad(L"x.txt", "de German\n1 m Meter\x1A\n2 n name\n"), 0);
  if (textModeEndsAtControlZ) {
    EXPECT_EQ(table_, (LocalizedUnitTable{{L"de", {{1, {L"m", L"Meter"}}}}}));
  } else {
    EXPECT_EQ(table_,
              (LocalizedUnitTable{{L"de", {{1, {L"m", L"Meter "}}, {2, {L"n", L"name"}}}}}));
  }
  EXPECT_EQ(messages_.Count(), 0);
}

TEST_F(LanguageTable, AMessageHasTheUnchangedLine) {
  EXPECT_EQ(WriteAndLoad(L"x.txt", "de German\n 2\0m\t\n"s), 0);
  ASSERT_EQ(messages_.Count(), 1);
  const std::wstring expected = BadLine(L" 2\0m\t"s, L"x.txt");
  EXPECT_EQ(std::wstring(messages_.At(0), expected.size()), expected);
}

// ---- Invalid UTF-8 ends the file; the characters before it in its line are the last line.

TEST_F(LanguageTable, AnInvalidSequenceTruncatesTheHeader) {
  for (const InvalidUtf8& invalid : kInvalidUtf8) {
    SCOPED_TRACE(invalid.name);
    const std::string rest = std::string(invalid.bytes) + " rest\n1 m Meter\n";
    table_.clear();
    messages_.Clear();
    EXPECT_EQ(WriteAndLoad(L"x.txt", rest), -2);
    EXPECT_EQ(WriteAndLoad(L"x.txt", "de" + rest), -2);
    EXPECT_EQ(WriteAndLoad(L"x.txt", "de " + rest), -2);
    EXPECT_EQ(table_, (LocalizedUnitTable{}));
    EXPECT_EQ(ReadAll(messages_), (Messages{NotFound(L"x.txt")}));
    EXPECT_EQ(WriteAndLoad(L"x.txt", "de Ger" + rest), 0);
    EXPECT_EQ(table_, (LocalizedUnitTable{{L"de", {}}}));
  }
}

TEST_F(LanguageTable, AnInvalidSequenceTruncatesAUnitAndEndsTheFile) {
  const struct {
    const char* line;
    LocalizedUnits units;
    Messages badLines;
  } prefixes[] = {
      {"", {}, {}},
      {"1", {}, {L"1"}},
      {"1 m", {}, {L"1 m"}},
      {"1 m ", {}, {L"1 m "}},
      {"1 m na", {{1, {L"m", L"na"}}}, {}},
      {"1 m name ", {{1, {L"m", L"name "}}}, {}},
  };
  for (const InvalidUtf8& invalid : kInvalidUtf8) {
    for (const auto& prefix : prefixes) {
      SCOPED_TRACE(testing::Message()
                   << invalid.name << " after " << testing::PrintToString(prefix.line));
      table_.clear();
      messages_.Clear();
      EXPECT_EQ(WriteAndLoad(L"x.txt", "de German\n" + std::string(prefix.line) +
                                           std::string(invalid.bytes) + " x\n2 n name\n"),
                0);
      EXPECT_EQ(table_, (LocalizedUnitTable{{L"de", prefix.units}}));
      Messages expected;
      for (const std::wstring& line : prefix.badLines) {
        expected.push_back(BadLine(line, L"x.txt"));
      }
      EXPECT_EQ(ReadAll(messages_), expected);
    }
  }
}

// ---- Missing files

TEST_F(LanguageTable, AMissingFileIsListedOnceAndChangesNothing) {
  table_ = {{L"de", {{1, {L"m", L"Meter"}}}}};
  const LocalizedUnitTable before = table_;
  folder_.Write(L"folder\\de-val.txt", "de German\n");
  for (int repeat = 0; repeat < 2; ++repeat) {
    EXPECT_EQ(Load(L"LANG/de-val.txt"), -2);
    EXPECT_EQ(Load(L"folder"), -2);
  }
  EXPECT_EQ(table_, before);
  EXPECT_EQ(ReadAll(messages_), (Messages{NotFound(L"LANG/de-val.txt"), NotFound(L"folder")}));
}

TEST_F(LanguageTable, OneBackslashJoinsFolderAndName) {
  folder_.Write(L"LANG\\de-val.txt", "de German\n1\n");
  const std::wstring folder = folder_.HostPath();
  EXPECT_EQ(LoadLanguageUnitTable(folder + L"\\", L"LANG/de-val.txt", table_, messages_), 0);
  EXPECT_EQ(LoadLanguageUnitTable(folder, L"LANG/de-val.txt", table_, messages_), 0);
  EXPECT_EQ(LoadLanguageUnitTable(L"", L"no such file", table_, messages_), -2);
  EXPECT_EQ(
      ReadAll(messages_),
      (Messages{
          L"EV101. Error parse string.\nString: 1\nDictionary: " + folder + L"\\\\LANG/de-val.txt",
          L"EV101. Error parse string.\nString: 1\nDictionary: " + folder + L"\\LANG/de-val.txt",
          L"EV111. Dictionary file not found or corrupted\nDictionary: \\no such file"}));
}

// ---- Several files

TEST_F(LanguageTable, AddsLanguagesAndCodesAndReplacesNothing) {
  EXPECT_EQ(WriteAndLoad(L"one.txt", "de German\n1 m Meter\n"), 0);
  EXPECT_EQ(WriteAndLoad(L"two.txt", "ru Russian\n1 r name\n"), 0);
  EXPECT_EQ(WriteAndLoad(L"three.txt", "de other\n1 x other\n2 n new\n"), 0);
  EXPECT_EQ(WriteAndLoad(L"four.txt", "DE German\n1 y other\n"), 0);
  EXPECT_EQ(table_, (LocalizedUnitTable{{L"de", {{1, {L"m", L"Meter"}}, {2, {L"n", L"new"}}}},
                                        {L"ru", {{1, {L"r", L"name"}}}},
                                        {L"DE", {{1, {L"y", L"other"}}}}}));
  EXPECT_EQ(messages_.Count(), 0);
}

TEST_F(LanguageTable, AnInvalidFileChangesNothing) {
  EXPECT_EQ(WriteAndLoad(L"one.txt", "de German\n1 m Meter\n"), 0);
  EXPECT_EQ(WriteAndLoad(L"two.txt", "de\n2 n name\n"), -2);
  EXPECT_EQ(WriteAndLoad(L"three.txt", "de German\n2\n3 o name\n"), 0);
  EXPECT_EQ(table_, (LocalizedUnitTable{{L"de", {{1, {L"m", L"Meter"}}, {3, {L"o", L"name"}}}}}));
  EXPECT_EQ(ReadAll(messages_), (Messages{NotFound(L"two.txt"), BadLine(L"2", L"three.txt")}));
}

// docs/formats.md shows this file.
TEST_F(LanguageTable, TheWorkedExampleLoadsAsDocumented) {
  const std::wstring data = L"" KELMO_SOURCE_FOLDER "/tests/data/unittables";
  EXPECT_EQ(LoadLanguageUnitTable(data, L"worked_example.txt", table_, messages_), 0);
  EXPECT_EQ(table_, (LocalizedUnitTable{{L"fi",
                                         {{20001, {L"m\u00B2", L"neli\u00F6metri"}},
                                          {10002, {L"tuuma", L"tuuma (0,0273 m)"}},
                                          {40002, {L"rad", L"radiaani "}},
                                          {0, {L"%", L"kerroin"}}}}}));
  const std::wstring file = L"\nDictionary: " + data + L"\\worked_example.txt";
  EXPECT_EQ(ReadAll(messages_),
            (Messages{L"EV101. Error parse string.\nString: // kulmat" + file,
                      L"EV101. Error parse string.\nString: 40001\t\u00B0" + file}));
}

TEST_F(LanguageTable, TheTablesOfTheExamplesAreComplete) {
  const std::wstring examples = L"" KELMO_SOURCE_FOLDER "/examples";
  for (const wchar_t* const language : {L"en", L"de", L"ru"}) {
    EXPECT_EQ(LoadLanguageUnitTable(examples, LanguageUnitTableName(language), table_, messages_),
              0);
  }
  EXPECT_EQ(LoadLanguageUnitTable(examples, kNeutralUnitTableName, table_, messages_), 0);
  EXPECT_EQ(messages_.Count(), 0);
  ASSERT_EQ(table_.size(), 4U);
  for (const auto& [language, units] : table_) {
    SCOPED_TRACE(testing::PrintToString(language));
    EXPECT_EQ(units.size(), 9U);
  }
  EXPECT_EQ(table_[L"ru"][20001].symbol, L"\u043C2");
  EXPECT_EQ(table_[L"de"][20001].name, L"Quadratmeter");
  EXPECT_EQ(table_[L"en"][20001].name, L"square meter");
}

// ---- Size

TEST_F(LanguageTable, ALineOfAMillionWordsIsAUnit) {
  std::string line = "1 m";
  std::wstring name;
  for (int i = 0; i < 1'000'000; ++i) {
    line += " w";
    name += L"w ";
  }
  name.pop_back();
  EXPECT_EQ(WriteAndLoad(L"x.txt", "de German\n" + line + "\n2 n name\n"), 0);
  EXPECT_TRUE(table_[L"de"][1].name == name);
  EXPECT_EQ(table_[L"de"][2].name, L"name");
}

TEST_F(LanguageTable, ALineOfTenMegabytesIsListedWhole) {
  const std::string line(10'000'000, 'x');
  EXPECT_EQ(WriteAndLoad(L"x.txt", "de German\n" + line + "\n2 n name\n"), 0);
  ASSERT_EQ(messages_.Count(), 1);
  EXPECT_TRUE(messages_.At(0) == BadLine(std::wstring(line.begin(), line.end()), L"x.txt"));
  EXPECT_EQ(table_[L"de"][2].name, L"name");
}

TEST_F(LanguageTable, AllocatesLittleMoreThanTheFileAndItsWideText) {
  // Words of one letter: views of them would have eight times the size of the file.
  std::string words;
  for (int i = 0; i < 1'000'000; ++i) {
    words += "w ";
  }
  for (const std::string& bytes : {"de German\n1 m " + words, words}) {
    folder_.Write(L"x.txt", bytes);
    messages_.Clear();
    allocation_probe::ResetPeak();
    const std::size_t before = allocation_probe::LiveBytes();
    Load(L"x.txt");
    // The bytes, their wide text, and the stored name.
    EXPECT_LE(allocation_probe::PeakBytes() - before,
              bytes.size() * (1 + 2 * sizeof(wchar_t)) + 100'000);
  }
}

// ---- Memory

// Too long to be stored without an allocation.
const std::wstring kFile = L"a.table.that.needs.memory.of.its.own.txt";
const std::wstring kLanguage = L"a.language.that.needs.memory.of.its.own";
const std::wstring kSymbol = L"a.symbol.that.needs.memory.of.its.own";
const std::wstring kName = L"a name that needs memory of its own";
const std::wstring kShort = L"a.line.without.fields.that.needs.memory.of.its.own";

class LanguageTableWithoutMemory : public LanguageTable {
 protected:
  LanguageTableWithoutMemory() {
    folder_.Write(kFile, EncodeUtf8(kLanguage) + " Language\n1 " + EncodeUtf8(kSymbol) + " " +
                             EncodeUtf8(kName) + "\n" + EncodeUtf8(kShort) + "\n2 " +
                             EncodeUtf8(kSymbol) + " " + EncodeUtf8(kName) + "\n");
  }

  const std::wstring line1_ = L"1 " + kSymbol + L" " + kName;
  const std::wstring line2_ = L"2 " + kSymbol + L" " + kName;
  const LocalizedUnit unit_ = {kSymbol, kName};
  const LocalizedUnitTable whole_ = {{kLanguage, {{1, unit_}, {2, unit_}}}};
  const std::wstring failed_ = L"EL111. Dictionary loading error\nDictionary: " + PathOf(kFile);

  // Finds the failed step by the messages, and checks the status and the table after it.
  const char* FailedStep(std::int32_t status, const LocalizedUnitTable& table,
                         const Messages& messages) const {
    if (messages == Messages{NotFound(kFile)}) {
      EXPECT_EQ(status, -2);
      EXPECT_EQ(table, (LocalizedUnitTable{}));
      return "the header";
    }
    if (messages == Messages{BadLine(line1_, kFile), BadLine(kShort, kFile)}) {
      EXPECT_EQ(status, 0);
      EXPECT_EQ(table, (LocalizedUnitTable{{kLanguage, {{2, unit_}}}}));
      return "the first unit";
    }
    if (messages == Messages{BadLine(kShort, kFile), BadLine(line2_, kFile)}) {
      EXPECT_EQ(status, 0);
      EXPECT_EQ(table, (LocalizedUnitTable{{kLanguage, {{1, unit_}}}}));
      return "the second unit";
    }
    if (messages == Messages{BadLine(kShort, kFile)}) {
      EXPECT_EQ(status, 0);
      EXPECT_EQ(table, whole_);
      return "the line that fails anyway";
    }
    EXPECT_EQ(messages, (Messages{failed_}));
    EXPECT_EQ(status, -1);
    if (table.empty()) {
      return "the load, before the language is added";
    }
    EXPECT_TRUE(table == (LocalizedUnitTable{{kLanguage, {}}}) ||
                table == (LocalizedUnitTable{{kLanguage, {{1, unit_}}}}));
    return "the load, before the short line is listed";
  }
};

TEST_F(LanguageTableWithoutMemory, AFailureConcernsTheHeaderOrOneLineOrTheLoad) {
  const std::wstring folder = folder_.HostPath();
  std::set<std::string> seen;
  std::size_t n = 1;
  for (Outcome outcome = Outcome::kReturned; outcome != Outcome::kNoFailure; ++n) {
    SCOPED_TRACE(testing::Message() << "allocation " << n << " fails");
    const char* failed = nullptr;
    {
      const LeakCheck leakCheck;
      LocalizedUnitTable table;
      ErrorList messages;
      std::int32_t status = 0;
      outcome = CallWithFailingAllocation(
          n, [&] { status = LoadLanguageUnitTable(folder, kFile, table, messages); });
      constexpr std::size_t kPath = 1;
      EXPECT_EQ(outcome == Outcome::kThrew, n == kPath) << "without a path there is no message";
      if (outcome == Outcome::kReturned) {
        failed = FailedStep(status, table, ReadAll(messages));
      }
      EXPECT_EQ(LoadLanguageUnitTable(folder, kFile, table, messages), 0) << "afterwards";
      EXPECT_EQ(table, whole_);
    }
    if (failed != nullptr) {
      seen.insert(failed);
    }
  }
  EXPECT_GE(n, 20U);
  EXPECT_EQ(seen.size(), 6U) << testing::PrintToString(seen);
}

TEST_F(LanguageTableWithoutMemory, ThrowsIfAMessageCannotBeStored) {
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(testing::Message() << "allocation " << n << " and all later ones fail");
    const LeakCheck leakCheck;
    LocalizedUnitTable table;
    ErrorList messages;
    const std::wstring folder = folder_.HostPath();
    const Outcome outcome = CallWithFailingAllocation(
        n, [&] { LoadLanguageUnitTable(folder, kFile, table, messages); }, Failing::kFromThenOn);
    ASSERT_NE(outcome, Outcome::kReturned);
    if (outcome == Outcome::kNoFailure) {
      EXPECT_GE(n, 20U);
      break;
    }
    const Messages listed = ReadAll(messages);
    EXPECT_TRUE(listed.empty() || listed == Messages{BadLine(kShort, kFile)});
  }
}

// With a limit of the allocated bytes. A unit that does not fit is listed like an invalid line. If
// the message does not fit either, the load fails.
TEST_F(LanguageTableWithoutMemory, EachLineIsAUnitOrAMessageUntilTheLoadFails) {
  constexpr std::int32_t kUnits = 60;
  constexpr std::size_t kStep = 501;
  const std::wstring folder = folder_.HostPath();
  std::string bytes = EncodeUtf8(kLanguage) + " Language\n";
  std::vector<std::wstring> lines;
  for (std::int32_t code = 1; code <= kUnits; ++code) {
    lines.push_back(std::to_wstring(code) + L" " + kSymbol + L" " + kName +
                    std::wstring(static_cast<std::size_t>(code % 7), L'n'));
    bytes += EncodeUtf8(lines.back()) + "\n";
  }
  folder_.Write(kFile, bytes);
  const LocalizedUnit older = {L"an older symbol that needs memory",
                               L"and its name, which does too"};
  bool seen[4] = {};  // each status, and an exception
  int changes = 0;
  std::size_t unitCount = 0;
  for (std::size_t more = 0; unitCount < kUnits; more += kStep) {
    SCOPED_TRACE(testing::Message() << more << " bytes");
    ASSERT_LT(more, 1'000'000U) << "the file never fits";
    const LeakCheck leakCheck;
    LocalizedUnitTable table = {{L"older", {{1, older}}}};
    ErrorList messages;
    messages.Append(UnknownDictionaryMessage(L"older"));
    const wchar_t* const olderName = table[L"older"][1].name.c_str();
    const std::size_t maxBytes = allocation_probe::LiveBytes() + more;
    allocation_probe::ResetPeak();
    constexpr std::int32_t kThrew = 1;
    std::int32_t status = kThrew;
    {
      const allocation_probe::LimitBytes limit(more);
      try {
        status = LoadLanguageUnitTable(folder, kFile, table, messages);
      } catch (const std::bad_alloc&) {
        status = kThrew;
      }
    }
    seen[status + 2] = true;
    EXPECT_LE(allocation_probe::PeakBytes(), maxBytes);
    EXPECT_EQ(table[L"older"][1].name.c_str(), olderName);
    EXPECT_EQ(table[L"older"], (LocalizedUnits{{1, older}}));

    const LocalizedUnits units = table[kLanguage];
    Messages expected = {L"EL112. Dictionary not found\nDictionary id: older"};
    if (status == -2) {
      EXPECT_EQ(units, LocalizedUnits{});
      expected.push_back(NotFound(kFile));
    } else {
      // Each line up to the failure is a unit or a message.
      const Messages listed = ReadAll(messages);
      for (std::int32_t code = 1; code <= kUnits; ++code) {
        const std::wstring& line = lines[static_cast<std::size_t>(code) - 1];
        const auto unit = units.find(code);
        if (unit != units.end()) {
          EXPECT_EQ(unit->second.symbol, kSymbol);
          EXPECT_EQ(std::to_wstring(code) + L" " + kSymbol + L" " + unit->second.name, line);
        } else if (status == 0 || (expected.size() < listed.size() &&
                                   listed[expected.size()] == BadLine(line, kFile))) {
          expected.push_back(BadLine(line, kFile));
        } else {
          EXPECT_EQ(units.upper_bound(code), units.end()) << "a unit after the failure";
          break;
        }
      }
      if (status == -1) {
        expected.push_back(failed_);
      }
    }
    EXPECT_EQ(ReadAll(messages), expected);
    changes += units.size() != unitCount ? 1 : 0;
    unitCount = units.size();

    EXPECT_EQ(LoadLanguageUnitTable(folder, kFile, table, messages), 0) << "afterwards";
    EXPECT_EQ(table[kLanguage].size(), static_cast<std::size_t>(kUnits));
  }
  for (const bool status : seen) {
    EXPECT_TRUE(status);
  }
  EXPECT_GE(changes, 10);
}

}  // namespace
}  // namespace KelmoLibs::Localize
