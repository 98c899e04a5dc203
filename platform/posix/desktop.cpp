#include "platform/desktop.h"

namespace KelmoLibs::Lang {

std::optional<Desktop> StartedFromDesktop() { return std::nullopt; }

}  // namespace KelmoLibs::Lang
