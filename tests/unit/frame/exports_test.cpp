// The effects of the exports on the process-wide objects: this program is linked with the exports
// and the core.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/library_state.h"
#include "tests/support/exported_table.h"
#include "tests/support/localized_units.h"
#include "tests/support/read_all.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/unit_rows.h"

namespace KelmoLibs::Localize {
namespace {

using Phyval::unitCatalogue;
using Messages = std::vector<std::wstring>;

class Exports : public testing::Test {
 protected:
  Exports() {
    unitCatalogue = Phyval::BuiltInUnits();
    localizedUnitTable.clear();
    loadMessages.Clear();
    errorList.Clear();
  }

  static std::wstring NotFound(const std::wstring& path) {
    return L"EV111. Dictionary file not found or corrupted\nDictionary: " + path;
  }

  const ScratchFolder folder_;
  const std::wstring path_ = folder_.HostPath();
};

TEST_F(Exports, InitReadsTheTableOfTheLanguage) {
  folder_.Write(L"LANG\\ru-val.txt", "ru Russian\n10001 m name of a unit\n10002\n");
  folder_.Write(L"lang-val.text", "neutral Neutral\n");
  for (int repeat = 0; repeat < 2; ++repeat) {
    EXPECT_EQ(Init(path_.c_str(), L"ru"), 0);
    EXPECT_EQ(RowsOf(unitCatalogue), kDefaultUnits);
    EXPECT_EQ(localizedUnitTable,
              (LocalizedUnitTable{{L"ru", {{10001, {L"m", L"name of a unit"}}}}}));
    EXPECT_EQ(ReadAll(loadMessages),
              (Messages{L"EV101. Error parse string.\nString: 10002\nDictionary: " + path_ +
                        L"\\LANG/ru-val.txt"}));
  }
  EXPECT_EQ(GetErrorsCount(), 0);
}

TEST_F(Exports, Init0ReadsTheTableWithoutALanguage) {
  folder_.Write(L"LANG\\ru-val.txt", "ru Russian\n10001 m name\n");
  folder_.Write(L"lang-val.txt", "no No\n");
  folder_.Write(L"lang-val.text", "neutral Neutral\n10001 n name\n");
  EXPECT_EQ(Init0(path_.c_str()), 0);
  EXPECT_EQ(RowsOf(unitCatalogue), kDefaultUnits);
  EXPECT_EQ(localizedUnitTable, (LocalizedUnitTable{{L"neutral", {{10001, {L"n", L"name"}}}}}));
  EXPECT_EQ(loadMessages.Count(), 0);
}

TEST_F(Exports, StartsAccumulateLanguages) {
  folder_.Write(L"LANG\\ru-val.txt", "ru Russian\n10001 m name\n");
  folder_.Write(L"LANG\\de-val.txt", "de German\n10001 m name\n");
  folder_.Write(L"lang-val.text", "ru Russian\n10001 x other\n10002 n new\n");
  EXPECT_EQ(Init(path_.c_str(), L"ru"), 0);
  EXPECT_EQ(Init0(path_.c_str()), 0);
  EXPECT_EQ(Init(path_.c_str(), L"de"), 0);
  EXPECT_EQ(Init(path_.c_str(), L"ru"), 0);
  EXPECT_EQ(localizedUnitTable,
            (LocalizedUnitTable{{L"ru", {{10001, {L"m", L"name"}}, {10002, {L"n", L"new"}}}},
                                {L"de", {{10001, {L"m", L"name"}}}}}));
  EXPECT_EQ(RowsOf(unitCatalogue), kDefaultUnits);
  EXPECT_EQ(loadMessages.Count(), 0);
}

TEST_F(Exports, ProblemsOfAStartAreListedInTheLoadMessagesOnly) {
  EXPECT_EQ(UseLanguage(L"none"), -1);
  EXPECT_EQ(Init(L"C:\\A\\", L"de"), 0);
  EXPECT_EQ(Init(L"C:\\A\\", L"de"), 0);
  EXPECT_EQ(Init(L"", L"x y"), 0);
  EXPECT_EQ(Init(nullptr, nullptr), 0);
  EXPECT_EQ(Init0(L"no such folder"), 0);
  EXPECT_EQ(Init0(nullptr), 0);
  const Messages loading = {NotFound(L"C:\\A\\\\LANG/de-val.txt"), NotFound(L"\\LANG/x y-val.txt"),
                            NotFound(L"\\LANG/-val.txt"),
                            NotFound(L"no such folder\\lang-val.text"),
                            NotFound(L"\\lang-val.text")};
  EXPECT_EQ(ReadAll(loadMessages), loading);
  EXPECT_EQ(ReadAll(errorList), (Messages{L"EL112. Dictionary not found\nDictionary id: none"}));
  ClearErrors();
  EXPECT_EQ(ReadAll(loadMessages), loading);
  EXPECT_EQ(ExportPhyVal(), 0);
  EXPECT_EQ(ReadAll(loadMessages), loading);
  EXPECT_EQ(localizedUnitTable, (LocalizedUnitTable{}));
}

TEST_F(Exports, ProblemsOfDictionariesAreListedInTheErrorListOnly) {
  folder_.Write(L"en.txt", "en\nkey text\nkey again\n");
  EXPECT_EQ(LoadDictionary(path_.c_str(), L"en.txt"), 1);
  EXPECT_EQ(LoadDictionary(path_.c_str(), L"none.txt"), -2);
  EXPECT_STREQ(LANG(L"none"), L"");
  EXPECT_EQ(GetErrorsCount(), 3);
  EXPECT_EQ(loadMessages.Count(), 0);
}

TEST_F(Exports, ExportPhyValReplacesTheCatalogueAndReadsNoLanguageTable) {
  folder_.Write(L"lang-val.text", "neutral Neutral\n10001 n name\n");
  const ExportPlace place(folder_);
  EXPECT_EQ(ExportPhyVal(), 0);
  EXPECT_EQ(RowsOf(unitCatalogue), kDefaultUnits);
  EXPECT_EQ(ExportPlace::Bytes(), ExportedDefaultTable());
  EXPECT_EQ(localizedUnitTable, (LocalizedUnitTable{}));
  EXPECT_EQ(loadMessages.Count(), 0);
  EXPECT_EQ(errorList.Count(), 0);
}

TEST_F(Exports, InitAndInit0WriteNoFile) {
  const ExportPlace place(folder_);
  EXPECT_EQ(Init(L".", L"ru"), 0);
  EXPECT_EQ(Init0(L"."), 0);
  EXPECT_FALSE(ExportPlace::Exists());
}

}  // namespace
}  // namespace KelmoLibs::Localize
