#include "platform/arguments.h"

// windows.h comes first.
// clang-format off
#include <windows.h>
#include <shellapi.h>
// clang-format on

#include <memory>

#include "platform/windows/wide_text.h"

namespace KelmoLibs::Lang {

// main() gets the arguments in the code page of the system, where most letters become "?", and the
// runtime may have expanded "*" in them. So they are read from the command line.
std::vector<std::string> ProgramArguments(int /*count*/, const char* const* /*values*/) {
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&::LocalFree)> values(
      ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
  std::vector<std::string> arguments;
  for (int i = 1; values && i < count; ++i) {
    arguments.push_back(Localize::Utf8Of(values.get()[i]));
  }
  return arguments;
}

}  // namespace KelmoLibs::Lang
