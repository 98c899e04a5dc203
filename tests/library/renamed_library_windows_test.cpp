// A renamed library in a folder without the original does not find the table in its own file. This
// program is built twice, without and with its own unit table (KELMO_HOST_TABLE). Both also contain
// the core, which searches for the table in the same way.

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "kelmo_localizer.h"
#include "phyval/unit_catalogue.h"
#include "platform/embedded_table.h"
#include "tests/support/class_members.h"
#include "tests/support/exported_table.h"
#include "tests/support/scratch_folder.h"
#include "unittables/default_table.h"

using namespace KelmoLibs::Localize;

namespace {

// In the folder of this program.
constexpr const wchar_t* kRenamed = L"renamed.dll";

class RenamedLibrary : public testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(module_, nullptr); }
  void TearDown() override {
    // Starts took no reference: no module has the library's original name.
    ::FreeLibrary(module_);
    EXPECT_EQ(::GetModuleHandleW(kRenamed), nullptr);
  }

  template <class Function>
  Function* Export(const char* name) const {
    return reinterpret_cast<Function*>(
        reinterpret_cast<void (*)()>(::GetProcAddress(module_, name)));
  }

  // The symbol of the unit with the code, or an empty text.
  std::wstring Symbol(int code) const {
    ValueMemory value = {};
    members_.fromCode(&value, 1, 1, 0, code);
    return value.unit != nullptr ? value.unit->symbol : L"";
  }

  HMODULE module_ = ::LoadLibraryW(kRenamed);
  const ClassMembers members_ =
      MembersAt([this](const char* name) { return Export<MembersAt::AnyFunction>(name); }).All();
};

#if defined(KELMO_HOST_TABLE)

TEST_F(RenamedLibrary, TakesTheTableOfTheHost) {
  const ScratchFolder folder;
  const ExportPlace place(folder);
  EXPECT_EQ(Export<decltype(Init0)>("Init0")(L"no such folder"), 0);
  EXPECT_EQ(Symbol(50001), L"hosts");
  EXPECT_EQ(Symbol(10001), L"");
  EXPECT_EQ(Export<decltype(ExportPhyVal)>("ExportPhyVal")(), 0);
  EXPECT_EQ(ExportPlace::Bytes(), "50001 1.0 hosts unit\r\r\n\r\n");
}

TEST_F(RenamedLibrary, FindsTheTableOfTheHost) {
  EXPECT_EQ(FindEmbeddedUnitTable().status, EmbeddedTable::Status::kFound);
}

#else

TEST_F(RenamedLibrary, FindsNoTable) {
  EXPECT_EQ(FindEmbeddedUnitTable().status, EmbeddedTable::Status::kMissing);
  Phyval::UnitCatalogue catalogue = Phyval::BuiltInUnits();
  EXPECT_EQ(LoadDefaultUnitTable(false, catalogue), -2);
  EXPECT_TRUE(catalogue.empty());
}

TEST_F(RenamedLibrary, HasNoUnitsOnceItIsStarted) {
  const ScratchFolder folder;
  const ExportPlace place(folder);
  const auto expectNoUnits = [this] {
    for (const int code : {10001, 10002, 20001, 30001, 40001, 40002}) {
      EXPECT_EQ(Symbol(code), L"") << code;
    }
    EXPECT_EQ(Export<decltype(GetErrorsCount)>("GetErrorsCount")(), 0);
  };
  EXPECT_EQ(Symbol(10002), L"in") << "before the first start";
  EXPECT_EQ(Export<decltype(Init)>("Init")(L"no such folder", L"ru"), 0);
  expectNoUnits();
  EXPECT_EQ(Export<decltype(Init0)>("Init0")(L"no such folder"), 0);
  expectNoUnits();
  EXPECT_EQ(Export<decltype(ExportPhyVal)>("ExportPhyVal")(), 0);
  expectNoUnits();
  EXPECT_FALSE(ExportPlace::Exists());
}

#endif

}  // namespace
