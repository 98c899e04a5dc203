#include "platform/own_unit_table.h"

#include <windows.h>

namespace KelmoLibs::Localize {
namespace {

// Any object of this file: its address tells the module.
const char kInModule = 0;

}  // namespace

std::string_view FindOwnUnitTable() noexcept {
  HMODULE module = nullptr;
  constexpr DWORD kFlags =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  if (::GetModuleHandleExW(kFlags, reinterpret_cast<LPCWSTR>(&kInModule), &module) == 0) {
    return {};
  }
  // As in resources/default_unit_table.rc. NOLINTNEXTLINE(performance-no-int-to-ptr)
  HRSRC resource = ::FindResourceW(module, MAKEINTRESOURCEW(102), MAKEINTRESOURCEW(10));
  if (resource == nullptr) {
    return {};
  }
  HGLOBAL loaded = ::LoadResource(module, resource);
  if (loaded == nullptr) {
    return {};
  }
  return {static_cast<const char*>(::LockResource(loaded)), ::SizeofResource(module, resource)};
}

}  // namespace KelmoLibs::Localize
