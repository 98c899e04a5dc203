#include "lang/rules/check.h"
#include "lang/rules/text_rules.h"

namespace KelmoLibs::Lang {

void CheckPunctuation(const TextCheck& check) {
  CheckEnd(check);
  CheckBrackets(check);
  CheckAccelerators(check);
}

}  // namespace KelmoLibs::Lang
