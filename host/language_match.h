// Which of the loaded languages serves a user.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "host/text_collection.h"

namespace KelmoLibs::Host {

/// The index of a language that serves a reader of `wanted`. The closest one, with the rank 0, has
/// that id; the further ones have it without its last part, and so on: "de" serves a reader of
/// "de-AT". The case of letters does not count, and `_` is `-`. A script is never left out, not even
/// the one that a region of Chinese implies: people who read one script may not read the other.
std::optional<std::size_t> MatchLanguage(const TextCollection& texts, std::string_view wanted,
                                         std::size_t rank);

}  // namespace KelmoLibs::Host
