#include <algorithm>
#include <string>

#include "host/unit_files.h"
#include "host/unit_lines.h"
#include "host/unit_number.h"

namespace KelmoLibs::Host {
namespace {

constexpr std::size_t kFields = 4;

// Why the first library drops or misreads the line; empty if it reads it as it stands.
std::string FaultOfWords(const std::vector<UnitField>& words) {
  if (words.size() < kFields) {
    return "a line needs a code, a factor, a symbol and a name";
  }
  return words.size() > kFields ? "the name has a blank" : "";
}

void ReadLine(std::string_view line, UnitLines& lines, UnitCollection& units) {
  const std::vector<UnitField> words = SplitIntoWords(WithoutComment(line));
  if (words.empty()) {
    return;
  }
  if (const std::string fault = FaultOfWords(words); !fault.empty()) {
    const std::uint32_t column = words.size() > kFields ? words[kFields].column : 0;
    lines.Tell(ProblemCode::kUnitDropped, ProblemSeverity::kError, column, fault);
    return;
  }
  const auto code = ReadCode(words[0].text);
  if (!code) {
    lines.TellFault("\"" + std::string(words[0].text) + "\" is not the code of a unit",
                    words[0].column);
    return;
  }
  const auto factor = ReadUnitNumber(words[1].text);
  if (!factor || words[1].text.find('/') != std::string_view::npos) {
    lines.TellFault("\"" + std::string(words[1].text) + "\" is not a number, such as 0.0254",
                    words[1].column);
    return;
  }
  UnitRow row;
  row.code = *code;
  row.factor = *factor;
  row.symbol = words[2].text;
  row.name = words[3].text;
  // The table of the first library has a unit with the factor 0. Sealing the units tells it.
  UnitRow checked = row;
  const bool hasNoFactor = row.factor.high == 0 && !row.IsKind();
  checked.factor.high = hasNoFactor ? 1 : row.factor.high;
  if (const std::string fault = FaultOf(checked); !fault.empty()) {
    lines.TellFault(fault);
  } else if (lines.IsNew(row.code = NormalCode(row.code))) {
    units.Put(std::move(row));
  }
}

}  // namespace

void ReadFourFields(std::string_view bytes, std::string_view fileName, UnitCollection& units,
                    ProblemList* problems) {
  UnitLines lines(bytes, fileName, problems);
  while (const auto line = lines.Next()) {
    ReadLine(*line, lines, units);
  }
}

}  // namespace KelmoLibs::Host
