// Files that cannot be read.
#pragma once

#include <string>

#include "host/problem_list.h"

namespace KelmoLibs::Host {

/// Tells that a file or folder cannot be read, and why. `code` is that of its format. `problems` may be
/// null.
void TellUnreadable(ProblemCode code, const std::string& path, std::string detail,
                    ProblemList* problems);

/// Whether a path has a zero inside; tells it. No path of a system has one: its functions would take the
/// part in front of it.
bool HasZero(ProblemCode code, const std::string& path, ProblemList* problems);

}  // namespace KelmoLibs::Host
