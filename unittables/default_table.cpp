#include "unittables/default_table.h"

#include "frame/platform.h"
#include "frame/utf8.h"
#include "unittables/unit_line.h"

namespace KelmoLibs::Localize {
namespace {

constexpr const wchar_t* kExportPath = L"C:\\phyval.txt";
constexpr std::size_t kFields = 4;

}  // namespace

std::int32_t LoadDefaultUnitTable(bool exportToFile, Phyval::UnitCatalogue& catalogue) {
  catalogue.clear();
  const EmbeddedTable table = FindEmbeddedUnitTable();
  if (table.status == EmbeddedTable::Status::kFound) {
    const std::wstring text = DecodeUnitTable(table.bytes);
    if (exportToFile) {
      WriteWholeFile(kExportPath, ExportedUnitTable(text));
    }
    ReadUnitTable(text, catalogue);
  }
  return static_cast<std::int32_t>(table.status);
}

std::wstring DecodeUnitTable(std::string_view bytes) {
  std::wstring text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto low = static_cast<unsigned char>(bytes[i]);
    const auto high = static_cast<unsigned char>(bytes[i + 1]);
    const auto unit = static_cast<wchar_t>(low | (unsigned{high} << 8U));
    if (unit == L'\0') {
      break;
    }
    text += unit;
  }
  return text;
}

void ReadUnitTable(std::wstring_view text, Phyval::UnitCatalogue& catalogue) {
  for (const std::wstring_view line : SplitText(text, L"\n")) {
    const std::vector<std::wstring> fields = SplitUnitLine(std::wstring(line), kFields);
    if (fields.size() == kFields) {
      catalogue.emplace_back(IntegerField(fields[0]), NumberField(fields[1]), fields[2].c_str(),
                             fields[3].c_str());
    }
  }
}

std::string ExportedUnitTable(std::wstring_view text) {
  constexpr std::string_view kLineEnd = "\r\n";
  std::string bytes;
  for (const wchar_t c : text) {
    if (c == L'\n') {
      bytes += kLineEnd;
    } else {
      AppendUtf8(static_cast<char32_t>(c), bytes);
    }
  }
  bytes += kLineEnd;
  return bytes;
}

}  // namespace KelmoLibs::Localize
