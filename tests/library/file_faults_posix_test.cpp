// Faulty files that only POSIX systems have: without permission, pipes, devices.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "tests/support/child_process.h"
#include "tests/support/host_test.h"

namespace {

namespace fs = std::filesystem;

class FileFaultsPosix : public HostTest {};

TEST_F(FileFaultsPosix, FilesAndFoldersWithoutPermissionAreNotFound) {
  constexpr int kSkipped = 2;
  folder_.Write(L"open.txt", "en\nkey text\n");
  folder_.Write(L"closed.txt", "de\n");
  folder_.Write(L"closed\\de.txt", "de\n");
  fs::permissions(folder_.Path() / "closed.txt", fs::perms::none);
  fs::permissions(folder_.Path() / "closed", fs::perms::none);
  // Root may open every file, so a child process becomes another user first.
  const int result = ExitCodeOf(StartChild([this] {
    if (!StopBeingRoot()) {
      return kSkipped;
    }
    if (::open((folder_.Path() / "open.txt").c_str(), O_RDONLY) < 0) {
      return kSkipped;  // that user may not enter this folder
    }
    EXPECT_EQ(Load(L"open.txt"), 0);
    ExpectNotFound(folder_.HostPath(), L"closed.txt");
    ExpectNotFound(folder_.HostPath(), L"closed\\de.txt");
    EXPECT_EQ(Text(L"key"), L"text");
    return HasFailure() ? 1 : 0;
  }));
  fs::permissions(folder_.Path() / "closed", fs::perms::owner_all);
  if (result == kSkipped) {
    GTEST_SKIP() << "no other user may read this folder";
  }
  EXPECT_EQ(result, 0);
}

TEST_F(FileFaultsPosix, OnlyRegularFilesAreFound) {
  folder_.Write(L"en.txt", "en\n");
  ASSERT_EQ(::mkfifo((folder_.Path() / "pipe").c_str(), 0600), 0);
  fs::create_symlink("pipe", folder_.Path() / "link to the pipe");
  fs::create_symlink("nowhere", folder_.Path() / "link to nowhere");
  fs::create_symlink("circle", folder_.Path() / "circle");
  for (const wchar_t* const fileName :
       {L"pipe", L"link to the pipe", L"link to nowhere", L"circle"}) {
    SCOPED_TRACE(testing::PrintToString(fileName));
    ExpectNotFound(folder_.HostPath(), fileName);
  }
  for (const wchar_t* const device : {L"null", L"zero", L"full", L"tty"}) {
    SCOPED_TRACE(testing::PrintToString(device));
    ExpectNotFound(L"\\dev", device);
  }
  fs::create_symlink("en.txt", folder_.Path() / "link.txt");
  EXPECT_EQ(Load(L"link.txt"), 0) << "a link to a file is that file";
}

TEST_F(FileFaultsPosix, TheLongestPathOfTheSystemLoads) {
  const std::wstring folder = folder_.HostPath();
  const std::wstring step = L"\\" + std::wstring(200, L'f');
  std::wstring inner;
  while (folder.size() + inner.size() + step.size() < 4000) {
    inner += step;
  }
  folder_.Write(inner.substr(1) + L"\\en.txt", "en\nkey text\n");
  EXPECT_EQ(host_.LoadDictionary((folder + inner).c_str(), L"en.txt"), 0);
  EXPECT_EQ(Text(L"key"), L"text");
  // Leads to the same folder, but makes the path too long.
  const std::wstring detour = L"\\." + std::wstring(4096, L'\\');
  ExpectNotFound(folder + inner + detour, L"en.txt");
}

TEST_F(FileFaultsPosix, AFileThatCannotBeReadLoadsAsEmpty) {
  // Nothing is mapped at address 0: opening this regular file succeeds, reading its start fails.
  if (::access("/proc/self/mem", R_OK) != 0) {
    GTEST_SKIP() << "no /proc here";
  }
  EXPECT_EQ(WriteAndLoad(L"en.txt", "en\nkey text\n"), 0);
  EXPECT_EQ(host_.LoadDictionary(L"\\proc\\self", L"mem"), 0) << "it counts as an empty file";
  EXPECT_EQ(Text(L"key"), L"text");
}

}  // namespace
