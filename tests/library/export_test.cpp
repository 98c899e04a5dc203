// The file that ExportPhyVal of the built library writes.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <locale>
#include <string>

#include "tests/support/exported_table.h"
#include "tests/support/global_locale.h"
#include "tests/support/host_test.h"
#include "tests/support/loaded_units.h"

namespace {

namespace fs = std::filesystem;

class Export : public HostTest {
 protected:
  void ExpectTheUnitsToBeThere() const {
    const LoadedUnits units(library_);
    ASSERT_NE(units.Find(10002), nullptr);
    EXPECT_EQ(units.Find(10002)->name, L"inch ");
    EXPECT_EQ(units.Find(20001), nullptr);
    EXPECT_EQ(host_.GetErrorsCount(), 0);
  }

  const ExportPlace place_{folder_};
};

TEST_F(Export, OfAFreshLibraryIsTheWholeTable) {
  EXPECT_EQ(ExportPhyVal(), 0);
  EXPECT_EQ(ExportPlace::Bytes().size(), 433U);
  EXPECT_EQ(ExportPlace::Bytes(), ExportedDefaultTable());
  ExpectTheUnitsToBeThere();
}

TEST_F(Export, IsTheSameEachTimeAndAfterAStart) {
  EXPECT_EQ(ExportPhyVal(), 0);
  EXPECT_EQ(ExportPhyVal(), 0);
  EXPECT_EQ(ExportPlace::Bytes(), ExportedDefaultTable());
  fs::remove(ExportPlace::kFile);
  EXPECT_EQ(Init(L".", L"ru"), 0);
  EXPECT_EQ(ExportPhyVal(), 0);
  EXPECT_EQ(ExportPlace::Bytes(), ExportedDefaultTable());
  ExpectTheUnitsToBeThere();
}

TEST_F(Export, ReplacesALongerFile) {
  std::ofstream(ExportPlace::kFile, std::ios::binary) << std::string(100'000, 'x');
  EXPECT_EQ(ExportPhyVal(), 0);
  EXPECT_EQ(ExportPlace::Bytes(), ExportedDefaultTable());
}

TEST_F(Export, SucceedsIfTheFileCannotBeOpened) {
  fs::create_directory(ExportPlace::kFile);
  EXPECT_EQ(ExportPhyVal(), 0);
  EXPECT_TRUE(fs::is_directory(ExportPlace::kFile));
  ExpectTheUnitsToBeThere();
}

TEST_F(Export, WritesAFileThatIsOpenElsewhere) {
  std::fstream reader(ExportPlace::kFile, std::ios::in | std::ios::out | std::ios::trunc);
  ASSERT_TRUE(reader.is_open());
  EXPECT_EQ(ExportPhyVal(), 0);
  EXPECT_EQ(ExportPlace::Bytes(), ExportedDefaultTable());
}

TEST_F(Export, IsTheSameUnderEveryGlobalLocale) {
  const GlobalLocale grouped(LocaleGroupedByPoints());
  EXPECT_EQ(ExportPhyVal(), 0);
  EXPECT_EQ(ExportPlace::Bytes(), ExportedDefaultTable());
}

TEST_F(Export, ClosesTheFile) {
  EXPECT_EQ(ExportPhyVal(), 0);
  EXPECT_TRUE(fs::remove(ExportPlace::kFile)) << "on Windows an open file cannot be removed";
}

}  // namespace
