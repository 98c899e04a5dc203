#include "platform/arguments.h"

namespace KelmoLibs::Lang {

std::vector<std::string> ProgramArguments(int count, const char* const* values) {
  return count > 1 ? std::vector<std::string>(values + 1, values + count)
                   : std::vector<std::string>();
}

}  // namespace KelmoLibs::Lang
