/* The nine functions as a host in C comes by them: c_host_linked.c is linked to the library at load
 * time, c_host_loaded.c loads it at run time. */
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

/* 1 where all are there; `library` is the file to load. */
int TakeFunctions(struct Functions* functions, const char* library);

/* Gives the library back, after so many starts. 1 where it has gone, if it could be unloaded. */
int GiveBack(int starts);

#endif
