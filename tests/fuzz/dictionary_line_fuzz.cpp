// Splits a dictionary line of any bytes into key and text. The library splits before it decodes.
#include <string>

#include "dictionary/dictionary_line.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/model/disagreement.h"
#include "tests/model/model.h"

namespace {

// Byte by byte: the separators are ASCII.
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
