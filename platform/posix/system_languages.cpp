#include "platform/system_languages.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace KelmoLibs::Localize {
namespace {

std::string_view Variable(const char* name) noexcept {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

// The script that the part of a locale's name behind "@" stands for, if it stands for one.
std::string_view ScriptOf(std::string_view modifier) noexcept {
  if (modifier == "latin") {
    return "Latn";
  }
  return modifier == "cyrillic" ? "Cyrl" : "";
}

bool IsPlain(char c) noexcept {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
}

// "de-AT" for "de_AT.UTF-8@euro", "sr-Latn-RS" for "sr_RS@latin". Empty if it names no language.
std::string IdOf(std::string_view locale) {
  const std::string_view name = locale.substr(0, locale.find_first_of(".@"));
  if (name.empty() || name == "C" || name == "POSIX") {
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

void Add(std::string_view locale, std::vector<std::string>& ids) {
  std::string id = IdOf(locale);
  if (!id.empty() && std::find(ids.begin(), ids.end(), id) == ids.end()) {
    ids.push_back(std::move(id));
  }
}

}  // namespace

std::vector<std::string> SystemLanguages() {
  std::string_view locale;
  for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    locale = locale.empty() ? Variable(name) : locale;
  }
  if (locale == "C" || locale == "POSIX") {
    return {};  // the program shall not translate
  }
  std::vector<std::string> ids;
  for (std::string_view rest = Variable("LANGUAGE"); !rest.empty();) {
    const std::size_t length = std::min(rest.find(':'), rest.size());
    Add(rest.substr(0, length), ids);
    rest.remove_prefix(std::min(length + 1, rest.size()));
  }
  Add(locale, ids);
  return ids;
}

}  // namespace KelmoLibs::Localize
