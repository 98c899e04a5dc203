#include "frame/posix_path.h"

namespace KelmoLibs::Localize {
namespace {

static_assert(sizeof(wchar_t) == 4, "one wchar_t is one character here");

bool IsCharacter(char32_t c) noexcept { return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF); }

char Continuation(char32_t c, unsigned shift) noexcept {
  return static_cast<char>(0x80U | ((c >> shift) & 0x3FU));
}

}  // namespace

std::optional<std::string> PosixPath(std::wstring_view path) {
  std::string bytes;
  bytes.reserve(path.size());
  for (const wchar_t wide : path) {
    const auto c = static_cast<char32_t>(wide);
    if (!IsCharacter(c)) {
      return std::nullopt;
    }
    if (c == U'\\') {
      bytes += '/';
    } else if (c < 0x80) {
      bytes += static_cast<char>(c);
    } else if (c < 0x800) {
      bytes += static_cast<char>(0xC0U | (c >> 6U));
      bytes += Continuation(c, 0);
    } else if (c < 0x10000) {
      bytes += static_cast<char>(0xE0U | (c >> 12U));
      bytes += Continuation(c, 6);
      bytes += Continuation(c, 0);
    } else {
      bytes += static_cast<char>(0xF0U | (c >> 18U));
      bytes += Continuation(c, 12);
      bytes += Continuation(c, 6);
      bytes += Continuation(c, 0);
    }
  }
  return bytes;
}

}  // namespace KelmoLibs::Localize
