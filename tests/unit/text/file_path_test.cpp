#include "text/file_path.h"

#include <gtest/gtest.h>

namespace KelmoLibs::Localize {
namespace {

TEST(JoinPath, PutsOneBackslashBetweenFolderAndFile) {
  const struct {
    const char* name;
    const wchar_t* folder;
    const wchar_t* fileName;
    const wchar_t* path;
  } rows[] = {
      {"plain", L"C:\\data\\lang", L"de.txt", L"C:\\data\\lang\\de.txt"},
      {"folder ends in a backslash", L"C:\\data\\lang\\", L"de.txt", L"C:\\data\\lang\\\\de.txt"},
      {"folder ends in a slash", L"data/lang/", L"de.txt", L"data/lang/\\de.txt"},
      {"empty folder", L"", L"de.txt", L"\\de.txt"},
      {"blanks and signs at the ends", L" lang*", L"?de.txt ", L" lang*\\?de.txt "},
      {"only blanks", L" ", L"\t", L" \\\t"},
      {"empty file name", L"lang", L"", L"lang\\"},
      {"both empty", L"", L"", L"\\"},
      {"blanks and other scripts", L"языки и тексты", L" de .txt", L"языки и тексты\\ de .txt"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(JoinPath(row.folder, row.fileName), row.path);
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
