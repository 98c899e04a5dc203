#include "host/unit_loader.h"

#include <optional>
#include <utility>

#include "host/first_library_units.h"
#include "host/unreadable_file.h"
#include "platform/native_files.h"

namespace KelmoLibs::Host {

bool UnitLoader::Start(UnitStart start) {
  std::optional<UnitCollection> units = UnitCollection();
  if (start == UnitStart::kBuiltIn) {
    units = BuiltInUnits();
  } else if (start == UnitStart::kAfterInit) {
    units = UnitsOfTable();
  }
  // not covered, true of `!units`: the build puts a table into each file
  if (!units) {
    // not covered: the same
    return false;
  }
  units_ = *std::move(units);
  return true;
}

bool UnitLoader::Add(UnitRow row, ProblemList* problems) {
  if (const std::string fault = FaultOf(row); !fault.empty()) {
    if (problems != nullptr) {
      problems->Append([&] {
        Problem problem;
        problem.code = ProblemCode::kUnit;
        problem.severity = ProblemSeverity::kError;
        problem.key = std::to_string(row.code);
        problem.detail = fault;
        return problem;
      });
    }
    return false;
  }
  row.code = NormalCode(row.code);
  units_.Put(std::move(row));
  return true;
}

bool UnitLoader::AddFile(const std::string& path, UnitFileFormat format, ProblemList* problems) {
  if (HasZero(ProblemCode::kCannotReadUnits, path, problems)) {
    return false;
  }
  Localize::FileBytes bytes;
  if (const Localize::SystemError error = Localize::ReadFileAt(path, bytes); !error.IsNone()) {
    TellUnreadable(ProblemCode::kCannotReadUnits, path, Localize::DescribeError(error), problems);
    return false;
  }
  AddMemory(bytes.View(), path, format, problems);
  return true;
}

void UnitLoader::AddMemory(std::string_view bytes, std::string_view name, UnitFileFormat format,
                           ProblemList* problems) {
  switch (format) {
    case UnitFileFormat::kUnits:
      ReadUnitFile(bytes, name, units_, problems);
      break;
    case UnitFileFormat::kFourFields:
      ReadFourFields(bytes, name, units_, problems);
      break;
    case UnitFileFormat::kNames:
      ReadUnitNames(bytes, name, units_, problems);
      break;
  }
}

}  // namespace KelmoLibs::Host
