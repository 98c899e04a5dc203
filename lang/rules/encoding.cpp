#include "lang/rules/check.h"

namespace KelmoLibs::Lang {

void CheckEncoding(FileCheck& /*check*/) {}

}  // namespace KelmoLibs::Lang
