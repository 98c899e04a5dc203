#include "lang/rules/symbol_letters.h"

#include "lang/unicode/code_points.h"

namespace KelmoLibs::Lang {
namespace {

// Pairs that look alike, at least in some fonts or in italics.
constexpr std::u32string_view kLatinTwins = U"aceopxykmtABCEHKMOPTXY";
constexpr std::u32string_view kCyrillicTwins =
    U"\u0430\u0441\u0435\u043E\u0440\u0445\u0443\u043A\u043C\u0442"
    U"\u0410\u0412\u0421\u0415\u041D\u041A\u041C\u041E\u0420\u0422\u0425\u0423";

SymbolScript ScriptOf(char32_t c) noexcept {
  if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
      (c >= 0xC0 && c <= 0x24F && c != 0xD7 && c != 0xF7)) {
    return SymbolScript::kLatin;
  }
  return c >= 0x400 && c <= 0x52F ? SymbolScript::kCyrillic : SymbolScript::kNone;
}

SymbolScript Both(SymbolScript left, SymbolScript right) noexcept {
  return left == SymbolScript::kNone || left == right ? right
         : right == SymbolScript::kNone               ? left
                                                      : SymbolScript::kBoth;
}

}  // namespace

SymbolLetters LettersOf(std::string_view symbol) {
  SymbolLetters letters;
  SymbolScript word = SymbolScript::kNone;
  VisitCodePoints(symbol, [&](char32_t c, std::string_view) {
    const SymbolScript script = ScriptOf(c);
    letters.script = Both(letters.script, script);
    word = script == SymbolScript::kNone ? SymbolScript::kNone : Both(word, script);
    letters.isMixed = letters.isMixed || word == SymbolScript::kBoth;
    const auto twins = script == SymbolScript::kLatin ? kLatinTwins : kCyrillicTwins;
    letters.haveTwins = letters.haveTwins && (script == SymbolScript::kNone ||
                                              twins.find(c) != std::u32string_view::npos);
    return true;
  });
  return letters;
}

}  // namespace KelmoLibs::Lang
