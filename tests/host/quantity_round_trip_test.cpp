// What kelmo_quantity_print writes, kelmo_quantity_read reads: in the formats of all languages, for each
// unit of units/engineering.txt in each language of units/LANG.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "cldr/number_table.h"
#include "host/quantity_text.h"
#include "host/typed_quantity.h"
#include "tests/host/texts_of_tests.h"
#include "tests/host/units_of_tests.h"
#include "tests/support/random_numbers.h"
#include "tests/support/same_bits.h"

namespace {

using namespace KelmoLibs::Host;
using KelmoLibs::Cldr::kNumberTable;
using KelmoLibs::Cldr::NumberFormat;
using KelmoLibs::Cldr::NumberFormatRow;

const std::vector<std::string> kLanguages = {"de", "en", "fi", "fr", "ru"};

const UnitSet& Units() {
  static const UnitSet units(EngineeringUnits(kLanguages), nullptr);
  return units;
}

TEST(QuantityRoundTrip, TheShippedUnitsLoadWithoutAnyProblem) {
  ProblemList problems;
  const UnitSet units(EngineeringUnits(kLanguages, &problems), &problems);
  EXPECT_EQ(Printed(problems), std::vector<std::string>());
  EXPECT_GT(units.UnitsOf(0).size(), 100U);
}

class RoundTrip {
 public:
  RoundTrip(const NumberFormat& format, const LanguageChain& languages, bool hasName)
      : format_(format), languages_(languages) {
    style_.hasName = hasName;
  }

  // Prints the quantity, and reads the text. `needsKind` becomes whether that is ambiguous without the kind.
  void Check(const UnitRow& unit, double number, double tolerance, bool& needsKind) const {
    const kelmo_quantity quantity = kelmo_quantity_of(number, tolerance, 0, unit.code);
    std::array<char, 700> buffer = {};
    TextSink sink(buffer.data(), buffer.size());
    ASSERT_EQ(WriteQuantity(Units(), languages_, quantity, style_, format_, sink), KELMO_OK);
    const std::string_view text(buffer.data(), sink.Finish());
    double rounded = 0;
    ASSERT_EQ(RoundQuantity(Units(), quantity, rounded), KELMO_OK);
    TypedQuantityOptions options;
    options.kind = KindOf(unit.code);
    kelmo_quantity read = {};
    ProblemList problems;
    ASSERT_EQ(ReadQuantity(Units(), languages_, text, options, format_, read, &problems), KELMO_OK)
        << text << ": " << (problems.All().empty() ? "" : Print(problems.All().front()));
    ASSERT_EQ(read.code, unit.code) << text;
    ASSERT_PRED_FORMAT2(SameBits, read.number, rounded) << text;
    ASSERT_LE(std::abs(read.number - number), tolerance / 2 + std::abs(number) * 0x1p-52) << text;
    // Without the kind: points win over their differences, and some texts have two kinds.
    options.kind = 0;
    const kelmo_status status =
        ReadQuantity(Units(), languages_, text, options, format_, read, nullptr);
    needsKind = status == KELMO_AMBIGUOUS_UNIT;
    ASSERT_TRUE(needsKind || status == KELMO_OK) << text;
    ASSERT_TRUE(needsKind || read.code == unit.code ||
                Units().Find(read.code)->difference == unit.code)
        << text;
  }

 private:
  const NumberFormat& format_;
  const LanguageChain& languages_;
  QuantityStyle style_;
};

// Tolerances that are powers of ten: the printed step is the tolerance.
TEST(QuantityRoundTrip, WhatIsPrintedReadsAsTheSameQuantity) {
  constexpr std::array<double, 7> kTolerances = {1, 0.1, 0.01, 0.001, 1e-6, 10, 1000};
  RandomNumbers random(randomSeed);
  for (const NumberFormatRow& row : kNumberTable) {
    for (const bool isGrouped : {false, true}) {
      NumberFormat format = row.format;
      format.isGrouped = isGrouped;
      for (const std::string& language : kLanguages) {
        const LanguageChain languages = {language};
        for (const bool hasName : {false, true}) {
          const RoundTrip trip(format, languages, hasName);
          for (const UnitRow* const unit : Units().UnitsOf(0)) {
            SCOPED_TRACE(testing::Message() << row.languages << language << ", grouped "
                                            << isGrouped << ", seed " << randomSeed);
            bool needsKind = false;
            trip.Check(*unit, random.OfMagnitude(-3, 25), AnyOf(random, kTolerances), needsKind);
            if (HasFatalFailure()) {
              return;
            }
          }
        }
      }
    }
  }
}

// Each unit of each language in one format, so that none is left out.
TEST(QuantityRoundTrip, EveryUnitOfEveryLanguageIsRead) {
  const NumberFormat format;
  std::set<std::int32_t> ambiguous;
  for (const std::string& language : kLanguages) {
    const LanguageChain languages = {language};
    for (const bool hasName : {false, true}) {
      const RoundTrip trip(format, languages, hasName);
      for (const UnitRow* const unit : Units().UnitsOf(0)) {
        bool needsKind = false;
        trip.Check(*unit, -1234.5, 0.1, needsKind);
        ASSERT_FALSE(HasFatalFailure()) << unit->code << " in " << language;
        if (needsKind) {
          ambiguous.insert(unit->code);
        }
      }
    }
  }
  // Year and are have the symbol a. A kilogram-force metre is a unit of energy and of torque.
  EXPECT_EQ(ambiguous, (std::set<std::int32_t>{12009, 20007, 26014, 28006}));
}

}  // namespace
