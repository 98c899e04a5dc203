#include "lang/reading/language.h"

#include <algorithm>
#include <cstddef>

#include "lang/unicode/ascii.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kScriptLength = 4;
}  // namespace

Language LanguageOf(std::string_view id) {
  Language language;
  bool isFirst = true;
  while (!id.empty()) {
    const std::size_t length = std::min(id.find_first_of("-_"), id.size());
    const std::string_view part = id.substr(0, length);
    id.remove_prefix(std::min(length + 1, id.size()));
    const bool areLetters = std::all_of(part.begin(), part.end(), IsAsciiLetter);
    if (isFirst) {
      if (!areLetters || part.size() < 2 || part.size() > 3) {
        return {};
      }
      language.primary = AsciiLowerCase(part);
      isFirst = false;
    } else if (areLetters && part.size() == kScriptLength && language.script.empty()) {
      language.script = part;
    } else if (part.size() >= 2 && part.size() <= 3 && language.region.empty()) {
      language.region = part;
    }
  }
  return language;
}

bool IsOneOfLanguages(std::string_view primary, std::string_view languages) {
  return languages.find(' ' + std::string(primary) + ' ') != std::string_view::npos;
}

}  // namespace KelmoLibs::Lang
