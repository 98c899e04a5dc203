#include "lang/rules/check.h"
#include "lang/rules/text_rules.h"

namespace KelmoLibs::Lang {

void CheckPunctuation(const TextCheck& check) {
  if (CountCodePoints(check.Text()) != 1) {  // a single character is its own name: ":" for "Colon"
    CheckEnd(check);
    CheckBrackets(check);
  }
  CheckAccelerators(check);
}

}  // namespace KelmoLibs::Lang
