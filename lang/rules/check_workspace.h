// Runs all rules over the files of a workspace.
#pragma once

#include "lang/reading/workspace.h"
#include "lang/rules/findings.h"
#include "lang/rules/limits.h"

namespace KelmoLibs::Lang {

/// The findings of all rules in all reported files, in the order of the files and rules.
Findings CheckWorkspace(const Workspace& workspace, const SettingsOfFiles& settings = {});

}  // namespace KelmoLibs::Lang
