#include "lang/rules/check.h"

namespace KelmoLibs::Lang {

void CheckPlaceholders(const TextCheck& /*check*/) {}

}  // namespace KelmoLibs::Lang
