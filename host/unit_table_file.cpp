#include <string>

#include "host/unit_files.h"
#include "host/unit_lines.h"
#include "host/unit_number.h"

namespace KelmoLibs::Host {
namespace {

// The columns of a line.
enum Column : std::size_t { kCode, kFactor, kOffset, kSymbol, kName, kDifference };

constexpr std::size_t kFewest = kName + 1;
constexpr std::size_t kMost = kDifference + 1;

// Reads `field`, if it is not empty. False, and a problem, if it is no number.
bool TakeNumber(const UnitField& field, const UnitLines& lines, DoubleDouble& result) {
  if (field.text.empty()) {
    return true;
  }
  const auto number = ReadUnitNumber(field.text);
  if (!number) {
    lines.TellFault("\"" + std::string(field.text) + "\" is not a number, such as 0.0254 or 5/9",
                    field.column);
    return false;
  }
  result = *number;
  return true;
}

bool TakeCode(const UnitField& field, const UnitLines& lines, std::int32_t& result) {
  const auto code = ReadCode(field.text);
  if (!code) {
    lines.TellFault("\"" + std::string(field.text) + "\" is not the code of a unit", field.column);
    return false;
  }
  result = *code;
  return true;
}

void ReadLine(std::string_view line, UnitLines& lines, UnitCollection& units) {
  const std::vector<UnitField> fields = SplitAtTabs(line);
  if (fields.size() < kFewest || fields.size() > kMost) {
    lines.TellFault(
        "a line has 5 or 6 fields with tabs between them: code, factor, offset, symbol, "
        "name, difference; this one has " +
        std::to_string(fields.size()));
    return;
  }
  UnitRow row;
  const bool hasDifference = fields.size() > kDifference && !fields[kDifference].text.empty();
  if (!TakeCode(fields[kCode], lines, row.code) ||
      !TakeNumber(fields[kFactor], lines, row.factor) ||
      !TakeNumber(fields[kOffset], lines, row.offset) ||
      (hasDifference && !TakeCode(fields[kDifference], lines, row.difference))) {
    return;
  }
  row.symbol = fields[kSymbol].text;
  row.name = fields[kName].text;
  if (const std::string fault = FaultOf(row); !fault.empty()) {
    lines.TellFault(fault);
  } else if (lines.IsNew(row.code = NormalCode(row.code))) {
    units.Put(std::move(row));
  }
}

}  // namespace

void ReadUnitFile(std::string_view bytes, std::string_view fileName, UnitCollection& units,
                  ProblemList* problems) {
  UnitLines lines(bytes, fileName, problems);
  while (const auto line = lines.Next()) {
    if (line->find_first_not_of(" \t") != std::string_view::npos && line->front() != '#') {
      ReadLine(*line, lines, units);
    }
  }
}

}  // namespace KelmoLibs::Host
