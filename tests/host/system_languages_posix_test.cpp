#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "platform/system_languages.h"

namespace KelmoLibs::Localize {
namespace {

void Set(const char* name, const char* value) {
  if (value != nullptr) {
    ::setenv(name, value, 1);
  } else {
    ::unsetenv(name);
  }
}

TEST(SystemLanguages, AreThoseOfTheEnvironment) {
  struct Row {
    const char* name;
    const char* language;  // null: not set
    const char* all;
    const char* messages;
    const char* lang;
    std::string ids;  // with a blank behind each
  };
  const char* const none = nullptr;
  const Row rows[] = {
      {"nothing set", none, none, none, none, ""},
      {"all empty", "", "", "", "", ""},
      {"LANG", none, none, none, "de_AT.UTF-8", "de-AT "},
      {"LC_MESSAGES before LANG", none, none, "fr_FR.UTF-8", "de_AT.UTF-8", "fr-FR "},
      {"LC_ALL before LC_MESSAGES", none, "ru_RU.UTF-8", "fr_FR.UTF-8", "de_AT.UTF-8", "ru-RU "},
      {"empty LC_ALL counts as not set", none, "", "", "de", "de "},
      {"LANGUAGE before all", "de_AT:de:en", "ru_RU.UTF-8", none, none, "de-AT de en ru-RU "},
      {"the same twice", "de:de:de_DE", "de_DE.UTF-8", none, none, "de de-DE "},
      {"only LANGUAGE", "de:en", none, none, none, "de en "},
      {"empty items", "::de::", none, none, none, "de "},
      {"C", none, none, none, "C", ""},
      {"POSIX", none, none, none, "POSIX", ""},
      {"C of UTF-8", none, none, none, "C.UTF-8", ""},
      {"C before LANGUAGE", "de", "C", none, none, ""},
      {"POSIX before LANGUAGE", "de", none, none, "POSIX", ""},
      {"LANGUAGE before C of UTF-8", "de", "C.UTF-8", none, none, "de "},
      {"C in LANGUAGE", "de:C:POSIX:en", none, none, none, "de en "},
      {"modifier", none, none, none, "de_AT.UTF-8@euro", "de-AT "},
      {"modifier without an encoding", none, none, none, "de_AT@euro", "de-AT "},
      {"Latin script", none, none, none, "sr_RS@latin", "sr-Latn-RS "},
      {"Cyrillic script", none, none, none, "uz_UZ.UTF-8@cyrillic", "uz-Cyrl-UZ "},
      {"script without a region", none, none, none, "sr@latin", "sr-Latn "},
      {"id with hyphens", "zh-Hant-TW", none, none, none, "zh-Hant-TW "},
      {"region of three digits", none, none, none, "es_419", "es-419 "},
      {"signs before and behind the letters and digits", "d{:d[:d@latin:d=", none, none, none,
       "d-Latn "},
      {"path", none, none, none, "/usr/share/locale", ""},
      {"bytes that are not UTF-8", "\xFF:de", none, none, none, "de "},
      {"no letter first", "-:_@latin:--:1", none, none, none, ""},
      {"only an encoding", none, none, none, ".UTF-8", ""},
      {"only a modifier", none, none, none, "@latin", ""},
  };
  for (const Row& row : rows) {
    Set("LANGUAGE", row.language);
    Set("LC_ALL", row.all);
    Set("LC_MESSAGES", row.messages);
    Set("LANG", row.lang);
    std::string ids;
    for (const std::string& id : SystemLanguages()) {
      ids += id + ' ';
    }
    EXPECT_EQ(ids, row.ids) << row.name;
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
