// Windows calls DllMain when it loads and unloads the library. The runtime constructs and destroys
// the process-wide objects (library_state.cpp), not this function. It only turns off the
// notifications of threads, so that a host with many threads does not call the library at the start
// and the end of each.
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) {
    // Windows refuses this, which does no harm, if the module has a TLS directory.
    // static_runtime_mingw.cpp keeps the linker from adding one.
    ::DisableThreadLibraryCalls(module);
  }
  return TRUE;
}
