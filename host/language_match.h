// Which of the loaded languages serves a user.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "host/text_collection.h"

namespace KelmoLibs::Host {

/// The index of the language with the id `wanted`, or else with that id without its last part, and
/// so on: "de" for "de-AT". The case of letters does not count, and `_` is `-`. A script is never
/// left out, not even the one that a region of Chinese implies: people who read one script may not
/// read the other.
std::optional<std::size_t> MatchLanguage(const TextCollection& texts, std::string_view wanted);

}  // namespace KelmoLibs::Host
