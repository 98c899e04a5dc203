// Splits unit tables into lines, lines into fields, and converts fields to numbers. docs/formats.md
// has the rules.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace KelmoLibs::Localize {

/// The parts of `text` between the delimiters; the last part may be empty. Views into `text`.
/// Precondition: `delimiter` is not empty.
std::vector<std::wstring_view> SplitText(std::wstring_view text, std::wstring_view delimiter);

/// Splits `line` at spaces and tabs into the `count` fields that a line of its table has. First
/// removes everything from the first "//" on, and replaces control characters (CR included) and
/// characters that are neither graphic nor blank (platform/characters.h) by spaces.
///
/// Field number `count` extends to the end of the line and includes its blanks. If it has several
/// words, each word but the first starts one more field, which extends to the end of the line too:
/// so a caller can see that there are too many words: with 2 fields, L"a b c" gives L"a", L"b c"
/// and L"c". A line of fewer than `count` words has no fields.
///
/// Returns at most `maxFields` fields, because a line may have millions of words. They are views
/// into `line`. Each field is terminated by a zero: one that replaces its separator in `line`, or
/// the one at the end of `line`.
std::vector<std::wstring_view> SplitUnitLine(std::wstring& line, std::int32_t count,
                                             std::size_t maxFields);

/// The integer at the start of `field`, which is zero-terminated; 0 if there is none. A number
/// beyond 32 bits becomes the largest or the smallest one.
std::int32_t IntegerField(const wchar_t* field);

/// The decimal fraction at the start of `field`, by the current locale of the C runtime
/// (setlocale). Tables have decimal points: under a locale with a decimal comma, a number ends
/// before its point.
double NumberField(const wchar_t* field);

}  // namespace KelmoLibs::Localize
