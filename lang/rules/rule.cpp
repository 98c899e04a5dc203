#include "lang/rules/rule.h"

#include <algorithm>

namespace KelmoLibs::Lang {
namespace {

constexpr Severity kNote = Severity::kNote;
constexpr Severity kWarning = Severity::kWarning;
constexpr Severity kError = Severity::kError;
constexpr bool kBesideBase = true;
constexpr bool kOff = false;

constexpr std::array<Rule, kRuleCount> kRules = {{
    {RuleId::kEncoding, "encoding", kError},
    {RuleId::kDoubleEncoding, "double-encoding", kError},
    {RuleId::kLostLetter, "lost-letter", kError},
    {RuleId::kByteOrderMark, "byte-order-mark", kError},
    {RuleId::kControlCharacter, "control-character", kError},
    {RuleId::kLineEnd, "line-end", kError},
    {RuleId::kHeader, "header", kError},
    {RuleId::kIdUnlikeName, "id-unlike-name", kError},
    {RuleId::kDuplicateKey, "duplicate-key", kError},
    {RuleId::kLostSeparator, "lost-separator", kError},
    {RuleId::kIndentedLine, "indented-line", kError},
    {RuleId::kBeyondBmp, "beyond-bmp", kWarning},
    {RuleId::kConflictMarker, "conflict-marker", kError},
    {RuleId::kOtherFormat, "other-format", kError},
    {RuleId::kComment, "comment", kWarning},
    {RuleId::kSection, "section", kWarning},
    {RuleId::kContinuedText, "continued-text", kError},
    {RuleId::kBlankInKey, "blank-in-key", kError},
    {RuleId::kSecondTab, "second-tab", kWarning},
    {RuleId::kLookAlikeKey, "look-alike-key", kError, kBesideBase},
    {RuleId::kMissing, "missing", kWarning, kBesideBase},
    {RuleId::kSurplus, "surplus", kWarning, kBesideBase},
    {RuleId::kEmpty, "empty", kWarning, kBesideBase},
    {RuleId::kPlaceholder, "placeholder", kError, kBesideBase},
    {RuleId::kPluralForm, "plural-form", kWarning, kBesideBase},
    {RuleId::kLineBreak, "line-break", kWarning, kBesideBase},
    {RuleId::kEntity, "entity", kWarning, kBesideBase},
    {RuleId::kTag, "tag", kWarning, kBesideBase},
    {RuleId::kAddress, "address", kWarning, kBesideBase},
    {RuleId::kNumber, "number", kWarning, kBesideBase},
    {RuleId::kLookAlikeSign, "look-alike-sign", kWarning, kBesideBase},
    {RuleId::kEndMark, "end-mark", kWarning, kBesideBase},
    {RuleId::kAccelerator, "accelerator", kWarning, kBesideBase},
    {RuleId::kBracket, "bracket", kWarning},
    {RuleId::kInvisibleCharacter, "invisible-character", kWarning},
    {RuleId::kMixedScript, "mixed-script", kWarning},
    {RuleId::kForeignLetter, "foreign-letter", kWarning},
    {RuleId::kDecomposedLetter, "decomposed-letter", kWarning},
    {RuleId::kUntranslated, "untranslated", kNote, kBesideBase},
    {RuleId::kFullStop, "full-stop", kNote, kBesideBase},
    {RuleId::kDoubledWord, "doubled-word", kWarning},
    {RuleId::kDoubledBlank, "doubled-blank", kNote},
    {RuleId::kLength, "length", kNote, kBesideBase},
    {RuleId::kInconsistent, "inconsistent", kNote, kBesideBase, kOff},
    {RuleId::kUnitHeader, "unit-header", kError},
    {RuleId::kUnitFields, "unit-fields", kError},
    {RuleId::kUnitCode, "unit-code", kError},
    {RuleId::kUnitRepeated, "unit-repeated", kError},
    {RuleId::kUnitUnknown, "unit-unknown", kWarning},
    {RuleId::kUnitMissing, "unit-missing", kWarning},
    {RuleId::kUnitSymbol, "unit-symbol", kWarning},
}};

constexpr bool AreInOrder() {
  for (std::size_t i = 0; i < kRuleCount; ++i) {
    if (static_cast<std::size_t>(kRules[i].id) != i) {
      return false;
    }
  }
  return true;
}
static_assert(AreInOrder(), "the rules stand in the order of RuleId");

}  // namespace

const std::array<Rule, kRuleCount>& AllRules() noexcept { return kRules; }

const Rule& RuleOf(RuleId id) noexcept { return kRules[static_cast<std::size_t>(id)]; }

const Rule* FindRule(std::string_view name) noexcept {
  const auto* const found = std::find_if(kRules.begin(), kRules.end(),
                                         [name](const Rule& rule) { return rule.name == name; });
  return found != kRules.end() ? found : nullptr;
}

std::string_view SeverityName(Severity severity) noexcept {
  return severity == kError ? "error" : severity == kWarning ? "warning" : "note";
}

}  // namespace KelmoLibs::Lang
