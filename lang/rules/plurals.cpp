#include "lang/rules/check.h"

namespace KelmoLibs::Lang {

void CheckPlurals(std::vector<FileCheck>& /*files*/) {}

}  // namespace KelmoLibs::Lang
