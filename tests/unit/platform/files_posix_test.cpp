// What only POSIX systems have: files that are neither regular files nor folders, and wide texts
// that are not paths.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <clocale>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>

#include "platform/files.h"
#include "tests/support/child_process.h"
#include "tests/support/free_descriptor.h"
#include "tests/support/read_all.h"
#include "tests/support/scratch_folder.h"
#include "text/file_path.h"

namespace KelmoLibs::Localize {
namespace {

TEST(OpenTextFilePosix, RefusesADevice) {
  ASSERT_EQ(::access("/dev/zero", R_OK), 0);
  EXPECT_EQ(OpenTextFile(L"\\dev\\zero"), nullptr);
}

TEST(OpenTextFilePosix, ClosesTheDescriptorAlsoOfARefusedFile) {
  const ScratchFolder folder;
  folder.Write(L"file.txt", "text");
  const int before = FreeDescriptor();
  {
    const auto file = OpenTextFile(JoinPath(folder.HostPath(), L"file.txt"));
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(::fcntl(before, F_GETFD), FD_CLOEXEC)
        << "child processes of the host would inherit it";
  }
  EXPECT_EQ(FreeDescriptor(), before);
  EXPECT_EQ(OpenTextFile(folder.HostPath()), nullptr);
  EXPECT_EQ(FreeDescriptor(), before);
}

TEST(OpenTextFilePosix, DoesNotWaitForAPipe) {
  const ScratchFolder folder;
  ASSERT_EQ(::mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(OpenTextFile(JoinPath(folder.HostPath(), L"pipe")), nullptr);
}

TEST(OpenTextFilePosix, DoesNotConnectToTheWriterOfAPipe) {
  const ScratchFolder folder;
  const std::string pipe = folder.Path() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const pid_t writer = StartChild([&pipe] {
    ::signal(SIGPIPE, SIG_IGN);
    const int descriptor = ::open(pipe.c_str(), O_WRONLY);  // waits for a reader
    return ::write(descriptor, "text", 4) == 4 ? 0 : 1;
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(50));  // so that the writer waits
  EXPECT_EQ(OpenTextFile(JoinPath(folder.HostPath(), L"pipe")), nullptr);
  std::this_thread::sleep_for(std::chrono::milliseconds(50));  // so that the writer could connect
  ASSERT_EQ(::waitpid(writer, nullptr, WNOHANG), 0) << "the writer has connected to the library";
  const int reader = ::open(pipe.c_str(), O_RDONLY);
  char text[4] = {};
  EXPECT_EQ(::read(reader, text, 4), 4);
  ::close(reader);
  EXPECT_EQ(ExitCodeOf(writer), 0);
}

TEST(OpenTextFilePosix, WaitsForTheEndOfALease) {
  const ScratchFolder folder;
  folder.Write(L"file.txt", "text");
  const std::string file = folder.Path() / "file.txt";
  int ready[2] = {};
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t holder = StartChild([&] {
    ::alarm(20);
    sigset_t broken;
    ::sigemptyset(&broken);
    ::sigaddset(&broken, SIGIO);
    ::sigprocmask(SIG_BLOCK, &broken, nullptr);
    const int descriptor = ::open(file.c_str(), O_RDWR);
    const bool leased = ::fcntl(descriptor, F_SETLEASE, F_WRLCK) == 0;
    const char answer = leased ? 'y' : 'n';
    if (::write(ready[1], &answer, 1) != 1 || !leased) {
      return 1;
    }
    int signal = 0;
    ::sigwait(&broken, &signal);  // until another process opens the file
    return ::fcntl(descriptor, F_SETLEASE, F_UNLCK) == 0 ? 0 : 1;
  });
  char answer = 'n';
  ASSERT_EQ(::read(ready[0], &answer, 1), 1);
  ::close(ready[0]);
  ::close(ready[1]);
  if (answer == 'n') {
    ExitCodeOf(holder);
    GTEST_SKIP() << "this file system has no leases";
  }
  EXPECT_NE(OpenTextFile(JoinPath(folder.HostPath(), L"file.txt")), nullptr);
  EXPECT_EQ(ExitCodeOf(holder), 0);
}

TEST(OpenTextFilePosix, KeepsReadingTheOpenedFileIfItsNameChanges) {
  namespace fs = std::filesystem;
  const ScratchFolder folder;
  const fs::path file = folder.Path() / "file.txt";
  const struct {
    const char* name;
    std::function<void()> change;
  } rows[] = {
      {"replaced", [&] { fs::rename(folder.Path() / "other.txt", file); }},
      {"removed", [&] { fs::remove(file); }},
      {"made unreadable", [&] { fs::permissions(file, fs::perms::none); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    fs::remove(file);
    folder.Write(L"file.txt", "first and last");
    folder.Write(L"other.txt", "other words here");
    const auto opened = OpenTextFile(JoinPath(folder.HostPath(), L"file.txt"));
    ASSERT_NE(opened, nullptr);
    char firstWord[5] = {};
    ASSERT_EQ(opened->Read(firstWord, sizeof(firstWord)), 5U);
    row.change();
    EXPECT_EQ(ReadAll(*opened, 4), " and last");
  }
}

TEST(OpenTextFilePosix, RefusesALoneSurrogate) {
  EXPECT_EQ(OpenTextFile({L'a', L'\xD800'}), nullptr);
}

TEST(OpenTextFilePosix, EncodesNamesAsUtf8InEveryLocale) {
  const ScratchFolder folder;
  folder.Write(L"словарь.txt", "text");
  for (const char* const locale : {"C", "C.UTF-8"}) {
    SCOPED_TRACE(locale);
    ASSERT_NE(std::setlocale(LC_ALL, locale), nullptr);
    EXPECT_NE(OpenTextFile(JoinPath(folder.HostPath(), L"словарь.txt")), nullptr);
  }
  std::setlocale(LC_ALL, "C");
}

TEST(OpenTextFilePosix, OpensForReadingOnly) {
  if (::access("/proc/self/exe", R_OK) != 0) {
    GTEST_SKIP() << "there is no /proc";
  }
  EXPECT_NE(OpenTextFile(L"\\proc\\self\\exe"), nullptr)
      << "a running program cannot be opened for writing";
}

TEST(OpenTextFilePosix, ClosesDescriptorZero) {
  const ScratchFolder folder;
  folder.Write(L"file.txt", "text");
  EXPECT_EQ(ExitCodeOf(StartChild([&folder] {
              ::close(STDIN_FILENO);
              const bool opened = OpenTextFile(JoinPath(folder.HostPath(), L"file.txt")) != nullptr;
              return opened && ::fcntl(STDIN_FILENO, F_GETFD) < 0 ? 0 : 1;
            })),
            0);
}

// A successful call does not change errno, so an earlier error may still be in it.
TEST(OpenTextFilePosix, IgnoresAnEarlierErrno) {
  const ScratchFolder folder;
  folder.Write(L"file.txt", "text");
  EXPECT_EQ(ExitCodeOf(StartChild([&folder] {
              ::close(STDIN_FILENO);
              errno = EINTR;
              auto file = OpenTextFile(JoinPath(folder.HostPath(), L"file.txt"));
              if (!file || ::fcntl(STDIN_FILENO, F_GETFD) < 0) {
                return 1;
              }
              char buffer[16];
              errno = EINTR;
              if (file->Read(buffer, sizeof(buffer)) != 4) {
                return 2;
              }
              errno = EINTR;
              if (file->Read(buffer, sizeof(buffer)) != 0) {
                return 3;
              }
              file.reset();
              return ::fcntl(STDIN_FILENO, F_GETFD) < 0 ? 0 : 4;
            })),
            0);
}

TEST(OpenTextFilePosix, AFailedReadIsTheEnd) {
  // This regular file can be opened, but its first bytes cannot be read: nothing is mapped at
  // address 0.
  const auto file = OpenTextFile(L"\\proc\\self\\mem");
  if (!file) {
    GTEST_SKIP() << "there is no /proc";
  }
  char buffer[16];
  EXPECT_EQ(file->Read(buffer, sizeof(buffer)), 0U);
}

// One test for both calls: if the first call closed a descriptor of the host, it would hide that
// the second one does too.
TEST(WriteWholeFilePosix, WritesNothingAndClosesNoDescriptorForALoneSurrogate) {
  const ScratchFolder folder;
  const std::wstring path = JoinPath(folder.HostPath(), std::wstring{L'a', L'\xD800'});
  const int before = FreeDescriptor();
  WriteWholeFile(path, "");
  EXPECT_EQ(FreeDescriptor(), before);
  WriteWholeFile(path, "bytes");
  EXPECT_EQ(FreeDescriptor(), before);
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

}  // namespace
}  // namespace KelmoLibs::Localize
