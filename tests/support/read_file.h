// The bytes of a file.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// A file that is not there fails the test.
inline std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  EXPECT_TRUE(stream.is_open()) << "cannot open " << path;
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// The same of a file of the project, named from its top folder. The name of that folder is UTF-8,
/// which a narrow path on Windows is not.
inline std::string ReadProjectFile(const std::string& name) {
  return ReadFile(std::filesystem::u8path(KELMO_SOURCE_FOLDER "/" + name));
}
