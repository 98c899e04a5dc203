// What the library says about the settings of the user. CTest runs this program in several
// environments, which contain the settings and what the library shall say (user_settings.cmake).

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

#include "kelmo/kelmo.h"

namespace {

std::string Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "(not set)";
}

// With the bytes of other characters than those of ASCII as numbers: "<C2><A0>".
std::string Printable(const char* mark) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string printable;
  for (; *mark != '\0'; ++mark) {
    const auto byte = static_cast<unsigned char>(*mark);
    if (byte > ' ' && byte < 0x7F) {
      printable += *mark;
    } else {
      printable += {'<', kDigits[byte / 16], kDigits[byte % 16], '>'};
    }
  }
  return printable;
}

class UserSettings : public testing::Test {
 protected:
  void SetUp() override {
    if (std::getenv("KELMO_EXPECTED_FORMAT") == nullptr) {
      GTEST_SKIP() << "CTest runs this with the settings of several users";
    }
  }
};

TEST_F(UserSettings, GiveTheNumberFormat) {
  kelmo_number_format format = {};
  format.size = sizeof format;
  const std::string locale = std::setlocale(LC_ALL, nullptr);
  const kelmo_status status = kelmo_number_format_of_user(&format);
  EXPECT_EQ(std::setlocale(LC_ALL, nullptr), locale);
  if (Variable("KELMO_EXPECTED_FORMAT") == "none") {
    EXPECT_EQ(status, KELMO_NOT_FOUND);
    EXPECT_EQ(format.group_size, 0U);
    return;
  }
  ASSERT_EQ(status, KELMO_OK);
  EXPECT_EQ("minus " + Printable(format.minus_sign) + " decimal " + Printable(format.decimal_mark) +
                " group " + Printable(format.group_mark) + ' ' + std::to_string(format.group_size) +
                ' ' + std::to_string(format.further_group_size),
            Variable("KELMO_EXPECTED_FORMAT"));
  EXPECT_EQ(format.is_grouped, 0U);
  EXPECT_EQ(format.minimum_first_group, 1U);
  EXPECT_EQ(format.zero_digit, 0x30U);
  EXPECT_EQ(format.size, sizeof format);
}

TEST_F(UserSettings, GiveTheLanguages) {
  std::string ids;
  char id[100];
  std::size_t index = 0;
  for (std::size_t needed = 0; kelmo_system_language(index, id, sizeof id, &needed) == KELMO_OK;
       ++index) {
    EXPECT_EQ(std::string(id).size(), needed);
    ids += (ids.empty() ? "" : " ") + std::string(id);
  }
  EXPECT_EQ(ids, Variable("KELMO_EXPECTED_LANGUAGES"));
}

}  // namespace
