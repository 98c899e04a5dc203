// Replays the files of a folder through a fuzz target, without a fuzzer, so that no earlier finding
// returns. The argument is relative to the project's top folder: the full path may not fit into the
// code page of an argument on Windows.
#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <vector>

#include "tests/fuzz/fuzz_target.h"
#include "tests/support/read_file.h"
#include "tests/support/test_platform.h"

int main(int argumentCount, char** arguments) {
  TurnOffErrorDialogs();
  if (argumentCount != 2) {
    std::cerr << "usage: " << arguments[0] << " FOLDER\n";
    return 2;
  }
  std::vector<std::filesystem::path> files;
  const auto folder = std::filesystem::u8path(KELMO_SOURCE_FOLDER) / arguments[1];
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  int differences = 0;
  for (const std::filesystem::path& file : files) {
    std::cerr << file.filename().u8string() << '\r';  // names the file if it crashes
    try {
      CheckWith(ReadFile(file));
    } catch (const std::exception& difference) {
      std::cout << file.u8string() << ": " << difference.what() << '\n';
      ++differences;
    }
  }
  std::cout << files.size() << " files, " << differences << " differences\n";
  return differences == 0 && !files.empty() ? 0 : 1;
}
