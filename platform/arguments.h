// The arguments of a program.
#pragma once

#include <string>
#include <vector>

namespace KelmoLibs::Lang {

/// The arguments behind the program's name, from those of main(): in UTF-8 on Windows, and the
/// bytes of the caller elsewhere.
std::vector<std::string> ProgramArguments(int count, const char* const* values);

}  // namespace KelmoLibs::Lang
