// The functions of the library that is loaded at run time, under the names that the header gives
// them.
#pragma once

#include "kelmo_localizer.h"
#include "tests/support/loaded_library.h"

struct LibraryExports {
  explicit LibraryExports(const LoadedLibrary& library)
      : Init(library.Export<decltype(::Init)>("Init")),
        Init0(library.Export<decltype(::Init0)>("Init0")),
        ExportPhyVal(library.Export<decltype(::ExportPhyVal)>("ExportPhyVal")),
        LoadDictionary(library.Export<decltype(::LoadDictionary)>("LoadDictionary")),
        UseLanguage(library.Export<decltype(::UseLanguage)>("UseLanguage")),
        LANG(library.Export<decltype(::LANG)>("LANG")),
        ClearErrors(library.Export<decltype(::ClearErrors)>("ClearErrors")),
        GetErrorsCount(library.Export<decltype(::GetErrorsCount)>("GetErrorsCount")),
        GetError(library.Export<decltype(::GetError)>("GetError")) {}

  // NOLINTBEGIN(readability-identifier-naming)
  decltype(&::Init) Init;
  decltype(&::Init0) Init0;
  decltype(&::ExportPhyVal) ExportPhyVal;
  decltype(&::LoadDictionary) LoadDictionary;
  decltype(&::UseLanguage) UseLanguage;
  decltype(&::LANG) LANG;
  decltype(&::ClearErrors) ClearErrors;
  decltype(&::GetErrorsCount) GetErrorsCount;
  decltype(&::GetError) GetError;
  // NOLINTEND(readability-identifier-naming)
};
