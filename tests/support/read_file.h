// The bytes of a file.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// Fails the test if the file does not exist.
inline std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  EXPECT_TRUE(stream.is_open()) << "cannot open " << path;
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// The same for a file of the project; `name` is relative to its top folder. The name of that
/// folder is UTF-8; narrow paths on Windows are not.
inline std::string ReadProjectFile(const std::string& name) {
  return ReadFile(std::filesystem::u8path(KELMO_SOURCE_FOLDER "/" + name));
}
