// The C functions for units: the arguments that they check, and what they pass on.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "kelmo/kelmo.h"
#include "tests/host/owned.h"
#include "tests/host/owned_units.h"
#include "tests/support/allocation_probe.h"

namespace {

constexpr std::size_t kZero = KELMO_ZERO_TERMINATED;
constexpr std::int32_t kFormats[] = {KELMO_UNITS_FILE, KELMO_UNITS_FOUR_FIELDS, KELMO_UNITS_NAMES};

std::string_view TextOf(kelmo_string text) { return {text.data, text.size}; }

kelmo_unit Unit(std::int32_t code, double factor, const char* symbol, const char* name) {
  auto unit = Sized<kelmo_unit>();
  unit.code = code;
  unit.factor = factor;
  unit.symbol = {symbol, kZero};
  unit.name = {name, name != nullptr ? kZero : 0};
  return unit;
}

TEST(CUnits, LoaderCreateKnowsThreeStarts) {
  for (const std::int32_t start : {-1, 3, 99}) {
    kelmo_units_loader* loader = nullptr;
    EXPECT_EQ(kelmo_units_loader_create(start, &loader), KELMO_INVALID_ARGUMENT) << start;
    EXPECT_EQ(loader, nullptr) << start;
  }
  EXPECT_EQ(kelmo_units_loader_create(KELMO_UNITS_NONE, nullptr), KELMO_INVALID_ARGUMENT);
  struct Case {
    std::int32_t start;
    std::size_t units;
    std::size_t kinds;
  };
  for (const Case& row : {Case{KELMO_UNITS_NONE, 0, 0}, Case{KELMO_UNITS_BUILT_IN, 6, 4},
                          Case{KELMO_UNITS_AFTER_INIT, 5, 3}}) {
    const OwnedUnits units = FinishUnits(*NewUnitsLoader(row.start));
    EXPECT_EQ(kelmo_units_count(units.get(), 0), row.units) << row.start;
    EXPECT_EQ(kelmo_units_kind_count(units.get()), row.kinds) << row.start;
  }
}

TEST(CUnits, NullIsAllowedWhereNothingHappens) {
  kelmo_units_loader_destroy(nullptr);
  kelmo_units_release(nullptr);
  EXPECT_EQ(kelmo_units_retain(nullptr), nullptr);
  EXPECT_EQ(kelmo_units_kind_count(nullptr), 0U);
  EXPECT_EQ(kelmo_units_count(nullptr, 0), 0U);
}

TEST(CUnits, LoaderAddChecksItsArguments) {
  const OwnedUnitsLoader loader = NewUnitsLoader();
  const kelmo_unit good = Unit(10001, 1, "m", "metre");
  kelmo_unit small = good;
  small.size = sizeof small - 1;
  kelmo_unit withoutSymbol = good;
  withoutSymbol.symbol = {nullptr, 1};
  kelmo_unit withoutName = good;
  withoutName.name = {nullptr, kZero};
  EXPECT_EQ(kelmo_units_loader_add(nullptr, &good, nullptr), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_units_loader_add(loader.get(), nullptr, nullptr), KELMO_INVALID_ARGUMENT);
  for (const kelmo_unit& unit : {small, withoutSymbol, withoutName}) {
    EXPECT_EQ(kelmo_units_loader_add(loader.get(), &unit, nullptr), KELMO_INVALID_ARGUMENT);
  }
  const Owned<kelmo_problems> problems = NewProblems();
  const kelmo_unit notUtf8 = Unit(10001, 1, "\xFF", "metre");
  EXPECT_EQ(kelmo_units_loader_add(loader.get(), &notUtf8, problems.get()), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(PrintedProblems(*problems),
            "error: A unit is dropped: the symbol is not UTF-8 (unit \"10001\")\n");
  EXPECT_EQ(kelmo_units_count(FinishUnits(*loader).get(), 0), 0U);
}

TEST(CUnits, LoaderAddTakesAllFieldsButTheKind) {
  const OwnedUnitsLoader loader = NewUnitsLoader();
  char symbol[] = "\u00B0CX";
  kelmo_unit point = Unit(18002, 2, nullptr, "degree");
  point.kind = 77;
  point.difference = 19002;
  point.offset = 273.15;
  point.symbol = {symbol, 3};
  std::array<kelmo_unit, 2> larger = {point, Unit(1, 1, "", "")};  // fields of a later version
  larger[0].size = sizeof larger;
  EXPECT_EQ(kelmo_units_loader_add(loader.get(), larger.data(), nullptr), KELMO_OK);
  std::memset(symbol, 'x', sizeof symbol);  // it was copied
  const kelmo_unit difference = Unit(19002, 2, "dC", nullptr);
  EXPECT_EQ(kelmo_units_loader_add(loader.get(), &difference, nullptr), KELMO_OK);
  const OwnedUnits units = FinishUnits(*loader);
  auto found = Sized<kelmo_unit>();
  ASSERT_EQ(kelmo_units_find(units.get(), nullptr, 18002, &found), KELMO_OK);
  EXPECT_EQ(found.size, sizeof found);
  EXPECT_EQ(found.code, 18002);
  EXPECT_EQ(found.kind, 18);
  EXPECT_EQ(found.difference, 19002);
  EXPECT_EQ(found.factor, 2);
  EXPECT_EQ(found.offset, 273.15);
  EXPECT_STREQ(found.symbol.data, "\u00B0C") << "a zero stands behind it";
  EXPECT_EQ(found.symbol.size, 3U);
  EXPECT_STREQ(found.name.data, "degree");
  ASSERT_EQ(kelmo_units_find(units.get(), nullptr, 19002, &found), KELMO_OK);
  EXPECT_STREQ(found.name.data, "");
  EXPECT_EQ(found.name.size, 0U);
}

TEST(CUnits, LoadingFunctionsCheckTheirArguments) {
  const OwnedUnitsLoader loader = NewUnitsLoader();
  struct Case {
    const char* name;
    kelmo_units_loader* loader;
    const char* bytes;
    std::size_t size;
    const char* file;
    std::size_t fileSize;
    std::int32_t format;
    kelmo_status memory;
    kelmo_status status;  // of a file; KELMO_OK: not called
  };
  const Case cases[] = {
      {"no loader", nullptr, "", 0, "f", 1, 0, KELMO_INVALID_ARGUMENT, KELMO_INVALID_ARGUMENT},
      {"no name", loader.get(), "", 0, nullptr, 1, 0, KELMO_INVALID_ARGUMENT,
       KELMO_INVALID_ARGUMENT},
      {"no name that ends with a zero", loader.get(), "", 0, nullptr, kZero, 0,
       KELMO_INVALID_ARGUMENT, KELMO_INVALID_ARGUMENT},
      {"a format below", loader.get(), "", 0, "f", 1, -1, KELMO_INVALID_ARGUMENT,
       KELMO_INVALID_ARGUMENT},
      {"a format above", loader.get(), "", 0, "f", 1, 3, KELMO_INVALID_ARGUMENT,
       KELMO_INVALID_ARGUMENT},
      {"a name that is not UTF-8", loader.get(), "", 0, "\xFF", 1, 0, KELMO_INVALID_UTF8,
       KELMO_INVALID_UTF8},
      {"an empty name", loader.get(), nullptr, 0, nullptr, 0, 0, KELMO_OK, KELMO_CANNOT_READ},
      {"no bytes", loader.get(), nullptr, 1, "f", 1, 0, KELMO_INVALID_ARGUMENT, KELMO_OK},
      {"bytes that are not UTF-8", loader.get(), "\xFF", 1, "f", 1, 0, KELMO_OK, KELMO_OK},
      {"no such file", loader.get(), "", 0, "no such file", kZero, 0, KELMO_OK, KELMO_CANNOT_READ},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(kelmo_units_loader_add_memory(row.loader, row.bytes, row.size, row.file, row.fileSize,
                                            row.format, nullptr),
              row.memory)
        << row.name;
    if (row.status != KELMO_OK) {
      EXPECT_EQ(
          kelmo_units_loader_add_file(row.loader, row.file, row.fileSize, row.format, nullptr),
          row.status)
          << row.name;
    }
  }
}

TEST(CUnits, LoaderAddMemoryReadsEachFormat) {
  const OwnedUnitsLoader loader = NewUnitsLoader();
  const Owned<kelmo_problems> problems = NewProblems();
  const char* const bytes[] = {"10001\t1\t\tm\tmetre\nx", "10002 3 in inch\nx",
                               "de\n10001\tM\tMeter\nx"};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(kelmo_units_loader_add_memory(loader.get(), bytes[i], kZero, "f.txt", 1, kFormats[i],
                                            problems.get()),
              KELMO_OK);
  }
  EXPECT_EQ(PrintedProblems(*problems),
            "f:2: error: A unit is dropped: a line has 5 or 6 fields with tabs between them: code, "
            "factor, offset, symbol, name, difference; this one has 1\n"
            "f:2: error: A line is dropped, as the first library drops it: a line needs a code, a "
            "factor, a symbol and a name\n"
            "f:3: error: A unit is dropped: a line needs a code, a symbol and a name\n");
  const OwnedUnits units = FinishUnits(*loader);
  EXPECT_EQ(kelmo_units_count(units.get(), 10), 2U);
}

TEST(CUnits, FinishEmptiesTheLoader) {
  const OwnedUnitsLoader loader = NewUnitsLoader(KELMO_UNITS_BUILT_IN);
  kelmo_units* made = nullptr;
  EXPECT_EQ(kelmo_units_loader_finish(nullptr, &made, nullptr), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_units_loader_finish(loader.get(), nullptr, nullptr), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(made, nullptr);
  EXPECT_EQ(kelmo_units_count(FinishUnits(*loader).get(), 0), 6U) << "failures changed nothing";
  EXPECT_EQ(kelmo_units_count(FinishUnits(*loader).get(), 0), 0U);
  AddUnits(*loader, "10001\t1\t\tm\tmetre\n");
  EXPECT_EQ(kelmo_units_count(FinishUnits(*loader).get(), 0), 1U) << "it collects again";
}

TEST(CUnits, HaveOwners) {
  const allocation_probe::LeakCheck everythingIsFreed;
  kelmo_units* const units = FinishUnits(*NewUnitsLoader(KELMO_UNITS_BUILT_IN)).release();
  EXPECT_EQ(kelmo_units_retain(units), units);
  kelmo_units_release(units);
  EXPECT_EQ(kelmo_units_count(units, 0), 6U) << "one owner is left";
  kelmo_units_release(units);
}

class CUnitsOfAView : public testing::Test {
 protected:
  CUnitsOfAView() {
    const OwnedUnitsLoader loader = NewUnitsLoader();
    AddUnits(
        *loader,
        "10\t\t\tL\tlength\n10001\t1\t\tm\tmetre\n11001\t1\t\tl\tlitre\n10002\t0.5\t\tin\tinch\n"
        "18001\t1\t\tK\tkelvin\t19001\n19001\t1\t\tK\tkelvin\n");
    EXPECT_EQ(
        kelmo_units_loader_add_memory(loader.get(), "xx\n10\tA\tB\n10001\tC\tD\n11\tV\tvolume\n",
                                      kZero, "xx", 2, KELMO_UNITS_NAMES, nullptr),
        KELMO_OK);
    units_ = FinishUnits(*loader);
    view_ = ViewWith("xx");
  }

  OwnedUnits units_;
  Owned<kelmo_view> view_;  // its texts do not have the language
};

TEST_F(CUnitsOfAView, KindsHaveItsLanguages) {
  auto kind = Sized<kelmo_unit>();
  ASSERT_EQ(kelmo_units_kind_count(units_.get()), 4U);
  struct Case {
    std::size_t index;
    bool hasView;
    std::int32_t code;
    const char* symbol;
    const char* name;
  };
  const Case cases[] = {
      {0, false, 10000, "L", "length"}, {0, true, 10000, "A", "B"}, {1, false, 11000, "", ""},
      {1, true, 11000, "V", "volume"},  {2, true, 18000, "", ""},
  };
  for (const Case& row : cases) {
    ASSERT_EQ(kelmo_units_kind(units_.get(), row.hasView ? view_.get() : nullptr, row.index, &kind),
              KELMO_OK);
    EXPECT_EQ(kind.code, row.code);
    EXPECT_EQ(kind.kind, row.code / 1000);
    EXPECT_EQ(kind.factor, 0);
    EXPECT_STREQ(kind.symbol.data, row.symbol);
    EXPECT_STREQ(kind.name.data, row.name);
    EXPECT_EQ(TextOf(kind.name), row.name);
  }
  kelmo_unit small = kind;
  small.size = sizeof small - 1;
  EXPECT_EQ(kelmo_units_kind(units_.get(), nullptr, 0, &small), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(small.code, 18000) << "unchanged";
  EXPECT_EQ(kelmo_units_kind(units_.get(), nullptr, 0, nullptr), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_units_kind(units_.get(), nullptr, 4, &kind), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_units_kind(units_.get(), nullptr, SIZE_MAX, &kind), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_units_kind(nullptr, nullptr, 0, &kind), KELMO_INVALID_ARGUMENT);
}

TEST_F(CUnitsOfAView, UnitsAreInTheOrderOfLoading) {
  auto unit = Sized<kelmo_unit>();
  const auto codes = [&](std::int32_t kind) {
    std::vector<std::int32_t> all;
    for (std::size_t i = 0; kelmo_units_at(units_.get(), nullptr, kind, i, &unit) == KELMO_OK;
         ++i) {
      all.push_back(unit.code);
    }
    EXPECT_EQ(all.size(), kelmo_units_count(units_.get(), kind)) << kind;
    return all;
  };
  using Codes = std::vector<std::int32_t>;
  EXPECT_EQ(codes(0), (Codes{10001, 11001, 10002, 18001, 19001}));
  EXPECT_EQ(codes(10), (Codes{10001, 10002}));
  EXPECT_EQ(codes(10000), Codes());
  EXPECT_EQ(codes(-1), Codes());
  ASSERT_EQ(kelmo_units_at(units_.get(), view_.get(), 10, 0, &unit), KELMO_OK);
  EXPECT_STREQ(unit.symbol.data, "C");
  ASSERT_EQ(kelmo_units_at(units_.get(), view_.get(), 10, 1, &unit), KELMO_OK);
  EXPECT_STREQ(unit.symbol.data, "in");
  unit.size = 8;
  EXPECT_EQ(kelmo_units_at(units_.get(), nullptr, 0, 0, &unit), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_units_at(units_.get(), nullptr, 0, 0, nullptr), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_units_at(nullptr, nullptr, 0, 0, &unit), KELMO_INVALID_ARGUMENT);
}

TEST_F(CUnitsOfAView, FindGivesTheUnitInItsLanguages) {
  auto unit = Sized<kelmo_unit>();
  ASSERT_EQ(kelmo_units_find(units_.get(), view_.get(), 10001, &unit), KELMO_OK);
  EXPECT_STREQ(unit.name.data, "D");
  ASSERT_EQ(kelmo_units_find(units_.get(), nullptr, 10001, &unit), KELMO_OK);
  EXPECT_STREQ(unit.name.data, "metre");
  for (const std::int32_t code : {0, 10, 10000, 10003, -10001}) {
    EXPECT_EQ(kelmo_units_find(units_.get(), nullptr, code, &unit), KELMO_UNKNOWN_UNIT) << code;
  }
  EXPECT_EQ(unit.code, 10001) << "failures change nothing";
  EXPECT_EQ(kelmo_units_find(nullptr, nullptr, 10001, &unit), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_units_find(units_.get(), nullptr, 10001, nullptr), KELMO_INVALID_ARGUMENT);
  unit.size -= 1;
  EXPECT_EQ(kelmo_units_find(units_.get(), nullptr, 10001, &unit), KELMO_INVALID_ARGUMENT);
}

// A host of a later version has more fields: those behind the known ones stay.
TEST_F(CUnitsOfAView, ALargerStructKeepsItsFurtherFields) {
  struct Larger {
    kelmo_unit known;
    std::uint64_t more;
  };
  Larger larger = {};
  larger.known.size = sizeof larger;
  larger.more = 77;
  ASSERT_EQ(kelmo_units_find(units_.get(), nullptr, 10001, &larger.known), KELMO_OK);
  EXPECT_EQ(larger.known.code, 10001);
  EXPECT_EQ(larger.known.size, sizeof larger);
  EXPECT_EQ(larger.more, 77U);
}

TEST_F(CUnitsOfAView, FindTextFindsAndTells) {
  auto unit = Sized<kelmo_unit>();
  const Owned<kelmo_problems> problems = NewProblems();
  const auto find = [&](const kelmo_view* view, std::int32_t kind, std::string_view text) {
    return kelmo_units_find_text(units_.get(), view, kind, text.data(), text.size(), &unit,
                                 problems.get());
  };
  ASSERT_EQ(find(view_.get(), 0, "C"), KELMO_OK);
  EXPECT_EQ(unit.code, 10001);
  EXPECT_STREQ(unit.symbol.data, "C");
  ASSERT_EQ(find(view_.get(), 0, "metre"), KELMO_OK);
  EXPECT_STREQ(unit.symbol.data, "C");
  ASSERT_EQ(find(nullptr, 0, "K"), KELMO_OK);
  EXPECT_EQ(unit.code, 18001);
  EXPECT_EQ(find(nullptr, 0, "C"), KELMO_UNKNOWN_UNIT);
  EXPECT_EQ(find(nullptr, 0, ""), KELMO_UNKNOWN_UNIT);
  EXPECT_EQ(find(nullptr, 11, "m"), KELMO_DIFFERENT_KINDS);
  EXPECT_EQ(find(nullptr, 0, "\u041A"), KELMO_AMBIGUOUS_UNIT);
  EXPECT_EQ(find(nullptr, 0, std::string_view("m\0", 2)), KELMO_UNKNOWN_UNIT);
  EXPECT_EQ(find(nullptr, 0, "m\xFF"), KELMO_INVALID_UTF8);
  EXPECT_EQ(unit.code, 18001) << "failures change nothing";
  EXPECT_EQ(PrintedProblems(*problems),
            "error: The unit is not known: \"C\"\n"
            "error: The unit is not known: \"\"\n"
            "error: The unit is one of another quantity: \"m\" is a unit of length, not of kind "
            "11\n"
            "error: The unit is ambiguous: \"\u041A\" only looks like 18001 kelvin (K): it has "
            "letters of another script\n"
            "error: The unit is not known: \"m\\x00\"\n");
  EXPECT_EQ(kelmo_units_find_text(units_.get(), nullptr, 0, "m", kZero, &unit, nullptr), KELMO_OK);
  EXPECT_EQ(kelmo_units_find_text(units_.get(), nullptr, 0, nullptr, 1, &unit, nullptr),
            KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_units_find_text(nullptr, nullptr, 0, "m", 1, &unit, nullptr),
            KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_units_find_text(units_.get(), nullptr, 0, "m", 1, nullptr, nullptr),
            KELMO_INVALID_ARGUMENT);
  unit.size = 0;
  EXPECT_EQ(kelmo_units_find_text(units_.get(), nullptr, 0, "m", 1, &unit, nullptr),
            KELMO_INVALID_ARGUMENT);
}

TEST_F(CUnitsOfAView, ConvertChecksItsArguments) {
  std::array<double, 3> numbers = {1, 2, 3};
  EXPECT_EQ(kelmo_units_convert(nullptr, 10001, 10002, numbers.data(), 3, numbers.data()),
            KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_units_convert(units_.get(), 10001, 10002, nullptr, 3, numbers.data()),
            KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_units_convert(units_.get(), 10001, 10002, numbers.data(), 3, nullptr),
            KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_units_convert(units_.get(), 10001, 77001, numbers.data(), 3, numbers.data()),
            KELMO_UNKNOWN_UNIT);
  EXPECT_EQ(kelmo_units_convert(units_.get(), 10001, 11001, numbers.data(), 3, numbers.data()),
            KELMO_DIFFERENT_KINDS);
  EXPECT_EQ(numbers, (std::array<double, 3>{1, 2, 3}));
  EXPECT_EQ(kelmo_units_convert(units_.get(), 10001, 10002, nullptr, 0, nullptr), KELMO_OK);
  EXPECT_EQ(kelmo_units_convert(units_.get(), 10001, 10002, numbers.data(), 3, numbers.data()),
            KELMO_OK);
  EXPECT_EQ(numbers, (std::array<double, 3>{2, 4, 6}));
}

}  // namespace
