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

/// Cuts `line` in front of its first "//", and makes a space of CR, of the other control characters, and of
/// whatever else platform.h calls neither graphic nor a blank. Gives the fields of what is left, without
/// the spaces and tabs in between; a line of its table has `count` of them. Field number `count` goes on to
/// the end of the line, whatever blanks it holds. Readers must see when it holds several words: from each
/// of these but the first, a further field begins, which goes on to the end as well. A line with fewer than
/// `count` words has no field. Views into `line`, no more of them than `most`: a line may have millions.
/// Each ends with a zero, which takes the place of the separator behind it.
std::vector<std::wstring_view> SplitUnitLine(std::wstring& line, std::int32_t count,
                                             std::size_t most);

/// The number that a field begins with, which ends with a zero, 0 where it begins with none. Beyond 32 bits it is the
/// largest or the smallest that there is.
std::int32_t IntegerField(const wchar_t* field);

/// The same for a decimal fraction, by the runtime's current locale (setlocale): under one with a
/// decimal comma the number ends in front of its point. Tables are written with points.
double NumberField(const wchar_t* field);

}  // namespace KelmoLibs::Localize
