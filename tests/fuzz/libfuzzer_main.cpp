// The function that libFuzzer calls. A difference ends the program with an exception; libFuzzer
// then saves the bytes as for a crash.
#include <cstddef>
#include <cstdint>

#include "tests/fuzz/fuzz_target.h"

// The name is libFuzzer's. NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  CheckWith({reinterpret_cast<const char*>(bytes), size});
  return 0;
}
