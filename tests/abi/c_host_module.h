/* What a host in C needs of its system to load the library at run time. */
#ifndef TESTS_ABI_C_HOST_MODULE_H
#define TESTS_ABI_C_HOST_MODULE_H

#include "tests/abi/c_host.h"

/* 1 where it is loaded. GiveBack unloads it. */
int OpenLibrary(const char* library);

/* Puts the address of an export into the pointer to a function at `function`: through memory, because
 * C knows no conversion from the address of an object. 1 where there is such an export. */
int TakeExport(void* function, const char* name);

#endif
