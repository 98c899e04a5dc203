#include "lang/rules/check.h"

namespace KelmoLibs::Lang {

void CheckKeys(FileCheck& /*check*/) {}

}  // namespace KelmoLibs::Lang
