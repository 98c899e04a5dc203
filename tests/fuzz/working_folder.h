// The working directory of a fuzz target.
#pragma once

#include <filesystem>
#include <system_error>

/// Creates the folder that ExportPhyVal writes to, unless "C:" is a drive.
inline void PrepareWorkingFolder() {
  static const bool isPrepared = [] {
    std::error_code ignored;  // on Windows it is the drive
    return std::filesystem::create_directory("C:", ignored);
  }();
  static_cast<void>(isPrepared);
}
