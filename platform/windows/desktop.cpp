#include "platform/desktop.h"

// windows.h comes first.
// clang-format off
#include <windows.h>
#include <shellapi.h>
// clang-format on

#include <stdlib.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>

namespace KelmoLibs::Lang {
namespace {

// The folder of the program's file; empty if its path is longer than Windows allows for programs.
std::filesystem::path ProgramFolder() {
  constexpr DWORD kLongestPath = 32768;
  std::wstring path(kLongestPath, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), kLongestPath));
  return std::filesystem::path(path).parent_path();
}

bool Open(const std::filesystem::path& file) {
  constexpr std::intptr_t kLargestError = 32;
  auto* const result =
      ::ShellExecuteW(nullptr, L"open", file.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  return reinterpret_cast<std::intptr_t>(result) > kLargestError;
}

void WaitForEnter() { (void)std::getchar(); }

}  // namespace

// Windows makes a console for a program that is started by mouse, and no other program is in it.
std::optional<Desktop> StartedFromDesktop() {
  std::array<DWORD, 2> processes = {};
  if (::GetConsoleProcessList(processes.data(), static_cast<DWORD>(processes.size())) != 1) {
    return std::nullopt;
  }
  const wchar_t* const dataFolder = ::_wgetenv(L"LOCALAPPDATA");
  return Desktop{ProgramFolder(), dataFolder != nullptr ? dataFolder : L"", Open, WaitForEnter};
}

}  // namespace KelmoLibs::Lang
