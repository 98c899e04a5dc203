#include "host/c_arguments.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tests/support/allocation_probe.h"

namespace {

using namespace KelmoLibs::Host;
using KelmoLibs::Cldr::NumberFormat;

constexpr std::uint32_t kFirstArgument = 64;  // its size in the first version

kelmo_argument TextOfSize(const char* data, std::size_t size) {
  kelmo_argument argument = kelmo_text_argument(nullptr);
  argument.text = {data, size};
  return argument;
}

template <class Change>
kelmo_argument Changed(kelmo_argument argument, Change change) {
  change(argument);
  return argument;
}

struct StatusCase {
  const char* name;
  std::vector<kelmo_argument> arguments;
  kelmo_status expected;
};

TEST(ArgumentArray, ChecksEveryArgument) {
  const kelmo_argument integer = kelmo_integer_argument(1);
  const std::vector<StatusCase> cases = {
      {"none", {}, KELMO_OK},
      {"all types",
       {kelmo_text_argument("a"), integer, kelmo_number_argument(1, 2),
        Changed(integer, [](auto& a) { a.type = KELMO_ARGUMENT_UNSIGNED; })},
       KELMO_OK},
      {"a null text without a size", {TextOfSize(nullptr, 0)}, KELMO_OK},
      {"a null text with a size", {TextOfSize(nullptr, 1)}, KELMO_INVALID_ARGUMENT},
      {"a null text that ends with a zero",
       {TextOfSize(nullptr, KELMO_ZERO_TERMINATED)},
       KELMO_INVALID_ARGUMENT},
      {"a text that is not UTF-8", {TextOfSize("\xC3", 1)}, KELMO_OK},
      {"a name that is not UTF-8", {kelmo_named_argument("\xFF", integer)}, KELMO_OK},
      {"a null name with a size",
       {Changed(integer, [](auto& a) { a.name.size = 1; })},
       KELMO_INVALID_ARGUMENT},
      {"no type", {Changed(integer, [](auto& a) { a.type = 0; })}, KELMO_INVALID_ARGUMENT},
      {"an unknown type", {Changed(integer, [](auto& a) { a.type = 7; })}, KELMO_INVALID_ARGUMENT},
      {"the fewest decimals", {kelmo_number_argument(1, -1)}, KELMO_OK},
      {"fewer decimals", {kelmo_number_argument(1, -2)}, KELMO_INVALID_ARGUMENT},
      {"the most decimals", {kelmo_number_argument(1, 99)}, KELMO_OK},
      {"more decimals", {kelmo_number_argument(1, 100)}, KELMO_INVALID_ARGUMENT},
      {"decimals of an integer mean nothing",
       {Changed(integer, [](auto& a) { a.decimals = 100; })},
       KELMO_OK},
      {"one count", {integer, kelmo_count_argument(1)}, KELMO_OK},
      {"two counts", {kelmo_count_argument(1), kelmo_count_argument(1)}, KELMO_INVALID_ARGUMENT},
      {"a count that is a text",
       {Changed(kelmo_text_argument("1"), [](auto& a) { a.is_count = 1; })},
       KELMO_INVALID_ARGUMENT},
      {"neither a count nor none",
       {Changed(integer, [](auto& a) { a.is_count = 2; })},
       KELMO_INVALID_ARGUMENT},
      {"too small",
       {Changed(integer, [](auto& a) { a.size = kFirstArgument - 8; })},
       KELMO_INVALID_ARGUMENT},
      {"a size that is not aligned",
       {Changed(integer, [](auto& a) { a.size = sizeof(kelmo_argument) + 1; })},
       KELMO_INVALID_ARGUMENT},
      {"another size behind the first",
       {integer, Changed(integer, [](auto& a) { a.size = sizeof(kelmo_argument) + 8; })},
       KELMO_INVALID_ARGUMENT},
  };
  for (const StatusCase& row : cases) {
    ArgumentArray taken;
    EXPECT_EQ(taken.Take(row.arguments.data(), row.arguments.size()), row.expected) << row.name;
    if (row.expected == KELMO_OK) {
      EXPECT_EQ(taken.All().size, row.arguments.size()) << row.name;
    }
  }
}

TEST(ArgumentArray, RefusesNullAndCountsThatCannotBe) {
  const kelmo_argument argument = kelmo_integer_argument(1);
  EXPECT_EQ(ArgumentArray().Take(nullptr, 1), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(ArgumentArray().Take(nullptr, 0), KELMO_OK);
  EXPECT_EQ(ArgumentArray().Take(&argument, SIZE_MAX), KELMO_INVALID_ARGUMENT);
}

// A count is possible as long as the memory of that many arguments has a size.
TEST(ArgumentArray, RefusesCountsForWhichNoMemoryHasTheSize) {
  constexpr std::uint32_t kSize = 1U << 20U;  // of the arguments of a later version
  constexpr std::size_t kMost = SIZE_MAX / kSize;
  const kelmo_argument argument =
      Changed(kelmo_integer_argument(1), [](auto& a) { a.size = kSize; });
  EXPECT_EQ(ArgumentArray().Take(&argument, kMost + 1), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(allocation_probe::CallWithFailingAllocation(
                1, [&argument] { ArgumentArray().Take(&argument, kMost); }),
            allocation_probe::Outcome::kThrew);
}

TEST(ArgumentArray, TakesAllFields) {
  const std::vector<kelmo_argument> given = {
      kelmo_named_argument("who", TextOfSize("a\0b", 3)),
      kelmo_integer_argument(INT64_MIN),
      Changed(kelmo_integer_argument(-1), [](auto& a) { a.type = KELMO_ARGUMENT_UNSIGNED; }),
      kelmo_number_argument(2.5, 3),
      kelmo_count_argument(7),
  };
  ArgumentArray taken;
  ASSERT_EQ(taken.Take(given.data(), given.size()), KELMO_OK);
  const Arguments all = taken.All();
  ASSERT_EQ(all.size, given.size());
  EXPECT_EQ(all.data[0].name, "who");
  EXPECT_EQ(std::get<std::string_view>(all.data[0].value), std::string_view("a\0b", 3));
  EXPECT_EQ(std::get<std::int64_t>(all.data[1].value), INT64_MIN);
  EXPECT_EQ(std::get<std::uint64_t>(all.data[2].value), UINT64_MAX);
  EXPECT_EQ(std::get<double>(all.data[3].value), 2.5);
  EXPECT_EQ(all.data[3].decimals, 3);
  EXPECT_EQ(all.data[4].name, "");
  EXPECT_EQ(std::get<std::int64_t>(all.data[4].value), 7);
  EXPECT_EQ(taken.Count(), all.data + 4);
  EXPECT_FALSE(all.data[3].isCount);
}

TEST(ArgumentArray, TakesAFloatIfTheNumberMayBeOne) {
  struct Case {
    const char* name;
    double number;
    std::int32_t type;
    bool isFloat;
  };
  const Case cases[] = {
      {"a float", 0.5, KELMO_ARGUMENT_FLOAT, true},
      {"the largest", std::numeric_limits<float>::max(), KELMO_ARGUMENT_FLOAT, true},
      {"the smallest", std::numeric_limits<float>::lowest(), KELMO_ARGUMENT_FLOAT, true},
      {"too large", 1e39, KELMO_ARGUMENT_FLOAT, false},
      {"too small", -1e39, KELMO_ARGUMENT_FLOAT, false},
      {"not a number", std::numeric_limits<double>::quiet_NaN(), KELMO_ARGUMENT_FLOAT, false},
      {"a double", 0.5, KELMO_ARGUMENT_NUMBER, false},
  };
  for (const Case& row : cases) {
    Argument taken;
    kelmo_argument given = kelmo_number_argument(row.number, KELMO_SHORTEST);
    given.type = row.type;
    EXPECT_EQ(TakeArgument(given, taken), KELMO_OK) << row.name;
    EXPECT_EQ(taken.isFloat, row.isFloat) << row.name;
  }
}

TEST(Arguments, AreMadeByTheFunctionsOfTheHeader) {
  Argument taken;
  ASSERT_EQ(TakeArgument(kelmo_number_count_argument(1.5, 2), taken), KELMO_OK);
  EXPECT_TRUE(taken.isCount);
  EXPECT_EQ(std::get<double>(taken.value), 1.5);
  EXPECT_EQ(taken.decimals, 2);
  ASSERT_EQ(TakeArgument(kelmo_named_argument(nullptr, kelmo_text_argument(nullptr)), taken),
            KELMO_OK);
  EXPECT_EQ(taken.name, "");
  EXPECT_EQ(std::get<std::string_view>(taken.value), "");
}

// Arguments of a later version have more fields.
TEST(ArgumentArray, StepsByTheSizeOfTheFirstArgument) {
  struct LaterArgument {
    kelmo_argument known;
    std::uint64_t added;
  };
  std::vector<LaterArgument> given;
  for (int i = 0; i < 3; ++i) {
    given.push_back({kelmo_integer_argument(i), UINT64_MAX});
    given.back().known.size = sizeof(LaterArgument);
  }
  ArgumentArray taken;
  ASSERT_EQ(taken.Take(&given[0].known, given.size()), KELMO_OK);
  for (std::int64_t i = 0; i < 3; ++i) {
    EXPECT_EQ(std::get<std::int64_t>(taken.All().data[i].value), i);
  }
}

TEST(ArgumentArray, TakesMemoryOnlyForManyArguments) {
  std::vector<kelmo_argument> given;
  for (int i = 0; i < 40; ++i) {
    given.push_back(kelmo_integer_argument(i));
  }
  const std::size_t before = allocation_probe::Count();
  {
    ArgumentArray taken;
    EXPECT_EQ(taken.Take(given.data(), ArgumentArray::kInPlace), KELMO_OK);
    EXPECT_EQ(allocation_probe::Count(), before);
  }
  const allocation_probe::LeakCheck leaks;
  ArgumentArray taken;
  EXPECT_EQ(taken.Take(given.data(), given.size()), KELMO_OK);
  EXPECT_EQ(std::get<std::int64_t>(taken.All().data[39].value), 39);
  EXPECT_EQ(allocation_probe::CallWithFailingAllocation(
                1, [&given] { ArgumentArray().Take(given.data(), given.size()); }),
            allocation_probe::Outcome::kThrew);
}

kelmo_number_format EmptyFormat() {
  kelmo_number_format format = {};
  format.size = sizeof format;
  return format;
}

TEST(TakeNumberFormat, GivesDefaultsForWhatIsZero) {
  kelmo_number_format given = EmptyFormat();
  given.is_grouped = 1;
  given.group_size = 4;
  NumberFormat taken;
  taken.decimalMark = "x";
  taken.groupMark = "y";
  taken.minusSign = "z";
  ASSERT_EQ(TakeNumberFormat(given, taken), KELMO_OK);
  EXPECT_EQ(taken.decimalMark, ".");
  EXPECT_EQ(taken.groupMark, ",");
  EXPECT_EQ(taken.minusSign, "-");
  EXPECT_EQ(taken.zeroDigit, U'0');
  EXPECT_TRUE(taken.isGrouped);
  EXPECT_EQ(taken.groupSize, 4U);
  EXPECT_EQ(taken.furtherGroupSize, 4U);
  EXPECT_EQ(taken.minimumFirstGroup, 1U);
}

TEST(TakeNumberFormat, TakesAllFields) {
  kelmo_number_format given = EmptyFormat();
  given.group_size = 3;
  given.further_group_size = 2;
  given.minimum_first_group = 2;
  given.zero_digit = 0x966;
  std::strcpy(given.decimal_mark, "\u066B");
  std::strcpy(given.group_mark, "\u066C");
  std::strcpy(given.minus_sign, "fifteen bytes..");
  NumberFormat taken;
  ASSERT_EQ(TakeNumberFormat(given, taken), KELMO_OK);
  EXPECT_EQ(taken.decimalMark, "\u066B");
  EXPECT_EQ(taken.groupMark, "\u066C");
  EXPECT_EQ(taken.minusSign, "fifteen bytes..");
  EXPECT_EQ(taken.zeroDigit, U'\u0966');
  EXPECT_FALSE(taken.isGrouped);
  EXPECT_EQ(taken.groupSize, 3U);
  EXPECT_EQ(taken.furtherGroupSize, 2U);
  EXPECT_EQ(taken.minimumFirstGroup, 2U);
}

struct FormatCase {
  const char* name;
  void (*change)(kelmo_number_format& format);
  kelmo_status expected;
};

TEST(TakeNumberFormat, ChecksEveryField) {
  const std::vector<FormatCase> cases = {
      {"too small", [](auto& f) { f.size = sizeof f - 1; }, KELMO_INVALID_ARGUMENT},
      {"larger", [](auto& f) { f.size = sizeof f + 8; }, KELMO_OK},
      {"neither grouped nor not", [](auto& f) { f.is_grouped = 2; }, KELMO_INVALID_ARGUMENT},
      {"a mark without a zero",
       [](auto& f) { std::memset(f.decimal_mark, 'x', sizeof f.decimal_mark); },
       KELMO_INVALID_ARGUMENT},
      {"a group mark that is not UTF-8", [](auto& f) { f.group_mark[0] = '\xC3'; },
       KELMO_INVALID_UTF8},
      {"a sign that is not UTF-8", [](auto& f) { f.minus_sign[0] = '\x80'; }, KELMO_INVALID_UTF8},
      {"the last digits below the surrogates", [](auto& f) { f.zero_digit = 0xD7F6; }, KELMO_OK},
      {"a nine that is a surrogate", [](auto& f) { f.zero_digit = 0xD7F7; },
       KELMO_INVALID_ARGUMENT},
      {"a surrogate", [](auto& f) { f.zero_digit = 0xDFFF; }, KELMO_INVALID_ARGUMENT},
      {"behind the surrogates", [](auto& f) { f.zero_digit = 0xE000; }, KELMO_OK},
      {"the last digits of all", [](auto& f) { f.zero_digit = 0x10FFF6; }, KELMO_OK},
      {"a nine beyond all characters", [](auto& f) { f.zero_digit = 0x10FFF7; },
       KELMO_INVALID_ARGUMENT},
      {"the largest number", [](auto& f) { f.zero_digit = UINT32_MAX; }, KELMO_INVALID_ARGUMENT},
  };
  for (const FormatCase& row : cases) {
    kelmo_number_format given = EmptyFormat();
    row.change(given);
    NumberFormat taken;
    EXPECT_EQ(TakeNumberFormat(given, taken), row.expected) << row.name;
  }
}

}  // namespace
