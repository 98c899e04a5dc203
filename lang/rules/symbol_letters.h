// The letters of a unit's symbol: the script that they belong to.
#pragma once

#include <cstdint>
#include <string_view>

namespace KelmoLibs::Lang {

/// The script of the letters of a symbol. kNone: it has none, or letters of other scripts only.
enum class SymbolScript : std::uint8_t { kNone, kLatin, kCyrillic, kBoth };

struct SymbolLetters {
  SymbolScript script = SymbolScript::kNone;
  bool isMixed = false;   // letters of both scripts stand side by side
  bool haveTwins = true;  // each letter looks like one of the other script
};

/// Other scripts are left out: a Greek letter beside Latin ones is usual in symbols.
SymbolLetters LettersOf(std::string_view symbol);

}  // namespace KelmoLibs::Lang
