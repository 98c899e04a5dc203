// What characters are, by a locale of the library's own: that of the host, "C" in hosts that have
// chosen none, may know ASCII only.
#pragma once

#include <locale.h>

namespace KelmoLibs::Localize {

class CharacterClasses {
 public:
  /// By the locale with this name. Where the system has none of it, or no descriptor left to read it,
  /// by a rule without one: graphic is all but controls, spaces, surrogates and what is beyond
  /// U+10FFFF; blank are the space and the tab. That differs in characters that hardly occur: those
  /// without a meaning yet, and the blanks of typesetters.
  explicit CharacterClasses(const char* localeName) noexcept;
  CharacterClasses(const CharacterClasses&) = delete;
  CharacterClasses& operator=(const CharacterClasses&) = delete;
  ~CharacterClasses();

  bool IsGraphic(wchar_t character) const noexcept;
  bool IsBlank(wchar_t character) const noexcept;

 private:
  locale_t locale_;
};

}  // namespace KelmoLibs::Localize
