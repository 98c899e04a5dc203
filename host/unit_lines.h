// The lines of a file of units, and what is told about them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/problem_list.h"

namespace KelmoLibs::Host {

/// Reads the lines of `bytes`. Skips a byte-order mark in front of them, and the CR in front of an
/// LF. Lines that are not UTF-8 are told, and left out.
class UnitLines {
 public:
  /// `problems` may be null.
  UnitLines(std::string_view bytes, std::string_view fileName, ProblemList* problems) noexcept;

  /// The first line; nothing if there is none, or if it is left out.
  std::optional<std::string_view> First() noexcept;

  /// The next line; nothing at the end.
  std::optional<std::string_view> Next() noexcept;

  /// Tells a problem of the current line. `column` is in characters, from 1; 0: the whole line.
  void Tell(ProblemCode code, ProblemSeverity severity, std::uint32_t column,
            std::string_view detail) const noexcept;

  /// The line is dropped.
  void TellFault(std::string_view reason, std::uint32_t column = 0) const noexcept {
    Tell(ProblemCode::kUnit, ProblemSeverity::kError, column, reason);
  }

  /// Whether no line before had the code; if one had, tells that this line is dropped. Throws only
  /// std::bad_alloc.
  bool IsNew(std::int32_t code);

 private:
  // Takes a line. Nothing, and a problem, if it is not UTF-8. Precondition: there is one.
  std::optional<std::string_view> Take() noexcept;

  std::string_view rest_;
  std::string_view fileName_;
  ProblemList* problems_;
  std::uint32_t number_ = 0;
  std::set<std::int32_t> codes_;
};

/// A part of a line.
struct UnitField {
  std::string_view text;
  std::uint32_t column;  // in characters, from 1
};

/// The parts of a line between single tabs, without the blanks around them. At least one.
std::vector<UnitField> SplitAtTabs(std::string_view line);

/// The words of a line, separated by blanks and tabs. Control characters separate too.
std::vector<UnitField> SplitIntoWords(std::string_view line);

/// The line without the comment that begins with the first "//".
std::string_view WithoutComment(std::string_view line) noexcept;

/// The integer that the whole text is.
std::optional<std::int32_t> ReadCode(std::string_view text) noexcept;

}  // namespace KelmoLibs::Host
