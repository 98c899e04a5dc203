#include "dictionary/dictionary_line.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "storage/word.h"

namespace KelmoLibs::Localize {
namespace {

bool IsSeparator(char c) noexcept { return c == ' ' || c == '\t'; }

bool IsTrimmed(char c) noexcept { return IsSeparator(c) || c == '\n' || c == '\r'; }

// Offset of the first separator, or the length of the line.
std::size_t FirstSeparator(std::string_view line) noexcept {
  std::size_t offset = 0;
  for (; offset + kWordBytes <= line.size(); offset += kWordBytes) {
    const std::uint64_t word = LoadWord(line.data() + offset);
    const std::uint64_t separators =
        ZeroBytes(word ^ (' ' * kEveryByte)) | ZeroBytes(word ^ ('\t' * kEveryByte));
    if (separators != 0) {
      return offset + LowestByteIndex(separators);
    }
  }
  while (offset < line.size() && !IsSeparator(line[offset])) {
    ++offset;
  }
  return offset;
}

}  // namespace

// These loops replace find_first_of and the like, which need several times as long for so few
// characters.
DictionaryLine SplitDictionaryLine(std::string_view line) noexcept {
  const std::size_t keyLength = FirstSeparator(line);
  if (keyLength == line.size()) {
    return {line, {}};
  }
  std::size_t start = keyLength;
  while (start < line.size() && IsSeparator(line[start])) {
    ++start;
  }
  std::string_view text = line.substr(start < line.size() ? start : keyLength + 1);
  // A text of nothing but blanks is not trimmed; dictionary_line_test.cpp has a row for each case.
  const auto last = std::find_if_not(text.rbegin(), text.rend(), IsTrimmed);
  if (last != text.rend()) {
    text.remove_suffix(static_cast<std::size_t>(last - text.rbegin()));
  }
  return {line.substr(0, keyLength), text};
}

}  // namespace KelmoLibs::Localize
