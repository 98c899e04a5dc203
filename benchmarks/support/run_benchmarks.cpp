#include "benchmarks/support/run_benchmarks.h"

#include <cstdlib>

#include "benchmarks/support/child_program.h"

namespace benchmarks {

void RunCommand(const std::vector<std::string>& command) {
  Require(RunProgram(command) == 0, ("failed: " + command[0]).c_str());
}

int RunBenchmarks(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return EXIT_FAILURE;
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return EXIT_SUCCESS;
}

}  // namespace benchmarks
