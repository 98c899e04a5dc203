#include "text/locale_name.h"

#include <algorithm>

#include "text/ascii_digit.h"

namespace KelmoLibs::Localize {
namespace {

// The script that the part of a locale's name behind "@" stands for, if it stands for one.
std::string_view ScriptOf(std::string_view modifier) noexcept {
  if (modifier == "latin") {
    return "Latn";
  }
  return modifier == "cyrillic" ? "Cyrl" : "";
}

bool IsLetter(char c) noexcept { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool IsPlain(char c) noexcept { return IsLetter(c) || IsAsciiDigit(c) || c == '-'; }

}  // namespace

std::string LanguageOfLocale(std::string_view locale) {
  const std::string_view name = locale.substr(0, locale.find_first_of(".@"));
  if (name.empty() || !IsLetter(name.front()) || name == "C" || name == "POSIX") {
    return {};
  }
  std::string id(name);
  std::replace(id.begin(), id.end(), '_', '-');
  if (!std::all_of(id.begin(), id.end(), IsPlain)) {
    return {};
  }
  const std::size_t at = locale.find('@');
  const std::string_view script =
      at != std::string_view::npos ? ScriptOf(locale.substr(at + 1)) : std::string_view();
  if (!script.empty()) {
    id.insert(std::min(id.find('-'), id.size()), '-' + std::string(script));
  }
  return id;
}

}  // namespace KelmoLibs::Localize
