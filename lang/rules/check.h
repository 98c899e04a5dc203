// What the rules get: a file or an entry, and where to report.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "lang/finding.h"
#include "lang/reading/language.h"
#include "lang/reading/workspace.h"
#include "lang/rules/findings.h"
#include "lang/rules/placeholder_syntax.h"
#include "lang/rules/rule_settings.h"
#include "lang/unicode/alphabets.h"

namespace KelmoLibs::Lang {

/// What the checks of all dictionaries share.
class RunCheck {
 public:
  /// `findings` gets what the rules find.
  RunCheck(const Workspace& workspace, Findings& findings)
      : workspace_(workspace), findings_(findings) {}

  /// The workspace of the run.
  const Workspace& AllFiles() const noexcept { return workspace_; }

  /// What placeholders look like in the base. Found out at the first call. Precondition: there is a
  /// base.
  const PlaceholderUse& PlaceholdersOfBase();

  /// Findings::Add.
  Finding& Add(RuleId rule, Severity severity, std::uint32_t file) {
    return findings_.Add(rule, severity, file);
  }

 private:
  const Workspace& workspace_;
  Findings& findings_;
  std::optional<PlaceholderUse> placeholdersOfBase_;
};

/// One dictionary file while it is checked.
class FileCheck {
 public:
  FileCheck(RunCheck& run, std::uint32_t fileIndex, const RuleSettings& settings);

  /// The workspace of the run.
  const Workspace& AllFiles() const noexcept { return run_.AllFiles(); }
  std::uint32_t FileIndex() const noexcept { return fileIndex_; }
  const DictionaryFile& File() const noexcept { return file_; }
  const SourceFile& Source() const noexcept { return file_.Source(); }

  /// The language that the id names.
  const Language& FileLanguage() const noexcept { return language_; }
  /// The letters of that language.
  const Alphabet& FileAlphabet() const noexcept { return alphabet_; }

  /// Which rules are on, and the limits for texts.
  const RuleSettings& Settings() const noexcept { return settings_; }

  /// All files with the id of this file.
  const MergedDictionary& Merged() const noexcept { return merged_; }

  /// The base that this file is compared with; null if there is none, or if the file belongs to it.
  const MergedDictionary* Base() const noexcept { return base_; }

  /// The entry of Base(); nothing without a base, or if it lacks the key.
  FoundEntry FindInBase(std::string_view key) const noexcept {
    return base_ != nullptr ? base_->Find(key) : FoundEntry{};
  }

  /// What placeholders look like in Base(), which is not null.
  const PlaceholderUse& PlaceholdersOfBase() const { return run_.PlaceholdersOfBase(); }

  /// Adds a finding at `where`, a view into Source().Bytes(), and returns it, so that the caller
  /// adds a hint or a mend. The reference is valid until the next Add. `key` may be empty.
  Finding& Add(RuleId rule, Severity severity, std::string_view where, std::string_view key,
               Sentence message);

  /// Adds a finding about the file as a whole.
  Finding& AddToFile(RuleId rule, Severity severity, Sentence message);

  /// Adds the base's text of the finding's key as related place, if there is one.
  void AddBaseOf(Finding& finding) const;

  /// The place of `part`, a view into the bytes of file number `file`.
  Place PlaceIn(std::uint32_t file, std::string_view part) const noexcept;

  /// The text of the base as a related place of a finding. `where` is the key or the text of `base`.
  RelatedPlace RelatedBase(const FoundEntry& base, std::string_view where) const;

  /// A line whose fault is reported is explained: further rules do not look at its entry, so that
  /// one cause gives one finding.
  void Explain(std::uint32_t line) { explained_[line] = true; }
  void Explain(const Entry& entry) { Explain(Source().LineOf(entry.key.data())); }

  /// A key whose line is lost in another one, which is reported: the key is not missing besides.
  void ExplainKey(std::string_view key) { explainedKeys_.emplace(key); }
  bool IsKeyExplained(std::string_view key) const {
    return explainedKeys_.find(key) != explainedKeys_.end();
  }

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
  RunCheck& run_;
  std::uint32_t fileIndex_;
  const DictionaryFile& file_;
  const MergedDictionary& merged_;
  const MergedDictionary* base_;
  Language language_;
  Alphabet alphabet_;
  std::vector<bool> explained_;  // by line number
  std::set<std::string, std::less<>> explainedKeys_;
  bool isWholeFileExplained_ = false;
  bool isIdDoubtful_ = false;
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

// The functions that run the rules, in the order in which they run, each with its file and its rules.

// Of a file. They mark the lines that they explain.
void CheckEncoding(FileCheck& check);       // encoding.cpp: encoding, byte-order-mark, line-end,
                                            // control-character (0x1A)
void CheckOddCharacters(FileCheck& check);  // odd_characters.cpp: double-encoding, lost-letter,
                                            // control-character, line-end (U+2028), beyond-bmp
void CheckLines(FileCheck& check);          // lines.cpp: other-format, conflict-marker, comment,
                                            // section, blank-in-key, continued-text, second-tab
void CheckKeys(FileCheck& check);           // keys.cpp: header, id-unlike-name, indented-line,
                                            // duplicate-key
void CheckDecomposedLetters(FileCheck& check);  // decomposed_letters.cpp: decomposed-letter

// Of all files with one id, of which there is at least one. It marks lines too.
void CheckBesideBase(std::vector<FileCheck>& files);  // beside_base.cpp: look-alike-key,
                                                      // lost-separator, missing, surplus, empty

// Of a text. The library reads its entry, and its line is not explained.
void CheckPlaceholders(const TextCheck& check);         // placeholder_rule.cpp: placeholder
void CheckNumbers(const TextCheck& check);              // numbers.cpp: number, look-alike-sign
void CheckMarkup(const TextCheck& check);               // markup.cpp: line-break, entity, tag
void CheckAddresses(const TextCheck& check);            // addresses.cpp: address
void CheckEndMarks(const TextCheck& check);             // end_marks.cpp: end-mark, full-stop
void CheckBrackets(const TextCheck& check);             // brackets.cpp: bracket
void CheckAccelerators(const TextCheck& check);         // accelerators.cpp: accelerator
void CheckInvisibleCharacters(const TextCheck& check);  // invisible_characters.cpp:
                                                        // invisible-character
void CheckMixedScripts(const TextCheck& check);         // mixed_scripts.cpp: mixed-script
void CheckForeignLetters(const TextCheck& check);       // foreign_letters.cpp: foreign-letter
void CheckUntranslated(const TextCheck& check);         // untranslated.cpp: untranslated
void CheckDoubled(const TextCheck& check);              // doubled.cpp: doubled-word, doubled-blank
void CheckLength(const TextCheck& check);               // length.cpp: length

// Of all files with one id.
void CheckPlurals(std::vector<FileCheck>& files);      // plurals.cpp: plural-form
void CheckConsistency(std::vector<FileCheck>& files);  // consistency.cpp: inconsistent

// Of a unit table.
void CheckUnits(const Workspace& workspace, std::uint32_t fileIndex,
                Findings& findings);  // unit_tables.cpp: unit-header and the others of unit tables

}  // namespace KelmoLibs::Lang
