// Reads the bytes of a dictionary into a collection of texts.
#pragma once

#include <string_view>

#include "host/problem_list.h"
#include "host/text_collection.h"

namespace KelmoLibs::Host {

struct ReadingOptions {
  bool isLenient = false;
  bool hasUtf16 = false;
  bool hasPercent = false;       // %1 to %99 are placeholders
  bool isOverride = false;       // the texts are meant to stand for those of later files
  bool isOptional = false;       // a file or folder that does not exist is no problem
  bool readsLineBreaks = false;  // a backslash and an n in a text are a line break: no problem
};

/// Reads `bytes`, whose lines end with LF or CR LF. On Windows a byte 0x1A ends them. The first
/// line has the id and the name of the language; each further line that is not empty is an entry.
/// The first text of a key stays.
///
/// Strict, it reads exactly what the first library reads: everything before the first byte that is
/// not UTF-8. Lenient, it skips a leading byte-order mark and bytes that are not UTF-8, and
/// reads a backslash and an n in a text as a line break. It tells what it meets in `problems`, which
/// may be null, but no line breaks that the options ask for. Throws std::bad_alloc; what was added
/// before stays.
void ReadDictionaryBytes(std::string_view bytes, std::string_view fileName,
                         const ReadingOptions& options, TextCollection& texts,
                         ProblemList* problems);

}  // namespace KelmoLibs::Host
