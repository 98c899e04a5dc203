// Works on local rows: the library's own objects of the process are not part of this program.
// Tested by the transcripts in tests/data/lang/transcripts.
#include "lang/commands/units.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "lang/commands/rows.h"
#include "lang/reading/unit_file.h"
#include "lang/report/visible_text.h"
#include "lang/texts/embedded_texts.h"
#include "lang/unicode/utf8_from_wide.h"
#include "phyval/unit_catalogue.h"
#include "unittables/default_table.h"

namespace KelmoLibs::Lang {
namespace {

using Localize::Phyval::FindUnit;
using Localize::Phyval::NamesAUnit;
using Localize::Phyval::UnitCatalogue;
using Localize::Phyval::ValueType;

constexpr std::size_t kFields = 4;
constexpr std::int32_t kInch = 10002;

std::string Quoted(std::wstring_view text) { return '"' + VisibleText(Utf8FromWide(text)) + '"'; }

std::string NumberText(double number) {
  constexpr std::size_t kLongest = 32;
  std::array<char, kLongest> digits = {};
  const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  return {digits.data(), result.ptr};
}

UnitCatalogue RowsAfterStart() {
  UnitCatalogue rows;
  Localize::ReadUnitTable(Localize::DecodeUnitTable(EmbeddedUnitTable()), rows);
  return rows;
}

Cells CellsOf(const ValueType& row) {
  return {std::to_string(row.code), NumberText(row.factor), Quoted(row.symbol), Quoted(row.name)};
}

// A line of the default unit table that is meant as a row and gives none.
bool IsLost(const DefaultUnitLine& line) { return line.fields.size() > kFields; }

// Tabs and blanks between the fields as one blank.
std::string ShownLine(const DefaultUnitLine& line) {
  std::string shown;
  for (std::size_t i = 0; i < kFields; ++i) {
    std::wstring_view field = line.fields[i];
    field = field.substr(0, field.find_last_not_of(L' ') + 1);
    shown += (i > 0 ? " " : "") + VisibleText(Utf8FromWide(field));
  }
  return shown;
}

class Listing {
 public:
  explicit Listing(const Texts& texts) : texts_(texts) {}

  void Line(const Sentence& sentence) { text_ += texts_.Say(sentence) + '\n'; }
  void Rows(const std::vector<Cells>& rows) {
    constexpr unsigned kIndent = 2;
    text_ += AlignedRows(rows, kIndent);
  }
  void EmptyLine() { text_ += '\n'; }
  std::string Say(const Sentence& sentence) const { return texts_.Say(sentence); }

  Answer With(int status) && { return {status, std::move(text_), ""}; }

 private:
  const Texts& texts_;
  std::string text_;
};

void AddCatalogue(const char* title, const UnitCatalogue& catalogue, Listing& listing) {
  listing.Line({title, {}});
  std::vector<Cells> rows = {
      {listing.Say({"units.list.code", {}}), listing.Say({"units.list.factor", {}}),
       listing.Say({"units.list.symbol", {}}), listing.Say({"units.list.name", {}})}};
  for (const ValueType& row : catalogue) {
    rows.push_back(CellsOf(row));
  }
  listing.Rows(rows);
}

// ---- One code

// What a value with that code or text finds.
struct Lookup {
  const char* when;  // key of a text
  UnitCatalogue rows;
};

// False if no row has the code.
bool AddRow(std::int32_t code, const Lookup& lookup, std::vector<Cells>& rows,
            const Listing& listing) {
  const std::string when = listing.Say({lookup.when, {}});
  for (const ValueType& row : lookup.rows) {
    if (row.code == code) {
      Cells cells = CellsOf(row);
      cells.insert(cells.begin(), when);
      rows.push_back(std::move(cells));
      return true;
    }
  }
  rows.push_back({when, listing.Say({"units.explain.no_row", {}})});
  return false;
}

// Which texts find the unit: its symbol and its name, which may end with a blank.
void AddTexts(std::int32_t code, Lookup& lookup, Listing& listing) {
  const ValueType* const row = FindUnit(lookup.rows, code);
  if (row == nullptr) {
    listing.Line({"units.explain.finds_nothing", {listing.Say({lookup.when, {}})}});
    return;
  }
  listing.Line({"units.explain.finds",
                {listing.Say({lookup.when, {}}), Quoted(row->symbol), Quoted(row->name)}});
  const std::wstring trimmed = row->name.substr(0, row->name.find_last_not_of(L' ') + 1);
  if (FindUnit(lookup.rows, trimmed.c_str()) == nullptr) {
    listing.Line({"units.explain.blank", {Quoted(trimmed)}});
  }
}

void AddReasons(std::int32_t code, Listing& listing) {
  std::uint32_t number = 0;
  for (const DefaultUnitLine& line : ReadDefaultUnitLines(EmbeddedUnitTable())) {
    ++number;
    if (line.code == code && IsLost(line)) {
      listing.Line({"units.explain.lost", {std::to_string(number), ShownLine(line)}});
    }
  }
  if (code == kInch) {
    listing.Line({"units.explain.inch", {}});
  }
}

// The name of a quantity: of the row that describes it, before start-up.
std::string QuantityName(std::int32_t quantity) {
  for (const ValueType& row : Localize::Phyval::BuiltInUnits()) {
    if (row.code == quantity) {
      return ' ' + Quoted(row.name);
    }
  }
  return "";
}

}  // namespace

Answer ListUnits(const Texts& texts) {
  Listing listing(texts);
  AddCatalogue("units.list.before", Localize::Phyval::BuiltInUnits(), listing);
  listing.EmptyLine();
  AddCatalogue("units.list.after", RowsAfterStart(), listing);
  listing.EmptyLine();
  listing.Line({"units.list.lost", {}});
  std::vector<Cells> lost;
  std::uint32_t number = 0;
  for (const DefaultUnitLine& line : ReadDefaultUnitLines(EmbeddedUnitTable())) {
    ++number;
    if (IsLost(line)) {
      lost.push_back({listing.Say({"units.list.line", {std::to_string(number)}}), ShownLine(line),
                      listing.Say({"units.list.fields", {std::to_string(line.fields.size())}})});
    }
  }
  listing.Rows(lost);
  return std::move(listing).With(0);
}

Answer ExplainUnit(const UnitsExplainOptions& options, const Texts& texts) {
  const std::string& text = options.code;
  std::int32_t code = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), code);
  if (error != std::errc() || end != text.data() + text.size()) {
    return {kStatusWrong, "", LineOf({"units.explain.no_number", {text}}, texts)};
  }
  Listing listing(texts);
  Lookup before = {"units.explain.before", Localize::Phyval::BuiltInUnits()};
  Lookup after = {"units.explain.after", RowsAfterStart()};
  ValueType type(code, 0, L"", L"");
  const std::string quantity = std::to_string(type.GetStype()) + QuantityName(type.GetStype());
  listing.Line(NamesAUnit(code)
                   ? Sentence{"units.explain.unit",
                              {std::to_string(code), quantity, std::to_string(type.GetSid())}}
                   : Sentence{"units.explain.quantity", {std::to_string(code), quantity}});
  listing.EmptyLine();
  std::vector<Cells> rows;
  const bool isBefore = AddRow(code, before, rows, listing);
  const bool isAfter = AddRow(code, after, rows, listing);
  listing.Rows(rows);
  listing.EmptyLine();
  AddTexts(code, before, listing);
  AddTexts(code, after, listing);
  AddReasons(code, listing);
  return std::move(listing).With(isBefore || isAfter ? 0 : kStatusMissing);
}

}  // namespace KelmoLibs::Lang
