#include "platform/console.h"

#include <windows.h>

#include <algorithm>
#include <limits>
#include <string>

#include "platform/windows/wide_text.h"

namespace KelmoLibs::Lang {
namespace {

HANDLE HandleOf(Stream stream) noexcept {
  return ::GetStdHandle(stream == Stream::kOutput ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

// Writes `text` by `write`(data, size, written) in pieces of at most `limit` units.
template <class Text, class Function>
bool WriteInPieces(Text text, std::size_t limit, Function write) {
  while (!text.empty()) {
    DWORD written = 0;
    if (!write(text.data(), static_cast<DWORD>(std::min(text.size(), limit)), &written) ||
        written == 0) {
      return false;
    }
    text.remove_prefix(written);
  }
  return true;
}

}  // namespace

bool Write(Stream stream, std::string_view utf8) {
  void* const handle = HandleOf(stream);
  if (!IsTerminal(stream)) {
    return WriteInPieces(utf8, std::numeric_limits<DWORD>::max() / 2,
                         [handle](const char* data, DWORD size, DWORD* written) {
                           return ::WriteFile(handle, data, size, written, nullptr) != 0;
                         });
  }
  // Older consoles refuse more than 64 KB at once.
  constexpr std::size_t kLimit = 8192;
  const std::wstring wide = Localize::WideOf(utf8);
  const std::wstring_view text = wide;
  return WriteInPieces(text, kLimit, [handle](const wchar_t* data, DWORD size, DWORD* written) {
    return ::WriteConsoleW(handle, data, size, written, nullptr) != 0;
  });
}

bool IsTerminal(Stream stream) noexcept {
  DWORD mode = 0;
  return ::GetConsoleMode(HandleOf(stream), &mode) != 0;
}

bool EnableColours(Stream stream) noexcept {
  constexpr DWORD kVirtualTerminal =
      0x0004;  // ENABLE_VIRTUAL_TERMINAL_PROCESSING, since Windows 10
  DWORD mode = 0;
  return ::GetConsoleMode(HandleOf(stream), &mode) != 0 &&
         ::SetConsoleMode(HandleOf(stream), mode | kVirtualTerminal) != 0;
}

std::optional<unsigned> TerminalWidth(Stream stream) noexcept {
  CONSOLE_SCREEN_BUFFER_INFO info = {};
  if (::GetConsoleScreenBufferInfo(HandleOf(stream), &info) == 0 ||
      info.srWindow.Right < info.srWindow.Left) {
    return std::nullopt;
  }
  return static_cast<unsigned>(info.srWindow.Right - info.srWindow.Left + 1);
}

}  // namespace KelmoLibs::Lang
