#include "lang/rules/check.h"

namespace KelmoLibs::Lang {

void CheckMarkup(const TextCheck& /*check*/) {}

}  // namespace KelmoLibs::Lang
