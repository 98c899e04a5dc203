#include "lang/rules/check.h"

namespace KelmoLibs::Lang {

void CheckUnits(const Workspace& /*workspace*/, std::uint32_t /*fileIndex*/,
                std::vector<Finding>& /*findings*/) {}

}  // namespace KelmoLibs::Lang
