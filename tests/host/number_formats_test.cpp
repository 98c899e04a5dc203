#include "cldr/number_formats.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "cldr/number_table.h"

namespace KelmoLibs::Cldr {
namespace {

// How a format writes -1234567.5 and -1234.5: "-1.234.567,5 -1.234,5". "none" without a format.
std::string Shown(const NumberFormat* format) {
  if (format == nullptr) {
    return "none";
  }
  std::string shown;
  for (const std::string_view digits : {"1234567", "1234"}) {
    std::string grouped;
    std::size_t size = format->groupSize;
    std::size_t inGroup = 0;
    for (std::size_t i = digits.size(); i-- > 0;) {
      if (size != 0 && inGroup == size &&
          (i + 1 >= format->minimumFirstGroup || grouped.size() > size)) {
        grouped.insert(0, format->groupMark);
        size = format->furtherGroupSize;
        inGroup = 0;
      }
      grouped.insert(0, 1, digits[i]);
      ++inGroup;
    }
    shown += (shown.empty() ? "" : " ") + std::string(format->minusSign) + grouped +
             std::string(format->decimalMark) + '5';
  }
  return shown;
}

TEST(NumberFormats, AreThoseOfTheLanguage) {
  const std::string german = "-1.234.567,5 -1.234,5";
  const std::string swiss = "-1\u2019234\u2019567.5 -1\u2019234.5";
  const std::string english = "-1,234,567.5 -1,234.5";
  struct Row {
    const char* name;
    std::string id;
    std::string shown;
  };
  const Row rows[] = {
      {"language", "de", german},
      {"region as the language", "de-DE", german},
      {"region with its own format", "de-CH", swiss},
      {"region of another parent", "pt-AO", "-1\u00A0234\u00A0567,5 -1\u00A0234,5"},
      {"region behind the script", "de-Latn-CH", german},
      {"region whose script everyone knows", "pa-PK",
       "\u200E-\u200E1\u066C234\u066C567\u066B5 \u200E-\u200E1\u066C234\u066B5"},
      {"former id", "iw", "\u200E-1,234,567.5 \u200E-1,234.5"},
      {"underscore", "de_CH", swiss},
      {"upper case", "DE-CH", swiss},
      {"lower case", "de-ch", swiss},
      {"several further parts", "de-CH-1996-u-nu-latn", swiss},
      {"parts that are long", "de-CH-" + std::string(100, 'x'), swiss},
      {"part with characters that no id has", "de-CH-\xFF \n", swiss},
      {"groups of two digits", "hi", "-12,34,567.5 -1,234.5"},
      {"two digits before the first mark", "es", "-1.234.567,5 -1234,5"},
      {"narrow blank", "fr", "-1\u202F234\u202F567,5 -1\u202F234,5"},
      {"another minus sign", "sv", "\u22121\u00A0234\u00A0567,5 \u22121\u00A0234,5"},
      {"no groups", "en-US-POSIX", "-1234567.5 -1234.5"},
      {"script of another language's ids", "zh-Hant", english},
      {"unknown language", "tlh", "none"},
      {"unknown language in a known region", "tlh-CH", "none"},
      {"empty id", "", "none"},
      {"hyphens", "--", "none"},
      {"hyphens at the end", "de--", german},
      {"two ids of the table", "de id", "none"},
      {"blanks", "  ", "none"},
      {"signs before and behind the letters and digits", "de-{:@", german},
      {"part of an id", "d", "none"},
      {"long id without parts", std::string(100, 'd'), "none"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Shown(FindNumberFormat(row.id)), row.shown) << row.name;
  }
}

TEST(NumberFormats, HaveTheDigitsOfTheLanguage) {
  EXPECT_EQ(FindNumberFormat("de")->zeroDigit, U'0');
  EXPECT_EQ(FindNumberFormat("ar-EG")->zeroDigit, U'\u0660');
  EXPECT_EQ(FindNumberFormat("ar-AE")->zeroDigit, U'0');
  EXPECT_EQ(FindNumberFormat("ff-Adlm")->zeroDigit, U'\U0001E950');
}

TEST(NumberFormats, HaveShortMarks) {
  for (const NumberFormatRow& row : kNumberTable) {
    for (const std::string_view mark :
         {row.format.decimalMark, row.format.groupMark, row.format.minusSign}) {
      EXPECT_LE(mark.size(), kLongestMark) << row.languages;
      EXPECT_GT(mark.size(), 0U) << row.languages;
    }
  }
}

}  // namespace
}  // namespace KelmoLibs::Cldr
