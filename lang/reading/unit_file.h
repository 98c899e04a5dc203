// A unit table of a language: what the library reads of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frame/error_list.h"
#include "lang/reading/source_file.h"
#include "lang/reading/windows_text.h"

namespace KelmoLibs::Lang {

/// A line with the fields of a unit: views into the file. The name extends to the end of the line
/// or to its comment, and may have characters that the library reads as blanks (TextAsRead).
struct UnitLine {
  std::uint32_t line = 0;
  std::int32_t code = 0;
  std::string_view codeField;
  std::string_view symbol;
  std::string_view name;
};

/// What the first line has.
enum class UnitHeader : std::uint8_t {
  kWhole,    // two fields
  kMissing,  // there is no first line
  kEmpty,    // no field: the line is empty, blank or a comment
  kTooFew,   // one field
  kTooMany,  // more than two
};

class UnitFile {
 public:
  UnitFile(std::string name, std::filesystem::path path, std::string raw);

  const SourceFile& Source() const noexcept { return source_; }

  /// Unless this is kWhole, the library refuses the whole table: it has the message EV111, and no
  /// units.
  UnitHeader Header() const noexcept { return header_; }

  /// The first line, as far as the library reads it.
  std::string_view HeaderLine() const noexcept { return headerLine_; }

  /// The first field of the first line. A byte-order mark belongs to it.
  std::string_view LanguageKey() const noexcept { return languageKey_; }

  /// The lines behind the first one that have the fields of a unit, in the order of the file. They
  /// are given for a refused table too: what the library would read of it with a whole header.
  const std::vector<UnitLine>& Lines() const noexcept { return lines_; }

  /// Lines with too few fields: the message EV101 for each.
  const std::vector<std::string_view>& DroppedLines() const noexcept { return dropped_; }

  /// The first line of each code, which counts: indices into Lines(), sorted by code.
  const std::vector<std::uint32_t>& Units() const noexcept { return units_; }

  /// The line of Units() with `code`, or null.
  const UnitLine* Find(std::int32_t code) const noexcept;

  Stop StopsBecause() const noexcept { return end_.stop; }

  /// Offset in Raw() of the byte at which the library stops; the size of the file if it does not.
  std::size_t StopsAt() const noexcept { return end_.at; }

  /// Appends the messages that a load of this file gives. `path` is the result of JoinPath.
  void AppendMessages(std::wstring_view path, Localize::ErrorList& messages) const;

 private:
  void ReadHeader(std::string_view line);
  void ReadUnit(std::uint32_t number, std::string_view line);
  void FindUnits();

  SourceFile source_;
  UnitHeader header_ = UnitHeader::kMissing;
  std::string_view headerLine_;
  std::string_view languageKey_;
  std::vector<UnitLine> lines_;
  std::vector<std::string_view> dropped_;
  std::vector<std::uint32_t> units_;
  ReadEnd end_;
};

/// `field` as the library on Windows reads it, as UTF-8: a space replaces each character that it
/// does not keep (IsKeptByWindows), and two spaces a character beyond U+FFFF.
std::string TextAsRead(std::string_view field);

/// A line of the default unit table, which has four fields: code, factor, symbol, name.
struct DefaultUnitLine {
  std::wstring text;                 // without its line end
  std::vector<std::wstring> fields;  // none, or at least four; the fourth extends to the line's end
  std::int32_t code = 0;             // 0 if there are no fields
};

/// The lines of the default unit table. `bytes` are UTF-16LE, as the library has them. Only a line
/// with exactly four fields is a row.
std::vector<DefaultUnitLine> ReadDefaultUnitLines(std::string_view bytes);

}  // namespace KelmoLibs::Lang
