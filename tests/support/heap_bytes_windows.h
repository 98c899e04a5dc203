// The heaps of the process: allocated bytes and addresses.
#pragma once

#include <cstddef>
#include <optional>
#include <set>

/// Allocated bytes in the heaps of the process. Nothing if they can neither be walked nor counted.
std::optional<std::size_t> HeapBytes();

/// The memory regions of the heaps.
std::set<const void*> HeapRegions();
