#include "platform/windows/wide_text.h"

#include <windows.h>

namespace KelmoLibs::Localize {

std::wstring WideOf(std::string_view utf8) {
  const int size = static_cast<int>(utf8.size());
  std::wstring wide(
      static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)),
      L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string Utf8Of(std::wstring_view wide) {
  const int size = static_cast<int>(wide.size());
  std::string utf8(static_cast<std::size_t>(::WideCharToMultiByte(CP_UTF8, 0, wide.data(), size,
                                                                  nullptr, 0, nullptr, nullptr)),
                   '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, utf8.data(), static_cast<int>(utf8.size()),
                        nullptr, nullptr);
  return utf8;
}

}  // namespace KelmoLibs::Localize
