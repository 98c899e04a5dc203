// One line of a dictionary: key, separator, text.
#pragma once

#include <string_view>

namespace KelmoLibs::Localize {

/// Views into the line that was split.
struct DictionaryLine {
  std::string_view key;
  std::string_view text;
};

/// Splits a line of UTF-8, without its LF, at its first run of spaces and tabs. All separators are
/// ASCII, so the bytes can be split before they are decoded.
///
/// The key is everything before the run. It may be empty, and it is not trimmed: it may contain a
/// CR. The text is everything after the run, without spaces, tabs, LF and CR at its end. Two
/// oddities must stay: a line without a separator is a key, and is not trimmed; a text of nothing
/// but blanks keeps all of them but the first separator.
DictionaryLine SplitDictionaryLine(std::string_view line) noexcept;

}  // namespace KelmoLibs::Localize
