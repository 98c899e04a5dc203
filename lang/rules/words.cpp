#include "lang/rules/check.h"
#include "lang/rules/text_rules.h"

namespace KelmoLibs::Lang {

void CheckWords(const TextCheck& check) {
  CheckInvisibleCharacters(check);
  CheckMixedScripts(check);
  CheckUntranslated(check);
  CheckDoubled(check);
  CheckLength(check);
}

}  // namespace KelmoLibs::Lang
