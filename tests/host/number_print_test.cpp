// kelmo_number_print of the C interface.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <string>

#include "kelmo/kelmo.h"

namespace {

std::string Printed(const kelmo_number_format* format, const kelmo_argument& number) {
  std::array<char, 200> buffer = {};
  std::size_t needed = 0;
  EXPECT_EQ(kelmo_number_print(format, &number, buffer.data(), buffer.size(), &needed), KELMO_OK);
  EXPECT_EQ(needed, std::strlen(buffer.data()));
  return buffer.data();
}

kelmo_number_format German() {
  kelmo_number_format format = {};
  format.size = sizeof format;
  format.is_grouped = 1;
  format.group_size = 3;
  std::strcpy(format.decimal_mark, ",");
  std::strcpy(format.group_mark, ".");
  return format;
}

TEST(KelmoNumberPrint, WritesByTheFormat) {
  const kelmo_number_format german = German();
  EXPECT_EQ(Printed(nullptr, kelmo_number_argument(-1234.5, KELMO_SHORTEST)), "-1234.5");
  EXPECT_EQ(Printed(&german, kelmo_number_argument(-1234.5, 2)), "-1.234,50");
  EXPECT_EQ(Printed(&german, kelmo_count_argument(1000000)), "1.000.000");
  EXPECT_EQ(Printed(&german, kelmo_number_argument(-HUGE_VAL, 2)), "-\u221E");
}

TEST(KelmoNumberPrint, CutsAtWholeCharacters) {
  const kelmo_argument infinity = kelmo_number_argument(-HUGE_VAL, 2);
  for (std::size_t capacity = 0; capacity <= 6; ++capacity) {
    std::array<char, 8> buffer;
    buffer.fill('#');
    std::size_t needed = 0;
    ASSERT_EQ(kelmo_number_print(nullptr, &infinity, buffer.data(), capacity, &needed), KELMO_OK);
    EXPECT_EQ(needed, 4U);
    const std::string expected = capacity == 0   ? "########"
                                 : capacity == 1 ? std::string("\0#######", 8)
                                 : capacity < 5  ? std::string("-\0######", 8)
                                                 : std::string("-\u221E\0###", 8);
    EXPECT_EQ(std::string(buffer.data(), buffer.size()), expected) << capacity;
  }
  EXPECT_EQ(kelmo_number_print(nullptr, &infinity, nullptr, 0, nullptr), KELMO_OK);
}

TEST(KelmoNumberPrint, RefusesWhatIsNotAllowed) {
  std::array<char, 8> buffer = {'x'};
  std::size_t needed = 77;
  const kelmo_argument number = kelmo_integer_argument(1);
  const kelmo_argument text = kelmo_text_argument("1");
  kelmo_argument small = number;
  small.size = 63;  // the first version has 64 bytes
  kelmo_number_format wrong = German();
  wrong.size = 0;
  EXPECT_EQ(kelmo_number_print(nullptr, nullptr, buffer.data(), 8, &needed),
            KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_number_print(nullptr, &text, buffer.data(), 8, &needed), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_number_print(nullptr, &small, buffer.data(), 8, &needed), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_number_print(&wrong, &number, buffer.data(), 8, &needed), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_number_print(nullptr, &number, nullptr, 8, &needed), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(needed, 77U);
  EXPECT_EQ(buffer[0], 'x');
}

}  // namespace
