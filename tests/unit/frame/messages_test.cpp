#include "frame/messages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/read_all.h"
#include "tests/support/read_file.h"
#include "text/utf8.h"

namespace KelmoLibs::Localize {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

TEST(Messages, HaveTheseTexts) {
  const struct {
    const char* name;
    Message message;
    std::wstring text;
  } rows[] = {
      {"key already declared", KeyAlreadyDeclaredMessage(L"menu.file", L"C:\\lang\\de.txt"),
       L"EL101. Key already declared.\nKey: menu.file\nDictionary: C:\\lang\\de.txt"},
      {"empty key already declared", KeyAlreadyDeclaredMessage(L"", L"\\de.txt"),
       L"EL101. Key already declared.\nKey: \nDictionary: \\de.txt"},
      {"file not found", DictionaryFileNotFoundMessage(L"C:\\lang\\de.txt"),
       L"EL111. Dictionary file not found\nDictionary: C:\\lang\\de.txt"},
      {"loading error", DictionaryLoadingErrorMessage(L"C:\\lang\\de.txt"),
       L"EL111. Dictionary loading error\nDictionary: C:\\lang\\de.txt"},
      {"a line that is not a unit", UnitLineMessage(L"10001\tm", L"C:\\app\\LANG/ru-val.txt"),
       L"EV101. Error parse string.\nString: 10001\tm\nDictionary: C:\\app\\LANG/ru-val.txt"},
      {"a unit table not found", UnitTableNotFoundMessage(L"C:\\app\\\\LANG/de-val.txt"),
       L"EV111. Dictionary file not found or corrupted\nDictionary: "
       L"C:\\app\\\\LANG/de-val.txt"},
      {"unknown dictionary selected", UnknownDictionaryMessage(L"EN"),
       L"EL112. Dictionary not found\nDictionary id: EN"},
      {"no current dictionary", NoCurrentDictionaryMessage(L""),
       L"EL121. Dictionary not found\nDictionary id: "},
      {"key not found names the key twice", KeyNotFoundMessage(L"menu.fil", 0),
       L"EL121. Key not found in dictionary\nKey: menu.fil\nDictionary id: menu.fil"},
      {"a NUL in a key stays", KeyNotFoundMessage(L"a\0b"sv, 0),
       L"EL121. Key not found in dictionary\nKey: a\0b\nDictionary id: a\0b"s},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(TextOf(row.message), row.text);
  }
}

// docs/messages.md shows these files.
TEST(Messages, EqualTheExamplesOfThePage) {
  const struct {
    const char* file;
    Message message;
  } rows[] = {
      {"key_already_declared.txt", KeyAlreadyDeclaredMessage(L"menu.file", L"lang\\de.txt")},
      {"dictionary_file_not_found.txt", DictionaryFileNotFoundMessage(L"lang\\fr.txt")},
      {"dictionary_loading_error.txt", DictionaryLoadingErrorMessage(L"lang\\de.txt")},
      {"unit_line.txt", UnitLineMessage(L"10001\tm", L"C:\\app\\LANG/ru-val.txt")},
      {"unit_table_not_found.txt", UnitTableNotFoundMessage(L"C:\\app\\LANG/fr-val.txt")},
      {"unknown_dictionary.txt", UnknownDictionaryMessage(L"de-AT")},
      {"no_current_dictionary.txt", NoCurrentDictionaryMessage(L"de")},
      {"key_not_found.txt", KeyNotFoundMessage(L"menu.fiel", 0)},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.file);
    const std::string bytes = ReadProjectFile(std::string("tests/data/messages/") + row.file);
    EXPECT_EQ(DecodeUtf8(bytes), TextOf(row.message) + L"\n");
  }
}

// Messages of every kind. Their details are empty, contain a NUL, or contain labels of a message.
std::vector<Message> ManyMessages() {
  static const std::wstring details[] = {
      L"", L"a", L"b", L"ab", L"a\0"s, L"a\0b"s, L"\n", L"\u0424\u0430\u0439\u043B",
      L"Dictionary: ", L"\nDictionary: ", L"a\nDictionary: b", L"b\nDictionary: ",
      L"\nDictionary id: a", L"a\nKey: a\nDictionary id: a",
      // The second label of a message inside a detail of another message
      L"x\nDictionary: y", L"a0123456789abcx", L"y", std::wstring(300, L'x')};
  std::vector<Message> messages;
  for (const std::wstring& first : details) {
    messages.insert(messages.end(),
                    {DictionaryFileNotFoundMessage(first), DictionaryLoadingErrorMessage(first),
                     UnitTableNotFoundMessage(first), UnknownDictionaryMessage(first),
                     NoCurrentDictionaryMessage(first), KeyNotFoundMessage(first, first.size())});
    for (const std::wstring& second : details) {
      messages.insert(messages.end(),
                      {KeyAlreadyDeclaredMessage(first, second), UnitLineMessage(first, second)});
    }
  }
  return messages;
}

// Keys and lines of a file contain no LF. With an LF in the first of two details, different
// messages could have equal texts.
bool CanOccur(const Message& message) {
  const bool hasTwo = message.kind == Message::Kind::kKeyAlreadyDeclared ||
                      message.kind == Message::Kind::kUnitLine;
  return !hasTwo || message.first.find(L'\n') == std::wstring::npos;
}

TEST(Messages, AreEqualExactlyIfTheirTextsAre) {
  std::vector<Message> messages = ManyMessages();
  messages.erase(std::remove_if(messages.begin(), messages.end(),
                                [](const Message& message) { return !CanOccur(message); }),
                 messages.end());
  std::vector<std::wstring> texts;
  for (const Message& message : messages) {
    texts.push_back(TextOf(message));
    ASSERT_EQ(TextLength(message), texts.back().size());
  }
  for (std::size_t i = 0; i < messages.size(); ++i) {
    for (std::size_t j = 0; j < messages.size(); ++j) {
      const int order = Compare(messages[i], messages[j]);
      ASSERT_EQ(order == 0, texts[i] == texts[j])
          << testing::PrintToString(texts[i]) << ", " << testing::PrintToString(texts[j]);
      ASSERT_EQ(order<0, Compare(messages[j], messages[i])> 0);
      if (order == 0) {
        ASSERT_EQ(messages[i].hash, messages[j].hash);
      }
    }
  }
}

TEST(Messages, FormatToPointsTheDetailsIntoTheText) {
  for (const Message& message : ManyMessages()) {
    std::wstring text(TextLength(message), L'?');
    const Message written = FormatTo(text.data(), message);
    EXPECT_EQ(text, TextOf(message));
    EXPECT_EQ(Compare(message, written), 0) << testing::PrintToString(text);
    EXPECT_EQ(written.hash, message.hash);
    for (const std::wstring_view detail : {written.first, written.second}) {
      EXPECT_GE(detail.data(), text.data());
      EXPECT_LE(detail.data() + detail.size(), text.data() + text.size());
    }
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
