#include "unittables/language_table.h"

#include <memory>
#include <optional>

#include "frame/messages.h"
#include "platform/files.h"
#include "text/file_path.h"
#include "text/line_reader.h"
#include "text/utf8.h"
#include "unittables/unit_line.h"

namespace KelmoLibs::Localize {
namespace {

constexpr std::int32_t kLoaded = 0;
constexpr std::int32_t kLoadingFailed = -1;
constexpr std::int32_t kNoTable = -2;

constexpr std::size_t kHeaderFields = 2;
constexpr std::size_t kUnitFields = 3;

// The key of the language: the first of exactly two fields. The second one is for readers of the
// file.
std::optional<std::wstring> ReadHeader(LineReader& lines) {
  const std::optional<std::string_view> line = lines.Next();
  if (!line) {
    return std::nullopt;
  }
  std::wstring decoded = DecodeUtf8(*line);
  const auto fields = SplitUnitLine(decoded, kHeaderFields, kHeaderFields + 1);
  if (fields.size() != kHeaderFields) {
    return std::nullopt;
  }
  return std::wstring(fields[0]);
}

// False if the line is not a unit. The first line with a code stays; a later one is ignored,
// without a message.
bool AddUnit(std::string_view line, LocalizedUnits& units) {
  std::wstring decoded = DecodeUtf8(line);
  const auto fields = SplitUnitLine(decoded, kUnitFields, kUnitFields);
  if (fields.empty()) {
    return false;
  }
  units.try_emplace(IntegerField(fields[0].data()),
                    LocalizedUnit{std::wstring(fields[1]), std::wstring(fields[2])});
  return true;
}

// Like AddUnit, but also false if there is no memory.
bool TryToAddUnit(std::string_view line, LocalizedUnits& units) noexcept {
  try {
    return AddUnit(line, units);
  } catch (...) {
    return false;
  }
}

void ReadUnits(LineReader& lines, const std::wstring& path, LocalizedUnits& units,
               ErrorList& messages) {
  while (const std::optional<std::string_view> line = lines.Next()) {
    if (!line->empty() && !TryToAddUnit(*line, units)) {
      messages.Append(UnitLineMessage(DecodeUtf8(*line), path));
    }
  }
}

}  // namespace

std::wstring LanguageUnitTableName(std::wstring_view language) {
  std::wstring name = L"LANG/";
  name += language;
  name += L"-val.txt";
  return name;
}

std::int32_t LoadLanguageUnitTable(std::wstring_view folder, std::wstring_view fileName,
                                   LocalizedUnitTable& table, ErrorList& messages) {
  const std::wstring path = JoinPath(folder, fileName);
  bool headerRead = false;
  try {
    if (const std::unique_ptr<ByteSource> file = OpenTextFile(path)) {
      LineReader lines(*file);
      if (const std::optional<std::wstring> language = ReadHeader(lines)) {
        headerRead = true;
        ReadUnits(lines, path, table[*language], messages);
        return kLoaded;
      }
    }
  } catch (...) {
    if (headerRead) {
      messages.Append(DictionaryLoadingErrorMessage(path));
      return kLoadingFailed;
    }
  }
  messages.Append(UnitTableNotFoundMessage(path));
  return kNoTable;
}

}  // namespace KelmoLibs::Localize
