// What only Windows has: a runtime with a default mode for files, and handles that child programs
// inherit.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <io.h>
#include <windows.h>

#include <cstdlib>
#include <string>

#include "frame/file_path.h"
#include "frame/platform.h"
#include "tests/support/read_all.h"
#include "tests/support/scratch_folder.h"

namespace KelmoLibs::Localize {
namespace {

class OpenTextFileWindows : public testing::Test {
 protected:
  OpenTextFileWindows() { folder_.Write(L"file.txt", "a\r\nb"); }

  const ScratchFolder folder_;
  const std::wstring path_ = JoinPath(folder_.HostPath(), L"file.txt");
};

TEST_F(OpenTextFileWindows, ReadsInTextModeWhateverTheHostsDefault) {
  const int before = _fmode;
  _fmode = _O_BINARY;
  const auto file = OpenTextFile(path_);
  _fmode = before;
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(ReadAll(*file, 100), "a\nb");
}

// The runtime gives the lowest number that is free.
int FreeDescriptor() {
  const int descriptor = ::_open("NUL", _O_RDONLY);
  ::_close(descriptor);
  return descriptor;
}

TEST_F(OpenTextFileWindows, KeepsTheFileFromProgramsThatTheHostStarts) {
  const int descriptor = FreeDescriptor();
  const auto file = OpenTextFile(path_);
  ASSERT_NE(file, nullptr);
  DWORD flags = 0;
  ASSERT_TRUE(
      ::GetHandleInformation(reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor)), &flags));
  EXPECT_EQ(flags & HANDLE_FLAG_INHERIT, 0U);
}

}  // namespace
}  // namespace KelmoLibs::Localize
