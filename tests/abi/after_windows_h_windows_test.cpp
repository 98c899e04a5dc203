// A host that includes <windows.h> with all its macros first: none of them hides a name of the
// library's header.
#include <windows.h>
// The test is that this order compiles.
#include "kelmo_localizer.h"
// GoogleTest itself copes with the macros.
#include <gtest/gtest.h>

#include <string>

using KelmoLibs::Localize::Phyval::Double;
using KelmoLibs::Localize::Phyval::ValueType;

extern "C" int FunctionsAfterWindowsH(void);

namespace {

TEST(AfterWindowsH, FunctionsWorkInC) { EXPECT_EQ(FunctionsAfterWindowsH(), 1); }

TEST(AfterWindowsH, FunctionsAndClassesWorkInCpp) {
  EXPECT_EQ(Init(L"no such folder", L"ru"), 0);
  EXPECT_EQ(LoadDictionary(L"no such folder", L"en.txt"), -2);
  EXPECT_STREQ(LANG(L"menu.file"), L"");
  EXPECT_EQ(GetErrorsCount(), 2);
  EXPECT_STREQ(GetError(0),
               L"EL111. Dictionary file not found\nDictionary: no such folder\\en.txt");
  ClearErrors();
  Double length(1, 0.1, 0, 10001);
  length = length + Double(10, 0.1, 0, L"in") * 2 / 2 - length;
  EXPECT_TRUE(length < Double(1, 0.1, 0, 10001) && !(length > length));
  EXPECT_EQ(length.ConvertTo(0.1, 0, 10002).to_string(L'.'), L"10.0");
  EXPECT_EQ(ValueType(10002, 1.0, L"s", L"n").GetSid(), 2);
}

}  // namespace
