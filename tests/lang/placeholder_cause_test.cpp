// What a text has in the place of a missing placeholder.
#include "lang/rules/placeholder_cause.h"

#include <gtest/gtest.h>

#include <string>

namespace KelmoLibs::Lang {
namespace {

struct Row {
  const char* name;
  std::string missing;
  std::string text;
  std::string where;
  std::string hint;  // behind "placeholder.hint."
};

TEST(CauseOfMissing, IsFound) {
  const Row rows[] = {
      {"full-width percent sign", "%1", "a \uFF051 b", "\uFF051", "full_width"},
      {"full-width digit", "%1", "a %\uFF11", "%\uFF11", "full_width"},
      {"full-width braces", "{0}", "\uFF5B0\uFF5D", "\uFF5B0\uFF5D", "full_width"},
      {"Arabic digit", "%1", "%\u0661", "%\u0661", "digit"},
      {"Persian digit", "{0}", "{\u06F0}", "{\u06F0}", "digit"},
      {"Thai digit", "%2", "%\u0E52", "%\u0E52", "digit"},
      {"Arabic percent sign", "%1", "\u066A1", "\u066A1", "digit"},
      {"Cyrillic letter", "{name}", "{n\u0430me}", "{n\u0430me}", "look_alike"},
      {"capital letters", "{name}", "{Name}", "{Name}", "capital"},
      {"capital conversion", "%s", "%S", "%S", "capital"},
      {"blank", "%1", "a % 1", "% 1", "blank"},
      {"no-break space", "{0}",
       "{\u00A0"
       "0}",
       "{\u00A0"
       "0}",
       "blank"},
      {"the percent sign of a number", "%1", "50 % 1", "", ""},
      {"right to left", "%1", "1% a", "1%", "swapped"},
      {"a percentage", "%1", "11% a", "", ""},
      {"a longer number", "%1", "%\uFF11\uFF12", "", ""},
      {"swapped braces", "{0}", "}0{", "}0{", "brackets"},
      {"one brace", "{name}", "a {name b", "{name", "brackets"},
      {"other brackets", "{0}", "(0)", "(0)", "brackets"},
      {"a letter that looks like the digit", "%1", "a %l", "%l", "letter"},
      {"a capital letter that looks like the digit", "%1", "(%I)", "%I", "letter"},
      {"a letter for another digit", "%2", "%l", "", ""},
      {"a placeholder of another syntax", "%1", "\"%s\"", "%s", "other"},
      {"a word behind a percent sign", "%1", "5 %so", "", ""},
      {"a percent sign at the end", "%1", "5 %", "", ""},
      {"a part of a word", "{name}", "{surname}", "", ""},
      {"a placeholder of the base", "{0}", "{1}", "", ""},
      {"nothing", "%1", "a b", "", ""},
      {"too long", "%1", std::string(10'001, 'a') + "% 1", "", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const std::string baseText = row.missing + " {1}";
    const Placeholders base(baseText, PercentDigits::kAreNumber);
    const Placeholders found(row.text, PercentDigits::kAreNumber);
    ASSERT_FALSE(base.IsEmpty());
    const PlaceholderCause cause = CauseOfMissing(*base.begin(), row.text, found, base);
    EXPECT_EQ(cause.where, row.where);
    EXPECT_EQ(cause.hint, row.hint.empty() ? "" : "placeholder.hint." + row.hint);
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
