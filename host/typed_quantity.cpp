#include "host/typed_quantity.h"

#include <string>
#include <utility>

#include "host/typed_blanks.h"
#include "host/typed_number.h"
#include "text/ascii_digit.h"
#include "text/utf8_characters.h"

namespace KelmoLibs::Host {
namespace {

// `describe` makes the detail; it may throw std::bad_alloc.
template <class Describer>
void Tell(ProblemCode code, std::uint32_t column, ProblemList* problems,
          Describer describe) noexcept {
  if (problems != nullptr) {
    problems->Append([&] {
      Problem problem;
      problem.code = code;
      problem.severity = ProblemSeverity::kError;
      problem.column = column;
      problem.detail = describe();
      return problem;
    });
  }
}

std::string Quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

std::uint32_t ColumnOf(std::string_view text, std::size_t offset) noexcept {
  return static_cast<std::uint32_t>(Localize::CountWellFormed(text.substr(0, offset))) + 1;
}

// Length of a character at the start that nobody sees: a line break, or a mark of direction.
std::size_t InvisibleLength(std::string_view text) noexcept {
  if (text.front() == '\n' || text.front() == '\r') {
    return 1;
  }
  const std::size_t mark = BidiMarkLength(text);
  return mark != 0 ? mark : BlankLength(text);
}

// A text from the clipboard may end with a line break, and one from a view with a mark of direction.
std::string_view WithoutBlanksAtEnd(std::string_view text) noexcept {
  std::size_t end = 0;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t blank = InvisibleLength(text.substr(i));
    i += blank != 0 ? blank : 1;
    end = blank != 0 ? end : i;
  }
  return text.substr(0, end);
}

std::string DescribeNumber(NumberFault fault, std::string_view rest,
                           const Cldr::NumberFormat& format) {
  switch (fault) {
    case NumberFault::kDecimalMark:
      return rest.substr(0, format.decimalMark.size()) == format.decimalMark
                 ? "there are two"
                 : "it is " + Quoted(format.decimalMark);
    case NumberFault::kGroups: {
      const bool isBlank = format.groupSize == 0 || BlankLength(format.groupMark) != 0;
      return "the decimal mark is " + Quoted(format.decimalMark) + ", and " +
             (isBlank ? "blanks" : "blanks or " + Quoted(format.groupMark)) +
             " may stand between groups of digits";
    }
    case NumberFault::kRange:
    case NumberFault::kTooLong:
      return {};
    default:
      return rest.empty() ? "the text ends here" : Quoted(rest);
  }
}

ProblemCode CodeOf(NumberFault fault) noexcept {
  switch (fault) {
    case NumberFault::kDecimalMark:
      return ProblemCode::kDecimalMark;
    case NumberFault::kGroups:
      return ProblemCode::kGroups;
    case NumberFault::kRange:
    case NumberFault::kTooLong:
      return ProblemCode::kNumberRange;
    default:
      return ProblemCode::kNoNumber;
  }
}

// `10001 meter (m)`.
std::string Describe(const UnitRow& unit, const UnitLabel& label) {
  std::string text = std::to_string(unit.code) + ' ';
  return label.name.empty() ? text.append(label.symbol)
                            : text.append(label.name).append(" (").append(label.symbol).append(")");
}

std::string DescribeSeveral(const UnitSet& units, const LanguageChain& languages,
                            const UnitList& found, std::string_view text) {
  std::string detail = Quoted(text) + " is ";
  std::string_view separator;
  for (const UnitRow* const unit : found) {
    detail.append(separator).append(Describe(*unit, units.LabelOf(*unit, languages)));
    separator = ", or ";
  }
  return detail;
}

bool IsAsciiLetter(char c) noexcept { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool IsMark(std::string_view mark) noexcept {
  return mark.empty() || !(Localize::IsAsciiDigit(mark.front()) || IsAsciiLetter(mark.front()));
}

}  // namespace

bool CanBeRead(const Cldr::NumberFormat& format) noexcept {
  return IsMark(format.decimalMark) && IsMark(format.groupMark) &&
         BlankLength(format.decimalMark) == 0 && format.decimalMark != format.groupMark;
}

kelmo_status FindUnitByText(const UnitSet& units, const LanguageChain& languages, std::int32_t kind,
                            std::string_view text, std::uint32_t column, const UnitRow*& result,
                            ProblemList* problems) noexcept {
  const FoundUnits found = units.FindText(text, kind, languages);
  switch (found.result) {
    case FoundUnits::Result::kFound:
      result = &found.units.Front();
      return KELMO_OK;
    case FoundUnits::Result::kSeveral:
      Tell(ProblemCode::kAmbiguousUnit, column, problems,
           [&] { return DescribeSeveral(units, languages, found.units, text); });
      return KELMO_AMBIGUOUS_UNIT;
    case FoundUnits::Result::kLookalike:
      Tell(ProblemCode::kAmbiguousUnit, column, problems, [&] {
        const UnitRow& unit = found.units.Front();
        return Quoted(text) + " only looks like " + Describe(unit, units.LabelOf(unit, languages)) +
               ": it has letters of another script";
      });
      return KELMO_AMBIGUOUS_UNIT;
    case FoundUnits::Result::kOtherKind:
      Tell(ProblemCode::kOtherKind, column, problems, [&] {
        return Quoted(text) + " is a unit of " +
               units.NameOfKind(KindOf(found.units.Front().code), languages) + ", not of " +
               units.NameOfKind(kind, languages);
      });
      return KELMO_DIFFERENT_KINDS;
    case FoundUnits::Result::kNone:
      break;
  }
  Tell(ProblemCode::kUnknownUnit, column, problems, [&] { return Quoted(text); });
  return KELMO_UNKNOWN_UNIT;
}

kelmo_status ReadQuantity(const UnitSet& units, const LanguageChain& languages,
                          std::string_view text, const TypedQuantityOptions& options,
                          const Cldr::NumberFormat& format, kelmo_quantity& result,
                          ProblemList* problems) noexcept {
  if (const std::size_t valid = Localize::WellFormedUtf8Length(text); valid != text.size()) {
    Tell(ProblemCode::kNoNumber, ColumnOf(text, valid), problems,
         [] { return std::string("the text is not UTF-8"); });
    return KELMO_INVALID_UTF8;
  }
  const TypedNumber number = ReadTypedNumber(text, format);
  if (number.fault != NumberFault::kNone) {
    Tell(CodeOf(number.fault), ColumnOf(text, number.end), problems,
         [&] { return DescribeNumber(number.fault, text.substr(number.end), format); });
    return KELMO_INVALID_TEXT;
  }
  const std::size_t unitBegin = SkipBlanks(text, number.end);
  const std::string_view unitText = WithoutBlanksAtEnd(text.substr(unitBegin));
  const UnitRow* unit = options.unit;
  if (!unitText.empty()) {
    const kelmo_status status = FindUnitByText(units, languages, options.kind, unitText,
                                               ColumnOf(text, unitBegin), unit, problems);
    if (status != KELMO_OK) {
      return status;
    }
  } else if (unit == nullptr) {
    Tell(ProblemCode::kNoUnit, ColumnOf(text, number.end), problems, [] { return std::string(); });
    return KELMO_INVALID_TEXT;
  }
  if (unit->IsPoint() && options.relativeTolerance != 0) {
    return KELMO_POINT_UNIT;
  }
  const bool isOfDigits = options.absoluteTolerance == 0 && options.relativeTolerance == 0;
  result =
      kelmo_quantity_of(number.number, isOfDigits ? number.lastDigit : options.absoluteTolerance,
                        options.relativeTolerance, unit->code);
  return KELMO_OK;
}

}  // namespace KelmoLibs::Host
