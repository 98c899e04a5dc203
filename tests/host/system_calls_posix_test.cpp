// The files of kelmo under unusual answers of the system. The program defines the system's functions
// below, and the objects of kelmo in it call them.

#include <dirent.h>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/native_files.h"
#include "tests/support/scratch_folder.h"

namespace {

int interruptions = 0;  // so many reads are interrupted
bool readsBytewise = false;
bool hidesTypes = false;
int readdirError = 0;

using ReadFolder = dirent* (*)(DIR*);

}  // namespace

// Their names in this file differ from those that the linker sees.
extern "C" {

ssize_t AnswerRead(int descriptor, void* buffer, std::size_t size) __asm__("read");
dirent* AnswerReaddir(DIR* folder) __asm__("readdir");

ssize_t AnswerRead(int descriptor, void* buffer, std::size_t size) {
  if (interruptions > 0) {
    --interruptions;
    errno = EINTR;
    return -1;
  }
  return ::syscall(SYS_read, descriptor, buffer,
                   readsBytewise ? std::min<std::size_t>(size, 1) : size);
}

dirent* AnswerReaddir(DIR* folder) {
  static const auto real = reinterpret_cast<ReadFolder>(::dlsym(RTLD_NEXT, "readdir"));
  if (readdirError != 0) {
    errno = readdirError;
    return nullptr;
  }
  dirent* const entry = real(folder);
  if (entry != nullptr && hidesTypes) {
    entry->d_type = DT_UNKNOWN;
  }
  return entry;
}

}  // extern "C"

namespace KelmoLibs::Localize {
namespace {

class KelmoSystemCalls : public testing::Test {
 protected:
  ~KelmoSystemCalls() override {
    interruptions = 0;
    readsBytewise = false;
    hidesTypes = false;
    readdirError = 0;
  }

  const ScratchFolder folder_;
};

TEST_F(KelmoSystemCalls, AnInterruptedReadIsRepeated) {
  folder_.Write(L"file", "text");
  FileBytes bytes;
  interruptions = 3;
  EXPECT_TRUE(ReadFileAt(folder_.Path() / "file", bytes).IsNone());
  EXPECT_EQ(interruptions, 0);
  EXPECT_EQ(bytes.View(), "text");
}

TEST_F(KelmoSystemCalls, AFileMayComeInPieces) {
  folder_.Write(L"file", "some text");
  FileBytes bytes;
  readsBytewise = true;
  EXPECT_TRUE(ReadFileAt(folder_.Path() / "file", bytes).IsNone());
  readsBytewise = false;
  EXPECT_EQ(bytes.View(), "some text");
}

TEST_F(KelmoSystemCalls, AFolderIsListedWhereTheFileSystemTellsNoTypes) {
  folder_.Write(L"file", "");
  folder_.Write(L"folder\\inside", "");
  std::filesystem::create_symlink("file", folder_.Path() / "link");
  std::filesystem::create_symlink("none", folder_.Path() / "to nothing");
  hidesTypes = true;
  std::vector<std::string> names;
  EXPECT_TRUE(ListFilesAt(folder_.Path(), names).IsNone());
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"file", "link", "to nothing"}));
}

TEST_F(KelmoSystemCalls, AFolderThatCannotBeReadToItsEndIsAnError) {
  std::vector<std::string> names;
  readdirError = EIO;
  EXPECT_EQ(ListFilesAt(folder_.Path(), names).number, EIO);
  readdirError = 0;
}

}  // namespace
}  // namespace KelmoLibs::Localize
