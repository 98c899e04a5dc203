// Values when memory runs out: each operator new of each call fails in turn, also those of a stream
// under another global locale. The failure reaches the host; the locale is as before, nothing
// leaks, and the same call succeeds afterwards.
//
// This file is in two programs: with the library's objects on every system, and, where the
// program's operator new serves the library too, on Linux, with the built library.

#include <gtest/gtest.h>

#include <clocale>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

#include "kelmo_localizer.h"
#include "tests/support/allocation_probe.h"
#include "tests/support/global_locale.h"

using KelmoLibs::Localize::Phyval::Double;
using KelmoLibs::Localize::Phyval::ValueType;

namespace {

using allocation_probe::CallWithFailingAllocation;
using allocation_probe::LeakCheck;
using allocation_probe::Outcome;

// Returns how many allocations `call` makes.
std::size_t FailEachAllocation(const std::function<void()>& call) {
  call();  // what the runtime sets up once
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(testing::Message() << "allocation " << n << " fails");
    const std::string localeBefore = std::setlocale(LC_ALL, nullptr);
    Outcome outcome = Outcome::kNoFailure;
    {
      const LeakCheck everythingIsGivenBack;
      outcome = CallWithFailingAllocation(n, call);
    }
    EXPECT_NE(outcome, Outcome::kReturned) << "the failure was not passed on";
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), localeBefore);
    call();
    if (outcome == Outcome::kNoFailure || testing::Test::HasFailure()) {
      return n - 1;
    }
  }
}

class DoubleWithoutMemory : public testing::Test {
 protected:
  // A locale whose name is long: to keep it takes memory. The first is there on Linux, the other on
  // Windows.
  void SetUp() override {
    ASSERT_TRUE(std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr ||
                std::setlocale(LC_CTYPE, "English_United States.1252") != nullptr);
    ASSERT_GT(std::string(std::setlocale(LC_ALL, nullptr)).size(), 15U);
  }
  void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

const std::wstring kText = L"123456789012345678901234567890";

TEST_F(DoubleWithoutMemory, TheUsersTextRestoresTheLocaleAndPassesTheFailureOn) {
  Double value(-1234567890123456.0, 0.001, 0, 10001);
  const std::wstring text = value.to_string();
  EXPECT_EQ(text.substr(0, 17), L"-1234567890123456");
  const std::size_t allocations = FailEachAllocation([&] { EXPECT_EQ(value.to_string(), text); });
  EXPECT_EQ(allocations, 2U) << "the locale's name, the text";
}

TEST_F(DoubleWithoutMemory, TheOtherTextPassesTheFailureOn) {
  Double value(-1234567890123456.0, 0.001, 0, 10001);
  const std::wstring text = L"-1234567890123456,000";
  const std::size_t allocations =
      FailEachAllocation([&] { EXPECT_EQ(value.to_string(L','), text); });
  EXPECT_EQ(allocations, 1U) << "the text";
}

TEST_F(DoubleWithoutMemory, TheTextOfAStreamPassesTheFailureOn) {
  const GlobalLocale grouped(LocaleGroupedByPoints());
  for (const double number : {1e9, 1e300}) {
    Double value(number, 0.001, 0, 10001);
    const std::wstring text = value.to_string(L';');
    EXPECT_GE(FailEachAllocation([&] { EXPECT_EQ(value.to_string(L';'), text); }), 1U);
  }
}

TEST_F(DoubleWithoutMemory, RowsOfUnitsAreMadeWholeOrNotAtAll) {
  EXPECT_EQ(FailEachAllocation([] { ValueType(10001, 1.0, kText.c_str(), kText.c_str()); }), 2U);
  ValueType row(10001, 1.0, kText.c_str(), kText.c_str());
  EXPECT_EQ(FailEachAllocation([&] { EXPECT_EQ(ValueType(row).name, kText); }), 2U);
  EXPECT_EQ(FailEachAllocation([&] { EXPECT_EQ(ValueType(std::move(row)).name, kText); }), 2U);
  // NOLINTNEXTLINE(bugprone-use-after-move): copied only
  EXPECT_EQ(row.symbol, kText);
}

TEST_F(DoubleWithoutMemory, NothingElseNeedsMemory) {
  Double left(1, 0.5, 0.01, 10001);
  Double right(1, 0.5, 0.01, L"in");
  EXPECT_EQ(FailEachAllocation([&] {
              Double result = left + right - right * 2;
              result = result / 3;
              EXPECT_FALSE(result == left || result > left);
              EXPECT_TRUE(result < left);
              EXPECT_EQ(result.ConvertTo(0.1, 0, 10002).Return(), 11.9);
            }),
            0U);
}

TEST_F(DoubleWithoutMemory, ARefusalThatCannotBeMadeIsAFailureOfMemory) {
  Double none(1, 0.5, 0.01, 10);
  FailEachAllocation([&] {
    try {
      (void)(none * 2);
      ADD_FAILURE() << "nothing was thrown";
    } catch (const std::invalid_argument& refusal) {
      EXPECT_STREQ(refusal.what(), "The physical dimension of the number is not defined.");
    }
  });
}

}  // namespace
