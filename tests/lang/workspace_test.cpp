// Which files are read for a run, which are reported, and what they are compared with.
#include "lang/reading/workspace.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "lang/reading/file_names.h"
#include "tests/lang/findings_of.h"

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;

class ReadWorkspaceTest : public testing::Test {
 protected:
  ReadWorkspaceTest() {
    fs::remove_all(folder_);
    Write("en.txt", "en English\na 1\n");
    Write("en-more.txt", "en English\nb 1\n");
    Write("de.txt",
          "\xEF\xBB\xBF"
          "de Deutsch\na 1\n");
    Write("de-a.txt", "de Deutsch\nb 1\n");
    Write("fr.txt", "fr Français\r\na 1\r\n");
    Write("fi-val.txt", "fi suomi\n");
  }
  void TearDown() override { fs::remove_all(folder_); }

  void Write(const std::string& name, const std::string& bytes) const {
    const fs::path path = folder_ / fs::u8path(name);
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
  }

  std::string Name(const std::string& name) const {
    return (folder_ / fs::u8path(name)).u8string();
  }

  // "en.txt (de.txt)": files that are not reported are in brackets; then the base, and problems.
  std::string Read(const std::vector<std::string>& names, const std::string& base = {}) const {
    std::vector<std::string> paths;
    for (const std::string& name : names) {
      paths.push_back(name.empty() ? folder_.u8string() : Name(name));
    }
    std::vector<FileProblem> problems;
    WorkspaceRequest request;
    request.files = ExpandPaths(paths, problems);
    if (!base.empty()) {
      request.base = Name(base);
    }
    const Workspace workspace = ReadWorkspace(request, problems);
    std::string text;
    for (const WorkspaceFile& file : workspace.files) {
      const std::string name = file.Source().Path().filename().u8string();
      text += (text.empty() ? "" : " ") + (file.isReported ? name : '(' + name + ')');
    }
    if (workspace.baseFile) {
      text += " base " + workspace.files[*workspace.baseFile].Source().Path().filename().u8string();
    }
    for (const FileProblem& problem : problems) {
      text += ' ' + problem.reason;
    }
    return text;
  }

  const fs::path folder_ = fs::u8path(u8"workspace test Ордner");
};

TEST_F(ReadWorkspaceTest, ReportsAllFilesOfAFolder) {
  EXPECT_EQ(Read({""}), "de-a.txt de.txt en-more.txt en.txt fi-val.txt fr.txt");
  EXPECT_EQ(Read({""}, "en.txt"),
            "de-a.txt de.txt en-more.txt en.txt fi-val.txt fr.txt base en.txt");
  Write("IT.TXT", "it Italiano\n");
  EXPECT_EQ(Read({"*.TXT"}), "IT.TXT");
  EXPECT_EQ(Read({""}).substr(0, 6), "IT.TXT");
}

TEST_F(ReadWorkspaceTest, ReadsSiblingsOfSingleFiles) {
  EXPECT_EQ(Read({"de.txt"}), "(de-a.txt) de.txt");
  EXPECT_EQ(Read({"de-a.txt"}), "de-a.txt (de.txt)");
  EXPECT_EQ(Read({"fr.txt"}, "en.txt"), "fr.txt (en-more.txt) (en.txt) base en.txt");
  EXPECT_EQ(Read({"de.txt", "de-a.txt"}), "de.txt de-a.txt");  // the order that is given
  EXPECT_EQ(Read({"fi-val.txt"}), "fi-val.txt");
}

TEST_F(ReadWorkspaceTest, ReadsEachFileOnce) {
  EXPECT_EQ(Read({"fr.txt", "fr.txt", "../workspace test Ордner/fr.txt"}), "fr.txt");
  EXPECT_EQ(Read({"en.txt"}, "en.txt"), "(en-more.txt) en.txt base en.txt");
}

TEST_F(ReadWorkspaceTest, SaysWhatCannotBeUsed) {
  Write("empty.txt", "");
  Write("no-id.txt", "\na 1\n");
  EXPECT_EQ(Read({"none.txt"}), " problem.not_found");
  EXPECT_EQ(Read({"*.none"}), " problem.no_files");
  EXPECT_EQ(Read({"empty.txt"}), "empty.txt");
  EXPECT_EQ(Read({"fr.txt"}, "none.txt"), "fr.txt problem.not_found");
  EXPECT_EQ(Read({"fr.txt"}, "fi-val.txt"), "fr.txt (fi-val.txt) problem.base_is_unit_table");
  EXPECT_EQ(Read({"fr.txt"}, "no-id.txt"), "fr.txt (no-id.txt) problem.base_without_id");
  EXPECT_EQ(Read({"fr.txt"}, "empty.txt"), "fr.txt (empty.txt) problem.base_without_id");
  EXPECT_EQ(Read({"fr.txt"}, "."), "fr.txt problem.not_a_file");
  fs::create_directory(folder_ / "folder");
  EXPECT_EQ(Read({"folder"}), " problem.no_files");
}

TEST_F(ReadWorkspaceTest, ReadsLargeFilesWhole) {
  std::string bytes = "it Italiano\n";
  bytes.append(3'000'000, 'x');
  Write("it.txt", bytes);
  std::vector<FileProblem> problems;
  const Workspace workspace =
      ReadWorkspace({{{folder_ / "it.txt", false}}, std::nullopt}, problems);
  ASSERT_EQ(workspace.files.size(), 1U);
  EXPECT_EQ(workspace.files[0].Source().Raw(), bytes);
}

TEST(GenericName, KeepsTheSlashesInFrontOfAComputer) {
  EXPECT_EQ(GenericName(fs::u8path(u8"//server/\u0444/a.txt")), u8"//server/\u0444/a.txt");
  EXPECT_EQ(GenericName(fs::path("a") / "b.txt"), "a/b.txt");
}

TEST(Workspace, ATenthOfTheKeysMakesATranslation) {
  std::string base = "en English\n";
  for (char c = 'a'; c <= 't'; ++c) {
    base += std::string(1, c) + " x\n";
  }
  const Workspace workspace = MakeWorkspace({{"en", base},
                                             {"en-b", "en\nzz x\n"},
                                             {"de", "de\na x\nb x\n"},
                                             {"fr", "fr\na x\nown.a x\nown.b x\n"},
                                             {"de-b", "de\nzz x\n"}},
                                            0);
  EXPECT_TRUE(workspace.OwesKeysOf(2, 0));
  EXPECT_TRUE(workspace.OwesKeysOf(2, 1));  // the keys are in another file
  EXPECT_FALSE(workspace.OwesKeysOf(3, 0));
  EXPECT_FALSE(workspace.OwesKeysOf(3, 1));
  EXPECT_FALSE(workspace.files[2].isSetOfItsOwn);
  EXPECT_TRUE(workspace.files[3].isSetOfItsOwn);
  EXPECT_FALSE(workspace.files[4].isSetOfItsOwn);
  EXPECT_EQ(workspace.BaseOf(1), nullptr);
  EXPECT_EQ(workspace.BaseOf(3), workspace.Base());
  ASSERT_EQ(workspace.untranslated.size(), 2U);
  EXPECT_EQ(workspace.untranslated[0].baseFile, 0U);
  EXPECT_EQ(workspace.untranslated[1].id, "fr");
}

}  // namespace
}  // namespace KelmoLibs::Lang
