// Reading and writing whole files.
#include "lang/reading/file_bytes.h"

#include <gtest/gtest.h>

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;

class FileBytes : public testing::Test {
 protected:
  FileBytes() { fs::create_directories(folder_); }
  void TearDown() override { fs::remove_all(folder_); }

  // Cyrillic and a blank.
  const fs::path folder_ =
      fs::temp_directory_path() / fs::u8path(u8"kelmo bytes \u043F\u0443\u0442\u044C");
  const fs::path file_ = folder_ / "file.json";
};

TEST_F(FileBytes, AreThoseThatWereWritten) {
  EXPECT_EQ(ReadFileBytes(file_), std::nullopt);
  for (const std::string& bytes : {std::string("new, and longer"), std::string("\r\n\x1A\0", 4)}) {
    EXPECT_EQ(WriteFileBytes(file_, bytes), std::error_code());
    EXPECT_EQ(ReadFileBytes(file_), bytes);
  }
}

TEST_F(FileBytes, AreNoMoreThanTheLimit) {
  const std::string bytes(10'000, 'x');
  EXPECT_EQ(WriteFileBytes(file_, bytes), std::error_code());
  EXPECT_EQ(ReadFileBytes(file_, 0), "");
  EXPECT_EQ(ReadFileBytes(file_, 9'999), bytes.substr(1));
  EXPECT_EQ(ReadFileBytes(file_, 10'000), bytes);
  EXPECT_EQ(ReadFileBytes(file_, 10'001), bytes);
}

TEST_F(FileBytes, AreNotThoseOfAFolder) {
  EXPECT_EQ(ReadFileBytes(folder_), std::nullopt);
  EXPECT_TRUE(WriteFileBytes(folder_, "new"));
  EXPECT_TRUE(fs::is_directory(folder_));
}

TEST_F(FileBytes, CreateNoFolder) {
  EXPECT_TRUE(WriteFileBytes(folder_ / "missing" / "file.json", "new"));
  EXPECT_TRUE(fs::is_empty(folder_));
}

}  // namespace
}  // namespace KelmoLibs::Lang
