#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "host/loader.h"
#include "tests/host/text_dump.h"
#include "tests/support/scratch_folder.h"

namespace {

using KelmoLibs::Host::Loader;
using KelmoLibs::Host::ProblemList;

TEST(LoaderPosix, TellsOfFilesThatItCannotNameOrFind) {
  const ScratchFolder folder;
  const std::string top = folder.Path();
  folder.Write(L"en.txt", "en\nk t\n");
  folder.Write(L"other.txt", "en\nm t\n");
  WriteFile(folder.Path() / "\xFF.txt", "en\nl t\n");
  WriteFile(folder.Path() / "\xFF", "no dictionary");
  std::filesystem::create_symlink("none", folder.Path() / "link.txt");
  std::filesystem::create_symlink("none", folder.Path() / "second.txt");
  Loader loader;
  ProblemList problems;
  EXPECT_FALSE(loader.AddFolder(top, {}, &problems));
  EXPECT_EQ(Dump(loader.Finish(nullptr)),
            "en|\n" + top + "/en.txt:2 k=t\n" + top + "/other.txt:2 m=t\n");
  EXPECT_EQ(Dump(problems), "111 2 " + top + "/link.txt:0:0 - - No such file or directory\n111 2 " +
                                top + "/second.txt:0:0 - - No such file or directory\n111 2 " +
                                top + ":0:0 - - the name of a file is not UTF-8\n");
}

}  // namespace
