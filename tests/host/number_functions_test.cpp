// The C functions for number formats and for the languages of the system.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>

#include "kelmo/kelmo.h"

namespace {

kelmo_number_format Empty() {
  kelmo_number_format format;
  std::memset(&format, 0xAA, sizeof format);
  format.size = sizeof format;
  return format;
}

bool IsUnchanged(const kelmo_number_format& format) {
  const kelmo_number_format before = Empty();
  return std::memcmp(&format, &before, sizeof format) == 0;
}

TEST(NumberFormatOfLanguage, FillsAllFields) {
  kelmo_number_format format = Empty();
  ASSERT_EQ(kelmo_number_format_of_language("hi-IN", KELMO_ZERO_TERMINATED, &format), KELMO_OK);
  EXPECT_EQ(format.size, sizeof format);
  EXPECT_EQ(format.is_grouped, 0U);
  EXPECT_EQ(format.group_size, 3U);
  EXPECT_EQ(format.further_group_size, 2U);
  EXPECT_EQ(format.minimum_first_group, 1U);
  EXPECT_EQ(format.zero_digit, 0x30U);
  EXPECT_STREQ(format.decimal_mark, ".");
  EXPECT_STREQ(format.group_mark, ",");
  EXPECT_STREQ(format.minus_sign, "-");

  ASSERT_EQ(kelmo_number_format_of_language("fa and more", 2, &format), KELMO_OK);
  EXPECT_EQ(format.zero_digit, 0x6F0U);
  EXPECT_STREQ(format.decimal_mark, "\u066B");
  EXPECT_STREQ(format.minus_sign, "\u200E\u2212");
}

TEST(NumberFormatOfLanguage, CanBeWrittenBack) {
  kelmo_number_format format = Empty();
  ASSERT_EQ(kelmo_number_format_of_language("es", KELMO_ZERO_TERMINATED, &format), KELMO_OK);
  format.is_grouped = 1;
  char text[40];
  kelmo_argument number = kelmo_number_argument(-12345.5, KELMO_SHORTEST);
  ASSERT_EQ(kelmo_number_print(&format, &number, text, sizeof text, nullptr), KELMO_OK);
  EXPECT_STREQ(text, "-12.345,5");
  number.number = 1234;
  ASSERT_EQ(kelmo_number_print(&format, &number, text, sizeof text, nullptr), KELMO_OK);
  EXPECT_STREQ(text, "1234");
}

TEST(NumberFormatOfLanguage, RefusesWhatIsNotAllowed) {
  struct Row {
    const char* name;
    const char* id;
    std::size_t size;
    kelmo_status status;
  };
  const Row rows[] = {
      {"unknown language", "tlh", KELMO_ZERO_TERMINATED, KELMO_NOT_FOUND},
      {"empty id", "", KELMO_ZERO_TERMINATED, KELMO_NOT_FOUND},
      {"null as the empty id", nullptr, 0, KELMO_NOT_FOUND},
      {"null with a size", nullptr, 2, KELMO_INVALID_ARGUMENT},
      {"null as zero-terminated text", nullptr, KELMO_ZERO_TERMINATED, KELMO_INVALID_ARGUMENT},
      {"id that is not UTF-8", "de-\xFF", KELMO_ZERO_TERMINATED, KELMO_INVALID_UTF8},
  };
  for (const Row& row : rows) {
    kelmo_number_format format = Empty();
    EXPECT_EQ(kelmo_number_format_of_language(row.id, row.size, &format), row.status) << row.name;
    EXPECT_TRUE(IsUnchanged(format)) << row.name;
  }
  EXPECT_EQ(kelmo_number_format_of_language("de", 2, nullptr), KELMO_INVALID_ARGUMENT);
  kelmo_number_format small = Empty();
  small.size = sizeof small - 1;
  EXPECT_EQ(kelmo_number_format_of_language("de", 2, &small), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_number_format_of_user(&small), KELMO_INVALID_ARGUMENT);
  small.size = sizeof small;
  EXPECT_TRUE(IsUnchanged(small));
  EXPECT_EQ(kelmo_number_format_of_user(nullptr), KELMO_INVALID_ARGUMENT);
}

// A caller of a later version has more fields, which stay as they are.
TEST(NumberFormatOfLanguage, LeavesLaterFieldsAlone) {
  struct Later {
    kelmo_number_format format = Empty();
    unsigned later = 7;
  };
  Later later;
  later.format.size = sizeof later;
  ASSERT_EQ(kelmo_number_format_of_language("de", 2, &later.format), KELMO_OK);
  EXPECT_EQ(later.format.size, sizeof later);
  EXPECT_STREQ(later.format.decimal_mark, ",");
  EXPECT_EQ(later.later, 7U);
}

TEST(NumberFormatOfUser, CanBeUsed) {
  kelmo_number_format format = Empty();
  const kelmo_status status = kelmo_number_format_of_user(&format);
  if (status == KELMO_NOT_FOUND) {
    GTEST_SKIP() << "the system does not have the settings of this user";
  }
  ASSERT_EQ(status, KELMO_OK);
  EXPECT_STRNE(format.decimal_mark, "");
  EXPECT_STRNE(format.minus_sign, "");
  EXPECT_EQ(format.group_mark[0] == '\0', format.group_size == 0);
  kelmo_argument number = kelmo_integer_argument(5);
  char text[8];
  EXPECT_EQ(kelmo_number_print(&format, &number, text, sizeof text, nullptr), KELMO_OK);
  EXPECT_STREQ(text, "5");
}

TEST(SystemLanguage, RefusesWhatIsNotAllowed) {
  char id[4] = "abc";
  std::size_t needed = 7;
  EXPECT_EQ(kelmo_system_language(1000000, id, sizeof id, &needed), KELMO_NOT_FOUND);
  EXPECT_EQ(kelmo_system_language(0, nullptr, 1, &needed), KELMO_INVALID_ARGUMENT);
  EXPECT_STREQ(id, "abc");
  EXPECT_EQ(needed, 7U);
}

}  // namespace
