// Texts of files as people see them: nothing in them is invisible.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace KelmoLibs::Lang {

/// `bytes` as UTF-8 that can be printed: a tab becomes "→", a byte that is not UTF-8 "<E9>", another
/// character that cannot be seen "<U+00A0>". All else stays.
std::string VisibleText(std::string_view bytes);

/// `bytes` as UTF-8: a byte that is not UTF-8 becomes "<E9>", all else stays.
std::string WellFormedText(std::string_view bytes);

/// Takes the first character off `bytes`, which are not empty: its bytes, or one byte that is not
/// UTF-8.
std::string_view TakeCharacter(std::string_view& bytes) noexcept;

/// Columns that `text`, a result of VisibleText, takes on a terminal.
unsigned WidthOf(std::string_view text);

/// A part of a line around a place.
struct Excerpt {
  std::string text;        // printable
  unsigned markStart = 0;  // columns in front of the marked part
  unsigned markWidth = 0;  // columns of the marked part, at least 1
};

/// The line from which `length` code points at byte `offset` are marked, or a part of it that takes
/// at most `width` columns, where "…" stands for what is cut. The cost depends on `width` only.
Excerpt ExcerptOf(std::string_view line, std::size_t offset, std::uint32_t length, unsigned width);

}  // namespace KelmoLibs::Lang
