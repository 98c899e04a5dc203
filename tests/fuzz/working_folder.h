// Where a fuzz target works.
#pragma once

#include <filesystem>
#include <system_error>

/// Makes the folder that ExportPhyVal writes to, where "C:" is no drive.
inline void PrepareWorkingFolder() {
  static const bool isPrepared = [] {
    std::error_code itIsTheDrive;
    return std::filesystem::create_directory("C:", itIsTheDrive);
  }();
  static_cast<void>(isPrepared);
}
