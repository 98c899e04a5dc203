// Texts of NaN. The runtime decides whether they have a sign and name the kind of NaN.
#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <cwchar>
#include <string>

#include "tests/support/bits.h"

/// "nan" for each text of NaN in this program's runtime, such as "-nan" or "-nan(ind)". Other texts
/// stay unchanged.
inline std::wstring NormalizeNaN(const std::wstring& text) {
  if (text.find(L"nan") == std::wstring::npos) {
    return text;
  }
  for (const std::uint64_t bits :
       {0x7FF8000000000000U, 0xFFF8000000000000U,     // quiet, and indefinite
        0xFFF8000000000001U,                          // quiet, negative
        0x7FF0000000000001U, 0xFFF0000000000001U}) {  // signalling
    const double number = NumberOf(bits);
    std::array<wchar_t, 32> printed = {};
    std::swprintf(printed.data(), printed.size(), L"%f", number);
    std::array<char, 32> converted = {};
    const char* const end = std::to_chars(converted.data(), converted.data() + converted.size(),
                                          number, std::chars_format::fixed, 1)
                                .ptr;
    const char* const start = converted.data();
    if (text == printed.data() || text == std::wstring(start, end)) {
      return L"nan";
    }
  }
  return text;
}
