#include "host/unit_row.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "host/typed_blanks.h"
#include "kelmo/kelmo.h"
#include "text/utf8_characters.h"

namespace KelmoLibs::Host {
namespace {

constexpr std::string_view kMinus = "\u2212";

// The digits 0 of scripts in which people write numbers, and the last ones; they have as many bytes.
constexpr std::pair<std::string_view, std::string_view> kDigits[] = {
    {"\u0660", "\u0669"}, {"\u06F0", "\u06F9"}, {"\u0966", "\u096F"},
    {"\u09E6", "\u09EF"}, {"\u0E50", "\u0E59"}, {"\uFF10", "\uFF19"}};

bool BeginsNumber(std::string_view text) noexcept {
  constexpr std::string_view kOfNumbers = "+-.,0123456789";
  const auto isFirst = [text](const auto& digits) {
    const std::string_view first = text.substr(0, digits.first.size());
    return first >= digits.first && first <= digits.second;
  };
  return kOfNumbers.find(text.front()) != std::string_view::npos ||
         text.substr(0, kMinus.size()) == kMinus ||
         std::any_of(std::begin(kDigits), std::end(kDigits), isFirst);
}

bool IsControl(char c) noexcept { return static_cast<unsigned char>(c) < 0x20 || c == '\x7F'; }

bool EndsWithBlank(std::string_view text) noexcept {
  std::size_t start = text.size() - 1;
  while (start > 0 && Localize::IsContinuation(text[start])) {
    --start;
  }
  return BlankLength(text.substr(start)) != 0;
}

}  // namespace

std::string_view FaultOfCode(std::int32_t code) noexcept {
  if (code <= 0) {
    return "the code is not above 0";
  }
  return code >= 100 && code < kCodesOfKind ? "codes from 100 to 999 are not allowed" : "";
}

std::string FaultOfUnitText(std::string_view text, std::string_view what) {
  const auto fault = [what](const char* reason) { return "the " + std::string(what) + reason; };
  if (text.empty()) {
    return {};
  }
  if (text.size() > KELMO_LONGEST_UNIT_TEXT) {
    return fault(" has more than 255 bytes");
  }
  if (!Localize::IsUtf8(text)) {
    return fault(" is not UTF-8");
  }
  if (std::any_of(text.begin(), text.end(), IsControl)) {
    return fault(" has a control character");
  }
  if (BlankLength(text) != 0 || EndsWithBlank(text)) {
    return fault(" begins or ends with a blank");
  }
  if (BeginsNumber(text)) {
    return fault(" begins like a number");
  }
  return {};
}

std::string FaultOf(const UnitRow& row) {
  if (const std::string_view fault = FaultOfCode(row.code); !fault.empty()) {
    return std::string(fault);
  }
  const double factor = row.factor.high;
  const double offset = row.offset.high;
  if (row.IsKind()) {
    if (factor != 0 || offset != 0 || row.difference != 0) {
      return "a kind has no factor, no offset and no difference";
    }
  } else {
    if (!(std::isnormal(factor) && factor > 0)) {
      return "the factor is not a number above 0";
    }
    if (!std::isfinite(offset)) {
      return "the offset is not a number";
    }
    if (!row.IsPoint() && offset != 0) {
      return "a unit with an offset needs the code of the unit of its differences";
    }
    if (row.IsPoint() && (!FaultOfCode(row.difference).empty() || IsKindCode(row.difference) ||
                          KindOf(row.difference) == KindOf(row.code))) {
      return "the unit of the differences is not a unit of another kind";
    }
    if (row.symbol.empty()) {
      return "the symbol is empty";
    }
  }
  std::string fault = FaultOfUnitText(row.symbol, "symbol");
  return fault.empty() ? FaultOfUnitText(row.name, "name") : fault;
}

}  // namespace KelmoLibs::Host
