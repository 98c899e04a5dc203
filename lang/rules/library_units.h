// The units that the library carries itself.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace KelmoLibs::Lang {

struct LibraryUnit {
  std::int32_t code;
  std::string name;  // UTF-8
};

/// The built-in rows and those of the default unit table, sorted by code, each code once. Rows that
/// the library cannot load are among them: a translation of them is no mistake.
const std::vector<LibraryUnit>& LibraryUnits();

/// The only code of LibraryUnits() that differs from `code` by one digit (another one, one more, one
/// fewer, or two exchanged); 0 if there is none, or more than one.
std::int32_t NearestLibraryCode(std::int32_t code);

}  // namespace KelmoLibs::Lang
