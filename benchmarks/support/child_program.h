// Programs that a benchmark starts, without a shell.
#pragma once

#include <string>
#include <vector>

namespace benchmarks {

/// Runs a program and waits until it ends. `command`: the program, which is searched in PATH unless
/// it has a slash, and its arguments. `output`: the file for its output. Returns the exit code, or
/// -1 if the program was not started or was ended by a signal.
int RunProgram(const std::vector<std::string>& command, const std::string& output = "/dev/null");

/// Makes the locale de_DE.UTF-8 in the scratch folder, and sets LOCPATH to that folder. Returns
/// false if that fails.
bool MakeGermanLocale();

}  // namespace benchmarks
