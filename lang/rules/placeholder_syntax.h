// The placeholders of a text: what the program replaces by a number or a name.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "lang/reading/workspace.h"

namespace KelmoLibs::Lang {

enum class PlaceholderSyntax : std::uint8_t {
  kPercentNumber,  // %1
  kPrintf,         // %s, %5.2f, %1$s
  kPercentName,    // %(name)s
  kPercentBrace,   // %{name}
  kBraceNumber,    // {0}, {0:N2}, {}
  kBraceName,      // {name}, {name, plural, …}
  kDoubleBrace,    // {{name}}
  kDollarBrace,    // ${name}
};

constexpr std::size_t kPlaceholderSyntaxCount = 8;

/// What kPrintf prints. Numbers of the same kind may be written in several ways.
enum class PrintfType : std::uint8_t { kNone, kInteger, kHex, kReal, kText, kCharacter, kOther };

struct Placeholder {
  PlaceholderSyntax syntax{};
  std::string_view whole;   // "%1$s", "{name}"
  std::string_view name;    // "1", "name"; of kPrintf nothing
  unsigned argument = 0;    // of kPrintf and {}: its number, given or counted from 1
  PrintfType type{};        // of kPrintf
  std::string_view size;    // of kPrintf: "l", "ll" and so on
  bool isNumbered = false;  // of kPrintf: %1$s
};

/// How "%5d" is read: it may be %5 before a letter, or the width of a number.
enum class PercentDigits : std::uint8_t { kAreNumber, kAreWidth };

/// The placeholders of one text, in its order.
class Placeholders {
 public:
  static constexpr std::size_t kMost = 64;

  /// `text` outlives the placeholders. O(length of the text).
  Placeholders(std::string_view text, PercentDigits digits) noexcept;

  // NOLINTBEGIN(readability-identifier-naming): for range-based loops
  const Placeholder* begin() const noexcept { return found_.data(); }
  const Placeholder* end() const noexcept { return found_.data() + count_; }
  // NOLINTEND(readability-identifier-naming)
  bool IsEmpty() const noexcept { return count_ == 0; }

  /// False if the text has more placeholders than are kept, or braces that seem to be something
  /// else. Such a text is not judged.
  bool AreAll() const noexcept { return areAll_; }

  /// Whether PercentDigits matters.
  bool HasDoubtfulDigits() const noexcept { return hasDoubtfulDigits_; }

  /// Whether the text has formats of dates such as %Y, among which those of numbers are not seen.
  bool IsTimeFormat() const noexcept { return isTimeFormat_; }

 private:
  std::size_t ReadPercent(std::string_view text, std::size_t at, PercentDigits digits) noexcept;
  std::size_t ReadPercentName(std::string_view text, std::size_t at) noexcept;
  std::size_t ReadPercentNumber(std::string_view text, std::size_t at,
                                PercentDigits digits) noexcept;
  std::size_t ReadPrintf(std::string_view text, std::size_t at) noexcept;
  std::size_t ReadBrace(std::string_view text, std::size_t at) noexcept;
  void Add(PlaceholderSyntax syntax, std::string_view whole, std::string_view name) noexcept;

  std::array<Placeholder, kMost> found_;
  std::size_t count_ = 0;
  unsigned lastArgument_ = 0;
  unsigned lastBrace_ = 0;
  unsigned openBraces_ = 0;
  bool areAll_ = true;
  bool hasDoubtfulDigits_ = false;
  bool isTimeFormat_ = false;
};

/// Whether the text can have a placeholder.
bool HasPlaceholderMark(std::string_view text) noexcept;

/// What placeholders look like in a dictionary. A syntax that less than one in fifty texts with
/// placeholders have is not used: such signs are words of the text.
struct PlaceholderUse {
  std::array<bool, kPlaceholderSyntaxCount> isUsed{};
  PercentDigits digits = PercentDigits::kAreNumber;

  bool Uses(PlaceholderSyntax syntax) const noexcept {
    return isUsed[static_cast<std::size_t>(syntax)];
  }
};

PlaceholderUse UseOfPlaceholders(const Workspace& workspace, const MergedDictionary& dictionary);

/// Whether two placeholders stand for the same value.
bool IsSameValue(const Placeholder& left, const Placeholder& right) noexcept;

}  // namespace KelmoLibs::Lang
