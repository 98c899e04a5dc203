#include "lang/rules/fix_command.h"

namespace KelmoLibs::Lang {

std::string FixCommand(std::string_view options, const std::string& name) {
  const bool isPlain = name.find_first_of(" \"'()&;$") == std::string::npos;
  return "fix " + std::string(options) + (isPlain ? name : '"' + name + '"');
}

}  // namespace KelmoLibs::Lang
