// What `kelmo-lang fix` makes of the bytes of a file. It reads and writes no file.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "lang/texts/sentence.h"
#include "lang/unicode/code_page.h"
#include "lang/unicode/utf16.h"

namespace KelmoLibs::Lang {

/// An encoding that a user has named: a code page, or UTF-16 (never Utf16::kNo).
using NamedEncoding = std::variant<CodePage, Utf16>;

/// The encoding with that name: those of FindCodePage, and "utf-16le" and "utf-16be".
std::optional<NamedEncoding> FindEncoding(std::string_view name);

/// The names that FindEncoding knows.
std::vector<std::string> EncodingNames();

struct MendedBytes {
  std::string bytes;              // the bytes of the file if nothing is changed
  std::vector<Sentence> changes;  // empty: nothing is changed
  std::vector<Sentence> left;     // faults that stay
  Sentence refusal;               // if it is not empty, nothing is changed
  Sentence doubt;                 // if it is not empty, another code page fits better
};

/// Translates UTF-16 with a byte-order mark, or if it is named. Removes byte-order marks in front of
/// the id and of keys. Translates from the named code page the lines that are not UTF-8, but not
/// lines of UTF-8 with damaged letters. Replaces CRs by LFs if no line ends with LF. All else stays,
/// so mending the result again changes nothing.
///
/// Tells a doubt, but translates, if GuessCodePage is sure of another code page than the named one.
///
/// Refuses if `encoding` has no character for a byte, or if a host would see another text than
/// before: it must see each id, key and text as before but for byte-order marks, and what was cut
/// may get longer.
MendedBytes MendBytes(std::string_view raw, const std::optional<NamedEncoding>& encoding);

}  // namespace KelmoLibs::Lang
