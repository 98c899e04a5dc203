#include "lang/unicode/code_page_guess.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "lang/unicode/code_points.h"
#include "text/utf8.h"

namespace KelmoLibs::Lang {
namespace {

// The statistic: each byte beyond ASCII has a weight, about its share in a thousand such bytes of
// usual texts, times factors for its neighbours. The sum of the logarithms is the score of a code
// page. code_page_guess_test.cpp states how often the guess is right.

constexpr double kUndefined = 0.0001;
constexpr double kUnusual = 0.02;
constexpr double kUpperCaseShare = 0.15;
constexpr double kUpperAfterLower = 0.02;  // in a word
constexpr double kUpperAfterUpper = 6;     // in a word: less unlikely than at its start
constexpr double kOtherScript = 0.03;      // Cyrillic beside Latin
constexpr double kFrequentPair = 3;
constexpr double kAccentsInARow = 0.2;
constexpr double kLoneAccent = 0.3;   // a word of one letter
constexpr double kSignInWord = 0.05;  // a sign between two letters
constexpr double kClose = 2.5;        // closer scores are doubt
constexpr double kLowestMean = 0.5;   // lower: no words

// The letters beyond ASCII that a code page is for.
enum class Letters : std::uint8_t { kCyrillic, kWestern, kCentral };

constexpr Letters LettersOf(CodePage page) noexcept {
  return page == CodePage::kWindows1250   ? Letters::kCentral
         : page == CodePage::kWindows1252 ? Letters::kWestern
                                          : Letters::kCyrillic;
}

struct Weight {
  char32_t character;
  double weight;
};

// U+0430 to U+044F, from Cyrillic a to ya.
constexpr std::array<double, 32> kCyrillic = {80, 16, 45, 17,  30, 80, 9,  17, 72, 12, 35,
                                              43, 32, 66, 105, 28, 47, 54, 63, 27, 3,  10,
                                              5,  14, 7,  4,   5,  14, 16, 3,  6,  19};
// U+0450 to U+045F: io, Ukrainian ie, i and yi, Serbian je and others, short u.
constexpr std::array<double, 16> kFurtherCyrillic = {0.02, 3, 1, 1, 4, 0.02, 25, 5,
                                                     10,   2, 2, 2, 1, 0.1,  4,  1};
// Frequent pairs of letters, one after the other. Without them, words in capitals of windows-1251
// can look like words of KOI8-R.
constexpr std::u32string_view kCyrillicPairs =
    U"стнотонаеновниравоконетьанрорепопрлилака"
    U"тиерортаелетолитосомодазделетрскилемсяие"
    U"ыйойайатриви";

// U+00DF to U+00FF: from sharp s to y with diaeresis.
constexpr std::array<double, 33> kWestern = {30, 45, 60,  20, 45, 90, 40, 15, 45, 45, 180,
                                             35, 8,  8,   50, 10, 5,  3,  35, 12, 70, 15,
                                             15, 80, 0.1, 20, 10, 20, 8,  90, 4,  3,  1};
constexpr std::array<Weight, 38> kCentral = {
    {{U'á', 70}, {U'é', 60}, {U'í', 70}, {U'ó', 60}, {U'ú', 20}, {U'ý', 25}, {U'č', 50}, {U'ď', 3},
     {U'ě', 50}, {U'ň', 5},  {U'ř', 40}, {U'š', 50}, {U'ť', 5},  {U'ů', 20}, {U'ž', 45}, {U'ą', 35},
     {U'ć', 20}, {U'ę', 40}, {U'ł', 60}, {U'ń', 8},  {U'ś', 25}, {U'ź', 3},  {U'ż', 30}, {U'ő', 15},
     {U'ű', 6},  {U'ö', 25}, {U'ü', 15}, {U'ä', 8},  {U'ô', 5},  {U'ľ', 8},  {U'ĺ', 1},  {U'ŕ', 1},
     {U'ă', 30}, {U'ş', 15}, {U'ţ', 20}, {U'î', 25}, {U'â', 10}, {U'đ', 5}}};
// Signs that texts of all languages have.
constexpr std::array<Weight, 30> kSigns = {
    {{0x2018, 5},  {0x2019, 20}, {0x201A, 2},  {0x201C, 12}, {0x201D, 10}, {0x201E, 12},
     {0x2026, 20}, {0x2013, 20}, {0x2014, 10}, {0x2022, 4},  {0x20AC, 4},  {0x2122, 2},
     {0x00A0, 12}, {0x00A1, 4},  {0x00A7, 2},  {0x00A9, 2},  {0x00AA, 2},  {0x00AB, 15},
     {0x00AE, 2},  {0x00B0, 8},  {0x00B1, 3},  {0x00B2, 4},  {0x00B3, 4},  {0x00B5, 4},
     {0x00B7, 2},  {0x00BA, 3},  {0x00BB, 15}, {0x00BD, 1},  {0x00BF, 6},  {0x2116, 5}}};

enum class Shape : std::uint8_t { kNone, kLower, kUpper };

struct Letter {
  Shape shape = Shape::kNone;
  bool isAscii = false;
  char32_t lower = 0;
};

// The lower case of a letter of the code pages; `character` itself if it is no upper case.
char32_t LowerCase(char32_t character) noexcept {
  if ((character >= U'A' && character <= U'Z') ||
      (character >= 0xC0 && character <= 0xDE && character != 0xD7) ||
      (character >= 0x410 && character <= 0x42F)) {
    return character + 0x20;
  }
  if (character >= 0x400 && character <= 0x40F) {
    return character + 0x50;
  }
  const bool isOddUpper = (character >= 0x139 && character <= 0x148) ||
                          (character >= 0x179 && character <= 0x17E);  // others: the even ones
  if ((character >= 0x100 && character <= 0x17E && (character % 2 == 1) == isOddUpper &&
       character != 0x138) ||
      character == 0x490) {
    return character + 1;
  }
  return character == 0x178 ? 0xFF : character;
}

bool IsLetter(char32_t lower) noexcept {
  return (lower >= U'a' && lower <= U'z') || (lower >= 0xDF && lower <= 0xFF && lower != 0xF7) ||
         (lower >= 0x100 && lower <= 0x17F) || (lower >= 0x430 && lower <= 0x45F) || lower == 0x491;
}

template <std::size_t size>
double Find(const std::array<Weight, size>& weights, char32_t character) noexcept {
  const auto found =
      std::find_if(weights.begin(), weights.end(),
                   [character](const Weight& weight) { return weight.character == character; });
  return found != weights.end() ? found->weight : kUnusual;
}

double LetterWeight(Letters letters, char32_t lower) noexcept {
  if (letters == Letters::kCyrillic) {
    if (lower >= 0x430 && lower <= 0x44F) {
      return kCyrillic[lower - 0x430];
    }
    return lower >= 0x450 && lower <= 0x45F ? kFurtherCyrillic[lower - 0x450]
           : lower == 0x491                 ? 1
                                            : kUnusual;
  }
  if (letters == Letters::kWestern) {
    return lower >= 0xDF && lower <= 0xFF ? kWestern[lower - 0xDF] : lower == 0x153 ? 4 : kUnusual;
  }
  return Find(kCentral, lower);
}

bool IsFrequentPair(char32_t first, char32_t second) noexcept {
  for (std::size_t i = 0; i < kCyrillicPairs.size(); i += 2) {
    if (kCyrillicPairs[i] == first && kCyrillicPairs[i + 1] == second) {
      return true;
    }
  }
  return false;
}

// What one byte of a code page is.
struct ByteMeaning {
  Letter letter;
  double weight = kUndefined;  // without neighbours
};

using Meanings = std::array<ByteMeaning, 256>;

Meanings MeaningsOf(CodePage page) noexcept {
  Meanings meanings;
  for (std::size_t byte = 0; byte < meanings.size(); ++byte) {
    const std::optional<char32_t> character = CharacterOf(page, static_cast<char>(byte));
    if (!character) {
      continue;
    }
    ByteMeaning& meaning = meanings[byte];
    const char32_t lower = LowerCase(*character);
    if (IsLetter(lower)) {
      const bool isUpper = lower != *character;
      meaning.letter = {isUpper ? Shape::kUpper : Shape::kLower, byte < 0x80, lower};
      meaning.weight = LetterWeight(LettersOf(page), lower) * (isUpper ? kUpperCaseShare : 1);
    } else {
      meaning.weight = Find(kSigns, *character);
    }
  }
  return meanings;
}

double WeightOf(Letters letters, const ByteMeaning& meaning, const Letter& before,
                const Letter& after) noexcept {
  double weight = meaning.weight;
  const bool isLetterBefore = before.shape != Shape::kNone;
  const bool isLetterAfter = after.shape != Shape::kNone;
  if (meaning.letter.shape == Shape::kNone) {
    return isLetterBefore && isLetterAfter && weight < 20 ? weight * kSignInWord : weight;
  }
  if (meaning.letter.shape == Shape::kUpper && before.shape == Shape::kLower) {
    weight *= kUpperAfterLower;
  } else if (meaning.letter.shape == Shape::kUpper && before.shape == Shape::kUpper) {
    weight *= kUpperAfterUpper;
  }
  const auto unlikely = [letters](const Letter& neighbour) {
    return neighbour.shape != Shape::kNone && neighbour.isAscii == (letters == Letters::kCyrillic);
  };
  if (IsFrequentPair(before.lower, meaning.letter.lower)) {
    weight *= kFrequentPair;
  }
  const double factor = letters == Letters::kCyrillic ? kOtherScript : kAccentsInARow;
  weight *= (unlikely(before) ? factor : 1) * (unlikely(after) ? factor : 1);
  if (letters != Letters::kCyrillic && !isLetterBefore && !isLetterAfter) {
    weight *= kLoneAccent;
  }
  return weight;
}

struct Score {
  double sum = 0;
  std::size_t count = 0;

  double Mean() const noexcept { return sum / static_cast<double>(count); }
};

// Of all code pages, made when the first one is needed.
const Meanings& KnownMeaningsOf(CodePage page) {
  static const std::array<Meanings, kAllCodePages.size()> meanings = [] {
    std::array<Meanings, kAllCodePages.size()> made;
    std::transform(kAllCodePages.begin(), kAllCodePages.end(), made.begin(), MeaningsOf);
    return made;
  }();
  return meanings[static_cast<std::size_t>(page)];
}

Score ScoreOf(CodePage page, const std::vector<std::string_view>& lines) {
  const Meanings& meanings = KnownMeaningsOf(page);
  const Letters letters = LettersOf(page);
  const auto meaning = [&meanings](char byte) -> const ByteMeaning& {
    return meanings[static_cast<unsigned char>(byte)];
  };
  Score score;
  for (const std::string_view line : lines) {
    for (std::size_t i = 0; i < line.size(); ++i) {
      if (static_cast<unsigned char>(line[i]) < 0x80) {
        continue;
      }
      const Letter before = i > 0 ? meaning(line[i - 1]).letter : Letter();
      const Letter after = i + 1 < line.size() ? meaning(line[i + 1]).letter : Letter();
      score.sum += std::log(WeightOf(letters, meaning(line[i]), before, after));
      ++score.count;
    }
  }
  return score;
}

bool IsOneOf(std::string_view languages, std::string_view language) noexcept {
  return language.size() == 2 && languages.find(language) != std::string_view::npos;
}

// How much less likely the code page is in that language. Nothing: the language has no code page
// here.
std::optional<double> Unlikelihood(CodePage page, std::string_view language) noexcept {
  constexpr double kNever = 6;
  constexpr double kRare = 2;
  const Letters letters = LettersOf(page);
  if (IsOneOf("ar,az,el,et,fa,he,hi,hy,ja,ka,ko,lt,lv,th,tr,ur,uz,vi,zh", language)) {
    return std::nullopt;
  }
  if (IsOneOf("be,bg,kk,ky,mk,mn,ru,tg,tt,uk", language)) {
    return letters == Letters::kCyrillic ? 0 : kNever;
  }
  if (IsOneOf("bs,cs,hr,hu,pl,ro,sk,sl,sq", language)) {
    return letters == Letters::kCentral ? 0 : kNever;
  }
  if (IsOneOf("af,ca,da,de,en,es,eu,fi,fr,ga,gl,id,is,it,ms,nb,nl,nn,no,pt,sv", language)) {
    return letters == Letters::kWestern ? 0 : kNever;
  }
  return letters == Letters::kCentral ? kRare : 0;
}

// Whether the bytes of `line` are usual letters in a code page. UTF-8 read as a code page is not.
bool AreWords(std::string_view line) {
  constexpr double kUsualMean = 2;
  return std::any_of(kAllCodePages.begin(), kAllCodePages.end(),
                     [line](CodePage page) { return ScoreOf(page, {line}).Mean() > kUsualMean; });
}

bool AreSameLetters(CodePage left, CodePage right, const std::vector<std::string_view>& lines) {
  return std::all_of(lines.begin(), lines.end(), [=](std::string_view line) {
    return std::all_of(line.begin(), line.end(), [=](char byte) {
      return CharacterOf(left, byte) == CharacterOf(right, byte);
    });
  });
}

}  // namespace

std::optional<CodePageGuess> GuessCodePage(const std::vector<std::string_view>& lines,
                                           std::string_view language) {
  struct Candidate {
    CodePage page;
    double likelihood;
    double mean;
  };
  std::vector<Candidate> candidates;
  for (const CodePage page : kAllCodePages) {
    const std::optional<double> unlikelihood = Unlikelihood(page, language);
    const Score score = ScoreOf(page, lines);
    if (!unlikelihood || score.count == 0) {
      return std::nullopt;
    }
    candidates.push_back({page, score.sum - *unlikelihood, score.Mean()});
  }
  std::sort(candidates.begin(), candidates.end(),
            [](const Candidate& left, const Candidate& right) {
              return left.likelihood > right.likelihood;
            });
  const Candidate& best = candidates[0];
  const Candidate& second = candidates[1];
  if (best.mean < kLowestMean) {
    return std::nullopt;
  }
  const bool isClear =
      best.likelihood - second.likelihood > kClose || AreSameLetters(best.page, second.page, lines);
  return CodePageGuess{best.page, isClear ? std::nullopt : std::optional(second.page)};
}

bool IsDamagedUtf8(std::string_view line) {
  std::size_t whole = 0;
  std::size_t damaged = 0;
  for (std::string_view rest = line; !rest.empty();) {
    const std::size_t wellFormed = Localize::WellFormedUtf8Length(rest);
    VisitCodePoints(rest.substr(0, wellFormed), [&whole](char32_t, std::string_view bytes) {
      whole += bytes.size() > 1 ? 1U : 0U;
      return true;
    });
    rest.remove_prefix(wellFormed);
    if (!rest.empty()) {
      ++damaged;
      rest.remove_prefix(1);
    }
  }
  return whole > 0 && whole >= damaged && !AreWords(line);
}

}  // namespace KelmoLibs::Lang
