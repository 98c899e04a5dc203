// Prints wide text as UTF-8, on Linux and on Windows. For the examples and your first program:
// texts of the library are wide, and printf with %ls loses characters that the runtime's locale
// does not have.
#pragma once

#include <cstddef>
#include <cstdio>
#include <initializer_list>
#include <string>

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <fcntl.h>
#include <io.h>
#include <windows.h>
#endif

// A surrogate pair becomes one character. A lone surrogate becomes U+FFFD.
inline std::string Utf8(const std::wstring& text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    auto c = static_cast<char32_t>(text[i]);
    const auto next = static_cast<char32_t>(i + 1 < text.size() ? text[i + 1] : L'\0');
    if (c >= 0xD800 && c < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10U) + (next - 0xDC00);
      ++i;
    } else if ((c >= 0xD800 && c < 0xE000) || c > 0x10FFFF) {
      c = 0xFFFD;
    }
    const auto add = [&bytes](char32_t bits) { bytes += static_cast<char>(bits); };
    if (c < 0x80) {
      add(c);
    } else if (c < 0x800) {
      add(0xC0U | (c >> 6U));
      add(0x80U | (c & 0x3FU));
    } else if (c < 0x10000) {
      add(0xE0U | (c >> 12U));
      add(0x80U | ((c >> 6U) & 0x3FU));
      add(0x80U | (c & 0x3FU));
    } else {
      add(0xF0U | (c >> 18U));
      add(0x80U | ((c >> 12U) & 0x3FU));
      add(0x80U | ((c >> 6U) & 0x3FU));
      add(0x80U | (c & 0x3FU));
    }
  }
  return bytes;
}

#ifdef _WIN32
// Makes the console read UTF-8, and stdout binary with a buffer: a short text is written at once.
struct Utf8Console {
  Utf8Console() {
    (void)::SetConsoleOutputCP(CP_UTF8);
    (void)::_setmode(::_fileno(stdout), _O_BINARY);
    (void)std::setvbuf(stdout, nullptr, _IOFBF, 4096);
  }
};
#endif

// Prints the texts one after the other. On Windows the first call changes how the whole program
// prints: it sets the code page of the console, which stays, and makes stdout binary, with a
// buffer. So call Print before anything else is printed to stdout.
inline void Print(std::initializer_list<std::wstring> texts) {
#ifdef _WIN32
  static const Utf8Console console;
#endif
  for (const std::wstring& text : texts) {
    const std::string bytes = Utf8(text);
    (void)std::fwrite(bytes.data(), 1, bytes.size(), stdout);
  }
  (void)std::fflush(stdout);
}
