// What the rules get: a file or an entry, and where to report.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lang/finding.h"
#include "lang/reading/language.h"
#include "lang/reading/workspace.h"
#include "lang/rules/findings.h"
#include "lang/rules/limits.h"
#include "lang/rules/placeholder_syntax.h"

namespace KelmoLibs::Lang {

/// One dictionary file while it is checked.
class FileCheck {
 public:
  FileCheck(const Workspace& workspace, std::uint32_t fileIndex, Findings& findings,
            const RuleSettings& settings);

  const Workspace& AllFiles() const noexcept { return workspace_; }
  std::uint32_t FileIndex() const noexcept { return fileIndex_; }
  const DictionaryFile& File() const noexcept { return file_; }
  const SourceFile& Source() const noexcept { return file_.Source(); }
  const Language& FileLanguage() const noexcept { return language_; }

  /// Which rules are on, and the limits for texts.
  const RuleSettings& Settings() const noexcept { return settings_; }

  /// All files with the id of this file.
  const MergedDictionary& Merged() const noexcept { return merged_; }

  /// The base that this file is compared with; null if there is none, or if the file belongs to it.
  const MergedDictionary* Base() const noexcept { return base_; }

  /// What placeholders look like in Base(), which is not null. Found out at the first call.
  const PlaceholderUse& PlaceholdersOfBase() {
    if (!placeholdersOfBase_) {
      placeholdersOfBase_ = UseOfPlaceholders(workspace_, *base_);
    }
    return *placeholdersOfBase_;
  }

  /// Adds a finding at `where`, a view into Source().Bytes(), and returns it, so that the caller
  /// adds a hint or a mend. The reference is valid until the next Add. `key` may be empty.
  Finding& Add(RuleId rule, Severity severity, std::string_view where, std::string_view key,
               Sentence message);

  /// Adds a finding about the file as a whole.
  Finding& AddToFile(RuleId rule, Severity severity, Sentence message);

  /// The place of `part`, a view into the bytes of file number `file`.
  Place PlaceIn(std::uint32_t file, std::string_view part) const noexcept;

  /// A line whose fault is reported is explained: further rules do not look at its entry, so that
  /// one cause gives one finding.
  void Explain(std::uint32_t line) { explained_[line] = true; }
  /// No further rule looks at any line.
  void ExplainWholeFile() { isWholeFileExplained_ = true; }
  bool IsWholeFileExplained() const noexcept { return isWholeFileExplained_; }

  /// The id is reported as wrong: the file is compared with no other one.
  void DoubtId() { isIdDoubtful_ = true; }
  bool IsIdDoubtful() const noexcept { return isIdDoubtful_; }

  bool IsExplained(std::uint32_t line) const noexcept {
    return isWholeFileExplained_ || explained_[line];
  }
  bool IsExplained(const Entry& entry) const noexcept {
    return IsExplained(Source().LineOf(entry.key.data()));
  }

 private:
  const Workspace& workspace_;
  std::uint32_t fileIndex_;
  const DictionaryFile& file_;
  const MergedDictionary& merged_;
  const MergedDictionary* base_;
  Language language_;
  std::optional<PlaceholderUse> placeholdersOfBase_;
  std::vector<bool> explained_;  // by line number
  bool isWholeFileExplained_ = false;
  bool isIdDoubtful_ = false;
  Findings& findings_;
  const RuleSettings& settings_;
};

/// One entry that hosts see, and the base's entry of the same key.
struct TextCheck {
  FileCheck& file;
  const Entry& entry;
  FoundEntry base;  // may be nothing

  std::string_view Text() const noexcept { return entry.text; }
  std::string_view BaseText() const noexcept { return base ? base.entry->text : ""; }

  /// FileCheck::Add at a part of the text (a view into it), with the base's text as related place.
  Finding& Add(RuleId rule, Severity severity, std::string_view where, Sentence message) const;
};

// The families of rules, in the order in which they run. Each is in a file of its own.

// Of a file; they mark the lines that they explain.
void CheckEncoding(FileCheck& check);    // encoding.cpp
void CheckCharacters(FileCheck& check);  // odd_characters.cpp
void CheckLines(FileCheck& check);       // lines.cpp: what another format means by a line
void CheckKeys(FileCheck& check);        // keys.cpp: header, duplicate keys

// Of all files with one id; these mark lines too. The vector is not empty.
void CheckBesideBase(std::vector<FileCheck>& files);  // beside_base.cpp: missing keys and the like

// Of a text; the entry is read by the library, and its line is not explained.
void CheckPlaceholders(const TextCheck& check);  // placeholders.cpp
void CheckMarkup(const TextCheck& check);        // markup.cpp: line breaks, entities, tags
void CheckPunctuation(const TextCheck& check);   // punctuation.cpp: ends, brackets, accelerators
void CheckWords(const TextCheck& check);  // words.cpp: scripts, untranslated, doubled, length

// Of all files with one id.
void CheckPlurals(std::vector<FileCheck>& files);      // plurals.cpp
void CheckConsistency(std::vector<FileCheck>& files);  // words.cpp; off unless asked for

// Of a unit table.
// unit_tables.cpp
void CheckUnits(const Workspace& workspace, std::uint32_t fileIndex, Findings& findings);

}  // namespace KelmoLibs::Lang
