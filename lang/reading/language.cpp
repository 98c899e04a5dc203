#include "lang/reading/language.h"

#include <algorithm>
#include <cstddef>

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kScriptLength = 4;
constexpr char kCaseBit = 'a' - 'A';

bool IsLetter(char c) noexcept { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

char Lower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + kCaseBit) : c; }

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), Lower);
  return lower;
}

}  // namespace

Language LanguageOf(std::string_view id) {
  Language language;
  bool isFirst = true;
  while (!id.empty()) {
    const std::size_t length = std::min(id.find_first_of("-_"), id.size());
    const std::string_view part = id.substr(0, length);
    id.remove_prefix(std::min(length + 1, id.size()));
    const bool areLetters = std::all_of(part.begin(), part.end(), IsLetter);
    if (isFirst) {
      if (!areLetters || part.size() < 2 || part.size() > 3) {
        return {};
      }
      language.primary = LowerCase(part);
      isFirst = false;
    } else if (areLetters && part.size() == kScriptLength && language.script.empty()) {
      language.script = part;
    } else if (part.size() >= 2 && part.size() <= 3 && language.region.empty()) {
      language.region = part;
    }
  }
  return language;
}

}  // namespace KelmoLibs::Lang
