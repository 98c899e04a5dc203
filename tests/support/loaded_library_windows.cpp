#include <windows.h>

#include <stdexcept>
#include <string>

#include "tests/support/loaded_library.h"

// From beside the test program, under the name that the library must have.
LoadedLibrary::LoadedLibrary() : handle_(::LoadLibraryW(L"kelmo_Mestrel_Localizer.dll")) {
  if (handle_ == nullptr) {
    throw std::runtime_error("LoadLibraryW: error " + std::to_string(::GetLastError()));
  }
}

LoadedLibrary::~LoadedLibrary() { ::FreeLibrary(static_cast<HMODULE>(handle_)); }

LoadedLibrary::AnyFunction* LoadedLibrary::Address(const char* name) const {
  const FARPROC address = ::GetProcAddress(static_cast<HMODULE>(handle_), name);
  if (address == nullptr) {
    throw std::runtime_error(std::string("not exported: ") + name);
  }
  return reinterpret_cast<AnyFunction*>(address);
}
