// Tested by keys_test.cpp.
#include "lang/reading/name_language.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "lang/reading/language.h"
#include "lang/unicode/ascii.h"

namespace KelmoLibs::Lang {
namespace {

// The codes of two letters of ISO 639-1, and old ones.
constexpr std::string_view kCodes =
    " aa ab ae af ak am an ar as av ay az ba be bg bi bm bn bo br bs ca ce ch co cr cs cu cv cy da "
    "de dv dz ee el en eo es et eu fa ff fi fj fo fr fy ga gd gl gn gu gv ha he hi ho hr ht hu hy "
    "hz ia id ie ig ii ik io is it iu iw ja jv ka kg ki kj kk kl km kn ko kr ks ku kv kw ky la lb "
    "lg li ln lo lt lu lv mg mh mi mk ml mn mr ms mt my na nb nd ne ng nl nn no nr nv ny oc oj om "
    "or os pa pi pl ps pt qu rm rn ro ru rw sa sc sd se sg si sk sl sm sn so sq sr ss st su sv sw "
    "ta te tg th ti tk tl tn to tr ts tt tw ty ug uk ur uz ve vi vo wa wo xh yi yo za zh zu ";

// Codes that are also words or abbreviations in names such as "sign-in.txt".
constexpr std::string_view kWords =
    " am an as be co he hi id ie ii in io is it la li lo mr ms mt my no or os pa pi pl ps sc se so "
    "st to ts tw ve ";

constexpr std::size_t kCodeLength = 2;
constexpr std::size_t kScriptLength = 4;

bool IsAmong(std::string_view words, const std::string& word) {
  return word.find(' ') == std::string::npos &&
         words.find(" " + word + " ") != std::string_view::npos;
}

std::vector<std::string_view> Parts(std::string_view name) {
  std::vector<std::string_view> parts;
  while (!name.empty()) {
    const std::size_t length = std::min(name.find_first_of("-_. ()"), name.size());
    if (length > 0) {
      parts.push_back(name.substr(0, length));
    }
    name.remove_prefix(std::min(length + 1, name.size()));
  }
  return parts;
}

std::string_view Stem(std::string_view path) {
  const std::size_t slash = path.find_last_of("/\\");
  const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
  return name.substr(0, name.rfind('.'));
}

// Whether the parts of `id` stand one after the other among `parts`.
bool Contains(const std::vector<std::string_view>& parts, std::string_view id) {
  constexpr std::size_t kLongestId = 256;  // of a name of a file, in bytes
  if (id.size() > kLongestId) {
    return false;
  }
  const std::vector<std::string_view> idParts = Parts(id);
  return std::search(parts.begin(), parts.end(), idParts.begin(), idParts.end(),
                     AreEqualButForCase) != parts.end();
}

bool AreEqualIfGiven(const std::string& a, const std::string& b) {
  return a.empty() || b.empty() || AreEqualButForCase(a, b);
}

// Codes that stand for the same language in practice.
std::string Primary(const Language& language) {
  if (language.primary == "nb" || language.primary == "nn") {
    return "no";
  }
  return language.primary == "iw" ? "he" : language.primary;
}

bool IsUpperCase(std::string_view part) {
  return std::all_of(part.begin(), part.end(), IsAsciiUpper);
}

}  // namespace

NameLanguage CompareWithName(std::string_view id, std::string_view path) {
  const std::vector<std::string_view> parts = Parts(Stem(path));
  if (Contains(parts, id)) {
    return {};
  }
  NameLanguage found;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::string code = AsciiLowerCase(parts[i]);
    const bool isRegion = i > 0 && !found.language.empty();
    if (code.size() != kCodeLength || isRegion || !IsAmong(kCodes, code) ||
        (parts.size() > 1 && i > 0 && IsAmong(kWords, code))) {
      continue;
    }
    found.language = parts[i];
    if (i + 1 < parts.size()) {
      const std::string_view next = parts[i + 1];
      const bool isNextRegion = next.size() == kCodeLength && IsUpperCase(next);
      if (isNextRegion || (next.size() == kScriptLength && IsUpperCase(next.substr(0, 1)))) {
        found.language += '-';
        found.language += next;
      }
    }
  }
  if (!found.language.empty()) {
    const Language fromName = LanguageOf(found.language);
    const Language fromId = LanguageOf(id);
    found.fits = Primary(fromName) == Primary(fromId) &&
                 AreEqualIfGiven(fromName.region, fromId.region) &&
                 AreEqualIfGiven(fromName.script, fromId.script);
  }
  return found;
}

}  // namespace KelmoLibs::Lang
