#include "dictionary/dictionary_line.h"

namespace KelmoLibs::Localize {
namespace {

constexpr std::string_view kSeparators = " \t";
constexpr std::string_view kTrimmed = " \t\n\r";

}  // namespace

DictionaryLine SplitDictionaryLine(std::string_view line) noexcept {
  const std::size_t separator = line.find_first_of(kSeparators);
  if (separator == std::string_view::npos) {
    return {line, {}};
  }
  const std::size_t start = line.find_first_not_of(kSeparators, separator);
  std::string_view text = line.substr(start != std::string_view::npos ? start : separator + 1);
  // A text of blanks alone stays whole; dictionary_line_test.cpp pins each case.
  const std::size_t last = text.find_last_not_of(kTrimmed);
  if (last != std::string_view::npos) {
    text = text.substr(0, last + 1);
  }
  return {line.substr(0, separator), text};
}

}  // namespace KelmoLibs::Localize
