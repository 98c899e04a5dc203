// Each function as the first call of a fresh process, in a host that is linked to the library at
// load time. CTest runs every test of this program in its own process.

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

#include "kelmo_localizer.h"

using KelmoLibs::Localize::Phyval::Double;
using KelmoLibs::Localize::Phyval::ValueType;

namespace {

// Constructed before main: the library's units exist by then.
const Double valueOfTheHost(1, 0, 0, 10002);

// The types are part of the binary interface: hosts in other languages repeat these declarations.
static_assert(std::is_same_v<decltype(Init), std::int32_t(const wchar_t*, const wchar_t*)>);
static_assert(std::is_same_v<decltype(Init0), std::int32_t(const wchar_t*)>);
static_assert(std::is_same_v<decltype(ExportPhyVal), std::int32_t()>);
static_assert(
    std::is_same_v<decltype(LoadDictionary), std::int32_t(const wchar_t*, const wchar_t*)>);
static_assert(std::is_same_v<decltype(UseLanguage), std::int32_t(const wchar_t*)>);
static_assert(std::is_same_v<decltype(LANG), const wchar_t*(const wchar_t*)>);
static_assert(std::is_same_v<decltype(ClearErrors), void()>);
static_assert(std::is_same_v<decltype(GetErrorsCount), std::int64_t()>);
static_assert(std::is_same_v<decltype(GetError), const wchar_t*(std::int32_t)>);

class FirstCall : public testing::Test {
 protected:
  FirstCall() {
    static int tests = 0;
    EXPECT_EQ(++tests, 1) << "needs a fresh process: choose one test with --gtest_filter";
  }

  static void ExpectOneMessage(const wchar_t* message) {
    ASSERT_EQ(GetErrorsCount(), 1);
    EXPECT_STREQ(GetError(0), message);
  }
};

TEST_F(FirstCall, Init) {
  EXPECT_EQ(Init(L"no such folder", L"ru"), 0);
  EXPECT_EQ(GetErrorsCount(), 0);
  EXPECT_EQ(Double(1, 0, 0, 20001).unit, nullptr);
}

TEST_F(FirstCall, Init0) {
  EXPECT_EQ(Init0(L"no such folder"), 0);
  EXPECT_EQ(GetErrorsCount(), 0);
  EXPECT_EQ(Double(1, 0, 0, 20001).unit, nullptr);
}

TEST_F(FirstCall, ExportPhyVal) {
  EXPECT_EQ(ExportPhyVal(), 0);
  EXPECT_EQ(GetErrorsCount(), 0);
  EXPECT_EQ(Double(1, 0, 0, 20001).unit, nullptr);
}

TEST_F(FirstCall, LoadDictionary) {
  EXPECT_EQ(LoadDictionary(L"no such folder", L"en.txt"), -2);
  ExpectOneMessage(L"EL111. Dictionary file not found\nDictionary: no such folder\\en.txt");
}

TEST_F(FirstCall, UseLanguage) {
  EXPECT_EQ(UseLanguage(L"en"), -1);
  ExpectOneMessage(L"EL112. Dictionary not found\nDictionary id: en");
}

TEST_F(FirstCall, Lang) {
  EXPECT_STREQ(LANG(L"menu.file"), L"");
  ExpectOneMessage(L"EL121. Dictionary not found\nDictionary id: ");
}

TEST_F(FirstCall, ClearErrors) {
  ClearErrors();
  EXPECT_EQ(GetErrorsCount(), 0);
}

TEST_F(FirstCall, GetErrorsCount) { EXPECT_EQ(GetErrorsCount(), 0); }

TEST_F(FirstCall, GetError) {
  const wchar_t* const noText = GetError(0);
  EXPECT_STREQ(noText, L"");
  EXPECT_EQ(GetErrorsCount(), 0);
}

TEST_F(FirstCall, DoubleByCode) { EXPECT_NE(Double(1, 0, 0, 40002).unit, nullptr); }

TEST_F(FirstCall, DoubleByText) { EXPECT_NE(Double(1, 0, 0, L"rad").unit, nullptr); }

TEST_F(FirstCall, ValueType) { EXPECT_EQ(ValueType(40002, 1.0, L"s", L"n").GetSid(), 2); }

TEST_F(FirstCall, ValuesAreThereBeforeMain) {
  ASSERT_NE(valueOfTheHost.unit, nullptr);
  EXPECT_EQ(valueOfTheHost.unit->factor, 0.0273);
}

}  // namespace
