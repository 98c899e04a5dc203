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
