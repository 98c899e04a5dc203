#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "platform/native_files.h"
#include "tests/support/child_process.h"
#include "tests/support/free_descriptor.h"
#include "tests/support/read_file.h"
#include "tests/support/scratch_folder.h"

namespace KelmoLibs::Localize {
namespace {

std::string ReasonOf(const std::string& path) {
  FileBytes bytes;
  const SystemError error = ReadFileAt(path, bytes);
  return error.IsNone() ? "none" : DescribeError(error);
}

TEST(NativeFilesPosix, TellTheReasonOfTheSystem) {
  const ScratchFolder folder;
  folder.Write(L"file", "");
  const std::string top = folder.Path();
  ASSERT_EQ(::mkfifo((top + "/pipe").c_str(), 0600), 0);
  std::filesystem::create_symlink("itself", top + "/itself");
  const struct {
    const char* name;
    std::string path;
    const char* reason;
  } rows[] = {
      {"no such file", top + "/none", "No such file or directory"},
      {"no such folder", top + "/none/file", "No such file or directory"},
      {"a file as a folder", top + "/file/file", "Not a directory"},
      {"a folder", top, "Is a directory"},
      {"a pipe", top + "/pipe", "Operation not supported"},
      {"a device", "/dev/null", "Operation not supported"},
      {"a link to itself", top + "/itself", "Too many levels of symbolic links"},
      {"a name that is too long", top + "/" + std::string(300, 'x'), "File name too long"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ReasonOf(row.path), row.reason) << row.name;
  }
  std::vector<std::string> names;
  EXPECT_EQ(DescribeError(ListFilesAt(top + "/none", names)), "No such file or directory");
  EXPECT_EQ(DescribeError(ListFilesAt(top + "/file", names)), "Not a directory");
  EXPECT_TRUE(names.empty());
}

TEST(NativeFilesPosix, TellThatTheUserMayNotRead) {
  const ScratchFolder folder;
  folder.Write(L"file", "text");
  folder.Write(L"closed\\file", "text");
  const std::string top = std::filesystem::absolute(folder.Path());
  ASSERT_EQ(::chmod((top + "/file").c_str(), 0), 0);
  ASSERT_EQ(::chmod((top + "/closed").c_str(), 0), 0);
  EXPECT_EQ(ExitCodeOf(StartChild([&] {
              if (!StopBeingRoot()) {
                return 0;
              }
              // The folders above may be closed to others too, with the same answer.
              std::vector<std::string> names;
              const bool isDenied =
                  ReasonOf(top + "/file") == "Permission denied" &&
                  ReasonOf(top + "/closed/file") == "Permission denied" &&
                  DescribeError(ListFilesAt(top + "/closed", names)) == "Permission denied";
              return isDenied ? 0 : 1;
            })),
            0);
  ::chmod((top + "/closed").c_str(), 0700);
}

// Opening it would take away the reader for which the writer waits.
TEST(NativeFilesPosix, DoNotConnectToTheWriterOfAPipe) {
  const ScratchFolder folder;
  const std::string pipe = folder.Path() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const pid_t writer = StartChild([&pipe] {
    ::signal(SIGPIPE, SIG_IGN);
    ::alarm(20);
    const int descriptor = ::open(pipe.c_str(), O_WRONLY);  // waits for a reader
    return ::write(descriptor, "text", 4) == 4 ? 0 : 1;
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(50));  // so that the writer waits
  EXPECT_EQ(ReasonOf(pipe), "Operation not supported");
  std::this_thread::sleep_for(std::chrono::milliseconds(50));  // so that the writer could connect
  ASSERT_EQ(::waitpid(writer, nullptr, WNOHANG), 0) << "the writer has connected to the library";
  const int reader = ::open(pipe.c_str(), O_RDONLY);
  char text[4] = {};
  EXPECT_EQ(::read(reader, text, 4), 4);
  ::close(reader);
  EXPECT_EQ(ExitCodeOf(writer), 0);
}

TEST(NativeFilesPosix, CloseTheDescriptor) {
  const ScratchFolder folder;
  folder.Write(L"file", "text");
  const int before = FreeDescriptor();
  std::vector<std::string> names;
  FileBytes bytes;
  EXPECT_TRUE(ReadFileAt(folder.Path() / "file", bytes).IsNone());
  EXPECT_TRUE(ListFilesAt(folder.Path(), names).IsNone());
  EXPECT_FALSE(ReadFileAt(folder.Path(), bytes).IsNone());
  EXPECT_FALSE(ListFilesAt(folder.Path() / "file", names).IsNone());
  EXPECT_EQ(FreeDescriptor(), before);
}

TEST(NativeFilesPosix, ReadAFileWhoseSizeTheSystemDoesNotTell) {
  FileBytes bytes;
  if (!ReadFileAt("/proc/self/maps", bytes).IsNone()) {
    GTEST_SKIP() << "there is no /proc";
  }
  EXPECT_GT(bytes.size, 4096U) << "more than one piece";
  EXPECT_EQ(bytes.View().back(), '\n');
}

TEST(NativeFilesPosix, TellThatAReadFails) {
  // This regular file can be opened, but nothing is mapped at address 0.
  if (::access("/proc/self/mem", R_OK) != 0) {
    GTEST_SKIP() << "there is no /proc";
  }
  EXPECT_EQ(ReasonOf("/proc/self/mem"), "Input/output error");
}

TEST(NativeFilesPosix, ListLinksToFilesAndLinksThatLeadNowhere) {
  const ScratchFolder folder;
  folder.Write(L"file", "");
  folder.Write(L"folder\\inside", "");
  namespace fs = std::filesystem;
  fs::create_symlink("file", folder.Path() / "link to a file");
  fs::create_symlink("folder", folder.Path() / "link to a folder");
  fs::create_symlink("none", folder.Path() / "link to nothing");
  ASSERT_EQ(::mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  std::vector<std::string> names;
  ASSERT_TRUE(ListFilesAt(folder.Path(), names).IsNone());
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"file", "link to a file", "link to nothing"}));
}

TEST(NativeFilesPosix, JoinWithOneSlash) {
  EXPECT_EQ(JoinNative("a", "b"), "a/b");
  EXPECT_EQ(JoinNative("a/", "b"), "a/b");
  EXPECT_EQ(JoinNative("", "b"), "b");
  EXPECT_EQ(JoinNative("/", "b"), "/b");
  EXPECT_EQ(JoinNative("a\\", "b"), "a\\/b") << "a backslash belongs to the name";
}

TEST(NativeFilesPosix, NoByteEndsAText) { EXPECT_FALSE(ControlZEndsText()); }

}  // namespace
}  // namespace KelmoLibs::Localize
