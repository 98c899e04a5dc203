#include "benchmarks/support/library_instance.h"

#include <dlfcn.h>

#include <string>

#include "benchmarks/support/require.h"
#include "benchmarks/support/scratch_folder.h"

namespace benchmarks {
namespace {

std::filesystem::path CopyLibrary() {
  static int copies = 0;
  std::filesystem::path file = ScratchFolder() / ("instance_" + std::to_string(++copies) + ".so");
  std::filesystem::copy_file(KELMO_LIBRARY_FILE, file);
  return file;
}

void* LoadLibrary(const std::filesystem::path& file) {
  void* const handle = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  Require(handle != nullptr, "the library cannot be loaded");
  return handle;
}

template <class Function>
Function Address(void* handle, const char* name) {
  void* const address = ::dlsym(handle, name);
  Require(address != nullptr, name);
  return reinterpret_cast<Function>(address);
}

}  // namespace

LibraryInstance::LibraryInstance()
    : file_(CopyLibrary()),
      handle_(LoadLibrary(file_)),
      loadDictionary(Address<decltype(&LoadDictionary)>(handle_, "LoadDictionary")),
      lang(Address<decltype(&LANG)>(handle_, "LANG")),
      getErrorsCount(Address<decltype(&GetErrorsCount)>(handle_, "GetErrorsCount")),
      getError(Address<decltype(&GetError)>(handle_, "GetError")),
      clearErrors(Address<decltype(&ClearErrors)>(handle_, "ClearErrors")) {}

LibraryInstance::~LibraryInstance() {
  ::dlclose(handle_);
  Require(::dlopen(file_.c_str(), RTLD_NOW | RTLD_NOLOAD) == nullptr, "the library stays loaded");
  std::filesystem::remove(file_);
}

void LibraryInstance::Load(const std::filesystem::path& file, std::int64_t messages) const {
  const std::wstring folder = file.parent_path().wstring();
  const std::wstring name = file.filename().wstring();
  const std::int64_t result = loadDictionary(folder.c_str(), name.c_str());
  Require(result == messages, "a load gave a wrong result");
}

}  // namespace benchmarks
