// The text of unit tables: cut into lines, lines into fields, fields into numbers. docs/formats.md
// has the rules.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace KelmoLibs::Localize {

/// The pieces of `text` between the places where `delimiter`, which must not be empty, stands; the
/// last one is what follows it, possibly nothing. Views into `text`.
std::vector<std::wstring_view> SplitText(std::wstring_view text, std::wstring_view delimiter);

/// Takes its comment from `line`, "//" and all behind it, and puts a space in the place of each character
/// that is neither graphic nor blank (platform.h): CR and the other control characters.
void CleanUnitLine(std::wstring& line);

/// The fields of a cleaned line whose table has `count` of them: the words between runs of spaces and
/// tabs. The last one is the rest of the line, blanks at its end included. Each further word of that
/// rest gives one field more, the rest from there on: so a line with a blank in its last field gives
/// more than `count`, and readers tell by it. Fewer than `count` are none. Views into `cleaned`, no
/// more of them than `most`: a line may have millions. Each ends with a zero, which takes the place of
/// the separator behind it.
std::vector<std::wstring_view> UnitFields(std::wstring& cleaned, std::int32_t count,
                                          std::size_t most);

/// The fields of a line as it stands in its table, each a text of its own.
std::vector<std::wstring> SplitUnitLine(std::wstring line, std::int32_t count);

/// The number that a field begins with, which ends with a zero, 0 where it begins with none. Beyond 32 bits it is the
/// largest or the smallest that there is.
std::int32_t IntegerField(const wchar_t* field);

/// The same for a decimal fraction, by the runtime's current locale (setlocale): under one with a
/// decimal comma the number ends in front of its point. Tables are written with points.
double NumberField(const wchar_t* field);

}  // namespace KelmoLibs::Localize
