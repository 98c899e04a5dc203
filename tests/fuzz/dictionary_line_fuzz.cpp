// A line of a dictionary of any bytes. Which of them are text has been decided by then.
#include <string>

#include "dictionary/dictionary_line.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/model/disagreement.h"
#include "tests/model/model.h"

namespace {

// Byte by byte: all that is looked for is ASCII.
std::wstring Widened(std::string_view bytes) {
  std::wstring text;
  for (const char c : bytes) {
    text += static_cast<wchar_t>(static_cast<unsigned char>(c));
  }
  return text;
}

}  // namespace

void CheckWith(std::string_view bytes) {
  const auto [key, text] = KelmoLibs::Localize::SplitDictionaryLine(bytes);
  const auto [expectedKey, expectedText] = model::SplitDictionaryLine(Widened(bytes));
  if (Widened(key) != expectedKey || Widened(text) != expectedText) {
    throw Disagreement("key and text of a line");
  }
}
