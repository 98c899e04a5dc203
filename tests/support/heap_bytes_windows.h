// The heaps of the process: what is taken of them, and where they are.
#pragma once

#include <cstddef>
#include <optional>
#include <set>

/// Bytes of the process's heaps that are taken. Nothing where they can neither be seen nor counted.
std::optional<std::size_t> HeapBytes();

/// The mapped memory that the heaps are in.
std::set<const void*> HeapRegions();
