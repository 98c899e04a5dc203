// Rules of characters that no one writes: letters that an encoding has spoilt, control characters,
// and characters that Windows keeps as two.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "lang/rules/check.h"
#include "lang/unicode/ascii.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/double_encoding.h"
#include "lang/unicode/scripts.h"

namespace KelmoLibs::Lang {
namespace {

// What the bytes of a text may be part of. Most texts have none of them.
enum : unsigned {
  kControl = 1U,        // C0
  kQuestion = 2U,       // ?
  kLatin1Control = 4U,  // U+0080 to U+00BF
  kLatinCapital = 8U,   // U+00C0 to U+00FF
  kCyrillic = 16U,      // U+0400 to U+043F
  kPunctuation = 32U,   // U+2000 to U+2FFF
  kReplacement = 64U,   // U+F000 to U+FFFF
  kBeyondBmp = 128U,
};

constexpr std::array<unsigned char, 256> MakeTable() {
  std::array<unsigned char, 256> table = {};
  for (std::size_t byte = 0; byte < 0x20; ++byte) {
    table[byte] = kControl;
  }
  table['\t'] = table['\r'] = 0;  // blanks, and line ends: encoding.cpp
  table[0x7F] = kControl;
  table['?'] = kQuestion;
  table[0xC2] = kLatin1Control;
  table[0xC3] = kLatinCapital;
  table[0xD0] = kCyrillic;
  table[0xE2] = kPunctuation;
  table[0xEF] = kReplacement;
  for (std::size_t byte = 0xF0; byte < table.size(); ++byte) {
    table[byte] = kBeyondBmp;
  }
  return table;
}

constexpr std::array<unsigned char, 256> kTable = MakeTable();

unsigned BytesIn(std::string_view text) noexcept {
  unsigned found = 0;
  for (const char c : text) {
    found |= kTable[static_cast<unsigned char>(c)];
  }
  return found;
}

bool IsLetterByte(char c) noexcept {
  return static_cast<unsigned char>(c) >= 0x80 || IsAsciiLetter(c);
}

std::size_t CountQuestions(std::string_view text) noexcept {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '?'));
}

// The word around the byte at `offset`, between blanks; of a long one a part.
std::string_view WordAt(std::string_view text, std::size_t offset) noexcept {
  constexpr std::size_t kLongest = 64;
  const std::size_t skipped = offset - std::min(offset, kLongest);
  text = text.substr(skipped, 2 * kLongest);
  offset -= skipped;
  const std::size_t before = text.find_last_of(" \t", offset);
  const std::size_t start = before == std::string_view::npos ? 0 : before + 1;
  return text.substr(start, std::min(text.find_first_of(" \t", offset), text.size()) - start);
}

// Whether the word is made of letters and "?", with marks at its end. Addresses, patterns and
// formulas are not.
bool IsWordWithQuestions(std::string_view word) noexcept {
  constexpr std::size_t kFewest = 4;
  const std::size_t end = word.find_last_not_of(".,;:!");
  word = word.substr(0, end == std::string_view::npos ? 0 : end + 1);
  return word.size() >= kFewest && std::all_of(word.begin(), word.end(), [](char c) {
           return c == '?' || c == '-' || c == '\'' || IsLetterByte(c);
         });
}

// Whether letters of the script need no blank behind a question mark.
bool IsWrittenWithoutBlanks(char c) noexcept { return static_cast<unsigned char>(c) >= 0xE0; }

// "enregistr?e", and beside a base without "?" also "?ffnen" and "pr?t ? d?marrer".
std::optional<std::string_view> FindLostLetter(std::string_view text,
                                               const std::optional<std::string_view>& base) {
  const bool hasMore = base && CountQuestions(text) > CountQuestions(*base);
  if (base && !hasMore) {
    return std::nullopt;
  }
  for (std::size_t i = text.find('?'); i != std::string_view::npos; i = text.find('?', i + 1)) {
    const char before = i > 0 ? text[i - 1] : ' ';
    const char after = i + 1 < text.size() ? text[i + 1] : ' ';
    const char second = i + 2 < text.size() ? text[i + 2] : ' ';
    if (IsWrittenWithoutBlanks(before) || IsWrittenWithoutBlanks(after)) {
      continue;
    }
    const bool isInWord = IsLetterByte(before) && IsAsciiLower(after);
    const bool isFirst = before == ' ' && IsLetterByte(after) && IsLetterByte(second);
    const bool isLast = IsLetterByte(before) && after == ' ' && IsAsciiLower(second);
    const bool isFound = isInWord || (hasMore && (isFirst || isLast));
    if (isFound && IsWordWithQuestions(WordAt(text, i))) {
      return text.substr(i, 1);
    }
  }
  return std::nullopt;
}

// Whether the character is a symbol that older code pages lack: superscripts, Greek and mathematical
// signs, and a letter such as U+00D8 that stands for a diameter. Not a mark of writing.
bool IsSymbol(char32_t character) noexcept {
  switch (character) {
    case 0xB0:    // degree
    case 0xB1:    // plus-minus
    case 0xB2:    // squared
    case 0xB3:    // cubed
    case 0xB5:    // micro
    case 0xB9:    // superscript one
    case 0xD7:    // times
    case 0xD8:    // diameter
    case 0xF7:    // divided
    case 0xF8:    // diameter
    case 0x0394:  // delta
    case 0x03A9:  // omega
    case 0x03BC:  // mu
    case 0x2030:  // per mille
      return true;
    default:
      return (0x2070 <= character && character < 0x20A0) ||  // superscripts and subscripts
             (0x2100 <= character && character < 0x2300);    // letter-like, arrows, mathematical
  }
}

bool IsSuperscript(char32_t character) noexcept {
  return character == 0xB2 || character == 0xB3 || character == 0xB9 ||
         (0x2070 <= character && character < 0x2080);
}

// Whether the text ends with the symbol of a unit, such as "m" and not "metres".
bool IsBehindUnit(std::string_view text) noexcept {
  constexpr std::size_t kLongest = 3;  // letters
  std::size_t letters = 0;
  while (letters <= kLongest && !text.empty() && IsLetter(LastCodePoint(text).value)) {
    text.remove_suffix(LastCodePoint(text).length);
    ++letters;
  }
  return letters > 0 && letters <= kLongest;
}

// What stands beside a symbol: two symbols in equal surroundings are the same.
char32_t Surrounding(std::string_view text, bool isBehind) noexcept {
  if (text.empty()) {
    return ' ';
  }
  const CodePoint next = isBehind ? FirstCodePoint(text) : LastCodePoint(text);
  return IsLetter(next.value) ? U'a' : next.value;
}

// The "?" of the text that stands for a symbol of the base, and the symbol: "m?/h" beside "m³/h".
struct LostSymbol {
  std::string_view where;
  std::string_view symbol;
};

LostSymbol FindLostSymbol(std::string_view text, std::string_view base) {
  constexpr std::size_t kLongest = 10'000;  // bytes; longer texts are no texts for people
  LostSymbol found;
  if (text.size() > kLongest || base.size() > kLongest || IsAscii(base) ||
      CountQuestions(text) <= CountQuestions(base)) {
    return found;
  }
  VisitCodePoints(base, [&](char32_t character, std::string_view symbol) {
    if (!IsSymbol(character) || text.find(symbol) != std::string_view::npos) {
      return true;
    }
    const auto at = static_cast<std::size_t>(symbol.data() - base.data());
    const char32_t before = Surrounding(base.substr(0, at), false);
    const char32_t behind = Surrounding(base.substr(at + symbol.size()), true);
    for (std::size_t i = text.find('?'); i != std::string_view::npos; i = text.find('?', i + 1)) {
      const std::string_view front = text.substr(0, i);
      if (Surrounding(front, false) == before && Surrounding(text.substr(i + 1), true) == behind &&
          (!IsSuperscript(character) || IsBehindUnit(front))) {
        found = {text.substr(i, 1), symbol};
        return false;
      }
    }
    return true;
  });
  return found;
}

// "????????? ????": words of question marks.
std::optional<std::string_view> FindLostWords(std::string_view text,
                                              const std::optional<std::string_view>& base) {
  constexpr std::size_t kFewest = 5;
  if (base && base->find("??") != std::string_view::npos) {
    return std::nullopt;
  }
  std::size_t words = 0;
  std::size_t questions = 0;
  std::size_t first = std::string_view::npos;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t end = std::min(text.find(' ', i), text.size());
    const std::string_view word = text.substr(i, end - i);
    // "??:??" is a mask; a mark at the end of a word is none.
    const std::size_t run = std::min(word.find_first_not_of('?'), word.size());
    if (run >= 2 && word.find_first_not_of(".,;:!)\"", run) == std::string_view::npos) {
      ++words;
      questions += run;
      first = std::min(first, i);
    }
    i = end + 1;
  }
  const bool isSure = base ? questions >= 3 : words >= 2 && questions >= kFewest;
  if (!isSure) {
    return std::nullopt;
  }
  return text.substr(first, std::min(text.find_first_not_of('?', first), text.size()) - first);
}

bool HasLetter(std::string_view text) noexcept {
  bool found = false;
  VisitCodePoints(text, [&found](char32_t character, std::string_view) {
    found = IsLetter(character);
    return !found;
  });
  return found;
}

// "&????" and "????…": nothing but question marks and marks, where the base has letters.
std::optional<std::string_view> FindLostText(std::string_view text,
                                             const std::optional<std::string_view>& base) {
  constexpr std::size_t kFewest = 4;
  const bool isMask = text.find_first_of("-/*%#\\_=0123456789") != std::string_view::npos;
  if (!base || isMask || CountQuestions(text) < kFewest || HasLetter(text) || !HasLetter(*base) ||
      base->find("??") != std::string_view::npos) {
    return std::nullopt;
  }
  const std::size_t first = text.find('?');
  return text.substr(first, std::min(text.find_first_not_of('?', first), text.size()) - first);
}

// What spreadsheets write for a formula that they cannot compute, in their languages. They take a
// text such as "=Open" or "-Name" for a formula.
bool IsErrorValue(std::string_view text) noexcept {
  constexpr std::string_view kValues[] = {
      // Without a word
      "#N/A", "#N/D", "#N/B", "#NV", u8"#Н/Д", "#I/T",
      // English
      "#NAME?", "#REF!", "#VALUE!", "#NUM!", "#NULL!", "#DIV/0!", "#SPILL!", "#CALC!",
      // French; the blank may be one without a break
      "#NOM?", "#NOM ?", u8"#NOM\u00A0?", u8"#NOM\u202F?", "#VALEUR!", "#NOMBRE!", "#NUL!",
      // German
      "#BEZUG!", "#WERT!", "#ZAHL!",
      // Russian
      u8"#ИМЯ?", u8"#ССЫЛКА!", u8"#ЗНАЧ!", u8"#ЧИСЛО!", u8"#ПУСТО!", u8"#ДЕЛ/0!",
      // Spanish, Portuguese and Italian
      u8"#¿NOMBRE?", u8"#¡REF!", u8"#¡VALOR!", u8"#¡NUM!", u8"#¡NULO!", u8"#¡DIV/0!", "#NOME?",
      "#VALOR!", u8"#NÚM!", "#NULO!", "#RIF!", "#VALORE!", "#NULLO!",
      // Polish, Czech and Dutch
      "#NAZWA?", "#ADR!", "#ARG!", "#LICZBA!", "#ZERO!", "#DZIEL/0!", u8"#NÁZEV?", "#ODKAZ!",
      "#HODNOTA!", "#NAAM?", "#VERW!", "#WAARDE!", "#GETAL!", "#LEEG!", "#DEEL/0!"};
  return std::find(std::begin(kValues), std::end(kValues), text) != std::end(kValues);
}

// A key or a text while it is checked.
class Part {
 public:
  Part(FileCheck& check, std::string_view key, std::string_view part, bool isKey) noexcept
      : check_(check), key_(key), part_(part), isKey_(isKey) {}

  void Check() {
    if (!isKey_ && !part_.empty() && part_.front() == '#') {
      CheckErrorValue();
    }
    const unsigned bytes = BytesIn(part_);
    if (bytes == 0) {
      return;
    }
    line_ = check_.Source().LineOf(part_.data());
    if (check_.IsExplained(line_)) {
      return;
    }
    if ((bytes & kReplacement) != 0) {
      CheckReplacement();
    }
    if ((bytes & (kLatinCapital | kCyrillic)) != 0) {
      CheckDoubleEncoding();
    }
    if ((bytes & kQuestion) != 0 && !isKey_) {
      CheckQuestions();
    }
    if ((bytes & (kControl | kLatin1Control | kPunctuation)) != 0) {
      CheckControls();
    }
    if ((bytes & kBeyondBmp) != 0) {
      CheckBeyondBmp();
    }
  }

 private:
  Finding& Add(RuleId rule, Severity severity, std::string_view where, Sentence message) {
    Finding& finding = check_.Add(rule, severity, where, key_, std::move(message));
    check_.AddBaseOf(finding);
    return finding;
  }

  std::optional<std::string_view> BaseText() const {
    const FoundEntry base = check_.FindInBase(key_);
    return base ? std::optional(base.entry->text) : std::nullopt;
  }

  void AddLost(std::string_view where, const char* message) {
    Add(RuleId::kLostLetter, Severity::kError, where, {message, {}}).mend = {"lost-letter.mend",
                                                                             {}};
    check_.Explain(line_);
  }

  void CheckReplacement() {
    constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";
    if (const std::size_t found = part_.find(kReplacementCharacter);
        found != std::string_view::npos) {
      AddLost(part_.substr(found, kReplacementCharacter.size()), "lost-letter.replacement");
    }
  }

  void CheckDoubleEncoding() {
    if (check_.IsExplained(line_)) {
      return;
    }
    if (const std::optional<DoubleEncoded> found = FindDoubleEncoded(part_)) {
      Finding& finding = Add(RuleId::kDoubleEncoding, Severity::kError, found->part,
                             {isKey_ ? "double-encoding.in_key" : "double-encoding.in_text", {}});
      finding.hint = {"double-encoding.hint", {found->letters}};
      finding.mend = {"double-encoding.mend", {}};
      check_.Explain(line_);
    }
  }

  void CheckErrorValue() {
    line_ = check_.Source().LineOf(part_.data());
    if (check_.IsExplained(line_) || !IsErrorValue(part_)) {
      return;
    }
    const std::optional<std::string_view> base = BaseText();
    if (base && !IsErrorValue(*base)) {
      Add(RuleId::kLostLetter, Severity::kError, part_,
          {"lost-letter.error_value", {std::string(part_)}})
          .mend = {"lost-letter.error_value_mend", {}};
      check_.Explain(line_);
    }
  }

  void CheckQuestions() {
    if (check_.IsExplained(line_)) {
      return;
    }
    const std::optional<std::string_view> base = BaseText();
    if (const auto words = FindLostWords(part_, base)) {
      AddLost(*words, "lost-letter.questions");
    } else if (const auto text = FindLostText(part_, base)) {
      AddLost(*text, "lost-letter.questions");
    } else if (const auto letter = FindLostLetter(part_, base)) {
      const std::size_t more = base ? CountQuestions(part_) - CountQuestions(*base) : 1;
      AddLost(*letter, more > 1 ? "lost-letter.questions" : "lost-letter.question");
    } else if (const LostSymbol symbol = base ? FindLostSymbol(part_, *base) : LostSymbol();
               !symbol.where.empty()) {
      const std::string sign(symbol.symbol);
      Add(RuleId::kLostLetter, Severity::kError, symbol.where, {"lost-letter.symbol", {sign}})
          .mend = {"lost-letter.symbol_mend", {sign}};
      check_.Explain(line_);
    }
  }

  // The key of the entry that a line end at `separator` would begin; empty if there is none. Only a
  // tab behind it, or a key that is missing, is a proof: this part may also be prose.
  std::string_view KeyBehind(std::string_view separator) const {
    const std::string_view rest =
        part_.substr(static_cast<std::size_t>(separator.data() - part_.data()) + separator.size());
    const std::size_t end = rest.find_first_of(" \t");
    if (isKey_ || end == 0 || end == std::string_view::npos) {
      return {};
    }
    const std::string_view key = rest.substr(0, end);
    const bool isMissing = check_.FindInBase(key) && !check_.Merged().Find(key);
    return rest[end] == '\t' || isMissing ? key : std::string_view();
  }

  void AddSeparator(std::string_view where, char32_t value) {
    const char* const name = value == 0x85 ? "U+0085" : value == 0x2028 ? "U+2028" : "U+2029";
    if (const std::string_view key = KeyBehind(where); !key.empty()) {
      Add(RuleId::kLineEnd, Severity::kError, where,
          {"line-end.separator_lost_entry", {name, std::string(key)}})
          .mend = {"line-end.mend", {}};
      check_.ExplainKey(key);
      check_.Explain(line_);
      return;
    }
    Finding& finding = Add(RuleId::kLineEnd, isKey_ ? Severity::kError : Severity::kWarning, where,
                           {"line-end.separator", {name}});
    finding.mend = {"line-end.separator_mend", {}};
  }

  void AddControl(std::string_view where, char32_t value) {
    Finding& finding = Add(RuleId::kControlCharacter, Severity::kError, where,
                           {isKey_       ? "control-character.in_key"
                            : value == 0 ? "control-character.nul"
                                         : "control-character.in_text",
                            {}});
    // Word processors write a line break in a paragraph as U+000B.
    finding.mend = {value == 0x0B && !isKey_ && IsBetweenWords(where)
                        ? "control-character.mend_space"
                        : "control-character.mend",
                    {}};
  }

  bool IsBetweenWords(std::string_view where) const noexcept {
    const auto at = static_cast<std::size_t>(where.data() - part_.data());
    const std::size_t behind = at + where.size();
    return at > 0 && part_[at - 1] != ' ' && behind < part_.size() && part_[behind] != ' ';
  }

  // The first one of a part is enough.
  void CheckControls() {
    if (check_.IsExplained(line_)) {
      return;
    }
    VisitCodePoints(part_, [this](char32_t value, std::string_view where) {
      const bool isSeparator = value == 0x85 || value == 0x2028 || value == 0x2029;
      const bool isControl = (value < 0x20 && value != '\t' && value != '\r') ||
                             (value >= 0x7F && value < 0xA0 && !isSeparator);
      if (isSeparator) {
        AddSeparator(where, value);
      } else if (isControl) {
        AddControl(where, value);
      }
      if (isKey_ && (isSeparator || isControl)) {
        check_.Explain(line_);
      }
      return !isSeparator && !isControl;
    });
  }

  // A character that the base has too is reported there, once for all languages.
  void CheckBeyondBmp() {
    const auto isBeyond = [](char c) { return static_cast<unsigned char>(c) >= 0xF0; };
    const auto found = static_cast<std::size_t>(std::find_if(part_.begin(), part_.end(), isBeyond) -
                                                part_.begin());
    const std::string_view where = part_.substr(found, FirstCodePoint(part_.substr(found)).length);
    const FoundEntry base = check_.FindInBase(key_);
    if (base && check_.AllFiles().files[base.file].isReported &&
        (isKey_ ? base.entry->key : base.entry->text).find(where) != std::string_view::npos) {
      return;
    }
    Add(RuleId::kBeyondBmp, Severity::kWarning, where,
        {"beyond-bmp.message", {std::string(where)}});
  }

  FileCheck& check_;
  std::string_view key_;
  std::string_view part_;
  bool isKey_;
  std::uint32_t line_ = 0;
};

bool MayBeDoubleEncoded(const Entry& entry) noexcept {
  return (BytesIn(entry.text) & (kLatinCapital | kCyrillic)) != 0;
}

// Whether nearly all texts of the file were turned into UTF-8 twice, judged by the first ones that
// may be.
bool IsWholeFileDoubleEncoded(const FileCheck& check) {
  constexpr std::size_t kSample = 40;
  constexpr std::size_t kFewest = 10;
  std::size_t judged = 0;
  std::size_t found = 0;
  for (const Entry& entry : check.File().Entries()) {
    if (judged == kSample) {
      break;
    }
    if (MayBeDoubleEncoded(entry)) {
      ++judged;
      found += FindDoubleEncoded(entry.text) ? 1U : 0U;
    }
  }
  return judged >= kFewest && found * 4 >= judged * 3;
}

// One finding for the whole file, at its first wrong text.
void ReportDoubleEncodedFile(FileCheck& check) {
  std::optional<DoubleEncoded> first;
  std::size_t count = 0;
  for (const Entry& entry : check.File().Entries()) {
    if (!MayBeDoubleEncoded(entry) || check.IsExplained(entry)) {
      continue;
    }
    if (!first) {
      first = FindDoubleEncoded(entry.text);
    }
    ++count;
    check.Explain(entry);
  }
  if (!first) {
    return;
  }
  Finding& finding = check.Add(RuleId::kDoubleEncoding, Severity::kError, first->part, "",
                               {"double-encoding.file.#", {std::to_string(count)}});
  finding.hint = {"double-encoding.hint", {first->letters}};
  finding.mend = {"double-encoding.file_mend", {}};
}

}  // namespace

void CheckOddCharacters(FileCheck& check) {
  if (check.Source().EncodedAsUtf16() == Utf16::kNo && IsWholeFileDoubleEncoded(check)) {
    ReportDoubleEncodedFile(check);
  }
  const auto checkParts = [&check](const Entry& entry) {
    Part(check, entry.key, entry.key, true).Check();
    Part(check, entry.key, entry.text, false).Check();
  };
  if (check.Source().EncodedAsUtf16() == Utf16::kNo) {  // else they are no views into Bytes()
    Part(check, "", check.File().Id(), true).Check();
    for (const Entry& entry : check.File().Entries()) {
      checkParts(entry);
    }
  }
  for (const Entry& entry : check.File().LostEntries()) {
    checkParts(entry);
  }
}

}  // namespace KelmoLibs::Lang
