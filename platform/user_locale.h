// Numbers as the user's regional settings show them: what the answers of platform.h share.
#pragma once

#include <array>
#include <clocale>
#include <cwchar>
#include <new>
#include <string>

#include "platform/files.h"

namespace KelmoLibs::Localize {

/// `number` in fixed notation with `decimals` under the user's locale, by the system's
/// setlocale; under the current one where the user's is not there. What may throw comes before the
/// locale is switched and after it is restored.
template <class Char>
std::wstring FormatUnderUserLocale(Char* setLocale(int category, const Char* name), double number,
                                   int decimals) {
  const Char* const current = setLocale(LC_ALL, nullptr);
  if (current == nullptr) {  // the runtime found no memory for the answer
    throw std::bad_alloc();
  }
  // A copy: the runtime's own text goes with the next call.
  const std::basic_string<Char> previous(current);
  std::array<wchar_t, kLongestNumber + 1> text = {};

  constexpr Char kUsers = 0;  // the empty name
  setLocale(LC_ALL, &kUsers);
  (void)std::swprintf(text.data(), text.size(), L"%.*f", decimals, number);  // it fits
  const Char* const restored = setLocale(LC_ALL, previous.c_str());
  if (restored == nullptr) {  // perhaps the runtime found no memory
    setLocale(LC_ALL, previous.c_str());
  }
  return text.data();
}

}  // namespace KelmoLibs::Localize
