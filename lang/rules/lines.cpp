#include "lang/rules/check.h"

namespace KelmoLibs::Lang {

void CheckLines(FileCheck& /*check*/) {}

}  // namespace KelmoLibs::Lang
