#include "host/language_match.h"

#include <algorithm>
#include <string>

namespace KelmoLibs::Host {
namespace {

constexpr std::size_t kScriptSize = 4;

// With small letters and `-`.
std::string Normalized(std::string_view id) {
  std::string normal(id);
  for (char& c : normal) {
    if (c >= 'A' && c <= 'Z') {
      c = static_cast<char>(c - 'A' + 'a');
    } else if (c == '_') {
      c = '-';
    }
  }
  return normal;
}

bool IsScript(std::string_view part) noexcept {
  return part.size() == kScriptSize && part.find_first_of("0123456789") == std::string_view::npos;
}

// The regions that read traditional characters.
bool IsTraditionalChinese(std::string_view normal) noexcept {
  return normal == "zh-tw" || normal == "zh-hk" || normal == "zh-mo";
}

}  // namespace

std::optional<std::size_t> MatchLanguage(const TextCollection& texts, std::string_view wanted) {
  std::string id = Normalized(wanted);
  for (;;) {
    const auto found =
        std::find_if(texts.languages.begin(), texts.languages.end(), [&id](const auto& language) {
          // An id may be very long: most are told apart by their size.
          return language->Id().size() == id.size() && Normalized(language->Id()) == id;
        });
    if (found != texts.languages.end()) {
      return static_cast<std::size_t>(found - texts.languages.begin());
    }
    const std::size_t last = id.rfind('-');
    if (last == std::string::npos || IsScript(id.substr(last + 1))) {
      return std::nullopt;
    }
    if (IsTraditionalChinese(id)) {
      id = "zh-hant";
    } else {
      id.resize(last);
    }
  }
}

}  // namespace KelmoLibs::Host
