// What a line of a dictionary is for its author, judged by the shape of its key.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "lang/reading/dictionary_file.h"

namespace KelmoLibs::Lang {

enum class LineKind : std::uint8_t {
  kEntry,
  kComment,        // "# Menu", "// Menu", "<!-- Menu -->", "-----"
  kWordComment,    // "#Menu": could also be a key
  kSection,        // "[menu]"
  kConflictStart,  // "<<<<<<<"
  kConflictMid,    // "=======" or "|||||||"
  kConflictEnd,    // ">>>>>>>"
};

LineKind KindOf(const Entry& entry) noexcept;

/// Whether `entry` is an entry for its author too, so that translations owe its key.
inline bool IsMeantAsEntry(const Entry& entry) noexcept {
  return !entry.key.empty() && KindOf(entry) == LineKind::kEntry;
}

/// Other formats of texts, which people rename to .txt.
enum class TextFormat : std::uint8_t {
  kDictionary,
  kKeyValue,  // key=value
  kSpreadsheet,
  kJson,
  kPo,
  kXml,
  kStrings,  // "key" = "text";
  kYaml,     // key: text
};
constexpr std::size_t kTextFormatCount = static_cast<std::size_t>(TextFormat::kYaml) + 1;

/// The format that the line of `entry` looks like. A single line proves nothing.
TextFormat FormatOf(const Entry& entry) noexcept;

/// The length of the part of `key` before its first "=", if that is a name and something stands
/// behind the sign; otherwise 0.
std::size_t NameBeforeEqualsSign(std::string_view key) noexcept;

/// Which shape most keys of a file have. Keys that are plain words have none.
class KeyShape {
 public:
  explicit KeyShape(const std::vector<Entry>& entries) noexcept;

  /// Whether most keys have parts, such as "menu" and "open" of "menu.open".
  bool IsKnown() const noexcept { return separator_ != '\0'; }

  /// Precondition: IsKnown().
  bool Fits(std::string_view key) const noexcept;

  /// Whether nearly all keys of this shape are in ASCII, or are followed by a tab.
  bool AreAscii() const noexcept { return areAscii_; }
  bool AreBeforeTabs() const noexcept { return areBeforeTabs_; }

 private:
  char separator_ = '\0';
  bool areAscii_ = false;
  bool areBeforeTabs_ = false;
};

/// Whether the key of `entry` ends at a tab.
bool IsBeforeTab(const Entry& entry) noexcept;

}  // namespace KelmoLibs::Lang
