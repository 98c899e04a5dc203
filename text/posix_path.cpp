#include "text/posix_path.h"

#include "text/utf8.h"
#include "text/utf8_characters.h"

namespace KelmoLibs::Localize {

static_assert(sizeof(wchar_t) == 4, "one wchar_t is one character here");

std::optional<std::string> PosixPath(std::wstring_view path) {
  std::string bytes;
  for (const wchar_t wide : path) {
    const auto c = static_cast<char32_t>(wide);
    if (!IsScalarValue(c)) {
      return std::nullopt;
    }
    AppendUtf8(c == U'\\' ? U'/' : c, bytes);
  }
  return bytes;
}

}  // namespace KelmoLibs::Localize
