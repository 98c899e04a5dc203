// A library without any protection: check_hardening.cmake must report each of them as missing.
#include <cstddef>

namespace KelmoLibs {

// NOLINTNEXTLINE(misc-use-internal-linkage): the call of it is to look into other modules
__attribute__((noinline)) inline void Pass(void (*use)(char*), char* bytes) { use(bytes); }

}  // namespace KelmoLibs

extern "C" {
#ifdef _WIN32
__declspec(dllexport)
#endif
    void FillAnArrayOnTheStack(void (*use)(char*), std::size_t count) {
  char bytes[16];
  for (std::size_t i = 0; i < count && i < sizeof bytes; ++i) {
    bytes[i] = '\0';
  }
  KelmoLibs::Pass(use, bytes);
}
}
