// Classes of characters by a locale of the library's own. The locale of the host may know ASCII
// only: it is "C" in hosts that have not set one.
#pragma once

#include <locale.h>

namespace KelmoLibs::Localize {

class CharacterClasses {
 public:
  /// Opens the locale `localeName`. If the system does not have it, or has no file descriptor left,
  /// a built-in rule applies: all characters are graphic but controls, spaces, surrogates and
  /// values beyond U+10FFFF; space and tab are the blanks. The rule differs from the locale in rare
  /// characters: unassigned code points and typographic spaces.
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
