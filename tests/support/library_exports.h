// The functions of the library under the names of the header.
#pragma once

#include "kelmo_localizer.h"
#include "tests/support/loaded_library.h"

struct LibraryExports {
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

/// The functions of a library that is loaded at run time.
inline LibraryExports ExportsOf(const LoadedLibrary& library) {
  return {library.Export<decltype(::Init)>("Init"),
          library.Export<decltype(::Init0)>("Init0"),
          library.Export<decltype(::ExportPhyVal)>("ExportPhyVal"),
          library.Export<decltype(::LoadDictionary)>("LoadDictionary"),
          library.Export<decltype(::UseLanguage)>("UseLanguage"),
          library.Export<decltype(::LANG)>("LANG"),
          library.Export<decltype(::ClearErrors)>("ClearErrors"),
          library.Export<decltype(::GetErrorsCount)>("GetErrorsCount"),
          library.Export<decltype(::GetError)>("GetError")};
}
