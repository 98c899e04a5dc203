#include "lang/rules/check.h"

namespace KelmoLibs::Lang {

void CheckPunctuation(const TextCheck& /*check*/) {}

}  // namespace KelmoLibs::Lang
