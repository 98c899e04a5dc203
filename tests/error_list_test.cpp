#include "frame/error_list.h"

#include <gtest/gtest.h>

#include <climits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/allocation_probe.h"
#include "tests/support/read_all.h"

namespace KelmoLibs::Localize {
namespace {

using allocation_probe::CallWithFailingAllocation;
using allocation_probe::LeakCheck;
using allocation_probe::Outcome;
using Expected = std::vector<std::wstring>;

TEST(ErrorList, AppendKeepsTheOrderOfFirstAppearance) {
  ErrorList list;
  for (const wchar_t* const text : {L"b", L"a", L"c", L"a", L"b"}) {
    list.Append(text);
  }
  EXPECT_EQ(ReadAll(list), (Expected{L"b", L"a", L"c"}));
}

TEST(ErrorList, AppendComparesExactly) {
  const struct {
    const char* name;
    Expected appended;
    Expected listed;
  } rows[] = {
      {"the same text twice", {L"text", L"text"}, {L"text"}},
      {"the empty text is a text", {L"", L""}, {L""}},
      {"case differs", {L"text", L"Text"}, {L"text", L"Text"}},
      {"one code unit differs", {L"text1", L"text2"}, {L"text1", L"text2"}},
      {"a text that begins with another", {L"text", L"text "}, {L"text", L"text "}},
      {"composed and decomposed", {L"\u00E4", L"a\u0308"}, {L"\u00E4", L"a\u0308"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ErrorList list;
    for (const std::wstring& text : row.appended) {
      list.Append(text);
    }
    EXPECT_EQ(ReadAll(list), row.listed);
  }
}

TEST(ErrorList, AppendTellsTextsApartBehindANul) {
  ErrorList list;
  list.Append(std::wstring(L"a\0b", 3));
  list.Append(std::wstring(L"a\0c", 3));
  list.Append(std::wstring(L"a\0b", 3));
  EXPECT_EQ(list.Count(), 2);
}

TEST(ErrorList, AtAnswersEveryIndex) {
  ErrorList list;
  for (const wchar_t* const text : {L"first", L"second", L"third"}) {
    list.Append(text);
  }
  const struct {
    const char* name;
    std::int32_t index;
    const wchar_t* text;
  } rows[] = {
      {"first", 0, L"first"},
      {"second", 1, L"second"},
      {"last", 2, L"third"},
      {"two past the last gives the last", 4, L"third"},
      {"far past the last gives the last", 1000, L"third"},
      {"the largest index gives the last", INT_MAX, L"third"},
      {"a negative index gives the last", -1, L"third"},
      {"none counts from the end", -2, L"third"},
      {"minus the count gives the last", -3, L"third"},
      {"the smallest index gives the last", INT_MIN, L"third"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_STREQ(list.At(row.index), row.text);
  }
}

TEST(ErrorList, AtOnePastTheLastThrows) {
  ErrorList list;
  for (std::int32_t count = 1; count <= 3; ++count) {
    list.Append(std::to_wstring(count));
    try {
      list.At(count);
      ADD_FAILURE() << "no exception with " << count << " texts";
    } catch (const std::out_of_range& error) {
      EXPECT_STREQ(error.what(), "invalid vector subscript");
    }
    EXPECT_EQ(list.Count(), count);
  }
}

TEST(ErrorList, AtOnAnEmptyListGivesTheEmptyTextForEveryIndex) {
  const ErrorList list;
  for (const std::int32_t index : {0, 1, 5, -1, INT_MAX, INT_MIN}) {
    SCOPED_TRACE(index);
    EXPECT_EQ(list.At(index), emptyText);
  }
  EXPECT_STREQ(emptyText, L"");
}

TEST(ErrorList, ClearEmptiesAndLetsTextsInAgain) {
  ErrorList list;
  list.Clear();
  EXPECT_EQ(list.Count(), 0);
  list.Append(L"text");
  list.Append(L"other");
  list.Clear();
  EXPECT_EQ(list.Count(), 0);
  EXPECT_EQ(list.At(0), emptyText);
  list.Append(L"other");
  EXPECT_EQ(ReadAll(list), (Expected{L"other"}));
}

TEST(ErrorList, HoldsAHundredThousandTextsInOrder) {
  ErrorList list;
  constexpr std::int32_t kCount = 100000;
  for (int round = 0; round < 2; ++round) {
    for (std::int32_t i = 0; i < kCount; ++i) {
      list.Append(L"message " + std::to_wstring(i));
    }
  }
  ASSERT_EQ(list.Count(), kCount);
  for (std::int32_t i = 0; i < kCount; ++i) {
    ASSERT_EQ(list.At(i), L"message " + std::to_wstring(i));
  }
}

TEST(ErrorList, AFailedAppendLeavesTheListAsItWas) {
  const std::wstring longText(100, L'x');  // owns memory of its own
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    const LeakCheck everythingIsGivenBack;
    ErrorList list;
    list.Append(L"before");
    std::wstring text = longText;
    const Outcome outcome = CallWithFailingAllocation(n, [&] { list.Append(std::move(text)); });
    ASSERT_NE(outcome, Outcome::kReturned) << "the failure was not passed on";
    if (outcome == Outcome::kNoFailure) {
      EXPECT_EQ(ReadAll(list), (Expected{L"before", longText}));
      EXPECT_GE(n, 2U) << "no allocation was tried";
      break;
    }
    EXPECT_EQ(ReadAll(list), (Expected{L"before"}));
    list.Append(longText);
    EXPECT_EQ(ReadAll(list), (Expected{L"before", longText}));
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
