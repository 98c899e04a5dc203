#include <windows.h>

#include <stdexcept>
#include <string>

#include "tests/support/loaded_library.h"

namespace {

// In the folder of the test program, under the required name.
constexpr const wchar_t* kLibrary = L"kelmo_Mestrel_Localizer.dll";

}  // namespace

LoadedLibrary::LoadedLibrary() : handle_(::LoadLibraryW(kLibrary)) {
  if (handle_ == nullptr) {
    throw std::runtime_error("LoadLibraryW: error " + std::to_string(::GetLastError()));
  }
}

LoadedLibrary::~LoadedLibrary() { ::FreeLibrary(static_cast<HMODULE>(handle_)); }

void LoadedLibrary::ReleaseReferencesOfStarts(int starts) const {
  for (int i = 0; i < starts; ++i) {
    ::FreeLibrary(static_cast<HMODULE>(handle_));
  }
}

bool LoadedLibrary::IsInProcess() noexcept { return ::GetModuleHandleW(kLibrary) != nullptr; }

LoadedLibrary::AnyFunction* LoadedLibrary::Address(const char* name) const {
  auto* const address = ::GetProcAddress(static_cast<HMODULE>(handle_), name);
  if (address == nullptr) {
    throw std::runtime_error(std::string("not exported: ") + name);
  }
  return reinterpret_cast<AnyFunction*>(address);
}
