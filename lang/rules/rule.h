// The rules of the checker: their names, which never change, and their severities.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace KelmoLibs::Lang {

/// kError: the library loses or misreads something, or a placeholder is broken. kWarning: probably
/// not meant. kNote: style.
enum class Severity : std::uint8_t { kNote, kWarning, kError };

/// In the order of the table in rule.cpp.
enum class RuleId : std::uint8_t {
  // What the library loses or misreads.
  kEncoding,
  kDoubleEncoding,
  kLostLetter,
  kByteOrderMark,
  kControlCharacter,
  kLineEnd,
  kHeader,
  kIdUnlikeName,
  kDuplicateKey,
  kLostSeparator,
  kIndentedLine,
  kBeyondBmp,
  // Lines that mean something else to their author than to the library.
  kConflictMarker,
  kOtherFormat,
  kComment,
  kSection,
  kContinuedText,
  kBlankInKey,
  kSecondTab,
  kLookAlikeKey,
  // Beside the base.
  kMissing,
  kSurplus,
  kEmpty,
  kPlaceholder,
  kPluralForm,
  kLineBreak,
  kEntity,
  kTag,
  kAddress,
  kNumber,
  kLookAlikeSign,
  kEndMark,
  kAccelerator,
  // The text alone.
  kBracket,
  kInvisibleCharacter,
  kMixedScript,
  kForeignLetter,
  kDecomposedLetter,
  // Style.
  kUntranslated,
  kFullStop,
  kDoubledWord,
  kDoubledBlank,
  kLength,
  kInconsistent,
  // Unit tables.
  kUnitHeader,
  kUnitFields,
  kUnitCode,
  kUnitRepeated,
  kUnitUnknown,
  kUnitMissing,
  kUnitSymbol,
};

struct Rule {
  RuleId id;
  std::string_view name;
  Severity severity;  // the most severe one that the rule gives by default
  bool needsBase = false;
  bool isOnByDefault = true;
};

constexpr std::size_t kRuleCount = static_cast<std::size_t>(RuleId::kUnitSymbol) + 1;

/// All rules, in the order of RuleId.
const std::array<Rule, kRuleCount>& AllRules() noexcept;

const Rule& RuleOf(RuleId id) noexcept;

/// The rule with that name, or nothing.
const Rule* FindRule(std::string_view name) noexcept;

std::string_view SeverityName(Severity severity) noexcept;

}  // namespace KelmoLibs::Lang
