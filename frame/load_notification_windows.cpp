// What Windows tells the library when it is loaded and unloaded. The process-wide objects are built
// and destroyed by the runtime, not here; this only spares a host with many threads a call for
// each.
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) {
    ::DisableThreadLibraryCalls(module);
  }
  return TRUE;
}
