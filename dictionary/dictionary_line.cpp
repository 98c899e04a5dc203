#include "dictionary/dictionary_line.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "storage/word.h"

namespace KelmoLibs::Localize {
namespace {

bool IsSeparator(char c) noexcept { return c == ' ' || c == '\t'; }

bool IsTrimmed(char c) noexcept { return IsSeparator(c) || c == '\n' || c == '\r'; }

// Where the first separator is, or the line's end.
std::size_t SeparatorPlace(std::string_view line) noexcept {
  std::size_t place = 0;
  for (; place + kWordBytes <= line.size(); place += kWordBytes) {
    const std::uint64_t word = WordAt(line.data() + place);
    const std::uint64_t found =
        ZeroBytes(word ^ (' ' * kEveryByte)) | ZeroBytes(word ^ ('\t' * kEveryByte));
    if (found != 0) {
      return place + LowestByte(found);
    }
  }
  while (place < line.size() && !IsSeparator(line[place])) {
    ++place;
  }
  return place;
}

}  // namespace

// Not by find_first_of and its kin, which take several times as long for ways as short as these.
DictionaryLine SplitDictionaryLine(std::string_view line) noexcept {
  const std::size_t keyLength = SeparatorPlace(line);
  if (keyLength == line.size()) {
    return {line, {}};
  }
  std::size_t start = keyLength;
  while (start < line.size() && IsSeparator(line[start])) {
    ++start;
  }
  std::string_view text = line.substr(start < line.size() ? start : keyLength + 1);
  // A text of blanks alone stays whole; dictionary_line_test.cpp pins each case.
  const auto last = std::find_if_not(text.rbegin(), text.rend(), IsTrimmed);
  if (last != text.rend()) {
    text.remove_suffix(static_cast<std::size_t>(last - text.rbegin()));
  }
  return {line.substr(0, keyLength), text};
}

}  // namespace KelmoLibs::Localize
