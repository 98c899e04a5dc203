// Rule mixed-script: a word with a letter of another script that looks like one of its own script.
// Words such as "USB-port" in Cyrillic letters or Latin abbreviations with Cyrillic endings are
// right. Tested by mixed_scripts_test.cpp.
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "lang/rules/check.h"
#include "lang/rules/word_reader.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/scripts.h"

namespace KelmoLibs::Lang {
namespace {

struct ScriptName {
  Script script;
  std::string_view name;  // in keys of texts
};
constexpr std::array<ScriptName, 3> kScripts = {
    {{Script::kLatin, "latin"}, {Script::kGreek, "greek"}, {Script::kCyrillic, "cyrillic"}}};

// What a word has of one script.
struct Letters {
  std::size_t count = 0;
  std::size_t runs = 0;  // groups of neighbouring letters
  std::string_view first;
  bool isAtBegin = false;
  bool isAtEnd = false;
  bool areUpperCase = true;
  std::array<bool, kScripts.size()> lookLike = {true, true, true};  // all letters, by script
};
using LettersByScript = std::array<Letters, kScripts.size()>;

bool IsUpperCase(char32_t letter) noexcept {
  return (letter >= 'A' && letter <= 'Z') || (letter >= 0x0386 && letter <= 0x03AB) ||
         (letter >= 0x0400 && letter <= 0x042F);
}

LettersByScript LettersOf(std::string_view word) {
  LettersByScript found;
  std::size_t last = kScripts.size();
  bool isFirst = true;
  VisitCodePoints(word, [&](char32_t character, std::string_view part) {
    const Script script = ScriptOf(character);
    for (std::size_t i = 0; i < kScripts.size(); ++i) {
      if (kScripts[i].script != script) {
        continue;
      }
      Letters& letters = found[i];
      if (letters.count++ == 0) {
        letters.first = part;
      }
      letters.runs += last != i ? 1 : 0;
      letters.isAtBegin = letters.isAtBegin || isFirst;
      letters.areUpperCase = letters.areUpperCase && IsUpperCase(character);
      for (std::size_t other = 0; other < kScripts.size(); ++other) {
        letters.lookLike[other] =
            letters.lookLike[other] && LooksLikeLetterOf(kScripts[other].script, character);
      }
      last = i;
    }
    isFirst = false;
    return true;
  });
  if (last < kScripts.size()) {
    found[last].isAtEnd = true;
  }
  return found;
}

// -oFILE, /CFILE and the like: the Latin letters are the name of an option.
bool IsBehindOption(std::string_view before, bool isAtBegin) noexcept {
  constexpr std::string_view kSigns = "-/=@_:#.+";
  if (before.empty() || kSigns.find(before.back()) == std::string_view::npos) {
    return false;
  }
  return before.back() != '-' || before.size() > 1 || isAtBegin;  // no hyphen between two words
}

// Whether the letters `own` are a mistake within a word whose other letters are `home`.
bool AreIntruders(const Letters& own, const Letters& home, Script homeScript, Script ownScript,
                  bool isCyrillicText) noexcept {
  constexpr std::size_t kShortest = 3;
  if (ownScript == Script::kGreek || homeScript == Script::kGreek) {
    return home.count >= kShortest;  // units and formulas have fewer letters
  }
  const bool areTwoParts = own.runs == 1 && home.runs == 1;
  if (ownScript == Script::kLatin && areTwoParts && own.areUpperCase &&
      (own.isAtBegin || own.count > 1)) {
    // A Latin abbreviation with an ending, or behind a word.
    return own.count == 1 && home.count >= kShortest;
  }
  return !(ownScript == Script::kCyrillic && areTwoParts && own.isAtEnd && isCyrillicText &&
           home.count > 1);
}

// By its first byte the script of a letter, as far as that tells: Greek ones begin with CD to CF,
// Cyrillic ones with D0 to D4. Bytes within a character are kMark. A table, because all bytes of all texts are looked up.
constexpr std::array<Script, 256> MakeScriptsOfLeads() {
  std::array<Script, 256> scripts = {};
  const auto set = [&scripts](unsigned first, unsigned last, Script script) {
    for (unsigned byte = first; byte <= last; ++byte) {
      scripts[byte] = script;
    }
  };
  set('A', 'Z', Script::kLatin);
  set('a', 'z', Script::kLatin);
  set(0x80, 0xBF, Script::kMark);
  set(0xC0, 0xC9, Script::kLatin);
  set(0xCD, 0xCF, Script::kGreek);
  set(0xD0, 0xD4, Script::kCyrillic);
  return scripts;
}
constexpr std::array<Script, 256> kScriptsOfLeads = MakeScriptsOfLeads();

// Whether letters of two scripts may stand side by side.
bool MayBeMixed(std::string_view text) noexcept {
  Script last = Script::kNone;
  for (const char c : text) {
    const Script script = kScriptsOfLeads[static_cast<unsigned char>(c)];
    if (script == Script::kMark) {
      continue;
    }
    if (script != last && script != Script::kNone && last != Script::kNone) {
      return true;
    }
    last = script;
  }
  return false;
}

bool IsCyrillicLanguage(std::string_view language) {
  return IsOneOfLanguages(language, " be bg ce cv kk ky mk mn ru sr tg tt uk uz ");
}

// &X: some translators make a Latin letter the accelerator, so that every keyboard has it.
bool IsAccelerator(const Letters& own, std::string_view before) noexcept {
  return own.isAtBegin && own.count == 1 && !before.empty() && before.back() == '&';
}

// Whether the base has the letters as a word: "Yy" in front of the letters that the language has for
// them is an example. A single letter may be a mistake.
bool AreWordOfBase(const Letters& own, std::string_view text, std::string_view base) noexcept {
  if (own.runs != 1 || own.count < 2) {
    return false;
  }
  const auto begin = static_cast<std::size_t>(own.first.data() - text.data());
  const std::string_view letters = text.substr(begin, own.count);  // of ASCII, as most base words
  WordReader words(base);
  for (Word word; words.Next(word);) {
    if (word.letters == letters) {
      return true;
    }
  }
  return false;
}

bool CheckWord(const TextCheck& check, const Word& word) {
  const LettersByScript letters = LettersOf(word.letters);
  std::size_t left = kScripts.size();
  std::size_t right = kScripts.size();
  for (std::size_t i = 0; i < kScripts.size(); ++i) {
    if (letters[i].count > 0) {
      if (right < kScripts.size()) {
        return false;  // of three scripts: a formula
      }
      (left == kScripts.size() ? left : right) = i;
    }
  }
  if (right == kScripts.size()) {
    return false;
  }
  const bool isLeft = letters[left].lookLike[right];
  const bool isRight = letters[right].lookLike[left];
  if (!isLeft && !isRight) {
    return false;
  }
  const bool isLeftOwn = isLeft && (!isRight || letters[left].count < letters[right].count);
  const std::size_t own = isLeftOwn ? left : right;
  const std::size_t home = isLeftOwn ? right : left;
  if ((IsBehindOption(word.before, word.before.data() == check.Text().data()) &&
       letters[left].isAtBegin) ||
      IsAccelerator(letters[own], word.before) ||
      AreWordOfBase(letters[own], check.Text(), check.BaseText()) ||
      !AreIntruders(letters[own], letters[home], kScripts[home].script, kScripts[own].script,
                    IsCyrillicLanguage(check.file.FileLanguage().primary))) {
    return false;
  }
  std::string key = "mixed-script.";
  key.append(kScripts[own].name).append("-in-").append(kScripts[home].name);
  check.Add(RuleId::kMixedScript, Severity::kWarning, letters[own].first,
            {std::move(key), {std::string(letters[own].first), std::string(word.letters)}});
  return true;
}

}  // namespace

void CheckMixedScripts(const TextCheck& check) {
  if (!MayBeMixed(check.Text())) {
    return;
  }
  WordReader words(check.Text());
  Word word;
  while (words.Next(word)) {
    if (MayBeMixed(word.letters) && CheckWord(check, word)) {
      return;
    }
  }
}

}  // namespace KelmoLibs::Lang
