// A dictionary whose keys collide in the library's hash table.
#pragma once

#include <cstddef>

#include "benchmarks/support/catalogue.h"

namespace benchmarks {

/// The search for colliding keys is quadratic. For larger sizes it takes longer than the benchmark.
constexpr std::size_t kHostileSizes[] = {1'000, 10'000, 30'000};

/// The texts of the English catalogue. All of its ASCII keys have one or two buckets as their home.
Catalogue MakeHostileCatalogue(std::size_t size);

}  // namespace benchmarks
