// The units that a host finds before and after it starts the library. This test reads the expected
// rows from docs/values.md.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "examples/value_order.h"
#include "kelmo_localizer.h"
#include "tests/support/exported_table.h"
#include "tests/support/page_table.h"
#include "tests/support/scratch_folder.h"
#include "text/utf8.h"

using KelmoLibs::Localize::DecodeUtf8;
using KelmoLibs::Localize::Phyval::Double;
using KelmoLibs::Localize::Phyval::ValueType;

namespace {

// A middle dot in `asked` means a blank.
const ValueType* FindAskedFor(const std::string& asked) {
  if (asked.front() != '`') {
    return Double(1, 1, 0, std::atoi(asked.c_str())).unit;
  }
  std::string text = asked.substr(1, asked.size() - 2);
  for (std::size_t at = 0; (at = text.find("\xC2\xB7", at)) != std::string::npos;) {
    text.replace(at, 2, " ");
  }
  return Double(1, 1, 0, DecodeUtf8(text).c_str()).unit;
}

void ExpectToFind(const std::string& asked, const std::string& expected) {
  SCOPED_TRACE(asked);
  const ValueType* const unit = FindAskedFor(asked);
  if (expected == "nothing") {
    EXPECT_EQ(unit, nullptr);
    return;
  }
  ASSERT_NE(unit, nullptr);
  char* rest = nullptr;
  EXPECT_EQ(unit->code, std::strtol(expected.c_str(), &rest, 10));
  ASSERT_EQ(std::string(rest, 2), ", ");
  EXPECT_EQ(unit->factor, std::strtod(rest + 2, &rest));
  EXPECT_STREQ(rest, "");
}

class StartUp : public testing::Test {
 protected:
  // Calls `before` once, then `after` behind each kind of start.
  template <class Before, class After>
  static void BeforeAndAfter(Before before, After after) {
    static int tests = 0;
    ASSERT_EQ(++tests, 1) << "needs a fresh process: choose one test with --gtest_filter";
    {
      SCOPED_TRACE("before");
      before();
    }
    const ScratchFolder folder;
    const ExportPlace place(folder);
    const std::string starts[] = {"Init0", "Init0 again", "Init", "ExportPhyVal"};
    for (const std::string& start : starts) {
      SCOPED_TRACE("after " + start);
      EXPECT_EQ(start == "Init"           ? Init(L".", L"ru")
                : start == "ExportPhyVal" ? ExportPhyVal()
                                          : Init0(L"."),
                0);
      after();
    }
  }
};

TEST_F(StartUp, ChangesTheUnitsAsItsPageSays) {
  // Columns: code or text; the unit found before and after, as "code, factor".
  const std::vector<Cells> rows = TableOfPage("values.md", "Asked for");
  ASSERT_EQ(rows.size(), 37U) << "9 codes, 10 symbols, 9 names with and without a blank";
  BeforeAndAfter(
      [&rows] {
        for (const Cells& row : rows) {
          ExpectToFind(row.at(0), row.at(1));
        }
      },
      [&rows] {
        for (const Cells& row : rows) {
          ExpectToFind(row.at(0), row.at(2));
        }
      });
}

TEST_F(StartUp, LeavesLengthsAndAnglesAsTheyAreComputedAndCoefficientsWithoutAFactor) {
  const auto lengthsAndAngles = [] {
    EXPECT_EQ(Double(10, 0.1, 0, 10002).ConvertTo(0.001, 0, 10001).value, 0.273);
    EXPECT_EQ((Double(1, 0.1, 0, L"\u043C") + Double(10, 0.1, 0, L"in")).value, 1 + 0.273);
    EXPECT_EQ(Double(2, 0.1, 0, L"rad").ConvertTo(0.001, 0, 40001).value, 2 * 57.29577951308232);
    EXPECT_THROW((void)(Double(1, 1, 0, 10001) < Double(1, 1, 0, 40001)), std::invalid_argument);
  };
  BeforeAndAfter(
      [&] {
        lengthsAndAngles();
        Double half(0.5, 0.1, 0, 30001);
        EXPECT_EQ((half + half).value, 1.0);
        EXPECT_TRUE(half == half);
        EXPECT_EQ(Double(5, 1, 0, 20001).to_string(L'.'), L"5");
      },
      [&] {
        lengthsAndAngles();
        Double half(0.5, 0.1, 0, 30001);
        EXPECT_TRUE(std::isnan((half + half).value));
        EXPECT_TRUE(std::isnan((half - half).value));
        EXPECT_FALSE(half == half);
        EXPECT_FALSE(half < half || half > half);
        EXPECT_EQ((half * 3).value, 1.5);
        EXPECT_EQ(half.ConvertTo(0.1, 0, 30001).value, 0.5);
        EXPECT_EQ(half.to_string(L'.'), L"0.5");
        Double area(5, 1, 0, 20001);
        EXPECT_EQ(area.unit, nullptr);
        EXPECT_THROW((void)(area * 2), std::invalid_argument);
      });
}

// Values with every kind of number, with each unit and without one.
std::vector<Double> ValuesOfEveryKind() {
  using Limits = std::numeric_limits<double>;
  std::vector<Double> values;
  for (const int code : {40002, 10001, 30001, 20001, 10002, 40001, 99999}) {
    for (const double number : {Limits::quiet_NaN(), 40.1, 0.0, -0.0, Limits::max(),
                                Limits::infinity(), -Limits::infinity()}) {
      values.emplace_back(number, 1, 0, code);
    }
  }
  return values;
}

// std::sort requires that "before" and "equivalent" are transitive and no value precedes itself.
void ExpectAStrictWeakOrder(const std::vector<Double>& values) {
  const auto areEquivalent = [](const Double& a, const Double& b) {
    return !ComesBefore(a, b) && !ComesBefore(b, a);
  };
  std::size_t faults = 0;
  for (const Double& a : values) {
    faults += ComesBefore(a, a) ? 1 : 0;
    for (const Double& b : values) {
      faults += ComesBefore(a, b) && ComesBefore(b, a) ? 1 : 0;
      for (const Double& c : values) {
        faults += ComesBefore(a, b) && ComesBefore(b, c) && !ComesBefore(a, c) ? 1 : 0;
        faults += areEquivalent(a, b) && areEquivalent(b, c) && !areEquivalent(a, c) ? 1 : 0;
      }
    }
  }
  EXPECT_EQ(faults, 0U);
}

TEST_F(StartUp, LeavesAnOrderToSortEveryValueBy) {
  const auto sorted = [] {
    ExpectAStrictWeakOrder(ValuesOfEveryKind());
    const std::vector<std::pair<int, double>> expected = {
        {99999, 7},    {10002, -3},  {10002, 40}, {10001, 1.1}, {10001, NAN}, {30001, 0.2},
        {30001, 0.25}, {30001, 0.3}, {40001, 50}, {40002, 1},   {40001, 60},  {40002, NAN},
    };
    std::vector<Double> values;
    for (const auto& [code, number] : expected) {
      values.insert(values.begin(), Double(number, 1, 0, code));
    }
    std::sort(values.begin(), values.end(), ComesBefore);
    for (std::size_t i = 0; i < expected.size(); ++i) {
      SCOPED_TRACE(i);
      EXPECT_EQ(values[i].unit == nullptr ? 99999 : values[i].unit->code, expected[i].first);
      EXPECT_TRUE(values[i].value == expected[i].second || std::isnan(expected[i].second));
      EXPECT_EQ(std::isnan(values[i].value), std::isnan(expected[i].second));
    }
  };
  BeforeAndAfter(sorted, sorted);
}

TEST_F(StartUp, LeavesTheNumbersOfOutdatedValuesGood) {
  Double outdated(2.5, 0.01, 0, 10001);
  BeforeAndAfter([] {},
                 [&outdated] {
                   EXPECT_EQ(outdated.Return(), 2.5);
                   EXPECT_EQ(outdated.to_string(L'.'), L"2.50");
                   const Double copy = outdated;
                   EXPECT_EQ(copy.value, 2.5);
                   Double assigned(1, 1, 0, 10002);
                   assigned = outdated;
                   EXPECT_EQ(assigned.value, 2.5);
                   outdated = Double(3.5, 0.01, 0, 10001);
                   EXPECT_EQ((outdated + outdated).value, 7.0) << "up to date again";
                   outdated = copy;
                 });
}

}  // namespace
