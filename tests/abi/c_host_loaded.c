#include "tests/abi/c_host_module.h"

int TakeFunctions(struct Functions* functions, const char* library) {
  return OpenLibrary(library) && TakeExport(&functions->Init, "Init") &&
         TakeExport(&functions->Init0, "Init0") &&
         TakeExport(&functions->ExportPhyVal, "ExportPhyVal") &&
         TakeExport(&functions->LoadDictionary, "LoadDictionary") &&
         TakeExport(&functions->UseLanguage, "UseLanguage") &&
         TakeExport(&functions->LANG, "LANG") &&
         TakeExport(&functions->ClearErrors, "ClearErrors") &&
         TakeExport(&functions->GetErrorsCount, "GetErrorsCount") &&
         TakeExport(&functions->GetError, "GetError");
}
