#include "lang/rules/check.h"

namespace KelmoLibs::Lang {

void CheckCharacters(FileCheck& /*check*/) {}

}  // namespace KelmoLibs::Lang
