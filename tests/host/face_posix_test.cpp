// The C++ face with languages of the user that the test sets, and with a folder of which one file
// cannot be read.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <kelmo/kelmo.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/scratch_folder.h"

namespace {

using Ids = std::vector<std::string>;

TEST(KelmoFacePosix, SuggestsLanguagesForTheUser) {
  ::setenv("LC_ALL", "ru_RU.UTF-8", 1);
  ::setenv("LANGUAGE", "de_AT:fr:de", 1);
  kelmo::Loader loader;
  loader.add_memory("en\n", "en.txt");
  loader.add_memory("de\n", "de.txt");
  const kelmo::Texts texts = loader.finish();
  EXPECT_EQ(kelmo::system_languages(), (Ids{"de-AT", "fr", "de", "ru-RU"}));
  EXPECT_EQ(kelmo::languages_for_user(texts, "en"), (Ids{"de", "en"}));
  EXPECT_EQ(kelmo::languages_for_user(texts, "de"), Ids{"de"});
  ::setenv("LC_ALL", "C", 1);
  EXPECT_EQ(kelmo::system_languages(), Ids());
  EXPECT_EQ(kelmo::languages_for_user(texts, "en"), Ids{"en"});
  ::unsetenv("LANGUAGE");
}

TEST(KelmoFacePosix, ThrowsTheReasonBehindOtherProblems) {
  const ScratchFolder folder;
  folder.Write(L"a.txt", "en\nk t\nk u\n");
  std::filesystem::create_symlink("none", folder.Path() / "b.txt");
  kelmo::Loader loader;
  try {
    loader.add_folder(folder.Path());
    FAIL() << "nothing was thrown";
  } catch (const kelmo::Error& error) {
    EXPECT_EQ(error.status(), KELMO_CANNOT_READ);
    EXPECT_NE(std::string_view(error.what()).find("No such file"), std::string_view::npos);
  }
}

}  // namespace
