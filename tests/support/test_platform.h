// What the tests ask of the operating system, answered in test_platform_windows.cpp and
// test_platform_posix.cpp.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

/// Whether a file in text mode ends at a 0x1A byte.
extern const bool textModeEndsAtControlZ;

/// Whether the library prints by the global C++ locale of the host: on Windows its static runtime
/// has one of its own.
extern const bool librarySharesTheGlobalLocale;

/// The system's own answer of what is shown or is a blank of any kind; every other character of a unit
/// table counts as a space.
bool SystemTakesForGraphicOrBlank(wchar_t character);

/// Whether a sanitizer or the like makes the program another one: slower, larger.
extern const bool instrumented;

/// Bytes of memory that can be had without driving anything else out.
std::uint64_t AvailableMemory();

/// The handle (on Linux the descriptor) that the process would get next: the lowest that is free.
std::uintptr_t NextHandle();

/// What the process holds of everything that may be left behind, whoever took it.
struct Footprint {
  std::size_t heapBytes;
  std::size_t mappedBytes;  // on Windows without the heaps
  std::uintptr_t nextHandle;
  std::uintptr_t nextThreadSlot;  // of thread-local storage: the lowest that is free
};

/// Nothing where a sanitizer or the like keeps things of its own.
std::optional<Footprint> MeasureFootprint();

/// Whether `work` returns within `time`. If not, it is ended by force, on Linux in a process of its own
/// and on Windows in a thread: it must hold no lock then. Throws std::runtime_error where the process
/// has crashed.
bool ReturnsWithin(std::chrono::milliseconds time, const std::function<void()>& work);

/// A crash must end the test program, not wait for somebody to close a window.
void TurnOffErrorDialogs();
