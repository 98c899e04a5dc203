#include "unittables/default_table.h"

#include "platform/embedded_table.h"
#include "platform/files.h"
#include "text/utf8.h"
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
  std::wstring text(bytes.size() / 2, L'\0');
  std::size_t length = 0;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto low = static_cast<unsigned char>(bytes[i]);
    const auto high = static_cast<unsigned char>(bytes[i + 1]);
    const auto unit = static_cast<wchar_t>(low | (unsigned{high} << 8U));
    if (unit == L'\0') {
      break;
    }
    text[length++] = unit;
  }
  text.resize(length);
  return text;
}

void ReadUnitTable(std::wstring_view text, Phyval::UnitCatalogue& catalogue) {
  const std::vector<std::wstring_view> lines = SplitText(text, L"\n");
  catalogue.reserve(lines.size());
  std::wstring copy;
  for (const std::wstring_view line : lines) {
    copy = line;
    const std::vector<std::wstring_view> fields = SplitUnitLine(copy, kFields, kFields + 1);
    if (fields.size() == kFields) {
      catalogue.emplace_back(IntegerField(fields[0].data()), NumberField(fields[1].data()),
                             fields[2].data(), fields[3].data());
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
