// All calls of a host in their usual order. This host is linked to the library at load time; that
// of unload_test.cpp loads the library at run time.

#include "tests/support/calling_order.h"

#include <gtest/gtest.h>

#include <string>

#include "kelmo_localizer.h"

using KelmoLibs::Localize::Phyval::Double;

namespace {

// NOLINTBEGIN(readability-identifier-naming)
struct LinkedFunctions {
  decltype(&::Init) Init = ::Init;
  decltype(&::Init0) Init0 = ::Init0;
  decltype(&::ExportPhyVal) ExportPhyVal = ::ExportPhyVal;
  decltype(&::LoadDictionary) LoadDictionary = ::LoadDictionary;
  decltype(&::UseLanguage) UseLanguage = ::UseLanguage;
  decltype(&::LANG) LANG = ::LANG;
  decltype(&::ClearErrors) ClearErrors = ::ClearErrors;
  decltype(&::GetErrorsCount) GetErrorsCount = ::GetErrorsCount;
  decltype(&::GetError) GetError = ::GetError;
};
// NOLINTEND(readability-identifier-naming)

TEST(CallingOrder, WorksInAHostLinkedAtLoadTime) {
  const ScratchFolder folder;
  ExpectWholeCallOrder(LinkedFunctions(), folder, [](double value, double tolerance, int code) {
    Double made(value, tolerance, 0, code);
    return made.unit == nullptr ? L"none" : made.to_string(L'.') + L" " + made.unit->symbol;
  });
}

}  // namespace
