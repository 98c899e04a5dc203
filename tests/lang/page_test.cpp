// Started by mouse: which files are checked, and what is written and opened.
#include "lang/commands/page.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "lang/commands/lint.h"
#include "tests/support/read_file.h"

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> opened;
int waits = 0;

bool Open(const fs::path& file) {
  opened.push_back(file);
  return true;
}
bool DoNotOpen(const fs::path& /*file*/) { return false; }
void Wait() { ++waits; }

class PageTest : public ::testing::Test {
 protected:
  PageTest() : folder_(fs::u8path(u8"page_test \u043C\u043E\u0439 [\u00FC]")) {
    opened.clear();
    waits = 0;
    fs::remove_all(folder_);
    fs::create_directory(folder_);
    fs::create_directory(folder_ / "texts");
    fs::create_directory(folder_ / "data");
  }
  void TearDown() override { fs::remove_all(folder_); }

  std::string AddFile(const std::string& name, const std::string& bytes) const {
    const fs::path path = folder_ / "texts" / fs::u8path(name);
    std::ofstream(path, std::ios::binary) << bytes;
    return path.u8string();
  }

  Desktop MakeDesktop() const { return {folder_ / "texts", folder_ / "data", Open, Wait}; }

  fs::path folder_;
  Texts texts_{"en"};
};

TEST_F(PageTest, OnlyExistingPathsAreDropped) {
  const std::string file = AddFile(u8"\u0444 r.txt", "fr\n");
  EXPECT_TRUE(AreDropped({}));
  EXPECT_TRUE(AreDropped({file, folder_.u8string()}));
  EXPECT_FALSE(AreDropped({file, "--help"}));
  EXPECT_FALSE(AreDropped({"lint", file}));
}

TEST_F(PageTest, DroppedFilesGiveAPageInANewFolder) {
  const std::string base = AddFile("en.txt", "en\na\tone %1\nb\ttwo\n");
  const std::string bytes = "fr\na\tun %1\n";
  const std::string file = AddFile("fr.txt", bytes);
  ShowPage({file}, MakeDesktop(), texts_);
  ASSERT_EQ(opened.size(), 1U);
  EXPECT_EQ(opened[0].parent_path().parent_path(), folder_ / "data" / "kelmo-lang");
  EXPECT_EQ(opened[0].parent_path().filename().u8string().size(), 32U);
  const std::string page = ReadFile(opened[0]);
  EXPECT_NE(page.find("key &quot;<bdi dir=\"auto\">b</bdi>&quot; is missing"), std::string::npos);
  EXPECT_NE(page.find("are compared with <bdi dir=\"auto\">"), std::string::npos);
  EXPECT_EQ(ReadFile(fs::u8path(file)), bytes);

  ShowPage({file}, MakeDesktop(), texts_);
  ASSERT_EQ(opened.size(), 2U);
  EXPECT_NE(opened[0], opened[1]);
  EXPECT_EQ(waits, 0);
}

TEST_F(PageTest, ADoubleClickChecksTheFolderOfTheProgram) {
  AddFile("fr.txt", "fr\na\tun\n");
  ShowPage({}, MakeDesktop(), texts_);
  ASSERT_EQ(opened.size(), 1U);
  EXPECT_NE(ReadFile(opened[0]).find("fr.txt"), std::string::npos);
}

TEST_F(PageTest, WithoutEnTxtTheBaseIsTheDictionaryWithTheIdEn) {
  AddFile("a.txt", "de\na\teins\n");
  AddFile("source.txt", "en English\na\tone\nb\ttwo\n");
  ShowPage({(folder_ / "texts").u8string()}, MakeDesktop(), texts_);
  ASSERT_EQ(opened.size(), 1U);
  const std::string page = ReadFile(opened[0]);
  const std::size_t at = page.find("are compared with");
  ASSERT_NE(at, std::string::npos);
  EXPECT_NE(page.substr(at, 200).find("source.txt"), std::string::npos);
}

TEST_F(PageTest, WithoutABaseThePageSaysSo) {
  const std::string file = AddFile("fr.txt", "fr\na\tun\n");
  ShowPage({file}, MakeDesktop(), texts_);
  ASSERT_EQ(opened.size(), 1U);
  EXPECT_NE(ReadFile(opened[0]).find("There is no dictionary to compare with"), std::string::npos);
}

TEST_F(PageTest, MendedCopiesLieBesideThePage) {
  AddFile("de.txt",
          "\xEF\xBB\xBF"
          "de\na\tB\xC3\xA4r\n");
  const std::string bytes =
      "ru\na\t\xCF\xF0\xE8\xE2\xE5\xF2, \xEA\xE0\xEA \xE4\xE5\xEB\xE0\n";  // windows-1251
  const std::string guessed = AddFile("ru.txt", bytes);
  AddFile("fr.txt", "fr\na\tun\n");
  ShowPage({(folder_ / "texts").u8string()}, MakeDesktop(), texts_);
  ASSERT_EQ(opened.size(), 1U);
  const fs::path folder = opened[0].parent_path() / "page-mended";
  EXPECT_EQ(ReadFile(folder / "de.txt"), "de\na\tB\xC3\xA4r\n");
  EXPECT_EQ(ReadFile(folder / "ru.windows-1251.txt"),
            u8"ru\na\t\u041F\u0440\u0438\u0432\u0435\u0442, \u043A\u0430\u043A "
            u8"\u0434\u0435\u043B\u0430\n");
  EXPECT_FALSE(fs::exists(folder / "ru.txt"));  // a guess is no mend
  EXPECT_FALSE(fs::exists(folder / "fr.txt"));  // nothing to mend
  const std::string page = ReadFile(opened[0]);
  EXPECT_NE(page.find("href=\"page-mended/de.txt\""), std::string::npos);
  EXPECT_NE(page.find("href=\"page-mended/ru.windows-1251.txt\""), std::string::npos);
  EXPECT_EQ(ReadFile(fs::u8path(guessed)), bytes);
}

TEST_F(PageTest, CopiesOfFilesWithOneNameAreTwo) {
  fs::create_directory(folder_ / "other");
  const std::string first = AddFile("de.txt",
                                    "\xEF\xBB\xBF"
                                    "de\na\t1\n");
  const std::string second = AddFile("../other/de.txt",
                                     "\xEF\xBB\xBF"
                                     "de\nb\t2\n");
  ShowPage({first, second}, MakeDesktop(), texts_);
  ASSERT_EQ(opened.size(), 1U);
  const fs::path folder = opened[0].parent_path() / "page-mended";
  EXPECT_EQ(ReadFile(folder / "de.txt"), "de\na\t1\n");
  EXPECT_EQ(ReadFile(folder / "de (2).txt"), "de\nb\t2\n");
}

TEST_F(PageTest, NoFileThatIsReadIsWrittenOver) {
  const std::string bytes =
      "\xEF\xBB\xBF"
      "de\na\t1\n";
  const std::string file = AddFile("de.txt", bytes);
  LintOptions options;
  options.paths = {file};
  options.html = (folder_ / "data" / ".." / "texts" / "de.txt").u8string();
  const Answer answer = Lint(options, texts_, {}, {});
  EXPECT_EQ(answer.status, 2);
  EXPECT_NE(answer.error.find("de.txt: is one of the files that are checked"), std::string::npos);
  EXPECT_EQ(ReadFile(fs::u8path(file)), bytes);
  EXPECT_FALSE(fs::exists(folder_ / "texts" / "de-mended"));

  // The folder of the copies is the one that is checked.
  options.html = (folder_ / "page.html").u8string();
  fs::rename(folder_ / "texts", folder_ / "page-mended");
  options.paths = {(folder_ / "page-mended").u8string()};
  EXPECT_EQ(Lint(options, texts_, {}, {}).status, 1);
  EXPECT_EQ(ReadFile(folder_ / "page-mended" / "de.txt"), bytes);
  EXPECT_EQ(ReadFile(folder_ / "page-mended" / "de (2).txt"), "de\na\t1\n");
}

TEST_F(PageTest, WhatCannotBeWrittenLeavesNothingBehind) {
  const std::string file = AddFile("de.txt",
                                   "\xEF\xBB\xBF"
                                   "de\na\t1\n");
  LintOptions options;
  options.paths = {file};
  options.html = (folder_ / "data").u8string();  // a folder
  EXPECT_EQ(Lint(options, texts_, {}, {}).status, 2);
  EXPECT_FALSE(fs::exists(folder_ / "data-mended"));
  options.html = (folder_ / "missing" / "page.html").u8string();
  EXPECT_EQ(Lint(options, texts_, {}, {}).status, 2);
  EXPECT_FALSE(fs::exists(folder_ / "missing"));
}

TEST_F(PageTest, ACopyThatCannotBeWrittenIsAProblemOnThePage) {
  const std::string file = AddFile("de.txt",
                                   "\xEF\xBB\xBF"
                                   "de\na\t1\n");
  std::ofstream(folder_ / "page-mended") << "no folder";
  LintOptions options;
  options.paths = {file};
  options.html = (folder_ / "page.html").u8string();
  EXPECT_EQ(Lint(options, texts_, {}, {}).status, 2);
  const std::string page = ReadFile(folder_ / "page.html");
  EXPECT_NE(page.find("page-mended/de.txt</bdi>: cannot be written"), std::string::npos);
  EXPECT_EQ(page.find("href=\"page-mended"), std::string::npos);
}

TEST_F(PageTest, NoCopyFollowsALink) {
  const std::string file = AddFile("de.txt",
                                   "\xEF\xBB\xBF"
                                   "de\na\t1\n");
  std::error_code error;
  fs::create_directory_symlink("data", folder_ / "page-mended", error);
  if (error) {
    GTEST_SKIP() << "this user or file system makes no links";
  }
  LintOptions options;
  options.paths = {file};
  options.html = (folder_ / "page.html").u8string();
  EXPECT_EQ(Lint(options, texts_, {}, {}).status, 2);
  EXPECT_TRUE(fs::is_empty(folder_ / "data"));

  fs::remove(folder_ / "page-mended");
  fs::create_directory(folder_ / "page-mended");
  std::ofstream(folder_ / "data" / "other.txt") << "other";
  fs::create_symlink("../data/other.txt", folder_ / "page-mended" / "de.txt");
  EXPECT_EQ(Lint(options, texts_, {}, {}).status, 2);
  EXPECT_EQ(ReadFile(folder_ / "data" / "other.txt"), "other");
}

TEST_F(PageTest, ACopyOfAFileWithALongNameHasAShorterOne) {
  const std::string letters(60, 'x');
  AddFile(letters + u8"\u00E9" + letters + ".txt",
          "\xEF\xBB\xBF"
          "de\na\t1\n");
  ShowPage({(folder_ / "texts").u8string()}, MakeDesktop(), texts_);
  ASSERT_EQ(opened.size(), 1U);
  EXPECT_EQ(ReadFile(opened[0].parent_path() / "page-mended" /
                     fs::u8path(letters + u8"\u00E9" + std::string(38, 'x') + ".txt")),
            "de\na\t1\n");
}

TEST_F(PageTest, AFailureWaitsForThePerson) {
  const std::string file = AddFile("fr.txt", "fr\na\tun\n");
  Desktop desktop = MakeDesktop();
  desktop.open = DoNotOpen;
  EXPECT_EQ(ShowPage({file}, desktop, texts_), 2);
  EXPECT_EQ(waits, 1);
  desktop = MakeDesktop();
  desktop.dataFolder = fs::u8path(file);  // no folder can be in a file
  EXPECT_EQ(ShowPage({file}, desktop, texts_), 2);
  EXPECT_EQ(waits, 2);
  desktop.dataFolder.clear();
  EXPECT_EQ(ShowPage({file}, desktop, texts_), 2);
  EXPECT_EQ(waits, 3);
  EXPECT_TRUE(opened.empty());
}

}  // namespace
}  // namespace KelmoLibs::Lang
