// Finds the texts of overrides that stand for no other text.
#pragma once

#include "host/problem_list.h"
#include "host/text_collection.h"

namespace KelmoLibs::Host {

/// Tells each text of an override that changes nothing of what views find:
///  - no language of the program has its key, or plural forms among which it may stand;
///  - or the program has the form `other` of its key in that language: each count finds that before.
/// The problem says which forms these are. Nothing is told if there is no program. Takes time in
/// proportion to the texts of overrides, the sizes of their keys and the number of languages. If memory
/// is out, a text is only counted as lost.
void TellIdleOverrides(const TextCollection& texts, ProblemList& problems) noexcept;

}  // namespace KelmoLibs::Host
