#include "platform/characters.h"

#include <cwctype>

namespace KelmoLibs::Localize {

bool IsGraphic(wchar_t character) noexcept {
  return std::iswgraph(static_cast<std::wint_t>(character)) != 0;
}

bool IsBlank(wchar_t character) noexcept {
  return std::iswblank(static_cast<std::wint_t>(character)) != 0;
}

}  // namespace KelmoLibs::Localize
