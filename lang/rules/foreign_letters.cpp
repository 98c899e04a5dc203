// Rule foreign-letter: letters of another language or script, and texts that lack the letters of their
// own. A single word is not judged: it may be a name, or that of a language in its own letters.
// Tests: foreign_letters_test.cpp.
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

#include "lang/rules/check.h"
#include "lang/rules/word_reader.h"
#include "lang/unicode/ascii.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/scripts.h"
#include "text/utf8.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::size_t kShortestWord = 3;  // letters; units and formulas have fewer

bool IsCyrillic(const TextCheck& check) noexcept {
  return check.file.FileAlphabet().KindOfLetters() == Alphabet::Kind::kCyrillic;
}

void Add(const TextCheck& check, std::string_view where, Sentence message) {
  check.Add(RuleId::kForeignLetter, Severity::kWarning, where, std::move(message));
}

// Whether the base has a sentence, and not a name: a list of languages may have their own names.
bool IsBaseSentence(const TextCheck& check) noexcept {
  constexpr std::ptrdiff_t kFewestBlanks = 3;
  const std::string_view base = check.BaseText();
  return std::count(base.begin(), base.end(), ' ') >= kFewestBlanks;
}

// Whether a Latin letter is a small one. In doubt it is not.
bool IsSmallLatin(char32_t c) noexcept {
  const bool isOdd = c % 2 != 0;
  return (c >= 'a' && c <= 'z') || (c >= 0xDF && c <= 0xFF) ||
         (c >= 0x100 && c <= 0x137 && isOdd) || (c >= 0x139 && c <= 0x148 && !isOdd) ||
         (c >= 0x14A && c <= 0x177 && isOdd) || (c >= 0x17A && c <= 0x17E && !isOdd) ||
         (c >= 0x1E00 && c <= 0x1EFF && isOdd);
}

// The first letter of `word` of another language; empty if there is none, or if the base has it too.
std::string_view ForeignLetter(std::string_view word, const TextCheck& check) {
  const Alphabet& alphabet = check.file.FileAlphabet();
  const Script script = IsCyrillic(check) ? Script::kCyrillic : Script::kLatin;
  std::string_view found;
  VisitCodePoints(word, [&](char32_t letter, std::string_view part) {
    if (alphabet.IsForeign(letter) && ScriptOf(letter) == script &&
        check.BaseText().find(part) == kNone) {
      found = part;
    }
    return found.empty();
  });
  return found;
}

// Names in Latin letters keep their letters in all languages, so that only small words count.
void CheckLetters(const TextCheck& check) {
  const bool isCyrillic = IsCyrillic(check);
  const std::size_t fewestWords = isCyrillic ? 2 : 3;
  constexpr std::size_t kMostWords = 100;
  std::size_t count = 0;
  std::size_t foreignWords = 0;
  std::string_view letter;
  std::string_view where;
  WordReader words(check.Text());
  for (Word word; count < kMostWords && words.Next(word);) {
    ++count;
    const bool isWord = Localize::CountCharacters(word.letters) >= kShortestWord &&
                        (isCyrillic || IsSmallLatin(FirstCodePoint(word.letters).value));
    const std::string_view found = isWord ? ForeignLetter(word.letters, check) : std::string_view();
    if (!found.empty() && foreignWords++ == 0) {
      letter = found;
      where = word.letters;
    }
  }
  if (count < fewestWords || foreignWords == 0) {
    return;
  }
  if (foreignWords == 1) {
    Add(check, letter, {"foreign-letter.letter", {std::string(letter), std::string(where)}});
  } else {
    Add(check, check.Text(),
        {"foreign-letter.letters",
         {std::to_string(foreignWords), std::string(letter), std::string(where)}});
  }
}

bool HasScript(std::string_view text, Script script) {
  bool found = false;
  VisitCodePoints(text, [&](char32_t character, std::string_view) {
    found = ScriptOf(character) == script;
    return !found;
  });
  return found;
}

// A word of a script that is neither that of the language nor Latin or Greek, as names and formulas
// are.
void CheckScripts(const TextCheck& check) {
  if (!IsBaseSentence(check)) {
    return;
  }
  const bool isCyrillic = IsCyrillic(check);
  WordReader words(check.Text());
  for (Word word; words.Next(word);) {
    const Script script = ScriptOf(FirstCodePoint(word.letters).value);
    const bool isForeign = script == Script::kOther || (script == Script::kCyrillic && !isCyrillic);
    if (isForeign && Localize::CountCharacters(word.letters) >= kShortestWord) {
      if (!HasScript(check.BaseText(), script)) {
        Add(check, word.letters, {"foreign-letter.script", {std::string(word.letters)}});
      }
      return;
    }
  }
}

// A Japanese sentence has kana.
void CheckKana(const TextCheck& check) {
  constexpr std::size_t kFewestIdeographs = 8;
  constexpr std::string_view kMarks[] = {u8"\u3002", u8"\uFF0C",
                                         u8"\uFF1F"};  // full stop, comma, ?
  const std::string_view text = check.Text();
  std::size_t ideographs = 0;
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const auto second = static_cast<unsigned char>(text[i + 1]);
    if (byte == 0xE3U && second >= 0x81U && second <= 0x83U) {
      return;  // kana
    }
    ideographs += byte >= 0xE4U && byte <= 0xE9U ? 1 : 0;
  }
  const bool isSentence =
      std::any_of(std::begin(kMarks), std::end(kMarks),
                  [text](std::string_view mark) { return text.find(mark) != kNone; });
  if (ideographs >= kFewestIdeographs && isSentence) {
    Add(check, text, {"foreign-letter.no_kana", {}});
  }
}

// Two kana or more in a Chinese text. A single one stands in brand names.
void CheckChinese(const TextCheck& check) {
  std::string_view first;
  std::size_t count = 0;
  VisitCodePoints(check.Text(), [&](char32_t letter, std::string_view part) {
    if (letter >= 0x3041 && letter <= 0x30FA) {
      first = count++ == 0 ? part : first;
    }
    return true;
  });
  if (count > 1 && check.BaseText().find(first) == kNone) {
    const auto at = static_cast<std::size_t>(first.data() - check.Text().data());
    Add(check, check.Text().substr(at), {"foreign-letter.kana", {}});
  }
}

// Whether a letter may be of a script other than Latin. Punctuation begins with E2 or EF.
bool MayBeOfOtherScript(char c) noexcept {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 0xCDU && byte <= 0xEDU && byte != 0xE2U;
}

bool HasWord(std::string_view text, std::string_view word) noexcept {
  return std::search(text.begin(), text.end(), word.begin(), word.end(), [](char a, char b) {
           return AsciiLowerCase(a) == AsciiLowerCase(b);
         }) != text.end();
}

// Nothing but Latin words in a whole sentence, most of which the base has not.
bool IsInOtherLanguage(const TextCheck& check) noexcept {
  constexpr std::size_t kFewestWords = 4;
  constexpr std::size_t kMostWords = 32;
  constexpr std::size_t kFewestNew = 3;
  constexpr std::size_t kLongestBase = 1000;  // bytes
  if (!IsBaseSentence(check) || check.BaseText().size() > kLongestBase ||
      check.Text().find('@') != kNone) {
    return false;
  }
  std::size_t count = 0;
  std::size_t countNew = 0;
  WordReader words(check.Text());
  for (Word word; count < kMostWords && words.Next(word);) {
    if (word.letters.size() > 1) {
      ++count;
      countNew += HasWord(check.BaseText(), word.letters) ? 0 : 1;
    }
  }
  return count >= kFewestWords && countNew >= kFewestNew && countNew * 2 > count;
}

// The letters on the keys of the layouts of Russian and Ukrainian, in the order of the keys of the
// American one.
constexpr std::string_view kKeys = "qwertyuiop[]asdfghjkl;'zxcvbnm,.`";
constexpr std::u32string_view kRussian =
    U"\u0439\u0446\u0443\u043A\u0435\u043D\u0433\u0448\u0449\u0437\u0445\u044A\u0444\u044B\u0432"
    U"\u0430"
    U"\u043F\u0440\u043E\u043B\u0434\u0436\u044D\u044F\u0447\u0441\u043C\u0438\u0442\u044C\u0431"
    U"\u044E"
    U"\u0451";
constexpr std::u32string_view kUkrainian =
    U"\u0439\u0446\u0443\u043A\u0435\u043D\u0433\u0448\u0449\u0437\u0445\u0457\u0444\u0456\u0432"
    U"\u0430"
    U"\u043F\u0440\u043E\u043B\u0434\u0436\u0454\u044F\u0447\u0441\u043C\u0438\u0442\u044C\u0431"
    U"\u044E"
    U"'";
static_assert(kKeys.size() == kRussian.size() && kKeys.size() == kUkrainian.size());

bool IsVowelOf(char32_t letter) noexcept {
  constexpr std::u32string_view kVowels =
      U"\u0430\u0435\u0451\u0438\u043E\u0443\u044B\u044D\u044E\u044F\u0456\u0457\u0454";
  return kVowels.find(letter) != std::u32string_view::npos;
}

// No word begins with these: hard sign, soft sign, yery.
bool IsNeverFirst(char32_t letter) noexcept {
  return letter == 0x44A || letter == 0x44B || letter == 0x44C;
}

// What was meant by `text`, which was typed with the American layout. Empty if it may be right: if it
// has more than a few vowels, as words have, or would have too few on the other layout.
std::string MeantByKeys(std::string_view text, std::u32string_view layout) {
  constexpr std::size_t kFewestLetters = 5;
  constexpr std::size_t kLeastShare = 4;  // one of so many letters
  std::string meant;
  std::size_t letters = 0;
  std::size_t small = 0;
  std::size_t latinVowels = 0;
  std::size_t vowels = 0;
  bool isFirst = true;
  for (const char c : text) {
    const std::size_t key = kKeys.find(AsciiLowerCase(c));
    if (key == kNone) {
      if (c != ' ' && c != '&') {
        return {};
      }
      meant += c;
      isFirst = isFirst || c == ' ';
      continue;
    }
    const char32_t letter = layout[key];
    if (isFirst && IsNeverFirst(letter)) {
      return {};
    }
    isFirst = false;
    ++letters;
    small += IsAsciiLower(c) ? 1 : 0;
    latinVowels += std::string_view("aeiou").find(AsciiLowerCase(c)) != kNone ? 1 : 0;
    vowels += IsVowelOf(letter) ? 1 : 0;
    const bool isCapital = IsAsciiUpper(c) && letter >= 0x430;
    Localize::AppendUtf8(isCapital ? (letter >= 0x450 ? letter - 0x50 : letter - 0x20) : letter,
                         meant);
  }
  const bool isMeant = letters >= kFewestLetters && small * 2 > letters &&
                       latinVowels * kLeastShare <= letters && vowels * kLeastShare >= letters;
  return isMeant ? meant : std::string();
}

bool HasWordOfBase(const TextCheck& check) noexcept {
  WordReader words(check.Text());
  for (Word word; words.Next(word);) {
    if (word.letters.size() >= kShortestWord && HasWord(check.BaseText(), word.letters)) {
      return true;
    }
  }
  return false;
}

void CheckLayout(const TextCheck& check) {
  constexpr std::size_t kLongest = 100;  // bytes
  const std::string& language = check.file.FileLanguage().primary;
  const std::string_view text = check.Text();
  if ((language != "ru" && language != "uk") || text.size() > kLongest) {
    return;
  }
  const std::string meant = MeantByKeys(text, language == "ru" ? kRussian : kUkrainian);
  if (!meant.empty() && !HasWordOfBase(check)) {
    Add(check, text, {"foreign-letter.layout", {meant}});
  }
}

}  // namespace

void CheckForeignLetters(const TextCheck& check) {
  const std::string_view text = check.Text();
  const Alphabet& alphabet = check.file.FileAlphabet();
  const Alphabet::Kind kind = alphabet.KindOfLetters();
  const bool hasTable = kind == Alphabet::Kind::kLatin || kind == Alphabet::Kind::kCyrillic;
  if (hasTable && alphabet.MayHaveForeign(text)) {
    CheckLetters(check);
    CheckScripts(check);
  }
  if (kind == Alphabet::Kind::kUnknown || kind == Alphabet::Kind::kLatin) {
    return;
  }
  const Language& language = check.file.FileLanguage();
  if (language.primary == "ja") {
    CheckKana(check);
  } else if (language.primary == "zh" && text.find('\xE3') != kNone) {
    CheckChinese(check);
  }
  if (std::none_of(text.begin(), text.end(), MayBeOfOtherScript) && check.base &&
      text != check.BaseText() && language.script.empty()) {
    if (IsInOtherLanguage(check)) {
      Add(check, text, {"foreign-letter.no_letter", {}});
    } else {
      CheckLayout(check);
    }
  }
}

}  // namespace KelmoLibs::Lang
