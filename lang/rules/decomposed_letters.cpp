// Rule decomposed-letter: a letter and its accent as two characters, in a file that else has letters
// with accents. Keys: similar_keys.cpp. Tests: decomposed_letters_test.cpp.
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lang/rules/check.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/look_alikes.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::string_view kLeadOfMarks = "\xCC";  // of all marks that accents are
// The parts of Korean syllables, and the voice marks of kana.
constexpr std::string_view kLeadOfJamo = "\xE1\x84";
constexpr std::string_view kVoicedMark = u8"\u3099";
constexpr std::string_view kHalfVoicedMark = u8"\u309A";

bool Has(std::string_view text, std::string_view part) noexcept {
  return text.find(part) != std::string_view::npos;
}

bool MayHaveDecomposed(std::string_view text, const std::string& language) noexcept {
  return Has(text, kLeadOfMarks) || (language == "ko" && Has(text, kLeadOfJamo)) ||
         (language == "ja" && (Has(text, kVoicedMark) || Has(text, kHalfVoicedMark)));
}

bool IsComposedSyllable(char32_t first, char32_t second) noexcept {
  return first >= 0x1100 && first <= 0x1112 && second >= 0x1161 && second <= 0x1175;
}

// Kana from ka to ho, which most marks stand on.
bool IsComposedKana(char32_t kana, char32_t mark) noexcept {
  constexpr char32_t kFromHiraganaToKatakana = 0x60;
  const char32_t hiragana = kana >= 0x30A1 ? kana - kFromHiraganaToKatakana : kana;
  return (mark == 0x3099 || mark == 0x309A) && hiragana >= 0x304B && hiragana <= 0x307B;
}

// The first letter and its mark that one character stands for; empty if there is none.
std::string_view FindDecomposed(std::string_view text) {
  char32_t last = 0;
  std::string_view lastPart;
  std::string_view found;
  VisitCodePoints(text, [&](char32_t character, std::string_view part) {
    if (IsComposedSyllable(last, character) || IsComposedKana(last, character) ||
        (character >= 0x300 && character < 0x340 && HasComposedForm(last, character))) {
      found = {lastPart.data(), lastPart.size() + part.size()};
    }
    last = character;
    lastPart = part;
    return found.empty();
  });
  return found;
}

// Whether the text has a letter that is composed. Nearly all Japanese and Korean texts have one.
bool HasComposed(std::string_view text, const std::string& language) {
  return language == "ja" || language == "ko" || Decompose(text) != text;
}

}  // namespace

void CheckDecomposedLetters(FileCheck& check) {
  const std::string& language = check.FileLanguage().primary;
  if (check.Source().EncodedAsUtf16() != Utf16::kNo ||
      !MayHaveDecomposed(check.Source().Bytes(), language)) {
    return;
  }
  std::vector<std::pair<const Entry*, std::string_view>> found;
  std::size_t composed = 0;
  for (const Entry& entry : check.File().Entries()) {
    const std::string_view letter =
        MayHaveDecomposed(entry.text, language) ? FindDecomposed(entry.text) : std::string_view();
    if (letter.empty()) {
      composed += HasComposed(entry.text, language) ? 1 : 0;
    } else if (!check.IsExplained(entry)) {
      found.emplace_back(&entry, letter);
    }
  }
  if (found.size() > composed) {
    return;  // so the whole file is written
  }
  for (const auto& [entry, letter] : found) {
    const FoundEntry base = check.FindInBase(entry->key);
    if (!base || !Has(base.entry->text, letter)) {
      check
          .Add(RuleId::kDecomposedLetter, Severity::kWarning, letter, entry->key,
               {"decomposed-letter.message", {std::string(letter)}})
          .mend = {"decomposed-letter.mend", {}};
    }
  }
}

}  // namespace KelmoLibs::Lang
