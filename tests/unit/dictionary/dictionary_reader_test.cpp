#include "dictionary/dictionary_reader.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/allocation_probe.h"
#include "tests/support/contents.h"
#include "tests/support/encode_utf8.h"
#include "tests/support/invalid_utf8.h"
#include "tests/support/string_source.h"

namespace KelmoLibs::Localize {
namespace {

using namespace std::string_literals;

struct State {
  CurrentLanguage currentLanguage = {L"before", nullptr};
  DictionaryTable dictionaries;
  std::vector<std::wstring> duplicates;

  void Read(ByteSource& source) {
    ReadDictionary(source, currentLanguage, dictionaries,
                   [this](std::wstring_view key) { duplicates.emplace_back(key); });
  }
  void Read(const std::string& bytes) {
    StringSource source(bytes);
    Read(source);
  }
};

TEST(ReadDictionary, ReadsEveryFileAsWritten) {
  const struct {
    const char* name;
    std::string bytes;
    std::wstring currentLanguage;
    Contents contents;
    std::vector<std::wstring> duplicates;
  } rows[] = {
      {"an empty file changes nothing", "", L"before", {}, {}},
      {"an invalid first byte: an empty file",
       "\xFF"
       "en\nkey text\n",
       L"before",
       {},
       {}},
      {"only a header", "en", L"en", {{L"en", {}}}, {}},
      {"a header with its line end", "en\n", L"en", {{L"en", {}}}, {}},
      {"the word after the id is ignored", "de Deutsch\n", L"de", {{L"de", {}}}, {}},
      {"an empty header is the empty id", "\nkey text\n", L"", {{L"", {{L"key", L"text"}}}}, {}},
      {"a header of blanks is the empty id", "  \nkey text", L"", {{L"", {{L"key", L"text"}}}}, {}},
      {"a blank before the id gives the empty id", " en\n", L"", {{L"", {}}}, {}},
      {"a byte-order mark is part of the id",
       "\xEF\xBB\xBF"
       "en\n",
       L"\uFEFF"
       L"en",
       {{L"\uFEFF"
         L"en",
         {}}},
       {}},
      {"an invalid byte truncates the header", "en\xFFglish\nkey text\n", L"en", {{L"en", {}}}, {}},
      {"an invalid byte in the ignored word of the header",
       "en Engl\xFFish\nkey text\n",
       L"en",
       {{L"en", {}}},
       {}},

      {"empty lines are skipped",
       "en\n\nkey text\n\n\n",
       L"en",
       {{L"en", {{L"key", L"text"}}}},
       {}},
      {"a line of one CR is a key", "en\n\r\n", L"en", {{L"en", {{L"\r", L""}}}}, {}},
      {"lines of blanks give the empty key",
       "en\n  \n   \n",
       L"en",
       {{L"en", {{L"", L" "}}}},
       {L""}},
      {"nothing is a comment or a section",
       "en\n// a b\n# c\n[s]\n; d\n",
       L"en",
       {{L"en", {{L"//", L"a b"}, {L"#", L"c"}, {L"[s]", L""}, {L";", L"d"}}}},
       {}},
      {"the first text of a key stays",
       "en\nk one\nk two\nk three\n",
       L"en",
       {{L"en", {{L"k", L"one"}}}},
       {L"k", L"k"}},
      {"an empty text is a text", "en\nk\nk two\n", L"en", {{L"en", {{L"k", L""}}}}, {L"k"}},
      {"keys differ by case",
       "en\nk one\nK two\n",
       L"en",
       {{L"en", {{L"K", L"two"}, {L"k", L"one"}}}},
       {}},
      {"a NUL is part of key and text",
       "e\0n\nk\0a t\0u\nk\0b v\n"s,
       L"e\0n"s,
       {{L"e\0n"s, {{L"k\0a"s, L"t\0u"s}, {L"k\0b"s, L"v"}}}},
       {}},
      {"beyond U+FFFF", "en\nk \xF0\x9F\x98\x80\n", L"en", {{L"en", {{L"k", L"\U0001F600"}}}}, {}},
      {"U+FFFF ends nothing",
       "en\nk \xEF\xBF\xBF\nl m\n",
       L"en",
       {{L"en", {{L"k", {wchar_t{0xFFFF}}}, {L"l", L"m"}}}},
       {}},

      {"an invalid byte truncates a text",
       "en\nk one\nl tw\xFFo\nm three\n",
       L"en",
       {{L"en", {{L"k", L"one"}, {L"l", L"tw"}}}},
       {}},
      {"a truncated text is trimmed", "en\nk one \xFF", L"en", {{L"en", {{L"k", L"one"}}}}, {}},
      {"an invalid byte truncates a key",
       "en\nke\xFFy one\nm three\n",
       L"en",
       {{L"en", {{L"ke", L""}}}},
       {}},
      {"an invalid byte at the start of a line",
       "en\nk one\n\xFFm two\n",
       L"en",
       {{L"en", {{L"k", L"one"}}}},
       {}},
      {"a truncated key is a duplicate",
       "en\nk one\nk\xFF two\n",
       L"en",
       {{L"en", {{L"k", L"one"}}}},
       {L"k"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    State state;
    state.Read(row.bytes);
    EXPECT_EQ(state.currentLanguage.id, row.currentLanguage);
    EXPECT_TRUE(Holds(state.dictionaries, row.contents));
    EXPECT_EQ(state.duplicates, row.duplicates);
  }
}

TEST(ReadDictionary, AddsToADictionaryWithTheSameId) {
  State state;
  state.Read("en\na one\nb two\n"s);
  state.Read("de\na eins\n"s);
  state.Read("en again\nb three\nc four\n"s);
  EXPECT_EQ(state.currentLanguage.id, L"en");
  EXPECT_TRUE(Holds(
      state.dictionaries,
      {{L"de", {{L"a", L"eins"}}}, {L"en", {{L"a", L"one"}, {L"b", L"two"}, {L"c", L"four"}}}}));
  EXPECT_EQ(state.duplicates, (std::vector<std::wstring>{L"b"}));
}

TEST(ReadDictionary, AnInvalidSequenceEndsTheFile) {
  const std::string file =
      "en English\nkey.one\tText \xC3\xA4 \n\n  \nkey.\xD1\x8F  a  b\nkey.one again\nlast "
      "\xF0\x9F\x98\x80";
  // Includes the keys that an invalid byte may truncate.
  const std::vector<std::wstring> keys = {L"",      L"k",      L"ke",      L"key",        L"key.",
                                          L"key.o", L"key.on", L"key.one", L"key.\u044F", L"l",
                                          L"la",    L"las",    L"last"};
  for (std::size_t position = 0; position <= file.size(); ++position) {
    if (position < file.size() && (file[position] & 0xC0) == 0x80) {
      continue;  // inside a character
    }
    State expected;
    expected.Read(file.substr(0, position));
    for (const InvalidUtf8& invalid : kInvalidUtf8) {
      for (const std::size_t chunk : std::initializer_list<std::size_t>{1, 2, 3, 1000}) {
        SCOPED_TRACE(testing::Message()
                     << invalid.name << " at " << position << ", chunks of " << chunk);
        State state;
        StringSource source(
            file.substr(0, position) + std::string(invalid.bytes) + file.substr(position), chunk);
        state.Read(source);
        ASSERT_EQ(state.currentLanguage.id, expected.currentLanguage.id);
        ASSERT_TRUE(Holds(state.dictionaries, ContentsOf(expected.dictionaries, keys)));
        ASSERT_EQ(state.duplicates, expected.duplicates);
      }
    }
  }
}

TEST(ReadDictionary, KeepsTheLinesBeforeAFailedRead) {
  State state;
  StringSource source("en\na one\nb tw", 4, 1000);  // the size hint is larger
  state.Read(source);
  EXPECT_TRUE(Holds(state.dictionaries, {{L"en", {{L"a", L"one"}, {L"b", L"tw"}}}}));
}

// The reader estimates the number of entries from the lines of this file. Neither the large texts
// of another file nor a wrong size hint make the estimate too large.
TEST(ReadDictionary, AWrongEstimateAllocatesLittle) {
  constexpr std::size_t kTextLength = 1'000'000;
  std::string largeTexts = "en\n";
  std::string manyLines = "en\n";
  for (int i = 0; i < 63; ++i) {
    largeTexts += "k" + std::to_string(i) + "\n";
  }
  largeTexts += "big " + std::string(kTextLength, 'x');
  for (int i = 0; i < 1000; ++i) {
    manyLines += "m" + std::to_string(i) + "\n";
  }
  State state;
  state.Read(largeTexts);
  const std::size_t before = allocation_probe::LiveBytes();
  state.Read(manyLines);
  EXPECT_LE(allocation_probe::LiveBytes() - before, 300'000U);

  State truncated;
  StringSource source(manyLines + "\xFF", manyLines.size() + 1, 1'000'000'000);
  const std::size_t nothing = allocation_probe::LiveBytes();
  truncated.Read(source);
  EXPECT_LE(allocation_probe::LiveBytes() - nothing, 300'000U);
}

// The reader decodes long texts directly into the dictionary.
TEST(ReadDictionary, ReadsLongTextsOfEveryScript) {
  std::string bytes = "long\n";
  Texts texts;
  for (const wchar_t* const characters : {L"a", L"\u0434a", L"\u6587 \u5B57", L"\U0001F600"}) {
    const std::wstring unit = characters;
    for (const std::size_t size :
         std::initializer_list<std::size_t>{4090, 4095, 4096, 4097, 4102, 40000}) {
      const std::size_t unitBytes = EncodeUtf8(unit).size();
      std::wstring text(size % unitBytes, L'z');
      for (std::size_t i = 0; i < size / unitBytes; ++i) {
        text += unit;
      }
      const std::wstring key = L"k" + std::to_wstring(texts.size());
      texts.emplace(key, text);
      bytes += EncodeUtf8(key) + "\t" + EncodeUtf8(text) + "\n";
    }
  }
  State state;
  state.Read(bytes);
  EXPECT_TRUE(Holds(state.dictionaries, {{L"long", texts}}));
  EXPECT_EQ(state.duplicates, std::vector<std::wstring>());
}

TEST(ReadDictionary, AllocatesAtMostTwiceTheFileAndOneWideWordBesideTheStoredTexts) {
  const std::string longText(5'000'000, 'x');
  const std::size_t wide = (longText.size() + 1) * sizeof(wchar_t);
  std::string manyEntries = "en\n";
  for (int i = 0; i < 20000; ++i) {
    manyEntries += "key." + std::to_string(i) + "\tThe text of this key\n";
  }
  const struct {
    const char* name;
    std::string before;
    std::string bytes;
    std::size_t longWord = 0;  // a key or an id, wide
  } rows[] = {
      {"one long text", "", "en\nk " + longText},
      {"one long key", "", "en\n" + longText, wide},
      {"a long id", "", longText + "\nk v\n", wide},
      {"a long word after the id", "", "en " + longText + "\nk v\n"},
      {"a long text of a duplicate key", "", "en\nk v\nk " + longText},
      {"a long duplicate key", "en\n" + longText, "en\n" + longText, wide},
      {"a long id that is loaded already", longText, longText + "\nk v\n", wide},
      {"many entries", "", manyEntries},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    State state;
    state.Read(row.before);
    StringSource source(row.bytes);
    const std::size_t before = allocation_probe::LiveBytes();
    allocation_probe::ResetPeak();
    ReadDictionary(source, state.currentLanguage, state.dictionaries, [](std::wstring_view) {});
    const std::size_t stored = allocation_probe::LiveBytes() - before;
    EXPECT_LE(allocation_probe::PeakBytes() - before, stored + 2 * row.bytes.size() + row.longWord);
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
