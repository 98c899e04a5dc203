#include "host/unit_loader.h"

#include <utility>

#include "host/unreadable_file.h"
#include "phyval/unit_catalogue.h"
#include "platform/native_files.h"
#include "platform/own_unit_table.h"
#include "text/utf8.h"
#include "unittables/default_table.h"

namespace KelmoLibs::Host {
namespace {

std::string Utf8Of(std::wstring_view text) {
  std::string bytes;
  for (const wchar_t c : text) {
    Localize::AppendUtf8(static_cast<char32_t>(c), bytes);
  }
  return bytes;
}

// Names of the first library may end with a blank, which no person would type.
std::string NameOf(std::wstring_view text) {
  return Utf8Of(text.substr(0, text.find_last_not_of(L' ') + 1));
}

UnitCollection BuiltInCollection() {
  UnitCollection units;
  for (const Localize::Phyval::ValueType& given : Localize::Phyval::BuiltInUnits()) {
    UnitRow row;
    row.code = NormalCode(given.code);
    row.factor.high = given.factor;
    row.symbol = Utf8Of(given.symbol);
    row.name = NameOf(given.name);
    units.Put(std::move(row));
  }
  return units;
}

}  // namespace

bool UnitLoader::Start(UnitStart start) {
  UnitCollection units;
  if (start == UnitStart::kBuiltIn) {
    units = BuiltInCollection();
  } else if (start == UnitStart::kAfterInit) {
    const std::string_view table = Localize::FindOwnUnitTable();
    if (table.empty()) {
      return false;
    }
    ReadFourFields(Utf8Of(Localize::DecodeUnitTable(table)), {}, units, nullptr);
  }
  units_ = std::move(units);
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
  if (HasZero(path, problems)) {
    return false;
  }
  Localize::FileBytes bytes;
  if (const Localize::SystemError error = Localize::ReadFileAt(path, bytes); !error.IsNone()) {
    TellUnreadable(path, Localize::DescribeError(error), problems);
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
