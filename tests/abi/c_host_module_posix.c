#include <dlfcn.h>
#include <string.h>

#include "tests/abi/c_host_module.h"

static void* handle = NULL;
static const char* file = NULL;

int OpenLibrary(const char* library) {
  file = library;
  handle = dlopen(library, RTLD_NOW | RTLD_LOCAL);
  return handle != NULL;
}

int TakeExport(void* function, const char* name) {
  void* const address = dlsym(handle, name);
  memcpy(function, &address, sizeof(address));
  return address != NULL;
}

/* A start takes no reference here. */
int ReleaseLibrary(int starts) {
  (void)starts;
  dlclose(handle);
  return dlopen(file, RTLD_NOW | RTLD_NOLOAD) == NULL;
}
