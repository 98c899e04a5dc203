// Writing a file at once, while each call of the system fails in turn. The linker sends the calls to
// the functions __wrap_* here (-Wl,--wrap).
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/types.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "platform/replace_file.h"

namespace {

const char* failingCall = "";
std::optional<gid_t> givenGroup;
volatile std::sig_atomic_t signals = 0;
bool wasSignalHeld = false;

void CountSignal(int /*signal*/) { signals = signals + 1; }

bool Fails(const char* call) {
  if (std::string(failingCall) == call) {
    errno = EIO;
    return true;
  }
  return false;
}

}  // namespace

// The names are the linker's. NOLINTBEGIN(*-reserved-identifier,cert-dcl*,*-identifier-naming)
extern "C" {
int __real_mkostemp(char* name, int flags);
int __wrap_mkostemp(char* name, int flags) {
  return Fails("mkostemp") ? -1 : __real_mkostemp(name, flags);
}
ssize_t __real_write(int file, const void* bytes, std::size_t size);
ssize_t __wrap_write(int file, const void* bytes, std::size_t size) {
  if (Fails("write")) {
    return -1;
  }
  if (std::string(failingCall) == "second write") {  // the disk is full after a byte
    failingCall = "write";
    return __real_write(file, bytes, 1);
  }
  return __real_write(file, bytes, size);
}
int __real_fsync(int file);
int __wrap_fsync(int file) {
  if (std::string(failingCall) == "signal") {
    std::raise(SIGTERM);
    wasSignalHeld = signals == 0;
  }
  return Fails("fsync") ? -1 : __real_fsync(file);
}
int __real_fchown(int file, uid_t owner, gid_t group);
int __wrap_fchown(int file, uid_t owner, gid_t group) {
  constexpr auto kSameOwner = static_cast<uid_t>(-1);
  if (Fails("fchown") || (owner != kSameOwner && Fails("fchown of the owner"))) {
    return -1;
  }
  givenGroup = group;
  return __real_fchown(file, owner, group);
}
int __real_fchmod(int file, mode_t mode);
int __wrap_fchmod(int file, mode_t mode) {
  return Fails("fchmod") ? -1 : __real_fchmod(file, mode);
}
int __real_rename(const char* from, const char* to);
int __wrap_rename(const char* from, const char* to) {
  return Fails("rename") ? -1 : __real_rename(from, to);
}
}
// NOLINTEND(*-reserved-identifier,cert-dcl*,*-identifier-naming)

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;

class ReplaceFileOnPosix : public testing::Test {
 protected:
  ReplaceFileOnPosix() {
    fs::create_directories(folder_);
    std::ofstream(file_, std::ios::binary) << "old";
    fs::permissions(file_, static_cast<fs::perms>(0640));
  }
  void TearDown() override {
    failingCall = "";
    givenGroup.reset();
    fs::remove_all(folder_);
  }

  std::string Bytes() const {
    std::ifstream file(file_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }
  std::ptrdiff_t FileCount() const {
    return std::distance(fs::directory_iterator(folder_), fs::directory_iterator());
  }

  const fs::path folder_ = fs::temp_directory_path() / "kelmo replace_file_test_posix";
  const fs::path file_ = folder_ / "de.txt";
};

TEST_F(ReplaceFileOnPosix, LeavesTheOldFileWhicheverCallFails) {
  for (const char* const call :
       {"mkostemp", "write", "second write", "fsync", "fchmod", "rename"}) {
    SCOPED_TRACE(call);
    failingCall = call;
    EXPECT_EQ(ReplaceFileBytes(file_, "new").value(), EIO);
    failingCall = "";
    EXPECT_EQ(Bytes(), "old");
    EXPECT_EQ(FileCount(), 1);
  }
}

TEST_F(ReplaceFileOnPosix, KeepsPermissions) {
  EXPECT_FALSE(ReplaceFileBytes(file_, "new"));
  EXPECT_EQ(fs::status(file_).permissions(), static_cast<fs::perms>(0640));
}

TEST_F(ReplaceFileOnPosix, KeepsTheGroupOfAFileOfAnotherOwner) {
  struct stat status = {};
  ASSERT_EQ(::stat(file_.c_str(), &status), 0);
  failingCall = "fchown of the owner";
  EXPECT_FALSE(ReplaceFileBytes(file_, "new"));
  EXPECT_EQ(givenGroup, status.st_gid);
  EXPECT_EQ(fs::status(file_).permissions(), static_cast<fs::perms>(0640));
}

TEST_F(ReplaceFileOnPosix, GivesAnotherGroupWhatEverybodyMay) {
  fs::permissions(file_, static_cast<fs::perms>(0664));
  failingCall = "fchown";
  EXPECT_FALSE(ReplaceFileBytes(file_, "new"));
  EXPECT_EQ(fs::status(file_).permissions(), static_cast<fs::perms>(0644));
}

TEST_F(ReplaceFileOnPosix, IsNotEndedByASignal) {
  failingCall = "signal";
  const auto before = std::signal(SIGTERM, CountSignal);
  EXPECT_FALSE(ReplaceFileBytes(file_, "new"));
  std::signal(SIGTERM, before);
  EXPECT_TRUE(wasSignalHeld);
  EXPECT_EQ(signals, 1);
  EXPECT_EQ(Bytes(), "new");
}

TEST_F(ReplaceFileOnPosix, FollowsLinks) {
  fs::create_symlink("de.txt", folder_ / "link.txt");
  EXPECT_FALSE(ReplaceFileBytes(folder_ / "link.txt", "new"));
  EXPECT_TRUE(fs::is_symlink(folder_ / "link.txt"));
  EXPECT_EQ(Bytes(), "new");
}

}  // namespace
}  // namespace KelmoLibs::Lang
