#include "frame/messages.h"

#include <gtest/gtest.h>

#include <string>

#include "frame/utf8.h"
#include "tests/support/read_file.h"

namespace KelmoLibs::Localize {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

TEST(Messages, AreTheseTextsWhole) {
  const struct {
    const char* name;
    std::wstring message;
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
      {"a line that is no unit", UnitLineMessage(L"10001\tm", L"C:\\app\\LANG/ru-val.txt"),
       L"EV101. Error parse string.\nString: 10001\tm\nDictionary: C:\\app\\LANG/ru-val.txt"},
      {"a unit table not found", UnitTableNotFoundMessage(L"C:\\app\\\\LANG/de-val.txt"),
       L"EV111. Dictionary file not found or corrupted\nDictionary: "
       L"C:\\app\\\\LANG/de-val.txt"},
      {"unknown dictionary selected", UnknownDictionaryMessage(L"EN"),
       L"EL112. Dictionary not found\nDictionary id: EN"},
      {"no current dictionary", NoCurrentDictionaryMessage(L""),
       L"EL121. Dictionary not found\nDictionary id: "},
      {"key not found names the key twice", KeyNotFoundMessage(L"menu.fil"),
       L"EL121. Key not found in dictionary\nKey: menu.fil\nDictionary id: menu.fil"},
      {"a NUL in a key stays", KeyNotFoundMessage(L"a\0b"sv),
       L"EL121. Key not found in dictionary\nKey: a\0b\nDictionary id: a\0b"s},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.message, row.text);
  }
}

// The files are what docs/messages.md shows.
TEST(Messages, AreThoseOfTheirPage) {
  const struct {
    const char* file;
    std::wstring message;
  } rows[] = {
      {"key_already_declared.txt", KeyAlreadyDeclaredMessage(L"menu.file", L"lang\\de.txt")},
      {"dictionary_file_not_found.txt", DictionaryFileNotFoundMessage(L"lang\\fr.txt")},
      {"dictionary_loading_error.txt", DictionaryLoadingErrorMessage(L"lang\\de.txt")},
      {"unit_line.txt", UnitLineMessage(L"10001\tm", L"C:\\app\\LANG/ru-val.txt")},
      {"unit_table_not_found.txt", UnitTableNotFoundMessage(L"C:\\app\\LANG/fr-val.txt")},
      {"unknown_dictionary.txt", UnknownDictionaryMessage(L"de-AT")},
      {"no_current_dictionary.txt", NoCurrentDictionaryMessage(L"de")},
      {"key_not_found.txt", KeyNotFoundMessage(L"menu.fiel")},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.file);
    const std::string bytes =
        ReadFile(std::string(KELMO_SOURCE_FOLDER "/tests/data/messages/") + row.file);
    EXPECT_EQ(DecodeUtf8(bytes), row.message + L"\n");
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
