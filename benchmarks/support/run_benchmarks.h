// What the programs of all jobs have in common.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <vector>

#include "benchmarks/support/require.h"

namespace benchmarks {

/// Runs a program of the system with its arguments, which has to succeed.
void RunCommand(const std::vector<std::string>& command);

/// Runs what was registered, as the arguments say; the program's exit status.
int RunBenchmarks(int argc, char** argv);

/// For benchmarks that do many operations in an iteration.
inline void SetOperations(benchmark::State& state, std::size_t operations) {
  state.counters["operations"] = static_cast<double>(operations);
}

/// "job/row/subject/size".
inline std::string NameWithSize(const std::string& name, std::size_t size) {
  return name + "/" + std::to_string(size);
}

}  // namespace benchmarks
