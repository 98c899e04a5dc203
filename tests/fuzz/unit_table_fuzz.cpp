// Reads a default unit table of any bytes: its text, its rows, and the file that ExportPhyVal
// writes.
#include <cwchar>
#include <string>
#include <vector>

#include "tests/fuzz/fuzz_target.h"
#include "tests/model/disagreement.h"
#include "tests/model/model.h"
#include "tests/support/encode_utf8.h"
#include "tests/support/unit_rows.h"
#include "unittables/default_table.h"

using namespace KelmoLibs::Localize;

namespace {

std::wstring TextOf(std::string_view bytes) {
  std::wstring text;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const unsigned low = static_cast<unsigned char>(bytes[i]);
    const unsigned high = static_cast<unsigned char>(bytes[i + 1]);
    text += static_cast<wchar_t>(low + 256 * high);
  }
  return text.substr(0, text.find(L'\0'));
}

UnitRows RowsOf(const std::wstring& text) {
  UnitRows rows;
  std::wstring rest = text + L'\n';
  for (std::size_t end = 0; (end = rest.find(L'\n')) != std::wstring::npos;
       rest.erase(0, end + 1)) {
    const std::vector<std::wstring> fields = model::SplitUnitLine(rest.substr(0, end), 4);
    if (fields.size() == 4) {
      rows.push_back({model::IntegerOf(fields[0]), std::wcstod(fields[1].c_str(), nullptr),
                      fields[2], fields[3]});
    }
  }
  return rows;
}

std::string FileOf(const std::wstring& text) {
  std::string bytes;
  for (const wchar_t c : text) {
    bytes += c == L'\n' ? "\r\n" : EncodeUtf8(static_cast<char32_t>(c));
  }
  return bytes + "\r\n";
}

}  // namespace

void CheckWith(std::string_view bytes) {
  const std::wstring text = TextOf(bytes);
  if (DecodeUnitTable(bytes) != text) {
    throw Disagreement("the text of the table");
  }
  Phyval::UnitCatalogue catalogue;
  ReadUnitTable(text, catalogue);
  if (::RowsOf(catalogue) != RowsOf(text)) {
    throw Disagreement("the rows of the table");
  }
  if (ExportedUnitTable(text) != FileOf(text)) {
    throw Disagreement("the exported file");
  }
}
