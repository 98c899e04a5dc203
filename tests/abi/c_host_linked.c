#include "tests/abi/c_host.h"

int TakeFunctions(struct Functions* functions, const char* library) {
  const struct Functions linked = {Init, Init0,       ExportPhyVal,   LoadDictionary, UseLanguage,
                                   LANG, ClearErrors, GetErrorsCount, GetError};
  (void)library; /* the system has loaded it */
  *functions = linked;
  return 1;
}

int ReleaseLibrary(int starts) {
  (void)starts; /* the system unloads it with the program */
  return 1;
}
