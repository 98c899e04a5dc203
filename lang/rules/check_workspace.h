// Runs all rules over the files of a workspace.
#pragma once

#include <vector>

#include "lang/finding.h"
#include "lang/reading/workspace.h"

namespace KelmoLibs::Lang {

/// The findings of all rules in all reported files, in the order of the files and rules.
std::vector<Finding> CheckWorkspace(const Workspace& workspace);

}  // namespace KelmoLibs::Lang
