#include "platform/native_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"

namespace KelmoLibs::Localize {
namespace {

// The bytes of the file, or what the system says.
std::string Read(const std::string& path) {
  FileBytes bytes;
  const SystemError error = ReadFileAt(path, bytes);
  return error.IsNone() ? std::string(bytes.View()) : "! " + DescribeError(error);
}

std::vector<std::string> List(const std::string& path) {
  std::vector<std::string> names;
  const SystemError error = ListFilesAt(path, names);
  if (!error.IsNone()) {
    return {"! " + DescribeError(error)};
  }
  std::sort(names.begin(), names.end());
  return names;
}

TEST(NativeFiles, ReadTheBytesAsTheyAre) {
  const ScratchFolder folder;
  std::string every(256, '\0');
  for (std::size_t i = 0; i < every.size(); ++i) {
    every[i] = static_cast<char>(i);
  }
  std::string large;
  while (large.size() < 3'000'000) {
    large += every;
  }
  const struct {
    const char* name;
    std::string bytes;
  } rows[] = {
      {"nothing", ""},       {"one byte", "x"},
      {"every byte", every}, {"line ends", "a\r\nb\n\rc\r\n\x1A d"},
      {"3 MB", large},
  };
  for (const auto& row : rows) {
    folder.Write(L"file", row.bytes);
    EXPECT_TRUE(Read((folder.Path() / "file").u8string()) == row.bytes) << row.name;
  }
}

TEST(NativeFiles, ReadUnderEveryName) {
  const ScratchFolder folder;
  const std::string deep =
      "a long name of a folder, "
      "\xD1\x81 \xD0\xB4\xD0\xBB\xD0\xB8\xD0\xBD\xD0\xBD\xD1\x8B\xD0\xBC "
      "\xD0\xB8\xD0\xBC\xD0\xB5\xD0\xBD\xD0\xB5\xD0\xBC/";
  for (const std::string& name :
       {std::string("file"), std::string("two  words.txt"),
        std::string("\xD0\xBF\xD1\x83\xD1\x82\xD1\x8C.txt"), std::string("\xF0\x9F\x98\x80.txt"),
        deep + "\xE2\x82\xAC", deep + deep + "file"}) {
    const auto path = folder.Path() / std::filesystem::u8path(name);
    WriteFile(path, name);
    EXPECT_EQ(Read(path.u8string()), name);
    EXPECT_EQ(Read(std::filesystem::absolute(path).u8string()), name);
  }
}

TEST(NativeFiles, ListTheRegularFilesOfAFolder) {
  const ScratchFolder folder;
  EXPECT_EQ(List(folder.Path().u8string()), std::vector<std::string>());
  folder.Write(L"b", "");
  folder.Write(L"a", "");
  folder.Write(L"\u0431 \u0432", "");
  folder.Write(L"folder\\inside", "");
  const std::vector<std::string> expected = {"a", "b", "\xD0\xB1 \xD0\xB2"};
  EXPECT_EQ(List(folder.Path().u8string()), expected);
  EXPECT_EQ(List(folder.Path().u8string() + "/"), expected);
}

TEST(NativeFiles, TheEmptyPathIsNothing) {
  EXPECT_EQ(List("")[0].substr(0, 2), "! ");
  EXPECT_EQ(Read("").substr(0, 2), "! ");
}

TEST(NativeFiles, LeaveTheResultOfAFailureUnchanged) {
  FileBytes bytes;
  bytes.size = 7;
  EXPECT_FALSE(ReadFileAt("no such file", bytes).IsNone());
  EXPECT_EQ(bytes.size, 7U);
}

TEST(NativeFiles, AnErrorWithoutADescriptionHasItsNumber) {
  EXPECT_EQ(DescribeError({98765432}), "error 98765432");
}

}  // namespace
}  // namespace KelmoLibs::Localize
