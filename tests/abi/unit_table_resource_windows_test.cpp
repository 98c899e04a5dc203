// The default unit table in the resources of the built DLL.

#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "tests/support/read_file.h"

namespace {

class UnitTableResource : public testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(module_, nullptr); }
  void TearDown() override { ::FreeLibrary(module_); }

  HMODULE module_ = ::LoadLibraryW(L"kelmo_Mestrel_Localizer.dll");
};

// Windows calls one of these functions for each name or language, with the caller's pointer as a
// number.

BOOL CALLBACK AddName(HMODULE /*module*/, LPCWSTR /*type*/, LPWSTR name, LONG_PTR names) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr)
  reinterpret_cast<std::vector<ULONG_PTR>*>(names)->push_back(reinterpret_cast<ULONG_PTR>(name));
  return TRUE;
}

BOOL CALLBACK AddLanguage(HMODULE /*module*/, LPCWSTR /*type*/, LPCWSTR /*name*/, WORD language,
                          LONG_PTR languages) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr)
  reinterpret_cast<std::vector<WORD>*>(languages)->push_back(language);
  return TRUE;
}

TEST_F(UnitTableResource, HoldsTheFileAndATerminatingZero) {
  HRSRC resource = ::FindResourceW(module_, MAKEINTRESOURCEW(102), MAKEINTRESOURCEW(10));
  ASSERT_NE(resource, nullptr);
  EXPECT_EQ(::SizeofResource(module_, resource), 700U);
  HGLOBAL loaded = ::LoadResource(module_, resource);
  ASSERT_NE(loaded, nullptr);
  const auto* const bytes = static_cast<const char*>(::LockResource(loaded));
  EXPECT_EQ(std::string(bytes, 702),
            ReadProjectFile("resources/default_unit_table.txt") + std::string(2, '\0'));
}

TEST_F(UnitTableResource, IsTheOnlyOneOfItsTypeAndRussian) {
  std::vector<ULONG_PTR> names;
  ASSERT_TRUE(::EnumResourceNamesW(module_, MAKEINTRESOURCEW(10), AddName,
                                   reinterpret_cast<LONG_PTR>(&names)));
  EXPECT_EQ(names, std::vector<ULONG_PTR>{102});

  std::vector<WORD> languages;
  ASSERT_TRUE(::EnumResourceLanguagesW(module_, MAKEINTRESOURCEW(10), MAKEINTRESOURCEW(102),
                                       AddLanguage, reinterpret_cast<LONG_PTR>(&languages)));
  EXPECT_EQ(languages, std::vector<WORD>{1049});
}

}  // namespace
