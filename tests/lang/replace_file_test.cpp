// Writing a file at once.
#include "platform/replace_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <string>

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;

std::string Read(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void Write(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

class ReplaceFile : public testing::Test {
 protected:
  ReplaceFile() { fs::create_directories(folder_); }
  void TearDown() override { fs::remove_all(folder_); }

  std::ptrdiff_t FileCount() const {
    return std::distance(fs::directory_iterator(folder_), fs::directory_iterator());
  }

  // Cyrillic and a blank.
  const fs::path folder_ =
      fs::temp_directory_path() / fs::u8path(u8"kelmo \u043F\u0443\u0442\u044C");
  const fs::path file_ = folder_ / "de.txt";
};

TEST_F(ReplaceFile, ReplacesAllBytes) {
  Write(file_, "old and longer");
  EXPECT_EQ(ReplaceFileBytes(file_, std::string_view("new\r\n\x1A\0", 7)), std::error_code());
  EXPECT_EQ(Read(file_), std::string("new\r\n\x1A\0", 7));
  EXPECT_EQ(FileCount(), 1);
}

TEST_F(ReplaceFile, AsksBeforeTheOldFileGoes) {
  Write(file_, "old");
  EXPECT_EQ(ReplaceFileBytes(file_, "new", [] { return false; }), std::errc::operation_canceled);
  EXPECT_EQ(Read(file_), "old");
  EXPECT_EQ(FileCount(), 1);
  EXPECT_THROW(ReplaceFileBytes(file_, "new", []() -> bool { throw std::bad_alloc(); }),
               std::bad_alloc);
  EXPECT_EQ(FileCount(), 1);
  EXPECT_FALSE(ReplaceFileBytes(file_, "new", [this] { return Read(file_) == "old"; }));
  EXPECT_EQ(Read(file_), "new");
}

TEST_F(ReplaceFile, CreatesNoFile) {
  EXPECT_TRUE(ReplaceFileBytes(file_, "new"));
  EXPECT_TRUE(ReplaceFileBytes(folder_, "new"));
  EXPECT_EQ(FileCount(), 0);
}

}  // namespace
}  // namespace KelmoLibs::Lang
