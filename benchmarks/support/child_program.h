// Programs that a benchmark starts, without a shell between.
#pragma once

#include <string>
#include <vector>

namespace benchmarks {

/// Runs the program `command[0]`, which is looked for in PATH unless it has a slash, with its output
/// in the file `output`, and waits for it. The exit code; -1 where it was not started or did not
/// end by itself.
int RunProgram(const std::vector<std::string>& command, const std::string& output = "/dev/null");

/// Makes the locale de_DE.UTF-8 in the scratch folder and names that in LOCPATH; false where it cannot
/// be made.
bool MakeGermanLocale();

}  // namespace benchmarks
