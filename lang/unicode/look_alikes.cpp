// Tested by look_alikes_test.cpp.
#include "lang/unicode/look_alikes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "lang/unicode/blanks.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/decompositions.h"
#include "text/utf8.h"

namespace KelmoLibs::Lang {
namespace {

constexpr char32_t kFirstFullWidth = 0xFF01;
constexpr char32_t kLastFullWidth = 0xFF5E;
constexpr char32_t kLastCodePoint = 0x10FFFF;
constexpr char32_t kSoftHyphen = 0x00AD;
constexpr char32_t kByteOrderMark = 0xFEFF;

// The character at a position of `characters` looks like that of `ascii`. Sorted by code point.
constexpr std::u32string_view kLookAlikes =
    U"\u0131\u0251\u0261"                          // Latin dotless i, alpha, script g
    U"\u0391\u0392\u0395\u0396\u0397\u0399\u039A"  // Greek capitals: Alpha to Kappa
    U"\u039C\u039D\u039F\u03A1\u03A4\u03A5\u03A7"  // Mu to Chi
    U"\u03B1\u03B9\u03BA\u03BD\u03BF\u03C1\u03C5"  // Greek alpha, iota, kappa, nu, omicron, rho, ...
    U"\u03F2\u03F3"                                // lunate sigma, yot
    U"\u0405\u0406\u0408"                          // Cyrillic capitals: Dze, I, Je
    U"\u0410\u0412\u0415\u041A\u041C\u041D\u041E"        // A to O
    U"\u0420\u0421\u0422\u0423\u0425"                    // Er to Ha
    U"\u0430\u0435\u043A\u043E\u0440\u0441\u0443\u0445"  // Cyrillic a to ha
    U"\u0455\u0456\u0458\u04AE\u04BB\u04C0\u04CF"        // dze, i, je, Ue, shha, palochka
    U"\u0501\u051B\u051D"                                // Komi de, qa, we
    U"\u2010\u2011\u2012\u2013\u2024\u2212";             // hyphens, dashes, dot, minus
constexpr std::string_view kAscii =
    "iag"
    "ABEZHIK"
    "MNOPTYX"
    "aiKvopu"
    "cj"
    "SIJ"
    "ABEKMHO"
    "PCTYX"
    "aeKopcyx"
    "sijYhll"
    "dqw"
    "----.-";
static_assert(kLookAlikes.size() == kAscii.size());

constexpr bool AreSorted() {
  for (std::size_t i = 1; i < kLookAlikes.size(); ++i) {
    if (kLookAlikes[i - 1] >= kLookAlikes[i]) {
      return false;
    }
  }
  return true;
}
static_assert(AreSorted());

struct Decomposition {
  char32_t composed;
  char32_t letter;
  char32_t mark;
};

std::vector<Decomposition> SortedDecompositions() {
  std::vector<Decomposition> sorted;
  for (const Decompositions& row : kDecompositions) {
    for (std::size_t i = 0; i < row.composed.size(); ++i) {
      sorted.push_back({row.composed[i], row.letters[i], row.mark});
    }
  }
  std::sort(sorted.begin(), sorted.end(),
            [](const Decomposition& a, const Decomposition& b) { return a.composed < b.composed; });
  return sorted;
}

const Decomposition* FindDecomposition(char32_t character) {
  static const std::vector<Decomposition> sorted = SortedDecompositions();
  const auto found =
      std::lower_bound(sorted.begin(), sorted.end(), character,
                       [](const Decomposition& a, char32_t b) { return a.composed < b; });
  return found != sorted.end() && found->composed == character ? &*found : nullptr;
}

// Calls `append` with the letter and the marks of `character`.
template <class Append>
void AppendDecomposed(char32_t character, Append append) {
  constexpr std::size_t kMostMarks = 4;
  std::array<char32_t, kMostMarks> marks{};
  std::size_t count = 0;
  const Decomposition* found = FindDecomposition(character);
  while (found != nullptr && count < kMostMarks) {
    character = found->letter;
    marks[count++] = found->mark;
    found = FindDecomposition(character);
  }
  append(character);
  while (count > 0) {
    append(marks[--count]);
  }
}

// Whether the character takes no room in a key.
bool HasNoWidth(char32_t character) noexcept {
  const Blank blank = BlankOf(character);
  return blank == Blank::kInvisible || blank == Blank::kJoiner || character == kSoftHyphen ||
         character == kByteOrderMark;
}

void AppendLookAlike(char32_t character, std::string& form) {
  if (HasNoWidth(character)) {
    return;
  }
  const char32_t like = AsciiLookAlike(character);
  const bool isCapital = like >= 'A' && like <= 'Z';
  Localize::AppendUtf8(isCapital ? like + ('a' - 'A') : like, form);
}

template <class Append>
std::string Transform(std::string_view key, Append append) {
  std::string form;
  VisitCodePoints(key, [&form, append](char32_t character, std::string_view part) {
    if (character > kLastCodePoint) {  // or kNotUtf8
      form += part;
    } else {
      AppendDecomposed(character, [&form, append](char32_t one) { append(one, form); });
    }
    return true;
  });
  return form;
}

}  // namespace

std::string Decompose(std::string_view key) { return Transform(key, Localize::AppendUtf8); }

bool HasComposedForm(char32_t letter, char32_t mark) noexcept {
  return std::any_of(kDecompositions.begin(), kDecompositions.end(), [=](const auto& row) {
    return row.mark == mark && row.letters.find(letter) != std::u32string_view::npos;
  });
}

std::string LookAlikeForm(std::string_view key) { return Transform(key, AppendLookAlike); }

char32_t AsciiLookAlike(char32_t character) noexcept {
  if (character >= kFirstFullWidth && character <= kLastFullWidth) {
    return character - kFirstFullWidth + '!';
  }
  const auto found = static_cast<std::size_t>(
      std::lower_bound(kLookAlikes.begin(), kLookAlikes.end(), character) - kLookAlikes.begin());
  return found < kLookAlikes.size() && kLookAlikes[found] == character
             ? static_cast<char32_t>(kAscii[found])
             : character;
}

}  // namespace KelmoLibs::Lang
