// The file that ExportPhyVal writes, in cases that only POSIX systems have: a path below the
// working directory, full disks, pipes.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "tests/support/child_process.h"
#include "tests/support/exported_table.h"
#include "tests/support/free_descriptor.h"
#include "tests/support/host_test.h"
#include "tests/support/loaded_units.h"
#include "tests/support/test_platform.h"

namespace {

namespace fs = std::filesystem;

class ExportPosix : public HostTest {
 protected:
  // The catalogue is rebuilt even if the file cannot be written.
  void ExpectTheExportToSucceed() {
    ASSERT_EQ(ExportPhyVal(), 0);
    const LoadedUnits units(library_);
    ASSERT_NE(units.Find(10001), nullptr);
    EXPECT_EQ(units.Find(10001)->name, L"meter ");
    EXPECT_EQ(units.Find(10001)->symbol, L"\u043C");
    EXPECT_EQ(host_.GetErrorsCount(), 0);
  }

  const ExportPlace place_{folder_};
};

TEST_F(ExportPosix, NeedsAFolderThatIsNamedLikeADrive) {
  fs::remove("C:");
  ExpectTheExportToSucceed();
  EXPECT_TRUE(fs::is_empty(".")) << "the library must not create the folder or another file";
  fs::create_directory("C:");
  ExpectTheExportToSucceed();
  EXPECT_EQ(ExportPlace::Bytes(), ExportedDefaultTable());
}

TEST_F(ExportPosix, SucceedsOnAFullDisk) {
  ASSERT_EQ(::access("/dev/full", W_OK), 0);
  fs::create_symlink("/dev/full", ExportPlace::kFile);
  ExpectTheExportToSucceed();
  EXPECT_TRUE(fs::is_symlink(ExportPlace::kFile));
}

TEST_F(ExportPosix, FollowsALinkToAFile) {
  std::ofstream("target") << "old";
  fs::create_symlink("../target", ExportPlace::kFile);
  ExpectTheExportToSucceed();
  EXPECT_EQ(ReadFile("target"), ExportedDefaultTable());
}

TEST_F(ExportPosix, WritesNothingToAPipe) {
  ASSERT_EQ(::mkfifo("pipe", 0600), 0);
  fs::create_symlink("../pipe", ExportPlace::kFile);
  ExpectTheExportToSucceed();  // it must not wait for a reader
  const int reader = ::open("pipe", O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  ExpectTheExportToSucceed();
  char byte = 0;
  EXPECT_EQ(::read(reader, &byte, 1), 0) << "nothing was written";
  ::close(reader);
}

TEST_F(ExportPosix, WritesToADevice) {
  const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
  if (terminal < 0 || ::grantpt(terminal) != 0 || ::unlockpt(terminal) != 0) {
    GTEST_SKIP() << "no pseudo-terminals here";
  }
  fs::create_symlink(::ptsname(terminal), ExportPlace::kFile);
  ExpectTheExportToSucceed();
  char bytes[3] = {};
  EXPECT_EQ(::read(terminal, bytes, 3), 3);
  EXPECT_EQ(std::string(bytes, 3), "\xEF\xBB\xBF");
  ::close(terminal);
}

TEST_F(ExportPosix, WritesUpToTheFileSizeLimit) {
  EXPECT_EQ(ExitCodeOf(StartChild([this] {
              ::signal(SIGXFSZ, SIG_IGN);
              const struct rlimit limit = {100, 100};
              if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) {
                return 2;
              }
              ExpectTheExportToSucceed();
              return HasFailure() ? 1 : 0;
            })),
            0);
  EXPECT_EQ(ExportPlace::Bytes(), ExportedDefaultTable().substr(0, 100));
}

TEST_F(ExportPosix, ClosesTheFile) {
  const int before = FreeDescriptor();
  ExpectTheExportToSucceed();
  EXPECT_EQ(FreeDescriptor(), before);
}

TEST_F(ExportPosix, CreatesTheFileWithThePermissionsOfTheMask) {
  const struct {
    mode_t mask;
    mode_t mode;
  } rows[] = {{0, 0666}, {0027, 0640}};
  for (const auto& row : rows) {
    fs::remove(ExportPlace::kFile);
    const mode_t before = ::umask(row.mask);
    ExpectTheExportToSucceed();
    ::umask(before);
    struct stat status = {};
    ASSERT_EQ(::stat(ExportPlace::kFile, &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, row.mode);
  }
}

TEST_F(ExportPosix, SucceedsIfTheFileIsReadOnly) {
  std::ofstream(ExportPlace::kFile) << "old";
  fs::permissions(ExportPlace::kFile, fs::perms::owner_read);
  constexpr int kSkipped = 2;
  const int result = ExitCodeOf(StartChild([this] {
    if (!StopBeingRoot()) {
      return kSkipped;
    }
    ExpectTheExportToSucceed();
    return HasFailure() ? 1 : 0;
  }));
  if (result == kSkipped) {
    GTEST_SKIP() << "cannot become another user";
  }
  EXPECT_EQ(result, 0);
  EXPECT_EQ(ExportPlace::Bytes(), "old");
}

// A host without free descriptors gets its units nevertheless: the table is in memory, and the
// classes of characters come from no file.
TEST_F(ExportPosix, StartingNeedsNoFile) {
  if (!MeasureFootprint()) {
    GTEST_SKIP() << "the sanitizer itself needs descriptors";
  }
  EXPECT_EQ(ExitCodeOf(StartChild([this] {
              const struct rlimit none = {0, 0};
              if (::setrlimit(RLIMIT_NOFILE, &none) != 0 || ::open("/dev/null", O_RDONLY) >= 0) {
                return 2;
              }
              ExpectTheExportToSucceed();
              EXPECT_FALSE(ExportPlace::Exists());
              return HasFailure() ? 1 : 0;
            })),
            0);
}

}  // namespace
