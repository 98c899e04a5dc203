// What the tests ask of the operating system, answered in test_platform_windows.cpp and
// test_platform_posix.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

/// Whether a file in text mode ends at a 0x1A byte.
extern const bool textModeEndsAtControlZ;

/// Bytes that the process has taken from its heaps and not given back, whoever did, or nothing where
/// the system cannot tell.
std::optional<std::size_t> HeapBytesInUse();

/// The number that the system gives to the next handle (a file descriptor on Linux): it grows when
/// handles are not closed.
std::uintptr_t NextHandle();

/// A crash must end the test program, not wait for somebody to close a window.
void TurnOffErrorDialogs();
