// A dictionary that somebody has made to be slow.
#pragma once

#include <cstddef>

#include "benchmarks/support/catalogue.h"

namespace benchmarks {

/// The search for colliding keys takes the square of the size: longer than the benchmark for more.
constexpr std::size_t kHostileSizes[] = {1'000, 10'000, 30'000};

/// The texts of the English catalogue, of ASCII keys that the library's index wants to put into one
/// or two of its buckets.
Catalogue MakeHostileCatalogue(std::size_t size);

}  // namespace benchmarks
