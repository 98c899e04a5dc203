/* How a host in C gets the nine functions: c_host_linked.c is linked to the library,
 * c_host_loaded.c loads it at run time. */
#ifndef TESTS_ABI_C_HOST_H
#define TESTS_ABI_C_HOST_H

#include "kelmo_localizer.h"

struct Functions {
  int32_t (*Init)(const wchar_t* folder, const wchar_t* language);
  int32_t (*Init0)(const wchar_t* folder);
  int32_t (*ExportPhyVal)(void);
  int32_t (*LoadDictionary)(const wchar_t* folder, const wchar_t* fileName);
  int32_t (*UseLanguage)(const wchar_t* id);
  const wchar_t* (*LANG)(const wchar_t* key);
  void (*ClearErrors)(void);
  int64_t (*GetErrorsCount)(void);
  const wchar_t* (*GetError)(int32_t index);
};

/* 1 if all functions exist. `library` is the file to load. */
int TakeFunctions(struct Functions* functions, const char* library);

/* Unloads a library that was loaded at run time, after `starts` starts. 1 if it is gone, and always
 * 1 for a linked library. */
int ReleaseLibrary(int starts);

#endif
