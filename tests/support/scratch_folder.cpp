#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "tests/support/encode_utf8.h"

namespace {

std::filesystem::path FolderOfRunningTest() {
  const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
  return std::filesystem::path("scratch") /
         (std::string(test.test_suite_name()) + "." + test.name());
}

}  // namespace

ScratchFolder::ScratchFolder() : path_(FolderOfRunningTest()) {
  std::filesystem::remove_all(path_);
  std::filesystem::create_directories(path_);
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::wstring ScratchFolder::HostPath() const {
  std::wstring path = path_.wstring();
  std::replace(path.begin(), path.end(), L'/', L'\\');
  return path;
}

void ScratchFolder::Write(std::wstring_view name, std::string_view bytes) const {
  WriteFile(path_ / PortablePath(name), bytes);
}

std::filesystem::path PortablePath(std::wstring_view name) {
  std::string portable = EncodeUtf8(name);
  std::replace(portable.begin(), portable.end(), '\\', '/');
  return std::filesystem::u8path(portable);
}

void WriteFile(const std::filesystem::path& file, std::string_view bytes) {
  if (file.has_parent_path()) {
    std::filesystem::create_directories(file.parent_path());
  }
  std::ofstream stream(file, std::ios::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream.close();
  if (!stream) {
    throw std::runtime_error("cannot write " + file.u8string());
  }
}
