#include "lang/rules/check.h"

namespace KelmoLibs::Lang {

void CheckUnits(const Workspace& /*workspace*/, std::uint32_t /*fileIndex*/,
                Findings& /*findings*/) {}

}  // namespace KelmoLibs::Lang
