// What only Windows has: a runtime with a default mode for files, and handles that child processes
// inherit.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <io.h>
#include <share.h>
#include <windows.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "platform/characters.h"
#include "platform/files.h"
#include "tests/support/read_all.h"
#include "tests/support/scratch_folder.h"
#include "text/file_path.h"

namespace KelmoLibs::Localize {
namespace {

class OpenTextFileWindows : public testing::Test {
 protected:
  OpenTextFileWindows() { folder_.Write(L"file.txt", "a\r\nb"); }

  const ScratchFolder folder_;
  const std::wstring path_ = JoinPath(folder_.HostPath(), L"file.txt");
};

TEST_F(OpenTextFileWindows, ReadsInTextModeIfTheHostsDefaultIsBinary) {
  int& defaultMode = *::__p__fmode();
  const int before = std::exchange(defaultMode, _O_BINARY);
  const auto file = OpenTextFile(path_);
  defaultMode = before;
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(ReadAll(*file, 100), "a\nb");
}

TEST_F(OpenTextFileWindows, PreventsReplacingAndRemovingTheFile) {
  folder_.Write(L"other.txt", "other");
  const auto file = OpenTextFile(path_);
  ASSERT_NE(file, nullptr);
  const std::filesystem::path name = folder_.Path() / "file.txt";
  std::error_code refused;
  std::filesystem::rename(folder_.Path() / "other.txt", name, refused);
  EXPECT_TRUE(refused);
  EXPECT_FALSE(std::filesystem::remove(name, refused));
  EXPECT_TRUE(refused);
  EXPECT_EQ(ReadAll(*file, 1), "a\nb");
}

TEST_F(OpenTextFileWindows, ReadsAndClosesDescriptorZero) {
  const int kept = ::_dup(0);
  if (kept < 0) {
    GTEST_SKIP() << "there is no standard input";
  }
  ::_close(0);
  auto file = OpenTextFile(path_);
  const std::string text = file ? ReadAll(*file, 100) : "";
  file.reset();
  EXPECT_EQ(::_dup(kept), 0) << "descriptor 0 was not closed";
  ::_close(kept);
  EXPECT_EQ(text, "a\nb");
}

// The runtime assigns the lowest free descriptor.
int FreeDescriptor() {
  int descriptor = -1;
  EXPECT_EQ(::_sopen_s(&descriptor, "NUL", _O_RDONLY, _SH_DENYNO, 0), 0);
  ::_close(descriptor);
  return descriptor;
}

TEST_F(OpenTextFileWindows, ChildProcessesDoNotInheritTheHandle) {
  const int descriptor = FreeDescriptor();
  const auto file = OpenTextFile(path_);
  ASSERT_NE(file, nullptr);
  // The runtime returns its handles as integers. NOLINTNEXTLINE(performance-no-int-to-ptr)
  auto* const handle = reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor));
  DWORD flags = 0;
  ASSERT_TRUE(::GetHandleInformation(handle, &flags));
  EXPECT_EQ(flags & HANDLE_FLAG_INHERIT, 0U);
}

}  // namespace
}  // namespace KelmoLibs::Localize
