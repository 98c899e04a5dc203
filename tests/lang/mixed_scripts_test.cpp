// The rule mixed-script. Letters that look alike are escapes.
#include <gtest/gtest.h>

#include "tests/lang/text_rule_results.h"

namespace KelmoLibs::Lang {
namespace {

TEST(MixedScripts, AreFound) {
  const TextRow rows[] = {
      {"Latin o in a Cyrillic word", "ru", "Head", u8"\u041D\u0430\u043Fo\u0440",
       "warning mixed-script.latin-in-cyrillic o"},
      {"Latin capital C at the begin", "ru", "Save",
       u8"C\u043E\u0445\u0440\u0430\u043D\u0438\u0442\u044C",
       "warning mixed-script.latin-in-cyrillic C"},
      {"Latin a in a word of two letters", "ru", "on", u8"\u043Da",
       "warning mixed-script.latin-in-cyrillic a"},
      {"two Latin letters at the begin", "ru", "Save",
       u8"Co\u0445\u0440\u0430\u043D\u0438\u0442\u044C",
       "warning mixed-script.latin-in-cyrillic C"},
      {"Cyrillic e in a Latin word", "de", "Save", u8"Sp\u0435ichern",
       u8"warning mixed-script.cyrillic-in-latin \u0435"},
      {"Cyrillic letter at the end of a Latin word", "de", "File", u8"Fil\u0435",
       u8"warning mixed-script.cyrillic-in-latin \u0435"},
      {"Ukrainian with a Latin i", "uk", "Files", u8"\u0424i\u043B\u044C\u0442\u0440",
       "warning mixed-script.latin-in-cyrillic i"},
      {"Greek word with a Latin o", "el", "Save",
       u8"\u0391\u03C0o\u03B8\u03AE\u03BA\u03B5\u03C5\u03C3\u03B7",
       "warning mixed-script.latin-in-greek o"},
      {"Latin word with a Greek o", "de", "Save", u8"Sp\u03BFichern",
       u8"warning mixed-script.greek-in-latin \u03BF"},
      {"Cyrillic word with a Greek o", "ru", "Head", u8"\u041D\u0430\u043F\u03BF\u0440",
       u8"warning mixed-script.greek-in-cyrillic \u03BF"},
      {"Greek word with a Cyrillic o", "el", "Save",
       u8"\u0391\u03C0\u043E\u03B8\u03AE\u03BA\u03B5\u03C5\u03C3\u03B7",
       u8"warning mixed-script.cyrillic-in-greek \u043E"},
      {"unit with a Latin capital", "ru", "kW", u8"\u043AB\u0442",
       "warning mixed-script.latin-in-cyrillic B"},
      {"behind a hyphen within a word", "ru", "website", u8"\u0432\u0435\u0431-c\u0430\u0439\u0442",
       "warning mixed-script.latin-in-cyrillic c"},
      {"two Latin letters that begin a word of the base", "ru", "Copy", u8"Co\u043F\u0438\u044F",
       "warning mixed-script.latin-in-cyrillic C"},
      {"a letter that is a word of the base", "ru", "Save a copy",
       u8"\u0421\u043E\u0445\u0440a\u043D\u0438\u0442\u044C",
       "warning mixed-script.latin-in-cyrillic a"},
      // Right words.
      {"example that the base has as a word", "ru", "Aa", u8"Aa\u0412\u0432", ""},
      {"hyphen between scripts", "ru", "USB port", u8"USB-\u043F\u043E\u0440\u0442", ""},
      {"abbreviation with an ending", "ru", "of the PDF", u8"PDF\u0430", ""},
      {"abbreviation of look-alikes with an ending", "ru", "of TCP", u8"TCP\u043D\u044B\u0439", ""},
      {"name with an ending", "ru", "in bash", u8"bash\u0430", ""},
      {"abbreviation behind a word", "ru", "MC menu", u8"\u041C\u0435\u043D\u044EMC", ""},
      {"Latin accelerator", "uk", "Insert group", u8"\u0433\u0440&y\u043F\u0443", ""},
      {"ordinal number", "ru", "the Nth", u8"N\u0439", ""},
      {"variable with an ending", "ru", "the Xth", u8"X\u044B\u0439", ""},
      {"no look-alike", "ru", "CD fan", u8"CD\u0448\u043D\u0438\u043A", ""},
      {"unit", "ru", "m", u8"\u043C\u043Am", ""},
      {"option with its value", "ru", "-oFILE", u8"-o\u0424\u0410\u0419\u041B", ""},
      {"placeholder", "ru", "%s files", u8"%s\u0444\u0430\u0439\u043B\u043E\u0432", ""},
      {"placeholder with a name", "ru", "%(c)s", u8"%(c)s\u043E\u043C", ""},
      {"placeholder in braces", "ru", "{c}", u8"{c}\u043E\u043C", ""},
      {"escape", "ru", "a\\cb", u8"\u043E\u0434\u0438\u043D\\c\u0434\u0432\u0430", ""},
      {"tag", "ru", "<o>", u8"<o>\u0441\u043B\u043E\u0432\u043E</o>\u0441\u043B\u043E\u0432\u043E",
       ""},
      {"micrometre", "de", u8"\u03BCm", u8"\u03BCm", ""},
      {"kiloohm", "el", u8"k\u03A9", u8"k\u03A9", ""},
      {"difference of temperatures", "de", u8"\u0394T", u8"\u0394T", ""},
      {"three scripts", "de", "a", u8"a\u0430\u03B1", ""},
      {"separate words", "ru", "Windows",
       u8"\u041E\u043A\u043D\u043E Windows \u043E\u043A\u043D\u043E", ""},
  };
  ExpectResults(CheckMixedScripts, rows);
}

}  // namespace
}  // namespace KelmoLibs::Lang
