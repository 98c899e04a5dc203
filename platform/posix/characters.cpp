#include "platform/characters.h"

#include <wctype.h>

#include <optional>

#include "platform/posix/character_classes.h"

namespace KelmoLibs::Localize {
namespace {

constexpr locale_t kNone{};

// Created when the library first meets a character that IsGraphicEverywhere does not know. Like the
// six objects of frame/library_state.cpp it is global and is destroyed at unload: after the host's
// own global objects, whose destructors may still call Init.
std::optional<CharacterClasses> unicode;

const CharacterClasses& Unicode() noexcept {
  if (!unicode) {
    unicode.emplace("C.UTF-8");
  }
  return *unicode;
}

// Letters and signs of Western Europe, Cyrillic letters and the byte-order mark are graphic in
// every Unicode table. The default unit table has no others, so that a start without a language
// table opens no locale.
bool IsGraphicEverywhere(wchar_t c) noexcept {
  return (c > L'\u00A0' && c <= L'\u00FF' && c != L'\u00AD') ||
         (c >= L'\u0400' && c <= L'\u045F') || c == L'\uFEFF';
}

}  // namespace

CharacterClasses::CharacterClasses(const char* localeName) noexcept
    : locale_(::newlocale(LC_CTYPE_MASK, localeName, kNone)) {}

CharacterClasses::~CharacterClasses() {
  if (locale_ != kNone) {
    ::freelocale(locale_);
  }
}

bool CharacterClasses::IsGraphic(wchar_t character) const noexcept {
  if (locale_ != kNone) {
    return ::iswgraph_l(static_cast<wint_t>(character), locale_) != 0;
  }
  const auto c = static_cast<char32_t>(character);
  return (c > 0x20 && c < 0x7F) || (c >= 0xA0 && c < 0xD800) || (c > 0xDFFF && c <= 0x10FFFF);
}

bool CharacterClasses::IsBlank(wchar_t character) const noexcept {
  if (locale_ != kNone) {
    return ::iswblank_l(static_cast<wint_t>(character), locale_) != 0;
  }
  return character == L' ' || character == L'\t';
}

bool IsGraphic(wchar_t character) noexcept {
  return IsGraphicEverywhere(character) || Unicode().IsGraphic(character);
}

bool IsBlank(wchar_t character) noexcept { return Unicode().IsBlank(character); }

}  // namespace KelmoLibs::Localize
