// The rule invisible-character.
#include <gtest/gtest.h>

#include "tests/lang/text_rule_results.h"

namespace KelmoLibs::Lang {
namespace {

TEST(InvisibleCharacters, AreFound) {
  const TextRow rows[] = {
      {"none", "de", "Shaft", "Welle", ""},
      {"soft hyphen", "de", "Shaft", u8"Wel\u00ADle",
       u8"warning invisible-character.soft-hyphen \u00AD"},
      {"space without width", "de", "Shaft", u8"Wel\u200Ble",
       u8"warning invisible-character.zero-width-space \u200B"},
      {"word joiner", "de", "Shaft", u8"Wel\u2060le",
       u8"warning invisible-character.word-joiner \u2060"},
      {"byte-order mark", "de", "Shaft", u8"Wel\uFEFFle",
       u8"warning invisible-character.byte-order-mark \uFEFF"},
      {"a tag character is one beyond U+FFFF", "de", "Shaft", u8"Welle\U000E0041", ""},
      {"only the first one is reported", "de", "Shaft", u8"W\u00ADe\u200Blle",
       u8"warning invisible-character.soft-hyphen \u00AD"},
      {"the base has it", "de", u8"Sha\u00ADft", u8"Wel\u00ADle", ""},
      {"the base has another one", "de", u8"Sha\u00ADft", u8"Wel\u200Ble",
       u8"warning invisible-character.zero-width-space \u200B"},
      {"no base", "de", "", u8"Wel\u200Ble",
       u8"warning invisible-character.zero-width-space \u200B"},
      {"Thai", "th", "Shaft", u8"เพลา\u200Bหมุน", ""},
      {"Khmer", "km", "Shaft", u8"អ័ក្ស\u200Bបង្វិល", ""},
      {"no-break space", "fr", "Name:", u8"Nom\u00A0:", ""},
      {"joiner of Persian", "fa", "is saved", u8"ذخیره می\u200Cشود", ""},
      {"mark of direction", "ar", "Name", u8"الاسم\u200F", ""},
      // NOLINTBEGIN(misc-misleading-bidirectional): the rule looks for these characters
      {"closed embedding", "ar", "User %1", u8"المستخدم \u202A%1\u202C", ""},
      {"open embedding", "ar", "User %1", u8"المستخدم \u202A%1",
       u8"warning invisible-character.direction \u202A"},
      {"open override", "de", "User %1", u8"\u202E%1",
       u8"warning invisible-character.direction \u202E"},
      {"closed isolate", "he", "User %1", u8"משתמש \u2068%1\u2069", ""},
      {"end without begin", "he", "User %1", u8"משתמש %1\u2069",
       u8"warning invisible-character.direction \u2069"},
      {"an isolate is not closed by the end of an embedding", "he", "User %1", u8"\u2068%1\u202C",
       u8"warning invisible-character.direction \u202C"},
      {"the base is open too", "ar", u8"User \u202A", u8"المستخدم \u202A", ""},
      {"Thai open embedding", "th", "User %1", u8"\u202A%1",
       u8"warning invisible-character.direction \u202A"},
      // NOLINTEND(misc-misleading-bidirectional)
  };
  ExpectResults(CheckInvisibleCharacters, rows);
}

}  // namespace
}  // namespace KelmoLibs::Lang
