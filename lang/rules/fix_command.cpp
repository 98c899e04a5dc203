// Tested by fix_command_test.cpp.
#include "lang/rules/fix_command.h"

#include <algorithm>

#include "lang/unicode/ascii.h"

namespace KelmoLibs::Lang {
namespace {

// What every shell takes as a part of a name, wherever it stands.
bool IsPlain(char c) noexcept {
  return IsAsciiLetterOrDigit(c) || static_cast<unsigned char>(c) >= 0x80 ||
         std::string_view("._-/:@+,=").find(c) != std::string_view::npos;
}

// In double quotes, which all shells know. Some run commands and replace variables there: such names
// stand in single quotes, which the command line of Windows does not know.
std::string Quoted(const std::string& name) {
  if (std::all_of(name.begin(), name.end(), IsPlain)) {
    return name;
  }
  if (name.find_first_of("\"$`\\") == std::string::npos) {
    return '"' + name + '"';
  }
  std::string quoted = "'";
  for (const char c : name) {
    quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  }
  return quoted + '\'';
}

}  // namespace

std::string FixCommand(std::string_view options, const std::string& name) {
  return "fix " + std::string(options) + Quoted(name.front() == '-' ? "./" + name : name);
}

}  // namespace KelmoLibs::Lang
