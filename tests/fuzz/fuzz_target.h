// A fuzz target: one function, linked with the fuzzer (libfuzzer_main.cpp) or with a program that
// replays the files of a folder (replay_main.cpp).
#pragma once

#include <string_view>

/// Passes `bytes`, which may be anything, to the library and compares the results with the expected
/// ones. Throws if they differ. No other process uses the working directory.
void CheckWith(std::string_view bytes);
