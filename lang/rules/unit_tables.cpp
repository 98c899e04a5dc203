// Unit tables of languages: the file as a whole, its header, its lines, and what is missing.
// The golden files of the rules unit-* test them.
#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>
#include <vector>

#include "lang/rules/check.h"
#include "lang/rules/fix_command.h"
#include "lang/rules/library_units.h"
#include "lang/rules/symbol_letters.h"
#include "lang/rules/unit_encoding.h"
#include "lang/unicode/blanks.h"
#include "lang/unicode/byte_order_mark.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/hex.h"
#include "lang/unicode/windows_characters.h"
#include "phyval/unit_catalogue.h"

namespace KelmoLibs::Lang {
namespace {

using Localize::Phyval::NamesAUnit;

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kComment = "//";
constexpr std::string_view kTableEnd = "-val.txt";
constexpr char kControlZ = '\x1A';
constexpr std::size_t kUnitFields = 3;
constexpr char32_t kLastOfAscii = 0x7F;
constexpr char32_t kLastOfBmp = 0xFFFF;
constexpr std::size_t kLongestCode = 12;  // digits; a longer number is too large

std::string_view WithoutBlanksAtTheEnd(std::string_view text) noexcept {
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::string_view WithoutBlanks(std::string_view text) noexcept {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return WithoutBlanksAtTheEnd(text);
}

// The first word of `text`, which is removed from it.
std::string_view TakeWord(std::string_view& text) noexcept {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
  text.remove_prefix(word.size());
  return word;
}

// The number at the beginning of `text`, without a sign.
std::optional<std::int32_t> LeadingNumber(std::string_view text) noexcept {
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() ? std::optional(number) : std::nullopt;
}

// The digit that `c` is or looks like, or a zero byte.
char DigitLike(char32_t c) noexcept {
  constexpr char32_t kFullWidthZero = 0xFF10;
  constexpr std::u32string_view kZeros = U"Oo\u041E\u043E\u039F\u03BF";  // Cyrillic and Greek O
  constexpr std::u32string_view kOnes = U"lI|\u0406";                    // Cyrillic I
  constexpr std::u32string_view kThrees = U"\u0417\u0437";               // Cyrillic Ze
  const auto isOneOf = [c](std::u32string_view letters) {
    return letters.find(c) != std::u32string_view::npos;
  };
  const char32_t zero = c >= kFullWidthZero ? kFullWidthZero : U'0';
  return c >= zero && c <= zero + 9 ? static_cast<char>('0' + (c - zero))
         : isOneOf(kZeros)          ? '0'
         : isOneOf(kOnes)           ? '1'
         : isOneOf(kThrees)         ? '3'
                                    : '\0';
}

// The code that the author of a line meant: the number at its beginning, in which letters may stand
// for digits that they look like. It begins with a digit.
std::optional<std::int32_t> MeantCode(std::string_view line) {
  line = WithoutBlanks(WithoutByteOrderMark(line));
  line.remove_prefix(line.substr(0, 1) == "-" ? 1 : 0);
  std::string digits;
  bool isNumber = true;
  VisitCodePoints(line, [&](char32_t c, std::string_view part) {
    const char digit = DigitLike(c);
    isNumber = isNumber && digit != '\0' &&
               (!digits.empty() || part == std::string_view(&digit, 1) || c > kLastOfAscii);
    if (isNumber) {
      digits += digit;
    }
    return isNumber && digits.size() < kLongestCode;
  });
  return LeadingNumber(digits);
}

std::int32_t QuantityOf(std::int32_t code) noexcept { return code < 100 ? code : code / 1000; }

class UnitCheck {
 public:
  UnitCheck(const Workspace& workspace, std::uint32_t fileIndex, Findings& findings)
      : workspace_(workspace),
        fileIndex_(fileIndex),
        file_(*workspace.files[fileIndex].units),
        findings_(findings) {}

  void Run() {
    if (!CheckBytes()) {
      return;
    }
    CheckByteOrderMark();
    CheckHeader();
    CheckDroppedLines();
    for (const UnitLine& line : file_.Lines()) {
      CheckCharacters(line);
      CheckComment(line);
      CheckCode(line);
      CheckSymbolAlone(line);
    }
    CheckRepeated();
    CheckSymbolsOfQuantities();
    CheckScripts();
    CheckMissing();
  }

 private:
  const SourceFile& Source() const noexcept { return file_.Source(); }

  Place PlaceIn(std::uint32_t file, std::string_view where) const noexcept {
    Place place = workspace_.files[file].Source().PlaceOf(where);
    place.file = file;
    return place;
  }

  Finding& AddToFile(RuleId rule, Severity severity, Sentence message) {
    Finding& finding = findings_.Add(rule, severity, fileIndex_);
    finding.id = WithoutByteOrderMark(file_.LanguageKey());
    finding.message = std::move(message);
    return finding;
  }

  Finding& Add(RuleId rule, Severity severity, std::string_view where, Sentence message) {
    Finding& finding = AddToFile(rule, severity, std::move(message));
    finding.place = PlaceIn(fileIndex_, where);
    return finding;
  }

  // About a unit.
  Finding& Add(RuleId rule, Severity severity, const UnitLine& line, std::string_view where,
               Sentence message) {
    Finding& finding = Add(rule, severity, where, std::move(message));
    finding.key = line.codeField;
    return finding;
  }

  // ---- The file

  // False if the library reads nothing that other rules could judge.
  bool CheckBytes() {
    if (Source().EncodedAsUtf16() != Utf16::kNo) {
      AddEncodingMend(file_, AddToFile(RuleId::kEncoding, Severity::kError, {"units.utf16", {}}));
      return false;
    }
    if (Source().LineEnds() == LineEnd::kCr) {
      AddToFile(RuleId::kLineEnd, Severity::kError, {"units.cr", {}}).mendCommand =
          FixCommand("", Source().Name());
      return false;
    }
    if (file_.StopsBecause() == Stop::kEndOfFile) {
      return true;
    }
    const std::string_view stop = Source().Bytes().substr(file_.StopsAt(), 1);
    const bool isControlZ = stop.front() == kControlZ;
    const std::uint32_t line = Source().LineOf(stop.data());
    const std::string lost = std::to_string(Source().LineCount() - line);
    const std::string key = isControlZ ? "units.control_z" : "units.not_utf8";
    Finding& finding =
        Add(isControlZ ? RuleId::kControlCharacter : RuleId::kEncoding, Severity::kError, stop,
            lost == "0" ? Sentence{key, {}} : Sentence{key + ".lost.#", {lost}});
    if (isControlZ) {
      finding.mend = {"units.mend.delete", {}};
    } else {
      AddEncodingMend(file_, finding);
    }
    return line > 1;  // else the header is cut
  }

  void CheckByteOrderMark() {
    const std::string_view line = file_.HeaderLine();
    if (WithoutByteOrderMark(line).size() < line.size()) {
      Add(RuleId::kByteOrderMark, Severity::kError, line.substr(0, kByteOrderMark.size()),
          {"units.byte_order_mark", {}})
          .mendCommand = FixCommand("", Source().Name());
    }
  }

  // ---- The header

  void CheckHeader() {
    const std::string_view line = WithoutByteOrderMark(file_.HeaderLine());
    if (file_.Header() == UnitHeader::kMissing) {
      AddToFile(RuleId::kUnitHeader, Severity::kError, {"units.header.empty_file", {}}).mend = {
          "units.mend.header", {}};
    } else if (const char* const fault = HeaderFault(line)) {
      Finding& finding = Add(RuleId::kUnitHeader, Severity::kError, line, {fault, {}});
      finding.mend = IsHeaderBelow() ? Sentence{"units.mend.delete_line", {}} : HeaderMend(line);
    } else {
      CheckCharacters(line, nullptr);
      CheckLanguageKey();
    }
  }

  // Whether the header stands below empty lines and comments. It counts as a dropped line.
  bool IsHeaderBelow() const {
    if (file_.Header() != UnitHeader::kEmpty || file_.DroppedLines().empty()) {
      return false;
    }
    std::string_view line = file_.DroppedLines().front();
    const bool isUnit = LeadingNumber(WithoutBlanks(line)).has_value();
    const bool hasTwoWords = !TakeWord(line).empty() && !TakeWord(line).empty();
    return !isUnit && hasTwoWords && TakeWord(line).empty();
  }

  // The key of the sentence, or null.
  const char* HeaderFault(std::string_view line) const {
    const std::string_view text = WithoutBlanks(line);
    if (text.empty()) {
      return "units.header.empty_line";
    }
    if (text.substr(0, kComment.size()) == kComment) {
      return "units.header.comment";
    }
    const bool isWhole = file_.Header() == UnitHeader::kWhole;
    if (LeadingNumber(text) && !isWhole) {
      return "units.header.unit";
    }
    return isWhole                                  ? nullptr
           : file_.Header() == UnitHeader::kTooMany ? "units.header.too_many"
                                                    : "units.header.too_few";
  }

  // How the first line is right: with hyphens in a name of several words.
  Sentence HeaderMend(std::string_view line) const {
    if (file_.Header() != UnitHeader::kTooMany || LeadingNumber(line)) {
      return {"units.mend.header", {}};
    }
    std::string_view rest = line.substr(0, line.find(kComment));
    std::string header(TakeWord(rest));
    constexpr std::size_t kMostWords = 8;
    std::size_t words = 1;
    while (words < kMostWords) {
      const std::string_view word = TakeWord(rest);
      if (word.empty()) {
        break;
      }
      header.append(words == 1 ? " " : "-").append(word);
      ++words;
    }
    return {"units.mend.header_as", {header}};
  }

  void CheckLanguageKey() {
    const std::string name = Source().Path().filename().u8string();
    if (name.size() <= kTableEnd.size() ||
        name.compare(name.size() - kTableEnd.size(), kTableEnd.size(), kTableEnd) != 0) {
      return;  // lang-val.text: of any language
    }
    const std::string language = name.substr(0, name.size() - kTableEnd.size());
    const std::string_view key = WithoutByteOrderMark(file_.LanguageKey());
    if (key != language) {
      Add(RuleId::kUnitHeader, Severity::kWarning, key,
          {"units.header.unlike_name", {std::string(key), language}});
    }
  }

  // ---- Lines

  void CheckDroppedLines() {
    bool isHeader = IsHeaderBelow();
    for (const std::string_view line : file_.DroppedLines()) {
      if (!std::exchange(isHeader, false)) {
        CheckDroppedLine(line);
      }
    }
  }

  void CheckDroppedLine(std::string_view line) {
    if (Source().LineOf(line.data()) == LineOfStop()) {
      return;  // it is cut there
    }
    const std::string_view text = WithoutBlanks(line);
    const std::size_t comment = text.find(kComment);
    if (comment == 0 || WithoutBlanks(TextAsRead(text)).empty()) {
      Add(RuleId::kUnitFields, Severity::kNote, text.empty() ? line : text,
          {comment == 0 ? "units.fields.comment" : "units.fields.blank", {}});
      return;
    }
    if (CheckCharacters(text, nullptr)) {
      return;
    }
    std::string_view rest = text.substr(0, comment);
    std::size_t words = 0;
    while (!TakeWord(rest).empty()) {
      ++words;
    }
    const bool hasSpecialBlank = FindSpecialBlank(text).data() != nullptr;
    const bool isCut = comment != std::string_view::npos && IsPartOfWord(text, comment);
    Finding& finding =
        Add(RuleId::kUnitFields, Severity::kError, isCut ? text.substr(comment) : text,
            {isCut                     ? "units.fields.cut"
             : hasSpecialBlank         ? "units.fields.special_blank"
             : words + 1 < kUnitFields ? "units.fields.code_alone"
                                       : "units.fields.no_name",
             {}});
    finding.key = text.substr(0, text.find_first_not_of(kDigits));
    const bool hasSemicolons = std::count(text.begin(), text.end(), ';') > 1;
    finding.mend = {isCut           ? "units.mend.slashes"
                    : hasSemicolons ? "units.mend.semicolons"
                                    : "units.mend.fields",
                    {}};
  }

  // Whether the "//" at `comment`, which is not 0, stands within a word or directly in front of one.
  // Blanks stand on both sides of most comments.
  static bool IsPartOfWord(std::string_view text, std::size_t comment) noexcept {
    const std::size_t next = text.find_first_not_of(kBlanks, comment + kComment.size());
    return next != std::string_view::npos &&
           (kBlanks.find(text[comment - 1]) == std::string_view::npos ||
            next == comment + kComment.size());
  }

  // The line in which the library stops reading, or 0.
  std::uint32_t LineOfStop() const noexcept {
    return file_.StopsBecause() == Stop::kEndOfFile
               ? 0
               : Source().LineOf(Source().Bytes().data() + file_.StopsAt());
  }

  // Characters that become blanks. Only the first one of a line is reported. Whether there is one.
  bool CheckCharacters(std::string_view text, const UnitLine* line) {
    struct {
      char32_t value = 0;
      std::string_view where;
    } found;
    VisitCodePoints(text.substr(0, text.find(kComment)),
                    [&found](char32_t c, std::string_view part) {
                      if (c > kLastOfBmp || !IsKeptByWindows(static_cast<wchar_t>(c))) {
                        found = {c, part};
                      }
                      return found.where.empty();
                    });
    if (found.where.empty() || (found.value == '\r' && found.where.data() + 1 == End(text))) {
      return false;
    }
    const bool isControl = found.value < 0x20 || (found.value >= 0x7F && found.value < 0xA0);
    const bool isBeyond = found.value > kLastOfBmp;
    Finding& finding =
        Add(isControl  ? RuleId::kControlCharacter
            : isBeyond ? RuleId::kBeyondBmp
                       : RuleId::kUnitSymbol,
            isControl || isBeyond ? Severity::kError : Severity::kWarning, found.where,
            {isControl  ? "units.control_character"
             : isBeyond ? "units.beyond_bmp"
                        : "units.symbol.not_kept",
             {CodePointName(found.value)}});
    if (line != nullptr) {
      finding.key = line->codeField;
    }
    return true;
  }

  static const char* End(std::string_view text) noexcept { return text.data() + text.size(); }

  void CheckCharacters(const UnitLine& line) {
    const std::string_view whole(line.codeField.data(),
                                 static_cast<std::size_t>(End(line.name) - line.codeField.data()));
    CheckCharacters(whole, &line);
  }

  // "//" directly behind a word of the name was meant as part of it.
  void CheckComment(const UnitLine& line) {
    const std::string_view text = Source().Line(line.line);
    const auto end = static_cast<std::size_t>(End(line.name) - text.data());
    if (end >= text.size() || text.compare(end, kComment.size(), kComment) != 0 ||
        line.name.empty() || line.name.back() == ' ' || line.name.back() == '\t') {
      return;
    }
    const std::string_view lost = text.substr(end);
    Add(RuleId::kUnitFields, Severity::kError, line, lost,
        {"units.fields.name_cut", {std::string(lost)}})
        .mend = {"units.mend.slashes", {}};
  }

  // ---- Codes

  // Whether the code is the one that the author meant.
  static bool IsMeant(const UnitLine& line) noexcept {
    return line.code > 0 && MeantCode(line.codeField) == line.code;
  }

  // The key of the sentence, or null.
  static const char* CodeFault(const UnitLine& line) {
    const std::string_view field = line.codeField;
    const std::size_t sign = field.front() == '-' || field.front() == '+' ? 1 : 0;
    const std::size_t end = std::min(field.find_first_not_of(kDigits, sign), field.size());
    if (end == sign) {
      return line.code != 0 ? "units.code.digits" : "units.code.none";
    }
    const std::optional<std::int32_t> number = LeadingNumber(field.substr(sign));
    if (!number) {
      return "units.code.range";
    }
    if (field.front() == '-' || *number == 0) {
      return "units.code.not_positive";
    }
    if (end < field.size()) {  // digits of another script make a larger number
      return *number == line.code ? "units.code.tail" : "units.code.digits";
    }
    return nullptr;
  }

  void CheckCode(const UnitLine& line) {
    const char* const fault = CodeFault(line);
    if (fault == nullptr) {
      CheckKnown(line);
      return;
    }
    Finding& finding = Add(RuleId::kUnitCode, Severity::kError, line, line.codeField,
                           {fault, {std::string(line.codeField), std::to_string(line.code)}});
    const std::optional<std::int32_t> meant = MeantCode(line.codeField);
    if (meant && *meant != line.code && *meant > 0) {
      finding.hint = {"units.code.meant", {std::to_string(*meant)}};
    }
    finding.mend = {"units.mend.code", {}};
  }

  void CheckKnown(const UnitLine& line) {
    const auto& units = LibraryUnits();
    const std::int32_t quantity = QuantityOf(line.code);
    const auto isOfQuantity = [quantity](const LibraryUnit& unit) {
      return QuantityOf(unit.code) == quantity;
    };
    const auto isUnit = [&line](const LibraryUnit& unit) { return unit.code == line.code; };
    const bool hasQuantity = std::any_of(units.begin(), units.end(), isOfQuantity);
    if (hasQuantity &&
        (!NamesAUnit(line.code) || std::any_of(units.begin(), units.end(), isUnit))) {
      return;
    }
    Finding& finding = Add(RuleId::kUnitUnknown, Severity::kWarning, line, line.codeField,
                           {hasQuantity ? "units.unknown.unit" : "units.unknown.quantity",
                            {std::to_string(line.code), std::to_string(quantity)}});
    if (const std::int32_t near = NearestLibraryCode(line.code); near != 0) {
      finding.hint = {"units.unknown.near", {std::to_string(near), NameOf(near)}};
    }
  }

  static std::string NameOf(std::int32_t code) {
    const auto& units = LibraryUnits();
    const auto unit = std::find_if(units.begin(), units.end(),
                                   [code](const LibraryUnit& row) { return row.code == code; });
    return unit != units.end() ? unit->name : "";
  }

  void CheckRepeated() {
    const std::vector<std::uint32_t> earlier = EarlierTables();
    for (const UnitLine& line : file_.Lines()) {
      if (!IsMeant(line)) {
        continue;
      }
      const UnitLine* first = file_.Find(line.code);
      std::uint32_t inFile = fileIndex_;
      for (const std::uint32_t table : earlier) {
        if (const UnitLine* const before = workspace_.files[table].units->Find(line.code)) {
          first = before;
          inFile = table;
          break;
        }
      }
      if (first != &line) {
        AddRepeated(line, *first, inFile);
      }
    }
  }

  void AddRepeated(const UnitLine& line, const UnitLine& first, std::uint32_t inFile) {
    const bool isSame = line.symbol == first.symbol &&
                        WithoutBlanksAtTheEnd(line.name) == WithoutBlanksAtTheEnd(first.name);
    Finding& finding = Add(
        RuleId::kUnitRepeated, isSame ? Severity::kWarning : Severity::kError, line, line.codeField,
        {isSame ? "units.repeated.same" : "units.repeated.other", {std::to_string(line.code)}});
    finding.mend = {"units.mend.repeated", {}};
    finding.related.push_back(
        {PlaceIn(inFile, first.codeField),
         {"units.repeated.first",
          {std::string(first.symbol), std::string(WithoutBlanksAtTheEnd(first.name))}}});
  }

  // Tables of the same language and folder that a host may have loaded before, by their index.
  std::vector<std::uint32_t> EarlierTables() const {
    std::vector<std::uint32_t> tables;
    for (std::uint32_t i = 0; i < fileIndex_ && file_.Header() == UnitHeader::kWhole; ++i) {
      const UnitFile* const other = workspace_.files[i].units.get();
      if (other != nullptr && other->Header() == UnitHeader::kWhole &&
          other->LanguageKey() == file_.LanguageKey() &&
          other->Source().Path().parent_path() == Source().Path().parent_path()) {
        tables.push_back(i);
      }
    }
    return tables;
  }

  // ---- Symbols

  static std::string_view FindSpecialBlank(std::string_view text) {
    std::string_view found;
    VisitCodePoints(text.substr(0, text.find(kComment)),
                    [&found](char32_t c, std::string_view part) {
                      const Blank blank = BlankOf(c);
                      if (blank == Blank::kNoBreak || blank == Blank::kIdeographic) {
                        found = part;
                      }
                      return found.empty();
                    });
    return found;
  }

  void CheckSymbolAlone(const UnitLine& line) {
    if (const std::string_view blank = FindSpecialBlank(line.symbol); !blank.empty()) {
      Add(RuleId::kUnitSymbol, Severity::kWarning, line, blank,
          {"units.symbol.special_blank", {CodePointName(FirstCodePoint(blank).value)}})
          .mend = {"units.mend.fields", {}};
    }
    if (LettersOf(line.symbol).isMixed) {
      Add(RuleId::kUnitSymbol, Severity::kWarning, line, line.symbol, {"units.symbol.mixed", {}});
    }
  }

  // Lines that count and are units, sorted by `less`.
  template <class Less>
  std::vector<const UnitLine*> SortedUnits(Less less) const {
    std::vector<const UnitLine*> units;
    for (const std::uint32_t index : file_.Units()) {
      const UnitLine& line = file_.Lines()[index];
      if (NamesAUnit(line.code)) {
        units.push_back(&line);
      }
    }
    std::sort(units.begin(), units.end(), less);
    return units;
  }

  void CheckSymbolsOfQuantities() {
    const auto key = [](const UnitLine* line) {
      return std::tuple(QuantityOf(line->code), line->symbol, line->line);
    };
    const std::vector<const UnitLine*> units =
        SortedUnits([&key](const UnitLine* l, const UnitLine* r) { return key(l) < key(r); });
    for (std::size_t i = 1; i < units.size(); ++i) {
      const UnitLine& line = *units[i];
      const UnitLine& other = *units[i - 1];
      if (QuantityOf(line.code) == QuantityOf(other.code) && line.symbol == other.symbol) {
        Add(RuleId::kUnitSymbol, Severity::kWarning, line, line.symbol,
            {"units.symbol.same", {std::to_string(other.code)}})
            .related.push_back(
                {PlaceIn(fileIndex_, other.symbol),
                 {"units.repeated.first",
                  {std::string(other.symbol), std::string(WithoutBlanksAtTheEnd(other.name))}}});
      }
    }
  }

  // A symbol of letters of one script that look like letters of the script of the other symbols.
  void CheckScripts() {
    const std::vector<const UnitLine*> units = SortedUnits(
        [](const UnitLine* left, const UnitLine* right) { return left->line < right->line; });
    std::size_t latin = 0;
    std::size_t cyrillic = 0;
    for (const UnitLine* const line : units) {
      const SymbolScript script = LettersOf(line->symbol).script;
      latin += script == SymbolScript::kLatin ? 1U : 0U;
      cyrillic += script == SymbolScript::kCyrillic ? 1U : 0U;
    }
    for (const UnitLine* const line : units) {
      const SymbolLetters letters = LettersOf(line->symbol);
      const bool isLatin = letters.script == SymbolScript::kLatin;
      if (!letters.haveTwins || (!isLatin && letters.script != SymbolScript::kCyrillic)) {
        continue;
      }
      const std::size_t same = (isLatin ? latin : cyrillic) - 1;
      const std::size_t others = isLatin ? cyrillic : latin;
      if (others > 1 && others > 2 * same) {
        Add(RuleId::kUnitSymbol, Severity::kNote, *line, line->symbol,
            {isLatin ? "units.symbol.latin" : "units.symbol.cyrillic", {}});
      }
    }
  }

  // ---- Missing units

  // Codes of the file, also those that a fault of their line hides.
  std::vector<std::int32_t> MeantCodes() const {
    std::vector<std::int32_t> codes;
    const auto add = [&codes](std::string_view text) {
      if (const std::optional<std::int32_t> code = MeantCode(text)) {
        codes.push_back(*code);
      }
    };
    add(file_.HeaderLine());
    std::for_each(file_.DroppedLines().begin(), file_.DroppedLines().end(), add);
    for (const UnitLine& line : file_.Lines()) {
      add(line.codeField);
      codes.push_back(line.code);
    }
    std::sort(codes.begin(), codes.end());
    return codes;
  }

  // The table of the base's language in this folder or beside the base, by its index; nothing if there
  // is none.
  std::optional<std::uint32_t> BaseTable() const {
    if (!workspace_.baseFile) {
      return std::nullopt;
    }
    const DictionaryFile& base = *workspace_.files[*workspace_.baseFile].dictionary;
    for (std::uint32_t i = 0; i < workspace_.files.size(); ++i) {
      const UnitFile* const table = workspace_.files[i].units.get();
      if (table == nullptr || table->Header() != UnitHeader::kWhole ||
          table->LanguageKey() != base.IntendedId()) {
        continue;
      }
      const auto folder = table->Source().Path().parent_path();
      if (folder == Source().Path().parent_path() || folder == base.Source().Path().parent_path()) {
        return i != fileIndex_ ? std::optional(i) : std::nullopt;
      }
    }
    return std::nullopt;
  }

  void CheckMissing() {
    if (file_.StopsBecause() != Stop::kEndOfFile || file_.Header() == UnitHeader::kMissing) {
      return;
    }
    std::vector<std::int32_t> codes = MeantCodes();
    const auto isMissing = [&codes](std::int32_t code) {
      return !std::binary_search(codes.begin(), codes.end(), code);
    };
    if (const std::optional<std::uint32_t> baseTable = BaseTable()) {
      const UnitFile& base = *workspace_.files[*baseTable].units;
      std::vector<std::int32_t> found;
      for (const std::uint32_t index : base.Units()) {
        const UnitLine& line = base.Lines()[index];
        if (IsMeant(line) && isMissing(line.code)) {
          Finding& finding = AddMissing(Severity::kWarning, "units.missing.base", line.code,
                                        WithoutBlanksAtTheEnd(line.name));
          finding.related.push_back(
              {PlaceIn(*baseTable, line.codeField),
               {"related.base", {std::string(WithoutBlanksAtTheEnd(line.name))}}});
          found.push_back(line.code);
        }
      }
      codes.insert(codes.end(), found.begin(), found.end());
      std::sort(codes.begin(), codes.end());
    }
    for (const LibraryUnit& unit : LibraryUnits()) {
      if (NamesAUnit(unit.code) && isMissing(unit.code)) {
        AddMissing(Severity::kNote, "units.missing.library", unit.code, unit.name);
      }
    }
  }

  Finding& AddMissing(Severity severity, const char* message, std::int32_t code,
                      std::string_view name) {
    Finding& finding = AddToFile(RuleId::kUnitMissing, severity,
                                 {message, {std::to_string(code), std::string(name)}});
    finding.key = std::to_string(code);
    return finding;
  }

  const Workspace& workspace_;
  std::uint32_t fileIndex_;
  const UnitFile& file_;
  Findings& findings_;
};

}  // namespace

void CheckUnits(const Workspace& workspace, std::uint32_t fileIndex, Findings& findings) {
  UnitCheck(workspace, fileIndex, findings).Run();
}

}  // namespace KelmoLibs::Lang
