#include <dlfcn.h>

#include <stdexcept>
#include <string>

#include "tests/support/loaded_library.h"

LoadedLibrary::LoadedLibrary() : handle_(::dlopen(KELMO_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) {
    throw std::runtime_error(::dlerror());
  }
}

LoadedLibrary::~LoadedLibrary() { ::dlclose(handle_); }

void LoadedLibrary::ReleaseReferencesOfStarts(int /*starts*/) const {}

bool LoadedLibrary::IsInProcess() noexcept {
  void* const handle = ::dlopen(KELMO_LIBRARY_FILE, RTLD_NOW | RTLD_NOLOAD);
  if (handle == nullptr) {
    return false;
  }
  ::dlclose(handle);
  return true;
}

LoadedLibrary::AnyFunction* LoadedLibrary::Address(const char* name) const {
  void* const address = ::dlsym(handle_, name);
  if (address == nullptr) {
    throw std::runtime_error(std::string("not exported: ") + name);
  }
  return reinterpret_cast<AnyFunction*>(address);
}
