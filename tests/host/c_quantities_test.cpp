// The C functions for quantities: the arguments that they check, and what they pass on. quantity_test.cpp
// and its neighbours cover the results.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "kelmo/kelmo.h"
#include "tests/host/owned_units.h"

namespace {

constexpr std::size_t kZero = KELMO_ZERO_TERMINATED;
constexpr std::int32_t kMetre = 10001;
constexpr std::int32_t kInch = 10002;

kelmo_number_format German() {
  auto format = Sized<kelmo_number_format>();
  EXPECT_EQ(kelmo_number_format_of_language("de", 2, &format), KELMO_OK);
  format.is_grouped = 1;
  return format;
}

class CQuantities : public testing::Test {
 protected:
  CQuantities() {
    const OwnedUnitsLoader loader = NewUnitsLoader();
    AddUnits(*loader,
             "10001\t1\t\tm\tmetre\n10002\t0.5\t\tin\tinch\n12001\t1\t\ts\tsecond\n"
             "18001\t1\t\tK\tkelvin\t19001\n18002\t1\t273.15\t\u00B0C\tCelsius\t19001\n"
             "19001\t1\t\tK\tkelvin\n");
    EXPECT_EQ(kelmo_units_loader_add_memory(loader.get(), "de\n10001\tM\tMeter\n", kZero, "de", 2,
                                            KELMO_UNITS_NAMES, nullptr),
              KELMO_OK);
    units_ = FinishUnits(*loader);
  }

  // The text; the name of the status if that is not KELMO_OK.
  std::string Printed(const kelmo_quantity& quantity, const kelmo_view* view = nullptr,
                      const kelmo_print_options* options = nullptr) const {
    std::array<char, 100> buffer = {'#'};
    std::size_t needed = 99;
    const kelmo_status status = kelmo_quantity_print(units_.get(), view, &quantity, options,
                                                     buffer.data(), buffer.size(), &needed);
    if (status != KELMO_OK) {
      EXPECT_EQ(buffer[0], '#');
      EXPECT_EQ(needed, 99U);
      return kelmo_status_name(status);
    }
    EXPECT_EQ(needed, std::strlen(buffer.data()));
    return buffer.data();
  }

  kelmo_status Read(std::string_view text, const kelmo_read_options* options,
                    const kelmo_view* view = nullptr) {
    return kelmo_quantity_read(units_.get(), view, text.data(), text.size(), options, &read_,
                               nullptr);
  }

  OwnedUnits units_;
  const kelmo_quantity metre_ = kelmo_quantity_of(1, 0.25, 0, kMetre);
  const kelmo_quantity inch_ = kelmo_quantity_of(4, 0.25, 0, kInch);
  kelmo_quantity read_ = kelmo_quantity_of(-1, -2, -3, -4);
};

TEST_F(CQuantities, NullIsRefused) {
  kelmo_quantity result = metre_;
  double number = 5;
  std::int32_t order = 5;
  std::uint64_t hash = 5;
  const kelmo_units* const units = units_.get();
  struct Case {
    const char* name;
    kelmo_status status;
  };
  const Case cases[] = {
      {"add: units", kelmo_quantity_add(nullptr, &metre_, &inch_, &result)},
      {"add: left", kelmo_quantity_add(units, nullptr, &inch_, &result)},
      {"add: right", kelmo_quantity_add(units, &metre_, nullptr, &result)},
      {"add: result", kelmo_quantity_add(units, &metre_, &inch_, nullptr)},
      {"subtract: units", kelmo_quantity_subtract(nullptr, &metre_, &inch_, &result)},
      {"subtract: left", kelmo_quantity_subtract(units, nullptr, &inch_, &result)},
      {"subtract: right", kelmo_quantity_subtract(units, &metre_, nullptr, &result)},
      {"subtract: result", kelmo_quantity_subtract(units, &metre_, &inch_, nullptr)},
      {"multiply: units", kelmo_quantity_multiply(nullptr, &metre_, 2, &result)},
      {"multiply: quantity", kelmo_quantity_multiply(units, nullptr, 2, &result)},
      {"multiply: result", kelmo_quantity_multiply(units, &metre_, 2, nullptr)},
      {"divide: units", kelmo_quantity_divide(nullptr, &metre_, 2, &result)},
      {"divide: quantity", kelmo_quantity_divide(units, nullptr, 2, &result)},
      {"divide: result", kelmo_quantity_divide(units, &metre_, 2, nullptr)},
      {"ratio: units", kelmo_quantity_ratio(nullptr, &metre_, &inch_, &number)},
      {"ratio: left", kelmo_quantity_ratio(units, nullptr, &inch_, &number)},
      {"ratio: right", kelmo_quantity_ratio(units, &metre_, nullptr, &number)},
      {"ratio: result", kelmo_quantity_ratio(units, &metre_, &inch_, nullptr)},
      {"sum: units", kelmo_quantity_sum(nullptr, &metre_, 1, &result)},
      {"sum: quantities", kelmo_quantity_sum(units, nullptr, 1, &result)},
      {"sum: none", kelmo_quantity_sum(units, &metre_, 0, &result)},
      {"sum: result", kelmo_quantity_sum(units, &metre_, 1, nullptr)},
      {"compare: units", kelmo_quantity_compare(nullptr, &metre_, &inch_, &order)},
      {"compare: left", kelmo_quantity_compare(units, nullptr, &inch_, &order)},
      {"compare: right", kelmo_quantity_compare(units, &metre_, nullptr, &order)},
      {"compare: result", kelmo_quantity_compare(units, &metre_, &inch_, nullptr)},
      {"hash: units", kelmo_quantity_hash(nullptr, &metre_, &hash)},
      {"hash: quantity", kelmo_quantity_hash(units, nullptr, &hash)},
      {"hash: result", kelmo_quantity_hash(units, &metre_, nullptr)},
      {"convert: units", kelmo_quantity_convert(nullptr, &metre_, 1, kInch, &result)},
      {"convert: quantities", kelmo_quantity_convert(units, nullptr, 1, kInch, &result)},
      {"convert: results", kelmo_quantity_convert(units, &metre_, 1, kInch, nullptr)},
      {"round: units", kelmo_quantity_round(nullptr, &metre_, &number)},
      {"round: quantity", kelmo_quantity_round(units, nullptr, &number)},
      {"round: result", kelmo_quantity_round(units, &metre_, nullptr)},
      {"print: units",
       kelmo_quantity_print(nullptr, nullptr, &metre_, nullptr, nullptr, 0, nullptr)},
      {"print: quantity",
       kelmo_quantity_print(units, nullptr, nullptr, nullptr, nullptr, 0, nullptr)},
      {"print: buffer",
       kelmo_quantity_print(units, nullptr, &metre_, nullptr, nullptr, 1, nullptr)},
      {"read: units", kelmo_quantity_read(nullptr, nullptr, "1 m", 3, nullptr, &result, nullptr)},
      {"read: text", kelmo_quantity_read(units, nullptr, nullptr, 3, nullptr, &result, nullptr)},
      {"read: result", kelmo_quantity_read(units, nullptr, "1 m", 3, nullptr, nullptr, nullptr)},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(row.status, KELMO_INVALID_ARGUMENT) << row.name;
  }
  EXPECT_EQ(std::memcmp(&result, &metre_, sizeof result), 0) << "failures change nothing";
  EXPECT_EQ(number, 5);
  EXPECT_EQ(order, 5);
  EXPECT_EQ(hash, 5U);
  EXPECT_EQ(kelmo_quantity_convert(units, nullptr, 0, kInch, nullptr), KELMO_OK);
}

TEST_F(CQuantities, ResultsAreThoseOfTheOperation) {
  kelmo_quantity result = {};
  double number = 0;
  std::int32_t order = 0;
  std::uint64_t hash = 0;
  std::uint64_t other = 1;
  const kelmo_units* const units = units_.get();
  EXPECT_EQ(kelmo_quantity_add(units, &metre_, &inch_, &result), KELMO_OK);
  EXPECT_EQ(result.number, 3);
  EXPECT_EQ(kelmo_quantity_subtract(units, &metre_, &inch_, &result), KELMO_OK);
  EXPECT_EQ(result.number, -1);
  EXPECT_EQ(kelmo_quantity_multiply(units, &inch_, 3, &result), KELMO_OK);
  EXPECT_EQ(result.number, 12);
  EXPECT_EQ(kelmo_quantity_divide(units, &inch_, 8, &result), KELMO_OK);
  EXPECT_EQ(result.number, 0.5);
  EXPECT_EQ(kelmo_quantity_ratio(units, &metre_, &inch_, &number), KELMO_OK);
  EXPECT_EQ(number, 0.5);
  EXPECT_EQ(kelmo_quantity_compare(units, &metre_, &inch_, &order), KELMO_OK);
  EXPECT_EQ(order, -1);
  EXPECT_EQ(kelmo_quantity_round(units, &inch_, &number), KELMO_OK);
  EXPECT_EQ(number, 4);
  const std::array<kelmo_quantity, 3> all = {metre_, inch_, inch_};
  EXPECT_EQ(kelmo_quantity_sum(units, all.data(), all.size(), &result), KELMO_OK);
  EXPECT_EQ(result.number, 5);
  EXPECT_EQ(kelmo_quantity_convert(units, &inch_, 1, kMetre, &result), KELMO_OK);
  EXPECT_EQ(result.number, 2);
  EXPECT_EQ(result.absolute_tolerance, 0.125);
  EXPECT_EQ(kelmo_quantity_hash(units, &result, &hash), KELMO_OK);
  EXPECT_EQ(kelmo_quantity_hash(units, &inch_, &other), KELMO_OK);
  EXPECT_EQ(hash, other);
}

TEST_F(CQuantities, PrintTakesTheFormatOfItsOptionsOrOfTheView) {
  const kelmo_quantity quantity = kelmo_quantity_of(1234.5, 0.1, 0, kMetre);
  const kelmo_number_format german = German();
  kelmo_number_format plain = german;
  plain.is_grouped = 0;
  const Owned<kelmo_view> view = ViewWith("de", &german);
  auto options = Sized<kelmo_print_options>();
  EXPECT_EQ(Printed(quantity), "1234.5\u00A0m");
  EXPECT_EQ(Printed(quantity, view.get()), "1.234,5\u00A0M");
  EXPECT_EQ(Printed(quantity, view.get(), &options), "1.234,5\u00A0M");
  options.flags = KELMO_PRINT_NAME;
  EXPECT_EQ(Printed(quantity, view.get(), &options), "1.234,5\u00A0Meter");
  options.numbers = &plain;
  EXPECT_EQ(Printed(quantity, view.get(), &options), "1234,5\u00A0Meter");
  options.flags = KELMO_PRINT_NAME | KELMO_PRINT_NUMBER;
  EXPECT_EQ(Printed(quantity, nullptr, &options), "1234,5");
  const kelmo_quantity exact = kelmo_quantity_of(1234.5, 0, 0, kMetre);
  EXPECT_EQ(Printed(exact, nullptr, &options), "KELMO_CANNOT_ROUND");
  options.flags = KELMO_PRINT_ALL_DIGITS;
  EXPECT_EQ(Printed(exact, nullptr, &options), "1234,5\u00A0m");
}

TEST_F(CQuantities, PrintChecksItsOptions) {
  auto options = Sized<kelmo_print_options>();
  options.flags = 16;
  EXPECT_EQ(Printed(metre_, nullptr, &options), "KELMO_INVALID_ARGUMENT");
  options = Sized<kelmo_print_options>();
  options.size -= 1;
  EXPECT_EQ(Printed(metre_, nullptr, &options), "KELMO_INVALID_ARGUMENT");
  struct {
    kelmo_print_options known = Sized<kelmo_print_options>();
    std::uint64_t more = 77;
  } larger;
  larger.known.size = sizeof larger;
  EXPECT_EQ(Printed(inch_, nullptr, &larger.known), "4.0\u00A0in");
  kelmo_number_format wrong = German();
  wrong.size = 4;
  options = Sized<kelmo_print_options>();
  options.numbers = &wrong;
  EXPECT_EQ(Printed(metre_, nullptr, &options), "KELMO_INVALID_ARGUMENT");
  wrong = German();
  std::strcpy(wrong.decimal_mark, "\xFF");
  EXPECT_EQ(Printed(metre_, nullptr, &options), "KELMO_INVALID_UTF8");
}

TEST_F(CQuantities, PrintCutsAtWholeCharacters) {
  const kelmo_quantity celsius = kelmo_quantity_of(5, 1, 0, 18002);
  const std::string whole = "5\u00A0\u00B0C";  // 6 bytes
  for (std::size_t capacity = 0; capacity <= 8; ++capacity) {
    std::array<char, 9> buffer;
    buffer.fill('#');
    std::size_t needed = 0;
    ASSERT_EQ(kelmo_quantity_print(units_.get(), nullptr, &celsius, nullptr,
                                   capacity != 0 ? buffer.data() : nullptr, capacity, &needed),
              KELMO_OK);
    EXPECT_EQ(needed, whole.size());
    const std::size_t kept = capacity == 0  ? 0
                             : capacity < 2 ? 0
                             : capacity < 4 ? 1
                             : capacity < 6 ? 3
                             : capacity < 7 ? 5
                                            : 6;
    std::string expected = whole.substr(0, kept);
    expected += capacity != 0 ? std::string(1, '\0') : "";
    expected.resize(buffer.size(), '#');
    EXPECT_EQ(std::string(buffer.data(), buffer.size()), expected) << capacity;
  }
}

TEST_F(CQuantities, ReadTakesItsOptions) {
  const kelmo_number_format german = German();
  const Owned<kelmo_view> view = ViewWith("de", &german);
  auto options = Sized<kelmo_read_options>();
  EXPECT_EQ(Read("1.5 m", nullptr), KELMO_OK);
  EXPECT_EQ(read_.number, 1.5);
  EXPECT_EQ(read_.absolute_tolerance, 0.1);
  EXPECT_EQ(read_.code, kMetre);
  EXPECT_EQ(Read("1,5 Meter", nullptr, view.get()), KELMO_OK);
  EXPECT_EQ(read_.number, 1.5);
  EXPECT_EQ(Read("1,5 Meter", nullptr), KELMO_INVALID_TEXT);
  options.numbers = &german;
  EXPECT_EQ(Read("2,5 m", &options), KELMO_OK);
  EXPECT_EQ(read_.number, 2.5);
  options.numbers = nullptr;
  options.kind = 19;
  EXPECT_EQ(Read("5 K", &options), KELMO_OK);
  EXPECT_EQ(read_.code, 19001);
  EXPECT_EQ(Read("5 m", &options), KELMO_DIFFERENT_KINDS);
  options.kind = 0;
  EXPECT_EQ(Read("5", &options), KELMO_INVALID_TEXT);
  options.code = kInch;
  options.kind = 10;
  options.absolute_tolerance = 0.5;
  options.relative_tolerance = 0.25;
  EXPECT_EQ(Read("5", &options), KELMO_OK);
  EXPECT_EQ(read_.code, kInch);
  EXPECT_EQ(read_.absolute_tolerance, 0.5);
  EXPECT_EQ(read_.relative_tolerance, 0.25);
  EXPECT_EQ(kelmo_quantity_read(units_.get(), nullptr, "6 m", kZero, nullptr, &read_, nullptr),
            KELMO_OK);
  EXPECT_EQ(read_.number, 6);
}

TEST_F(CQuantities, ReadChecksItsArguments) {
  struct Case {
    const char* name;
    std::string text;
    kelmo_status status;
    void (*change)(kelmo_read_options& options);
  };
  static kelmo_number_format wrong = German();
  wrong.size = 4;
  const Case cases[] = {
      {"too small", "1 m", KELMO_INVALID_ARGUMENT, [](auto& options) { options.size -= 1; }},
      {"a reserved field", "1 m", KELMO_INVALID_ARGUMENT,
       [](auto& options) { options.reserved = 1; }},
      {"a format that is too small", "1 m", KELMO_INVALID_ARGUMENT,
       [](auto& options) { options.numbers = &wrong; }},
      {"an unknown unit", "1 m", KELMO_UNKNOWN_UNIT, [](auto& options) { options.code = 77001; }},
      {"a kind as the unit", "1 m", KELMO_UNKNOWN_UNIT, [](auto& options) { options.code = 10; }},
      {"a unit of another kind than the wanted one", "1 m", KELMO_DIFFERENT_KINDS,
       [](auto& options) {
         options.code = 12001;
         options.kind = 10;
       }},
      {"a text that is not UTF-8", "1 m\xFF", KELMO_INVALID_UTF8, [](auto&) {}},
      {"a point with a relative tolerance", "1 K", KELMO_POINT_UNIT,
       [](auto& options) { options.relative_tolerance = 0.1; }},
      {"a zero behind the unit", std::string("1 m\0", 4), KELMO_UNKNOWN_UNIT, [](auto&) {}},
      {"the empty text", "", KELMO_INVALID_TEXT, [](auto&) {}},
  };
  for (const Case& row : cases) {
    auto options = Sized<kelmo_read_options>();
    row.change(options);
    EXPECT_EQ(Read(row.text, &options), row.status) << row.name;
    EXPECT_EQ(read_.number, -1) << row.name;
    EXPECT_EQ(read_.code, -4) << row.name;
  }
  EXPECT_EQ(kelmo_quantity_read(units_.get(), nullptr, nullptr, 0, nullptr, &read_, nullptr),
            KELMO_INVALID_TEXT)
      << "null is the empty text";
  struct {
    kelmo_read_options known = Sized<kelmo_read_options>();
    std::uint64_t more = 77;
  } larger;
  larger.known.size = sizeof larger;
  EXPECT_EQ(Read("1 m", &larger.known), KELMO_OK);
}

TEST_F(CQuantities, ReadTellsTheColumn) {
  const Owned<kelmo_problems> problems = NewProblems();
  EXPECT_EQ(kelmo_quantity_read(units_.get(), nullptr, "\u00A05 xy", kZero, nullptr, &read_,
                                problems.get()),
            KELMO_UNKNOWN_UNIT);
  auto problem = Sized<kelmo_problem>();
  ASSERT_EQ(kelmo_problems_get(problems.get(), 0, &problem), KELMO_OK);
  EXPECT_EQ(problem.code, KELMO_PROBLEM_UNKNOWN_UNIT);
  EXPECT_EQ(problem.severity, KELMO_ERROR);
  EXPECT_EQ(problem.line, 0U);
  EXPECT_EQ(problem.column, 4U);
  EXPECT_STREQ(problem.sentence.data, "The unit is not known");
  EXPECT_STREQ(problem.detail.data, "\"xy\"");
  EXPECT_EQ(kelmo_problems_count(problems.get()), 1U);
}

// ---- As arguments of placeholders

class QuantityArguments : public CQuantities {
 protected:
  std::string Formatted(const kelmo_view* view, const kelmo_argument& argument) {
    std::array<char, 100> buffer = {};
    const kelmo_status status = kelmo_view_format(view, "q", 1, &argument, 1, buffer.data(),
                                                  buffer.size(), nullptr, problems_.get());
    return status == KELMO_OK ? buffer.data() : kelmo_status_name(status);
  }

  // In a text of its own.
  std::string In(const std::string& text, const kelmo_quantity& quantity, std::uint32_t flags = 0) {
    kelmo_loader* loader = nullptr;
    EXPECT_EQ(kelmo_loader_create(&loader), KELMO_OK);
    const Owned<kelmo_loader> owner(loader);
    const std::string bytes = "de\nq " + text + "\n";
    EXPECT_EQ(kelmo_loader_add_memory(loader, bytes.data(), bytes.size(), "f", 1, nullptr, nullptr),
              KELMO_OK);
    kelmo_texts* texts = nullptr;
    EXPECT_EQ(kelmo_loader_finish(loader, &texts, nullptr), KELMO_OK);
    const Owned<kelmo_texts> ownerOfTexts(texts);
    const kelmo_string language = {"de", 2};
    auto options = Sized<kelmo_view_options>();
    options.flags = flags;
    options.languages = &language;
    options.language_count = 1;
    kelmo_view* view = nullptr;
    EXPECT_EQ(kelmo_view_create(texts, &options, &view, nullptr), KELMO_OK);
    const Owned<kelmo_view> ownerOfView(view);
    return Formatted(
        view, kelmo_named_argument("width", kelmo_quantity_argument(units_.get(), &quantity)));
  }

  const Owned<kelmo_problems> problems_ = NewProblems();
};

TEST_F(QuantityArguments, FillPlaceholdersInTheLanguageOfTheView) {
  const kelmo_quantity quantity = kelmo_quantity_of(1234.56, 0.1, 0, kMetre);
  const kelmo_quantity exact = kelmo_quantity_of(1234.56, 0, 0, kMetre);
  struct Case {
    const char* name;
    const char* text;
    const kelmo_quantity& quantity;
    std::uint32_t flags;
    const char* expected;
  };
  const Case cases[] = {
      {"by position", "[{0}]", quantity, 0, "[1234,6\u00A0M]"},
      {"by name", "[{width}]", quantity, 0, "[1234,6\u00A0M]"},
      {"all digits if the tolerance justifies none", "[{0}]", exact, 0, "[1234,56\u00A0M]"},
      {"a format", "[{0:.3f}]", quantity, 0, "[1234,560\u00A0M]"},
      {"a width is that of the number", "[{0:>10.1f}]", quantity, 0, "[    1234,6\u00A0M]"},
      {"isolated", "[{0}]", quantity, KELMO_VIEW_ISOLATE, "[\u20681234,6\u00A0M\u2069]"},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(In(row.text, row.quantity, row.flags), row.expected) << row.name;
  }
  EXPECT_EQ(PrintedProblems(*problems_), "");
}

TEST_F(QuantityArguments, FormatsThatDoNotFitStayVisible) {
  EXPECT_EQ(In("[{0:d}]", metre_), "[{0:d}]");
  EXPECT_EQ(In("[{0:x}]", metre_), "[{0:x}]");
  EXPECT_EQ(
      PrintedProblems(*problems_),
      "f:2: error: A placeholder cannot be filled: {0:d}: d is for integers, without decimals "
      "(key \"q\") (language \"de\")\n"
      "f:2: error: A placeholder cannot be filled: {0:x}: this is no format of numbers (key "
      "\"q\") (language \"de\")\n");
}

TEST_F(QuantityArguments, AreChecked) {
  const Owned<kelmo_view> view = ViewWith("en");
  const kelmo_argument good = kelmo_quantity_argument(units_.get(), &metre_);
  EXPECT_EQ(Formatted(view.get(), good), "is 1.0\u00A0m");
  kelmo_argument first = good;
  first.size = 64;  // a host of the first version has no quantities
  kelmo_argument withoutUnits = good;
  withoutUnits.units = nullptr;
  kelmo_argument withoutQuantity = good;
  withoutQuantity.quantity = nullptr;
  kelmo_argument count = good;
  count.is_count = 1;
  for (const kelmo_argument& argument : {first, withoutUnits, withoutQuantity, count}) {
    EXPECT_EQ(Formatted(view.get(), argument), "KELMO_INVALID_ARGUMENT");
  }
  const kelmo_quantity unknown = kelmo_quantity_of(1, 1, 0, 77001);
  const kelmo_quantity point = kelmo_quantity_of(1, 1, 0.5, 18001);
  kelmo_quantity reserved = metre_;
  reserved.reserved = 1;
  EXPECT_EQ(Formatted(view.get(), kelmo_quantity_argument(units_.get(), &unknown)),
            "KELMO_UNKNOWN_UNIT");
  EXPECT_EQ(Formatted(view.get(), kelmo_quantity_argument(units_.get(), &point)),
            "KELMO_POINT_UNIT");
  EXPECT_EQ(Formatted(view.get(), kelmo_quantity_argument(units_.get(), &reserved)),
            "KELMO_INVALID_ARGUMENT");
  std::array<char, 10> buffer = {};
  EXPECT_EQ(kelmo_number_print(nullptr, &good, buffer.data(), buffer.size(), nullptr),
            KELMO_INVALID_ARGUMENT);
  auto text = Sized<kelmo_text>();
  EXPECT_EQ(kelmo_view_find(view.get(), "q", 1, &good, &text), KELMO_INVALID_ARGUMENT);
}

// The arguments of a host of the first version are 64 bytes apart.
TEST_F(QuantityArguments, HostsOfTheFirstVersionPassSmallerArguments) {
  const Owned<kelmo_view> view = ViewWith("en");
  constexpr std::size_t kFirst = 64;
  alignas(kelmo_argument) std::array<std::byte, 3 * kFirst> bytes;
  bytes.fill(std::byte{0xEE});
  for (std::size_t i = 0; i < 3; ++i) {
    kelmo_argument argument = kelmo_integer_argument(static_cast<std::int64_t>(7 + i));
    argument.size = kFirst;
    std::memcpy(bytes.data() + i * kFirst, &argument, kFirst);
  }
  std::array<char, 20> buffer = {};
  ASSERT_EQ(
      kelmo_view_format(view.get(), "q", 1, reinterpret_cast<const kelmo_argument*>(bytes.data()),
                        3, buffer.data(), buffer.size(), nullptr, nullptr),
      KELMO_OK);
  EXPECT_STREQ(buffer.data(), "is 7");
  kelmo_argument last;
  std::memcpy(&last, bytes.data() + 2 * kFirst, kFirst);
  ASSERT_EQ(kelmo_number_print(nullptr, &last, buffer.data(), buffer.size(), nullptr), KELMO_OK);
  EXPECT_STREQ(buffer.data(), "9");
}

}  // namespace
