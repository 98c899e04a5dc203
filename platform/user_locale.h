// The algorithm of FormatUnderUserLocale, which all systems share.
#pragma once

#include <array>
#include <clocale>
#include <cwchar>
#include <new>
#include <string>

#include "platform/locale.h"

namespace KelmoLibs::Localize {

/// `setLocale` is the system's setlocale for names of type Char. No statement that may throw stands
/// between the call that switches the locale and the one that restores it.
template <class Char>
std::wstring FormatUnderUserLocale(Char* setLocale(int category, const Char* name), double number,
                                   int decimals) {
  const Char* const current = setLocale(LC_ALL, nullptr);
  if (current == nullptr) {  // the runtime found no memory for the answer
    throw std::bad_alloc();
  }
  // A copy: the next call of setLocale invalidates `current`.
  const std::basic_string<Char> previous(current);
  std::array<wchar_t, kMaxNumberLength + 1> text = {};

  constexpr Char kUserLocale = 0;  // the empty name
  setLocale(LC_ALL, &kUserLocale);
  (void)std::swprintf(text.data(), text.size(), L"%.*f", decimals, number);  // it fits
  const Char* const restored = setLocale(LC_ALL, previous.c_str());
  if (restored == nullptr) {  // perhaps the runtime found no memory: try once more
    setLocale(LC_ALL, previous.c_str());
  }
  return text.data();
}

}  // namespace KelmoLibs::Localize
