/* The system's part of c_host_loaded.c: loading the library at run time. */
#ifndef TESTS_ABI_C_HOST_MODULE_H
#define TESTS_ABI_C_HOST_MODULE_H

#include "tests/abi/c_host.h"

/* 1 if the library is loaded. ReleaseLibrary unloads it. */
int OpenLibrary(const char* library);

/* Writes the address of an export to the function pointer at `function`. Copies the bytes, because
 * C has no conversion from an object pointer to a function pointer. 1 if the export exists. */
int TakeExport(void* function, const char* name);

#endif
