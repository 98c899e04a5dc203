// Collects units from code, files and memory.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/problem_list.h"
#include "host/unit_collection.h"
#include "host/unit_files.h"

namespace KelmoLibs::Host {

/// With which units a loader begins. The values are those of kelmo.h.
enum class UnitStart : std::int32_t { kNone = 0, kBuiltIn = 1, kAfterInit = 2 };

/// All functions throw only std::bad_alloc; what was collected before stays.
class UnitLoader {
 public:
  /// Begins anew with those units. False if the file of the library has no unit table, which is part of
  /// every file that the build makes.
  bool Start(UnitStart start);

  /// Adds or replaces a unit or kind. False, and a problem, if it is not allowed.
  bool Add(UnitRow row, ProblemList* problems);

  /// Reads a file. False, and a problem, if it cannot be read.
  bool AddFile(const std::string& path, UnitFileFormat format, ProblemList* problems);

  /// Reads bytes in memory, as a file with that content.
  void AddMemory(std::string_view bytes, std::string_view name, UnitFileFormat format,
                 ProblemList* problems);

  const UnitCollection& Collected() const noexcept { return units_; }
  void Clear() noexcept { units_ = {}; }

 private:
  UnitCollection units_;
};

}  // namespace KelmoLibs::Host
