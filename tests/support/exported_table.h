// The file that ExportPhyVal writes, while a test lasts.
#pragma once

#include <filesystem>
#include <string>

#include "tests/support/read_file.h"
#include "tests/support/scratch_folder.h"

/// What it must hold.
inline std::string ExportedDefaultTable() {
  return ReadProjectFile("tests/data/unittables/phyval.txt");
}

/// Its place, without the file at first and at the end. The working directory is the scratch folder
/// meanwhile: on Linux "C:" is a folder there, made here; on Windows it is the drive.
class ExportPlace {
 public:
  explicit ExportPlace(const ScratchFolder& folder) {
    std::filesystem::current_path(folder.Path());
    std::error_code itIsTheDrive;
    std::filesystem::create_directory("C:", itIsTheDrive);
    std::error_code thereIsNone;  // Windows removes no file that may only be read
    std::filesystem::permissions(kFile, std::filesystem::perms::owner_all, thereIsNone);
    std::filesystem::remove_all(kFile);
  }
  ExportPlace(const ExportPlace&) = delete;
  ExportPlace& operator=(const ExportPlace&) = delete;
  ~ExportPlace() {
    std::error_code ignored;
    std::filesystem::remove_all(kFile, ignored);
    std::filesystem::current_path(before_, ignored);
  }

  static constexpr const char* kFile = "C:/phyval.txt";

  static bool Exists() { return std::filesystem::exists(kFile); }
  static std::string Bytes() { return ReadFile(kFile); }

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
};
