// Questions of the tests about the system, answered in test_platform_windows.cpp and
// test_platform_posix.cpp.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

/// Whether a file in text mode ends at the byte 0x1A.
extern const bool textModeEndsAtControlZ;

/// Whether the library uses the global C++ locale of the host. On Windows it has its own static
/// runtime, with its own global locale.
extern const bool librarySharesTheGlobalLocale;

/// Whether the system classifies `character` as graphic or blank. Every other character of a unit
/// table counts as a space.
bool SystemSaysGraphicOrBlank(wchar_t character);

/// Whether the program is built with sanitizers or coverage, which make it slower and larger.
extern const bool instrumented;

/// Bytes of memory that can be allocated without swapping.
std::uint64_t AvailableMemory();

/// The lowest free handle (on Linux: descriptor), which the process would get next.
std::uintptr_t NextHandle();

/// The resources of the process that a library may leak.
struct Footprint {
  std::size_t heapBytes;
  std::size_t mappedBytes;  // on Windows without the heaps
  std::uintptr_t nextHandle;
  std::uintptr_t nextThreadSlot;  // the lowest free slot of thread-local storage
};

/// Nothing if it cannot be measured, for example with a sanitizer.
std::optional<Footprint> MeasureFootprint();

/// Whether `work` returns within `time`. If not, it is terminated: it runs in a child process on
/// Linux and in a thread on Windows, and must not hold a lock then. Throws std::runtime_error if
/// the child process crashes.
bool ReturnsWithin(std::chrono::milliseconds time, const std::function<void()>& work);

/// A crash ends the test program, instead of a wait for a user who closes a window.
void TurnOffErrorDialogs();
