// Writing a file at once, where Windows refuses it.
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/replace_file.h"

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;

class ReplaceFileOnWindows : public testing::Test {
 protected:
  ReplaceFileOnWindows() {
    fs::create_directories(folder_);
    std::ofstream(file_, std::ios::binary) << "old";
  }
  void TearDown() override {
    ::SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
    fs::remove_all(folder_);
  }

  void ExpectOldFileAlone() const {
    std::ifstream file(file_, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()),
              "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 1);
  }

  const fs::path folder_ = fs::temp_directory_path() / "kelmo replace_file_test_windows";
  const fs::path file_ = folder_ / "de.txt";
};

TEST_F(ReplaceFileOnWindows, LeavesAReadOnlyFile) {
  ASSERT_TRUE(::SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY));
  EXPECT_EQ(ReplaceFileBytes(file_, "new").value(), ERROR_ACCESS_DENIED);
  ExpectOldFileAlone();
}

// As Excel keeps a file while it is open there. The new file is written then, and cannot replace it.
TEST_F(ReplaceFileOnWindows, LeavesAFileThatAnotherProgramKeeps) {
  const HANDLE other =
      ::CreateFileW(file_.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  EXPECT_TRUE(ReplaceFileBytes(file_, "new"));
  ::CloseHandle(other);
  ExpectOldFileAlone();
}

TEST_F(ReplaceFileOnWindows, KeepsAttributes) {
  ASSERT_TRUE(::SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_HIDDEN));
  EXPECT_FALSE(ReplaceFileBytes(file_, "new"));
  EXPECT_NE(::GetFileAttributesW(file_.c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
}

}  // namespace
}  // namespace KelmoLibs::Lang
