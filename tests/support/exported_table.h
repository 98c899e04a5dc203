// The file that ExportPhyVal writes.
#pragma once

#include <filesystem>
#include <string>

#include "tests/support/read_file.h"
#include "tests/support/scratch_folder.h"

/// Its expected bytes.
inline std::string ExportedDefaultTable() {
  return ReadProjectFile("tests/data/unittables/phyval.txt");
}

/// During its life the working directory is the scratch folder, where on Linux "C:" is a folder; on
/// Windows it is the drive. Removes the file at its start and at its end.
class ExportPlace {
 public:
  explicit ExportPlace(const ScratchFolder& folder) {
    std::filesystem::current_path(folder.Path());
    std::error_code isDrive;
    std::filesystem::create_directory("C:", isDrive);
    std::error_code isMissing;  // Windows does not remove a read-only file
    std::filesystem::permissions(kFile, std::filesystem::perms::owner_all, isMissing);
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
