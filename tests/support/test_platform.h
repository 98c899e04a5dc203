// What the tests ask of the operating system, answered in test_platform_windows.cpp and
// test_platform_posix.cpp.
#pragma once

/// Whether a file in text mode ends at a 0x1A byte.
extern const bool textModeEndsAtControlZ;

/// A crash must end the test program, not wait for somebody to close a window.
void TurnOffErrorDialogs();
