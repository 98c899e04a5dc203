// One line of a dictionary: key, separator, text.
#pragma once

#include <string_view>

namespace KelmoLibs::Localize {

/// Views into the line that was split.
struct DictionaryLine {
  std::string_view key;
  std::string_view text;
};

/// Splits a line, given as UTF-8 without its LF, at its first run of spaces and tabs. Every
/// separator is ASCII, so that the bytes split where the characters would and only what is kept
/// needs decoding.
///
/// The key is everything in front of the run, possibly nothing, kept as it is (a CR included). The
/// text is everything behind it, with spaces, tabs, LF and CR cut from its end. Two oddities stay:
/// a line without a separator is all key and not trimmed; a text of nothing but blanks keeps them,
/// without the first separator.
DictionaryLine SplitDictionaryLine(std::string_view line) noexcept;

}  // namespace KelmoLibs::Localize
