// Which signs of a text are placeholders: a row for each syntax, and for what only looks so.
#include "lang/rules/placeholder_syntax.h"

#include <gtest/gtest.h>

#include <string>

namespace KelmoLibs::Lang {
namespace {

std::string Found(std::string_view text, PercentDigits digits = PercentDigits::kAreNumber) {
  std::string all;
  const Placeholders placeholders(text, digits);
  for (const Placeholder& placeholder : placeholders) {
    all += all.empty() ? "" : " ";
    all += placeholder.whole;
  }
  if (placeholders.IsTimeFormat()) {
    all += " (time)";
  }
  return placeholders.AreAll() ? all : "too many";
}

struct Row {
  const char* name;
  std::string text;
  std::string found;
};

TEST(Placeholders, AreFound) {
  const Row rows[] = {
      // Numbers behind a percent sign.
      {"number", "Flow %1 m3/h, pressure %2 bar", "%1 %2"},
      {"number of two digits", "%10.", "%10"},
      {"number before a word", "%1hours %1times %2s", "%1 %1 %2"},
      {"number before a full stop", "Step %1.then", "%1"},
      {"number with separators", "%L1 files", "%L1"},
      {"percentage with a number in it", "%1%", "%1"},
      {"Turkish percentage", "%%1", "%1"},
      {"three digits are a percentage", "%100", ""},
      {"number 0 is none", "%0", ""},
      // printf
      {"conversions", "%s %d %i %u %x %5.2f %-10s %05d %+3d %c %p %@",
       "%s %d %i %u %x %5.2f %-10s %05d %+3d %c %p %@"},
      {"sizes", "%ld %lld %lu %zu %hhx %Lf %I64d", "%ld %lld %lu %zu %hhx %Lf %I64d"},
      {"numbered", "%1$s %2$5.1f %12$ld", "%1$s %2$5.1f %12$ld"},
      {"star", "%*d", "%*d %*d"},
      {"between letters", "x%dx%dpx", "%d %d"},
      {"escaped", "%%s %d%%", "%d"},
      {"formats of dates", "%Y-%d", "%d (time)"},
      // Names.
      {"Python", "%(name)s %(count)05d %(value)r", "%(name)s %(count)05d %(value)r"},
      {"Ruby", "%{name}", "%{name}"},
      {"dollar", "${name} ${user.name}", "${name} ${user.name}"},
      {"two braces", "{{name}} {{ name }}", "{{name}} {{ name }}"},
      {"braces", "{name} {user.name} {name:>10} {name!r}",
       "{name} {user.name} {name:>10} {name!r}"},
      {"a name in another language", "{\u0438\u043C\u044F} {pr\u00E9nom}",
       "{\u0438\u043C\u044F} {pr\u00E9nom}"},
      {"ICU", "{n, plural, one {# file} other {{n} files}} in {folder}",
       "{n, plural, one {# file} other {{n} files}} {folder}"},
      // Numbers in braces.
      {"numbers", "{0} {1:N2} {2,10:F1} {}", "{0} {1:N2} {2,10:F1} {}"},
      {"escaped braces", "{{0}}", ""},
      // None.
      {"percent sign before a blank", "100 % sure, 50% of, 5 % d", ""},
      {"percent sign at the end", "100%", ""},
      {"percent sign before a sign", "10%, 20%; (30%) %-sign", ""},
      {"percent sign before a word", "100%ig 100 %ig %complete %host %list", ""},
      {"the number of printed characters", "%n", ""},
      {"braces with blanks", "{ name } {a b} { 0 }", ""},
      {"one brace", "{name {0 }", ""},
      {"empty text", "", ""},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Found(row.text), row.found) << row.name;
  }
}

TEST(Placeholders, HaveWidthsWhereTheBaseUsesPrintf) {
  EXPECT_EQ(Found("%5d of %1s, %1 d", PercentDigits::kAreWidth), "%5d %1s %1");
  EXPECT_EQ(Found("%5d of %1s, %1 d"), "%5 %1 %1");
  EXPECT_TRUE(Placeholders("%5d", PercentDigits::kAreNumber).HasDoubtfulDigits());
  EXPECT_FALSE(Placeholders("%5 d", PercentDigits::kAreNumber).HasDoubtfulDigits());
}

TEST(Placeholders, OfHostileTextsAreNotJudged) {
  std::string many;
  std::string open;
  for (int i = 0; i < 65; ++i) {
    many += "%1 ";
    open += "{0:";
  }
  EXPECT_EQ(Found(many), "too many");
  EXPECT_EQ(Found(many.substr(3)).size(), 64U * 3 - 1);
  EXPECT_EQ(Found(open), "too many");
}

TEST(Placeholders, AreTheSameValue) {
  struct Pair {
    const char* name;
    const char* left;
    const char* right;
    bool areSame;
  };
  const Pair pairs[] = {
      {"number and number", "%1", "%1", true},
      {"with separators", "%1", "%L1", true},
      {"another number", "%1", "%2", false},
      {"numbered form", "%s", "%1$s", true},
      {"the second in the place of the first", "%s", "%2$s", false},
      {"width", "%d", "%5d", true},
      {"ways to write a number", "%f", "%.1e", true},
      {"another type", "%s", "%d", false},
      {"another size", "%d", "%ld", false},
      {"format", "{0}", "{0:N2}", true},
      {"number and name", "{0}", "{name}", false},
      {"one brace and two", "{name}", "{{name}}", false},
      {"blanks in two braces", "{{name}}", "{{ name }}", true},
      {"capital letters", "{name}", "{Name}", false},
  };
  for (const Pair& pair : pairs) {
    const Placeholders left(pair.left, PercentDigits::kAreWidth);
    const Placeholders right(pair.right, PercentDigits::kAreWidth);
    ASSERT_FALSE(left.IsEmpty() || right.IsEmpty()) << pair.name;
    EXPECT_EQ(IsSameValue(*left.begin(), *right.begin()), pair.areSame) << pair.name;
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
