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

// Where the extensions of an id begin, such as `-u-nu-latn`: at its first part of one letter. npos if
// it has none.
std::size_t ExtensionAt(std::string_view id) noexcept {
  std::size_t place = id.find('-');
  while (place < id.size()) {
    const std::size_t next = std::min(id.find('-', place + 1), id.size());
    if (next == place + 2) {
      return place;
    }
    place = next;
  }
  return std::string_view::npos;
}

// The regions that read traditional characters.
bool IsTraditionalChinese(std::string_view normal) noexcept {
  return normal == "zh-tw" || normal == "zh-hk" || normal == "zh-mo";
}

}  // namespace

std::optional<std::size_t> MatchLanguage(const TextCollection& texts, std::string_view wanted,
                                         std::size_t rank) {
  std::string id = Normalized(wanted);
  std::size_t extension = ExtensionAt(id);
  for (;;) {
    const auto found =
        std::find_if(texts.languages.begin(), texts.languages.end(), [&id](const auto& language) {
          // An id may be very long: most are told apart by their size.
          return language->Id().size() == id.size() && Normalized(language->Id()) == id;
        });
    if (found != texts.languages.end() && rank-- == 0) {
      return static_cast<std::size_t>(found - texts.languages.begin());
    }
    if (extension != std::string_view::npos) {
      id.resize(extension);
      extension = std::string_view::npos;
      continue;
    }
    const std::string_view rest = id;
    const std::size_t last = rest.rfind('-');
    if (last == std::string_view::npos || IsScript(rest.substr(last + 1))) {
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
