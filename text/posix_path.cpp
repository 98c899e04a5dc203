#include "text/posix_path.h"

#include "text/utf8.h"

namespace KelmoLibs::Localize {
namespace {

static_assert(sizeof(wchar_t) == 4, "one wchar_t is one character here");

bool IsCharacter(char32_t c) noexcept { return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF); }

}  // namespace

std::optional<std::string> PosixPath(std::wstring_view path) {
  std::string bytes;
  for (const wchar_t wide : path) {
    const auto c = static_cast<char32_t>(wide);
    if (!IsCharacter(c)) {
      return std::nullopt;
    }
    AppendUtf8(c == U'\\' ? U'/' : c, bytes);
  }
  return bytes;
}

}  // namespace KelmoLibs::Localize
