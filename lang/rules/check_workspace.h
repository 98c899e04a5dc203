// Runs all rules over the files of a workspace.
#pragma once

#include <functional>

#include "lang/reading/workspace.h"
#include "lang/rules/findings.h"
#include "lang/rules/rule_settings.h"

namespace KelmoLibs::Lang {

/// The findings of all rules in all reported files, in the order of the files and rules.
/// `progress` gets the part that is done, from 0 to 1, often.
Findings CheckWorkspace(const Workspace& workspace, const SettingsOfFiles& settings = {},
                        const std::function<void(double)>& progress = {});

}  // namespace KelmoLibs::Lang
