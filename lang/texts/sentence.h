// What the tool says, before it is put into a language.
#pragma once

#include <string>
#include <vector>

namespace KelmoLibs::Lang {

/// A sentence of the tool in any language: the key of its text (texts/en.txt) and what replaces %1,
/// %2 and so on. Arguments are UTF-8, or bytes of a file, which the report makes visible.
struct Sentence {
  std::string key;  // empty: no sentence
  std::vector<std::string> arguments;

  bool IsEmpty() const noexcept { return key.empty(); }
};

}  // namespace KelmoLibs::Lang
