// What Windows tells the library when it is loaded and unloaded. The process-wide objects are built
// and destroyed by the runtime, not here. This only turns the notifications of threads off: a host
// with many threads is spared a call at the start and the end of each.
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) {
    // Refused, and then of no harm, where the module has a TLS directory; static_runtime_mingw.cpp
    // keeps it from having one.
    ::DisableThreadLibraryCalls(module);
  }
  return TRUE;
}
