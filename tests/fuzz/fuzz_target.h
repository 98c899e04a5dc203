// A fuzz target: one function, linked either with the fuzzer (libfuzzer_main.cpp) or with a program
// that plays what a folder holds (replay_main.cpp).
#pragma once

#include <string_view>

/// Lets the library work on `bytes`, which may be anything, and compares what it does with what it
/// should do. Throws where that differs. The working directory is this target's alone.
void CheckWith(std::string_view bytes);
