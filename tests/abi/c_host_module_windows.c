#include <string.h>
#include <windows.h>

#include "tests/abi/c_host_module.h"

static HMODULE module = NULL;

int OpenLibrary(const char* library) {
  module = LoadLibraryA(library);
  return module != NULL;
}

int TakeExport(void* function, const char* name) {
  const FARPROC address = GetProcAddress(module, name);
  memcpy(function, &address, sizeof(address));
  return address != NULL;
}

/* Each start has taken a reference. */
int ReleaseLibrary(int starts) {
  int i = 0;
  for (i = 0; i < 1 + starts; ++i) {
    if (GetModuleHandleA("kelmo_Mestrel_Localizer.dll") == NULL) {
      return 0; /* too early */
    }
    FreeLibrary(module);
  }
  return GetModuleHandleA("kelmo_Mestrel_Localizer.dll") == NULL;
}
