// The library without its default unit table: the exports call the FindEmbeddedUnitTable of this
// program, not that of platform/.

#include <gtest/gtest.h>

#include <string>

#include "frame/library_state.h"
#include "platform/embedded_table.h"
#include "tests/support/exported_table.h"
#include "tests/support/localized_units.h"
#include "tests/support/read_file.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/unit_rows.h"
#include "unittables/default_table.h"

namespace KelmoLibs::Localize {
namespace {

EmbeddedTable embeddedTable = {EmbeddedTable::Status::kMissing, {}};

}  // namespace

EmbeddedTable FindEmbeddedUnitTable() noexcept { return embeddedTable; }

namespace {

using Phyval::BuiltInUnits;
using Phyval::unitCatalogue;

struct Failure {
  const char* name;
  EmbeddedTable::Status status;
  std::int32_t result;
};

const Failure kFailures[] = {
    {"missing", EmbeddedTable::Status::kMissing, -2},
    {"unreadable", EmbeddedTable::Status::kUnreadable, -1},
};

TEST(MissingTable, EmptiesTheCatalogueAndReturnsTheReason) {
  for (const Failure& failure : kFailures) {
    SCOPED_TRACE(failure.name);
    embeddedTable = {failure.status, {}};
    for (const bool exportToFile : {false, true}) {
      Phyval::UnitCatalogue catalogue = BuiltInUnits();
      EXPECT_EQ(LoadDefaultUnitTable(exportToFile, catalogue), failure.result);
      EXPECT_TRUE(catalogue.empty());
    }
  }
}

TEST(MissingTable, StartsReturnZeroAndReadTheLanguageTable) {
  for (const Failure& failure : kFailures) {
    SCOPED_TRACE(failure.name);
    embeddedTable = {failure.status, {}};
    const ScratchFolder folder;
    folder.Write(L"LANG\\ru-val.txt", "ru Russian\n10001 m name\n");
    folder.Write(L"lang-val.text", "neutral Neutral\n");
    const ExportPlace place(folder);
    localizedUnitTable.clear();

    unitCatalogue = BuiltInUnits();
    EXPECT_EQ(Init(L".", L"ru"), 0);
    EXPECT_TRUE(unitCatalogue.empty());
    EXPECT_EQ(localizedUnitTable, (LocalizedUnitTable{{L"ru", {{10001, {L"m", L"name"}}}}}));

    unitCatalogue = BuiltInUnits();
    EXPECT_EQ(Init0(L"."), 0);
    EXPECT_TRUE(unitCatalogue.empty());
    EXPECT_EQ(localizedUnitTable.count(L"neutral"), 1U);

    unitCatalogue = BuiltInUnits();
    EXPECT_EQ(ExportPhyVal(), 0);
    EXPECT_TRUE(unitCatalogue.empty());
    EXPECT_FALSE(ExportPlace::Exists()) << "a file without a table";
    EXPECT_EQ(GetErrorsCount(), 0);
  }
}

TEST(MissingTable, IsReadOnceItExists) {
  // Static, because the bytes of the embedded table stay valid too.
  static const std::string bytes = ReadProjectFile("resources/default_unit_table.txt");
  embeddedTable = {EmbeddedTable::Status::kMissing, {}};
  Init0(L"no such folder");
  embeddedTable = {EmbeddedTable::Status::kFound, bytes};
  Init0(L"no such folder");
  EXPECT_EQ(RowsOf(unitCatalogue), kDefaultUnits);
}

}  // namespace
}  // namespace KelmoLibs::Localize
