// The built library through its exports only. Each test loads and unloads the library.

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "tests/support/host_test.h"
#include "tests/support/loaded_units.h"
#include "tests/support/test_platform.h"
#include "tests/support/unit_rows.h"

namespace {

using namespace std::string_literals;

class EndToEnd : public HostTest {};

// ---- Loading

// The dictionaries shown in the pages.
std::wstring PageDictionaries() { return L"" KELMO_SOURCE_FOLDER "/tests/data/dictionary"; }

TEST_F(EndToEnd, TheWorkedExampleLoadsAsDocumented) {
  const std::wstring folder = PageDictionaries();
  const std::wstring duplicate = L"EL101. Key already declared.\nKey: ";
  const std::wstring file = L"\nDictionary: " + folder + L"\\worked_example.txt";
  EXPECT_EQ(host_.LoadDictionary(folder.c_str(), L"worked_example.txt"), 2);
  EXPECT_EQ(ReadMessages(), (Messages{duplicate + L"#" + file, duplicate + L"pump.title" + file}));
  EXPECT_EQ(Text(L"#"), L"Machines");
  EXPECT_EQ(Text(L"pump.title"), L"Pompe de circulation");
  EXPECT_EQ(Text(L"pump.state"), L"En marche : %1 h");
  EXPECT_EQ(Text(L"valve.title"), L"Vanne \u00E0 opercule");
  EXPECT_EQ(Text(L"valve.quote"), L"\"Ferm\u00E9e\" // \u00E0 relire");
  EXPECT_EQ(Text(L"valve.unused"), L"");
  EXPECT_EQ(host_.GetErrorsCount(), 2);
  EXPECT_EQ(host_.UseLanguage(L"fr"), 0);
}

TEST_F(EndToEnd, TheDictionaryOfTheReadmeLoadsAsDocumented) {
  EXPECT_EQ(host_.LoadDictionary(PageDictionaries().c_str(), L"readme.txt"), 0);
  EXPECT_EQ(Text(L"pump.start"), L"Pumpe einschalten");
  EXPECT_EQ(Text(L"pump.stop"), L"Pumpe ausschalten");
  EXPECT_EQ(Text(L"flow.now"), L"Durchfluss %1 m\u00B3/h, Druck %2 bar");
  EXPECT_EQ(host_.GetErrorsCount(), 0);
  EXPECT_EQ(host_.UseLanguage(L"de"), 0);
}

TEST_F(EndToEnd, FilesWithTheSameIdMergeAndTheFirstTextStays) {
  EXPECT_EQ(WriteAndLoad(L"one.txt", "en\na first\nb second\n"), 0);
  EXPECT_EQ(WriteAndLoad(L"two.txt", "en\nb other\nc third\n"), 1);
  EXPECT_EQ(ReadMessages(),
            (Messages{L"EL101. Key already declared.\nKey: b\nDictionary: " + PathOf(L"two.txt")}));
  EXPECT_EQ(Text(L"a"), L"first");
  EXPECT_EQ(Text(L"b"), L"second");
  EXPECT_EQ(Text(L"c"), L"third");
}

TEST_F(EndToEnd, LoadingAFileAgainListsEachKeyOnce) {
  const std::wstring duplicate = L"EL101. Key already declared.\nKey: ";
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\na first\nb second\nc third\n"), 0);
  EXPECT_EQ(Load(L"en.txt"), 3);
  EXPECT_EQ(Load(L"en.txt"), 3);
  EXPECT_EQ(ReadMessages(), (Messages{duplicate + L"a\nDictionary: " + PathOf(L"en.txt"),
                                      duplicate + L"b\nDictionary: " + PathOf(L"en.txt"),
                                      duplicate + L"c\nDictionary: " + PathOf(L"en.txt")}));
}

TEST_F(EndToEnd, AHeaderAloneMakesAnEmptyDictionary) {
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en"), 0);
  ExpectMissing(L"key");  // a missing key, not a missing dictionary: the new one is current
  EXPECT_EQ(host_.UseLanguage(L"en"), 0);
}

TEST_F(EndToEnd, AByteOrderMarkIsPartOfTheId) {
  EXPECT_EQ(WriteAndLoad(L"en.txt",
                         "\xEF\xBB\xBF"
                         "en\nkey text\n"),
            0);
  EXPECT_EQ(Text(L"key"), L"text");
  EXPECT_EQ(host_.UseLanguage(L"en"), -1);
  EXPECT_EQ(host_.UseLanguage(L"\uFEFF"
                              L"en"),
            0);
  EXPECT_EQ(ReadMessages(), (Messages{L"EL112. Dictionary not found\nDictionary id: en"}));
}

TEST_F(EndToEnd, AnEmptyFirstLineDeclaresTheEmptyId) {
  EXPECT_EQ(WriteAndLoad(L"empty_id.txt", "\nkey text\n"), 0);
  EXPECT_EQ(Text(L"key"), L"text");
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nkey other\n"), 0);
  EXPECT_EQ(Text(L"key"), L"other");
  EXPECT_EQ(host_.UseLanguage(L""), 0);
  EXPECT_EQ(Text(L"key"), L"text");
  EXPECT_EQ(host_.GetErrorsCount(), 0);
}

TEST_F(EndToEnd, AnEmptyFileChangesNothing) {
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nkey text\n"), 0);
  EXPECT_EQ(WriteAndLoad(L"empty.txt", ""), 0);
  EXPECT_EQ(WriteAndLoad(L"fault.txt",
                         "\x80"
                         "de\nkey Text\n"),
            0);
  EXPECT_EQ(Text(L"key"), L"text");
  EXPECT_EQ(host_.GetErrorsCount(), 0);
}

TEST_F(EndToEnd, BlankLinesAreEntriesWithTheEmptyKey) {
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\n  \n   \n word\n"), 1);
  EXPECT_EQ(Text(L""), L" ");
  EXPECT_EQ(ReadMessages(),
            (Messages{L"EL101. Key already declared.\nKey: \nDictionary: " + PathOf(L"en.txt")}));
}

TEST_F(EndToEnd, TextsKeepEveryCharacterButTheBlanksAroundThem) {
  EXPECT_EQ(WriteAndLoad(L"en.txt",
                         "en\n"
                         "one_tab\t\n"
                         "three_spaces   \n"
                         " a word without a key\n"
                         "backslash a\\nb\n"
                         "cr a\rb\r\n"
                         "wide \xF0\x9F\x98\x80\n"
                         "last_bmp \xEF\xBF\xBF!\n"),
            0);
  EXPECT_EQ(Text(L"one_tab"), L"");
  EXPECT_EQ(Text(L"three_spaces"), L"  ");
  EXPECT_EQ(Text(L""), L"a word without a key");
  EXPECT_EQ(Text(L"backslash"), L"a\\nb");
  EXPECT_EQ(Text(L"cr"), L"a\rb");
  EXPECT_EQ(Text(L"wide"), L"\U0001F600");
  EXPECT_EQ(Text(L"last_bmp"), (std::wstring{wchar_t{0xFFFF}, L'!'}));
  EXPECT_EQ(host_.GetErrorsCount(), 0);
}

TEST_F(EndToEnd, ANulIsPartOfTextsAndMessages) {
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nkey te\0xt\na\0b one\na\0c two\na\0b three\n"s), 1);
  // A host that stops at the NUL sees only the first part, but the whole text is in memory.
  const wchar_t* const text = host_.LANG(L"key");
  EXPECT_EQ(std::wstring(text, 5), L"te\0xt"s);
  const wchar_t* const message = host_.GetError(0);
  const std::wstring expected =
      L"EL101. Key already declared.\nKey: a\0b\nDictionary: "s + PathOf(L"en.txt");
  EXPECT_EQ(std::wstring(message, expected.size()), expected);
  ExpectMissing(L"a");
}

TEST_F(EndToEnd, LineEndsOfBothKindsLoadAlike) {
  for (const std::string lineEnd : {"\n", "\r\n"}) {
    SCOPED_TRACE(testing::PrintToString(lineEnd));
    EXPECT_EQ(WriteAndLoad(L"file.txt", (lineEnd == "\n" ? "lf" : "crlf") + lineEnd + "lonely" +
                                            lineEnd + lineEnd + "key text" + lineEnd + "last text"),
              0);
    EXPECT_EQ(Text(L"lonely"), L"");
    EXPECT_EQ(Text(L"key"), L"text");
    EXPECT_EQ(Text(L"last"), L"text");
    EXPECT_EQ(host_.GetErrorsCount(), 0);
  }
}

TEST_F(EndToEnd, TheEndOfFileCharacterEndsAFileOnWindowsOnly) {
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nbefore text\x1A\nafter text\n"), 0);
  if (textModeEndsAtControlZ) {
    EXPECT_EQ(Text(L"before"), L"text");
    ExpectMissing(L"after");
  } else {
    EXPECT_EQ(Text(L"before"), L"text\x1A");
    EXPECT_EQ(Text(L"after"), L"text");
  }
}

TEST_F(EndToEnd, LinesLongerThanAnyBufferLoad) {
  // Characters of two bytes at odd offsets and line ends of two bytes: whatever the size of the
  // chunks in which the file is read, some of them span two chunks.
  std::string bytes = "en\r\n";
  std::wstring longText;
  for (int i = 0; i < 300000; ++i) {
    longText += L'\u00E4';
  }
  std::string longBytes;
  for (int i = 0; i < 300000; ++i) {
    longBytes += "\xC3\xA4";
  }
  bytes += "long " + longBytes + "\r\n" + longBytes + " text of a long key\r\n";
  for (int i = 0; i < 70000; ++i) {
    bytes += "\r\n";
  }
  bytes += "last text\r\n";
  EXPECT_EQ(WriteAndLoad(L"en.txt", bytes), 0);
  EXPECT_TRUE(Text(L"long") == longText);
  EXPECT_EQ(Text(longText), L"text of a long key");
  EXPECT_EQ(Text(L"last"), L"text");
  EXPECT_EQ(host_.GetErrorsCount(), 0);
}

TEST_F(EndToEnd, AHundredThousandEntriesAndMessagesAreKept) {
  constexpr std::int32_t kCount = 100000;
  std::string bytes = "en\r\n";
  for (std::int32_t i = 0; i < kCount; ++i) {
    bytes += "key." + std::to_string(i) + "\tText number " + std::to_string(i) + "\r\n";
  }
  EXPECT_EQ(WriteAndLoad(L"en.txt", bytes), 0);
  for (std::int32_t i = 0; i < kCount; ++i) {
    ASSERT_EQ(Text(L"key." + std::to_wstring(i)), L"Text number " + std::to_wstring(i));
  }
  EXPECT_EQ(host_.GetErrorsCount(), 0);
  EXPECT_EQ(Load(L"en.txt"), kCount);
  EXPECT_EQ(Load(L"en.txt"), kCount);
  for (std::int32_t i = 0; i < kCount; ++i) {
    ASSERT_EQ(host_.GetError(i), L"EL101. Key already declared.\nKey: key." + std::to_wstring(i) +
                                     L"\nDictionary: " + PathOf(L"en.txt"));
  }
}

// ---- Paths

TEST_F(EndToEnd, FolderAndFileNamesMayHoldAnyScriptAndBlanks) {
  const std::wstring name = L"тексты программы\\русский язык .txt";
  EXPECT_EQ(WriteAndLoad(name, "ru\nkey text\nkey again\n"), 1);
  EXPECT_EQ(ReadMessages(),
            (Messages{L"EL101. Key already declared.\nKey: key\nDictionary: " + PathOf(name)}));
}

TEST_F(EndToEnd, FolderAndFileNameAreJoinedUnchanged) {
  folder_.Write(L"en.txt", "en\n");
  const std::wstring folder = folder_.HostPath();
  EXPECT_EQ(host_.LoadDictionary((folder + L"\\").c_str(), L"en.txt"), 0);
  EXPECT_EQ(host_.LoadDictionary((folder + L"/").c_str(), L"en.txt"), 0);
  EXPECT_EQ(host_.LoadDictionary((folder + L"\\").c_str(), L"missing.txt"), -2);
  EXPECT_EQ(host_.LoadDictionary(L"", L"no such file.txt"), -2);
  EXPECT_EQ(
      ReadMessages(),
      (Messages{L"EL111. Dictionary file not found\nDictionary: " + folder + L"\\\\missing.txt",
                L"EL111. Dictionary file not found\nDictionary: \\no such file.txt"}));
}

TEST_F(EndToEnd, AMissingFileIsListedOnceAndChangesNothing) {
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nkey text\n"), 0);
  EXPECT_EQ(Load(L"missing.txt"), -2);
  EXPECT_EQ(Load(L"missing.txt"), -2);
  EXPECT_EQ(ReadMessages(),
            (Messages{L"EL111. Dictionary file not found\nDictionary: " + PathOf(L"missing.txt")}));
  EXPECT_EQ(Text(L"key"), L"text");
}

// ---- Start-up

TEST_F(EndToEnd, StartingReturnsZeroWithAnyFilesAndListsNothing) {
  folder_.Write(L"LANG\\ru-val.txt", "ru Russian\n10001 m name\n");
  folder_.Write(L"LANG\\bad-val.txt", "no header\nno unit\n");
  folder_.Write(L"lang-val.text", "neutral Neutral\nno unit\n");
  EXPECT_EQ(Init(folder_.HostPath(), L"ru"), 0);
  EXPECT_EQ(Init(folder_.HostPath(), L"bad"), 0);
  EXPECT_EQ(Init(folder_.HostPath(), L"none"), 0);
  EXPECT_EQ(Init(L"no such folder", L"ru"), 0);
  EXPECT_EQ(Init(L"", L""), 0);
  EXPECT_EQ(Init0(folder_.HostPath()), 0);
  EXPECT_EQ(Init0(L"no such folder"), 0);
  EXPECT_EQ(ReadMessages(), (Messages{}));
}

TEST_F(EndToEnd, StartingKeepsTextsAndMessages) {
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nkey text\n"), 0);
  EXPECT_EQ(WriteAndLoad(L"de.txt", "de\nkey Wort\nkey again\n"), 1);
  EXPECT_EQ(host_.UseLanguage(L"en"), 0);
  const wchar_t* const text = host_.LANG(L"key");
  const Messages before = ReadMessages();
  EXPECT_EQ(Init(folder_.HostPath(), L"ru"), 0);
  EXPECT_EQ(Init0(folder_.HostPath()), 0);
  EXPECT_EQ(ExportPhyVal(), 0);
  EXPECT_EQ(ReadMessages(), before);
  EXPECT_EQ(host_.LANG(L"key"), text);
  EXPECT_STREQ(text, L"text");
  EXPECT_EQ(host_.UseLanguage(L"de"), 0);
  EXPECT_EQ(Text(L"key"), L"Wort");
}

TEST_F(EndToEnd, EveryStartReplacesTheUnitsWithTheDefaults) {
  const LoadedUnits units(library_);
  const auto expectDefaultUnits = [&units] {
    for (const UnitRow& row : kDefaultUnits) {
      if (row.code < 100) {
        EXPECT_EQ(units.Find(row.code), nullptr) << "a quantity, not a unit";
        continue;
      }
      const auto* const unit = units.Find(row.code);
      ASSERT_NE(unit, nullptr) << row.code;
      EXPECT_EQ((UnitRow{unit->code, unit->factor, unit->symbol, unit->name}), row);
    }
    EXPECT_EQ(units.Find(20001), nullptr);
  };
  ASSERT_NE(units.Find(20001), nullptr) << "before the first start";
  EXPECT_EQ(Init(folder_.HostPath(), L"ru"), 0);
  expectDefaultUnits();
  EXPECT_EQ(Init(folder_.HostPath(), L"ru"), 0);
  expectDefaultUnits();
  EXPECT_EQ(Init0(folder_.HostPath()), 0);
  expectDefaultUnits();
  EXPECT_EQ(ExportPhyVal(), 0);
  expectDefaultUnits();
}

TEST_F(EndToEnd, NullCountsAsTheEmptyTextWhenStarting) {
  EXPECT_EQ(host_.Init(nullptr, nullptr), 0);
  EXPECT_EQ(host_.Init(nullptr, L"ru"), 0);
  EXPECT_EQ(host_.Init(L".", nullptr), 0);
  EXPECT_EQ(host_.Init0(nullptr), 0);
  library_.ReleaseReferencesOfStarts(4);
  EXPECT_EQ(host_.GetErrorsCount(), 0);
}

// ---- Selection and lookup

TEST_F(EndToEnd, EverythingIsEmptyAfterTheLoad) {
  EXPECT_EQ(host_.GetErrorsCount(), 0);
  EXPECT_STREQ(host_.GetError(0), L"");
  EXPECT_STREQ(host_.LANG(L"key"), L"");
  EXPECT_STREQ(host_.LANG(L"another key"), L"");
  EXPECT_EQ(ReadMessages(), (Messages{L"EL121. Dictionary not found\nDictionary id: "}));
}

TEST_F(EndToEnd, TheLastLoadOrSelectionIsCurrent) {
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nkey text\n"), 0);
  EXPECT_EQ(WriteAndLoad(L"de.txt", "de\nkey Wort\n"), 0);
  EXPECT_EQ(Text(L"key"), L"Wort");
  EXPECT_EQ(host_.UseLanguage(L"en"), 0);
  EXPECT_EQ(Text(L"key"), L"text");
  EXPECT_EQ(host_.UseLanguage(L"EN"), -1);
  EXPECT_EQ(ReadMessages(), (Messages{L"EL112. Dictionary not found\nDictionary id: EN"}));
  EXPECT_EQ(Text(L"key"), L"text");
  EXPECT_EQ(host_.UseLanguage(L""), -1);
  EXPECT_EQ(host_.UseLanguage(L""), -1);
  EXPECT_EQ(ReadMessages(), (Messages{L"EL112. Dictionary not found\nDictionary id: EN",
                                      L"EL112. Dictionary not found\nDictionary id: "}));
  EXPECT_EQ(Text(L"key"), L"text");
  EXPECT_EQ(Load(L"de.txt"), 3);
  EXPECT_EQ(Text(L"key"), L"Wort");
}

TEST_F(EndToEnd, AMissingKeyIsListedOnceNamingTheKeyTwice) {
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nkey text\n"), 0);
  for (int repeat = 0; repeat < 2; ++repeat) {
    EXPECT_EQ(Text(L"Key"), L"");
    EXPECT_EQ(Text(L"key "), L"");
    EXPECT_EQ(ReadMessages(),
              (Messages{L"EL121. Key not found in dictionary\nKey: Key\nDictionary id: Key",
                        L"EL121. Key not found in dictionary\nKey: key \nDictionary id: key "}));
  }
}

TEST_F(EndToEnd, AnEmptyTextIsNotAMissingText) {
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nempty\n"), 0);
  const wchar_t* const emptyText = host_.LANG(L"empty");
  EXPECT_STREQ(emptyText, L"");
  EXPECT_EQ(host_.GetErrorsCount(), 0);
  const wchar_t* const noText = host_.GetError(0);
  EXPECT_NE(emptyText, noText);
  EXPECT_EQ(host_.LANG(L"missing"), noText);
  EXPECT_EQ(host_.GetErrorsCount(), 1);
}

TEST_F(EndToEnd, ATextPointerStaysValidAndUnchanged) {
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nshort ab\nlong " + std::string(1000, 'x') + "\nempty\n"),
            0);
  const wchar_t* const shortText = host_.LANG(L"short");
  const wchar_t* const longText = host_.LANG(L"long");
  const wchar_t* const emptyText = host_.LANG(L"empty");

  std::string more = "en\nshort other\nlong other\nempty other\n";
  for (int i = 0; i < 20000; ++i) {
    more += "key" + std::to_string(i) + " text\n";
  }
  EXPECT_EQ(WriteAndLoad(L"more.txt", more), 3);
  for (int i = 0; i < 200; ++i) {
    EXPECT_EQ(WriteAndLoad(L"other.txt", "id" + std::to_string(i) + "\nshort cd\n"), 3);
  }
  host_.ClearErrors();
  EXPECT_EQ(host_.UseLanguage(L"en"), 0);

  EXPECT_EQ(host_.LANG(L"short"), shortText);
  EXPECT_EQ(host_.LANG(L"long"), longText);
  EXPECT_EQ(host_.LANG(L"empty"), emptyText);
  EXPECT_STREQ(shortText, L"ab");
  EXPECT_EQ(longText, std::wstring(1000, L'x'));
  EXPECT_STREQ(emptyText, L"");
}

TEST_F(EndToEnd, NullCountsAsTheEmptyText) {
  folder_.Write(L"file.txt", "en\nkey text\n without a key\n");
  EXPECT_EQ(host_.LoadDictionary(folder_.HostPath().c_str(), nullptr), -2);
  EXPECT_EQ(host_.LoadDictionary(nullptr, L"no such file.txt"), -2);
  EXPECT_EQ(host_.LoadDictionary(nullptr, nullptr), -2);
  EXPECT_EQ(host_.UseLanguage(nullptr), -1);
  EXPECT_STREQ(host_.LANG(nullptr), L"");
  EXPECT_EQ(ReadMessages(),
            (Messages{L"EL111. Dictionary file not found\nDictionary: " + PathOf(L""),
                      L"EL111. Dictionary file not found\nDictionary: \\no such file.txt",
                      L"EL111. Dictionary file not found\nDictionary: \\",
                      L"EL112. Dictionary not found\nDictionary id: ",
                      L"EL121. Dictionary not found\nDictionary id: "}));
  host_.ClearErrors();
  EXPECT_EQ(Load(L"file.txt"), 0);
  EXPECT_STREQ(host_.LANG(nullptr), L"without a key");
}

// ---- The error list

TEST_F(EndToEnd, GetErrorAnswersEveryIndex) {
  for (const std::int32_t index : {0, 1, 5, -1, INT_MAX, INT_MIN}) {
    EXPECT_STREQ(host_.GetError(index), L"") << "empty list, index " << index;
  }
  for (const wchar_t* const id : {L"a", L"b", L"c"}) {
    host_.UseLanguage(id);
  }
  const std::wstring message = L"EL112. Dictionary not found\nDictionary id: ";
  const struct {
    std::int32_t index;
    const wchar_t* id;
  } rows[] = {
      {0, L"a"},       {1, L"b"},  {2, L"c"},  {4, L"c"},       {1000, L"c"},
      {INT_MAX, L"c"}, {-1, L"c"}, {-2, L"c"}, {INT_MIN, L"c"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(host_.GetError(row.index), message + row.id) << "index " << row.index;
  }
  try {
    host_.GetError(3);
    ADD_FAILURE() << "index 3 of 3 messages must throw";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "invalid vector subscript");
  }
  EXPECT_EQ(host_.GetErrorsCount(), 3);
}

TEST_F(EndToEnd, ClearErrorsEmptiesTheListAndNothingElse) {
  host_.ClearErrors();
  EXPECT_EQ(host_.GetErrorsCount(), 0);
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nkey text\nkey again\n"), 1);
  host_.ClearErrors();
  EXPECT_EQ(host_.GetErrorsCount(), 0);
  EXPECT_STREQ(host_.GetError(0), L"");
  EXPECT_EQ(Text(L"key"), L"text");
  EXPECT_EQ(Load(L"en.txt"), 1);  // the message is listed again
}

TEST_F(EndToEnd, OnlyClearErrorsClearsTheList) {
  host_.UseLanguage(L"none");
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nkey text\nkey again\n"), 2);
  host_.UseLanguage(L"en");
  host_.LANG(L"key");
  host_.LANG(L"missing");
  EXPECT_EQ(
      ReadMessages(),
      (Messages{L"EL112. Dictionary not found\nDictionary id: none",
                L"EL101. Key already declared.\nKey: key\nDictionary: " + PathOf(L"en.txt"),
                L"EL121. Key not found in dictionary\nKey: missing\nDictionary id: missing"}));
}

}  // namespace
