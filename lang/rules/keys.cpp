// The header of a file, and keys that the library reads otherwise than their author meant.
// Tested by keys_test.cpp.
#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "lang/reading/name_language.h"
#include "lang/rules/check.h"
#include "lang/rules/header_fault.h"
#include "lang/rules/line_kind.h"
#include "lang/unicode/ascii.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::string_view kBlanks = " \t\r";

bool IsBlank(std::string_view text) noexcept {
  return text.find_first_not_of(kBlanks) == std::string_view::npos;
}

// Whether the library or people read the whole first line.
bool HasWholeHeader(const FileCheck& check) {
  const DictionaryFile& file = check.File();
  return file.StopsBecause() == Stop::kEndOfFile || check.Source().EncodedAsUtf16() != Utf16::kNo ||
         file.StopsAt() > check.Source().Line(1).size();
}

void ReportHeader(FileCheck& check, const char* fault) {
  const std::string_view line = check.Source().Line(1);
  const std::string id(check.File().IntendedId());
  check.Explain(1);
  if (const Entry* const header = FindDisplacedHeader(check)) {
    const std::uint32_t number = check.Source().LineOf(header->key.data());
    check.Explain(number);
    Finding& finding = check.Add(RuleId::kHeader, Severity::kError, line, {},
                                 {"header.displaced", {std::to_string(number), id}});
    finding.mend = {"header.displaced_mend", {std::to_string(number)}};
    finding.related.push_back({check.PlaceIn(check.FileIndex(), check.Source().Line(number)),
                               {"header.displaced_here", {}}});
    return;
  }
  check.Add(RuleId::kHeader, Severity::kError, line, {}, {fault, {id}}).mend = {"header.mend", {}};
}

// Whether the file has a header whose id can be judged.
bool CheckHeader(FileCheck& check) {
  const DictionaryFile& file = check.File();
  if (check.Source().LineCount() == 0) {
    check.AddToFile(RuleId::kHeader, Severity::kError, {"header.empty_file", {}});
    return false;
  }
  if (!HasWholeHeader(check)) {
    return false;
  }
  const std::string_view line = check.Source().Line(1);
  const TextFormat format = FormatOf({file.IntendedId(), file.DisplayName()});
  if (format == TextFormat::kJson || format == TextFormat::kXml) {
    check.Add(RuleId::kOtherFormat, Severity::kError, line, {},
              {format == TextFormat::kJson ? "other-format.json" : "other-format.xml", {"1"}});
    check.ExplainWholeFile();
    return false;
  }
  if (const char* const fault = HeaderFault(check)) {
    ReportHeader(check, fault);
    check.DoubtId();
    return false;
  }
  return true;
}

// The id of other files that differs from this one only by case; nothing if there is none. Of two
// such ids the one with fewer keys is wrong.
std::optional<std::string_view> SameIdButForCase(const FileCheck& check) {
  const std::string id(check.File().IntendedId());
  const auto same = check.AllFiles().idsByLowerCase.find(AsciiLowerCase(id));
  if (same == check.AllFiles().idsByLowerCase.end()) {
    return std::nullopt;
  }
  for (const std::string_view other : same->second) {
    const MergedDictionary& dictionary = check.AllFiles().dictionaries.find(other)->second;
    const bool isBigger = dictionary.KeyCount() != check.Merged().KeyCount()
                              ? dictionary.KeyCount() > check.Merged().KeyCount()
                              : id < other;
    if (other != id && isBigger) {
      return other;
    }
  }
  return std::nullopt;
}

// The texts of a file that hosts do not see, because a file with the same id, which is loaded before,
// has their keys.
struct LostTexts {
  std::size_t count = 0;
  FoundEntry first;  // what hosts see instead of the first one
};

// Nothing if most texts are seen: then the files may complete each other.
LostTexts FindLostTexts(const FileCheck& check) {
  const std::vector<Entry>& entries = check.File().Entries();
  LostTexts lost;
  for (const Entry& entry : entries) {
    const FoundEntry found = check.Merged().Find(entry.key);
    if (!entry.key.empty() && found.file != check.FileIndex()) {
      lost.first = lost.count++ == 0 ? found : lost.first;
    }
  }
  return lost.count * 2 > entries.size() ? lost : LostTexts();
}

// Whether the id has a region that its language does not need, such as "fr_FR", and neither the name
// of the file nor any other id has one: then the program asks for "fr".
bool HasSurplusRegion(const FileCheck& check, const NameLanguage& name) {
  const Language& language = check.FileLanguage();
  const auto hasRegion = [&check](const auto& dictionary) {
    return dictionary.first != check.File().IntendedId() &&
           !LanguageOf(dictionary.first).region.empty();
  };
  const auto& all = check.AllFiles().dictionaries;
  return !language.region.empty() && AsciiLowerCase(language.region) == language.primary &&
         language.script.empty() && AsciiLowerCase(name.language) == language.primary &&
         all.size() > 1 && std::none_of(all.begin(), all.end(), hasRegion);
}

void CheckId(FileCheck& check) {
  const std::string_view id = check.File().IntendedId();
  if (const std::optional<std::string_view> other = SameIdButForCase(check)) {
    check.Add(RuleId::kIdUnlikeName, Severity::kWarning, id, {},
              {"id-unlike-name.case", {std::string(id), std::string(*other)}});
    check.DoubtId();
    return;
  }
  const NameLanguage name = CompareWithName(id, check.Source().Name());
  if (name.fits) {
    if (HasSurplusRegion(check, name)) {
      check.Add(RuleId::kIdUnlikeName, Severity::kWarning, id, {},
                {"id-unlike-name.region", {std::string(id), name.language}});
    }
    return;
  }
  if (const LostTexts lost = FindLostTexts(check); lost.count > 0) {
    const std::string& winner = check.AllFiles().files[lost.first.file].Source().Name();
    Finding& finding =
        check.Add(RuleId::kIdUnlikeName, Severity::kError, id, {},
                  {"id-unlike-name.lost.#",
                   {std::to_string(lost.count), std::string(id), name.language, winner}});
    finding.mend = {"id-unlike-name.lost_mend", {}};
    return;
  }
  check.Add(RuleId::kIdUnlikeName, Severity::kWarning, id, {},
            {"id-unlike-name.message", {std::string(id), name.language}});
}

void CheckIndentedLines(FileCheck& check) {
  const Entry* blankLine = nullptr;
  std::size_t blankLines = 0;
  for (const Entry& entry : check.File().Entries()) {
    if (!entry.key.empty() || check.IsExplained(entry)) {
      continue;
    }
    check.Explain(entry);
    if (IsBlank(entry.text)) {
      blankLine = blankLines++ == 0 ? &entry : blankLine;
      continue;
    }
    const auto indent = static_cast<std::size_t>(entry.text.data() - entry.key.data());
    Finding& finding = check.Add(RuleId::kIndentedLine, Severity::kError,
                                 {entry.key.data(), indent}, {}, {"indented-line.message", {}});
    finding.mend = {"indented-line.mend", {}};
  }
  if (blankLine != nullptr) {
    check.Add(RuleId::kIndentedLine, Severity::kWarning,
              check.Source().Line(check.Source().LineOf(blankLine->key.data())), {},
              {"indented-line.blank.#", {std::to_string(blankLines)}});
  }
}

struct Duplicate {
  const Entry* entry;
  FoundEntry first;
};

// The keys that a file shares with another one. If these are most keys, such as in an old copy, they
// are one cause.
struct Copy {
  std::size_t count = 0;
  bool hasOtherTexts = false;
  const Duplicate* example = nullptr;
  bool isReported = false;  // as a whole
};

Severity SeverityOf(bool hasOtherText) noexcept {
  return hasOtherText ? Severity::kError : Severity::kWarning;
}

void ReportDuplicate(FileCheck& check, const Duplicate& duplicate) {
  const bool isOther = duplicate.entry->text != duplicate.first.entry->text;
  Finding& finding = check.Add(RuleId::kDuplicateKey, SeverityOf(isOther), duplicate.entry->key,
                               duplicate.entry->key,
                               {isOther ? "duplicate-key.other_text" : "duplicate-key.same_text",
                                {std::string(duplicate.entry->key)}});
  finding.related.push_back({check.PlaceIn(duplicate.first.file, duplicate.first.entry->key),
                             {"duplicate-key.first", {KeptText(duplicate.first.entry->text)}}});
  check.AddBaseOf(finding);
}

void ReportCopy(FileCheck& check, const Copy& copy) {
  const FoundEntry& first = copy.example->first;
  Finding& finding =
      check.Add(RuleId::kDuplicateKey, SeverityOf(copy.hasOtherTexts), copy.example->entry->key, {},
                {"duplicate-key.file.#",
                 {std::to_string(copy.count), check.AllFiles().files[first.file].Source().Name()}});
  finding.related.push_back({check.PlaceIn(first.file, first.entry->key),
                             {"duplicate-key.first", {KeptText(first.entry->text)}}});
}

// Whether the checked file or `file`, which has the same id, should have another one.
bool HasDoubtfulId(const FileCheck& check, std::uint32_t file) {
  const std::string_view id = check.File().IntendedId();
  return check.IsIdDoubtful() || !CompareWithName(id, check.Source().Name()).fits ||
         !CompareWithName(id, check.AllFiles().files[file].Source().Name()).fits;
}

void CheckDuplicateKeys(FileCheck& check) {
  constexpr std::size_t kFewestOfCopy = 10;
  const std::vector<Entry>& entries = check.File().Entries();
  std::vector<Duplicate> duplicates;
  for (const Entry& entry : entries) {
    const FoundEntry first = check.Merged().Find(entry.key);
    if (first.entry != &entry && !check.IsExplained(entry)) {
      duplicates.push_back({&entry, first});
    }
  }
  std::map<std::uint32_t, Copy> copies;  // by file
  for (const Duplicate& duplicate : duplicates) {
    Copy& copy = copies[duplicate.first.file];
    const bool hasOtherText = duplicate.entry->text != duplicate.first.entry->text;
    if (copy.count++ == 0 || (hasOtherText && !copy.hasOtherTexts)) {
      copy.example = &duplicate;
    }
    copy.hasOtherTexts = copy.hasOtherTexts || hasOtherText;
  }
  copies.erase(check.FileIndex());
  for (auto& [file, copy] : copies) {
    if (HasDoubtfulId(check, file)) {
      copy.isReported = true;  // with the id
    } else if (copy.count >= kFewestOfCopy && copy.count * 2 >= entries.size()) {
      ReportCopy(check, copy);
      copy.isReported = true;
    }
  }
  for (const Duplicate& duplicate : duplicates) {
    const auto copy = copies.find(duplicate.first.file);
    if (copy == copies.end() || !copy->second.isReported) {
      ReportDuplicate(check, duplicate);
    }
  }
}

}  // namespace

void CheckKeys(FileCheck& check) {
  if (check.IsWholeFileExplained()) {
    return;
  }
  if (CheckHeader(check)) {
    CheckId(check);
  }
  if (check.Source().EncodedAsUtf16() == Utf16::kNo && !check.IsWholeFileExplained()) {
    CheckIndentedLines(check);
    CheckDuplicateKeys(check);
  }
}

}  // namespace KelmoLibs::Lang
