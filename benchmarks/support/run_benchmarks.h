// What all benchmark programs share.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <vector>

#include "benchmarks/support/require.h"

namespace benchmarks {

/// Runs a program with its arguments. Ends this program if that fails.
void RunCommand(const std::vector<std::string>& command);

/// Runs the registered benchmarks with these arguments. Returns the program's exit status.
int RunBenchmarks(int argc, char** argv);

/// Sets the number of operations of one iteration.
inline void SetOperations(benchmark::State& state, std::size_t operations) {
  state.counters["operations"] = static_cast<double>(operations);
}

/// "job/row/subject/size".
inline std::string NameWithSize(const std::string& name, std::size_t size) {
  return name + "/" + std::to_string(size);
}

}  // namespace benchmarks
