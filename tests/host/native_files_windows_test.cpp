#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/native_files.h"
#include "tests/support/scratch_folder.h"

namespace KelmoLibs::Localize {
namespace {

int ErrorOf(const std::string& path) {
  FileBytes bytes;
  return ReadFileAt(path, bytes).number;
}

TEST(NativeFilesWindows, GiveTheErrorOfTheSystem) {
  const ScratchFolder folder;
  folder.Write(L"file", "");
  const std::string top = folder.Path().u8string();
  const struct {
    const char* name;
    std::string path;
    int error;
  } rows[] = {
      {"no such file", top + "\\none", ERROR_FILE_NOT_FOUND},
      {"no such folder", top + "\\none\\file", ERROR_PATH_NOT_FOUND},
      {"a folder", top, ERROR_ACCESS_DENIED},
      {"a device", "NUL", ERROR_NOT_SUPPORTED},
      {"a character that no name has", top + "\\a?b", ERROR_INVALID_NAME},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ErrorOf(row.path), row.error) << row.name;
    const std::string said = DescribeError({row.error});
    EXPECT_FALSE(said.empty()) << row.name;
    EXPECT_EQ(said.find_first_of("\r\n"), std::string::npos) << said;
    EXPECT_NE(said.back(), '.') << said;
  }
  std::vector<std::string> names;
  EXPECT_EQ(ListFilesAt(top + "\\none", names).number, ERROR_PATH_NOT_FOUND);
  EXPECT_FALSE(ListFilesAt(top + "\\file", names).IsNone());
  EXPECT_TRUE(names.empty());
}

TEST(NativeFilesWindows, ReadAFileThatAnotherProgramWritesAndTellOfOneThatItHasLocked) {
  const ScratchFolder folder;
  folder.Write(L"file", "text");
  const std::string path = (folder.Path() / "file").u8string();
  const std::wstring wide = (folder.Path() / "file").wstring();
  for (const DWORD sharing : {DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE}, DWORD{0}}) {
    const HANDLE other = ::CreateFileW(wide.c_str(), GENERIC_READ | GENERIC_WRITE, sharing, nullptr,
                                       OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(other, INVALID_HANDLE_VALUE);
    EXPECT_EQ(ErrorOf(path), sharing != 0 ? 0 : ERROR_SHARING_VIOLATION);
    ::CloseHandle(other);
  }
}

TEST(NativeFilesWindows, CloseTheirHandles) {
  const ScratchFolder folder;
  folder.Write(L"file", "text");
  const std::string path = (folder.Path() / "file").u8string();
  const auto count = [] {
    DWORD handles = 0;
    ::GetProcessHandleCount(::GetCurrentProcess(), &handles);
    return handles;
  };
  std::vector<std::string> names;
  ErrorOf(path);
  ListFilesAt(folder.Path().u8string(), names);
  const DWORD before = count();
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(ErrorOf(path), 0);
    EXPECT_NE(ErrorOf(folder.Path().u8string()), 0);
    EXPECT_NE(ErrorOf("NUL"), 0);
    EXPECT_TRUE(ListFilesAt(folder.Path().u8string(), names).IsNone());
  }
  EXPECT_EQ(count(), before);
}

TEST(NativeFilesWindows, JoinWithOneSeparator) {
  EXPECT_EQ(JoinNative("a", "b"), "a/b");
  EXPECT_EQ(JoinNative("a\\b", "c"), "a\\b\\c");
  EXPECT_EQ(JoinNative("a/b", "c"), "a/b/c");
  EXPECT_EQ(JoinNative("a\\", "b"), "a\\b");
  EXPECT_EQ(JoinNative("a/", "b"), "a/b");
  EXPECT_EQ(JoinNative("", "b"), "b");
  EXPECT_EQ(JoinNative("C:", "b"), "C:b") << "in the working folder of the drive";
}

TEST(NativeFilesWindows, ControlZEndsAText) { EXPECT_TRUE(ControlZEndsText()); }

}  // namespace
}  // namespace KelmoLibs::Localize
