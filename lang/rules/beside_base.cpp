// Keys and texts beside those of the base. Tested by beside_base_test.cpp.
#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "lang/rules/check.h"
#include "lang/rules/line_kind.h"
#include "lang/rules/plural_keys.h"
#include "lang/rules/similar_keys.h"
#include "lang/rules/split_key.h"
#include "lang/unicode/ascii.h"
#include "lang/unicode/blanks.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/hex.h"
#include "lang/unicode/look_alikes.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// A key of the base that the translation lacks.
struct MissingKey {
  FoundEntry base;
  FoundEntry neighbour;  // the entry of the translation that stands next to it in the base
  bool isBeforeNeighbour = false;
  bool isExplained = false;
};

// A key that the base lacks.
struct SurplusKey {
  FileCheck* file;  // null if the file is not reported
  std::uint32_t fileIndex;
  const Entry* entry;
  std::string_view name;   // what its author meant as the key
  const Entry* neighbour;  // the last entry in front of it that the base has too; may be null
  bool isLost;             // behind a fault of the file
  bool isExplained;        // its line is reported

  bool IsReported() const noexcept { return file != nullptr && !isLost && !isExplained; }
};

bool IsBlankText(std::string_view text) {
  bool isBlank = true;
  VisitCodePoints(text, [&isBlank](char32_t character, std::string_view) {
    isBlank = character == ' ' || character == '\t' || character == '\r' ||
              BlankOf(character) != Blank::kNo;
    return isBlank;
  });
  return isBlank;
}

// The key that the author of a line meant. It differs from the key of the library only where a rule
// has reported the line.
std::string_view IntendedKey(const Entry& entry) {
  std::string_view key = entry.key;
  if (key.empty()) {  // an indented line
    return entry.text.substr(0, entry.text.find_first_of(" \t"));
  }
  if (!IsAscii(key)) {
    VisitCodePoints(key, [&key](char32_t character, std::string_view part) {
      const Blank blank = BlankOf(character);
      const bool isWide =
          blank == Blank::kNoBreak || blank == Blank::kIdeographic || blank == Blank::kOther;
      if (isWide) {
        key = key.substr(0, static_cast<std::size_t>(part.data() - key.data()));
      }
      return !isWide;
    });
  }
  return key;
}

// Whether two keys with dots differ in one part: "menu.file" and "menu.fichier".
bool DifferInOnePart(std::string_view left, std::string_view right) noexcept {
  const auto isDot = [](char c) { return c == '.'; };
  const auto dots = std::count_if(left.begin(), left.end(), isDot);
  if (dots == 0 || dots != std::count_if(right.begin(), right.end(), isDot)) {
    return false;
  }
  const auto front = static_cast<std::size_t>(
      std::mismatch(left.begin(), left.end(), right.begin(), right.end()).first - left.begin());
  const auto behind = static_cast<std::size_t>(
      std::mismatch(left.rbegin(), left.rend(), right.rbegin(), right.rend()).first -
      left.rbegin());
  // What differs, in the longer and in the shorter key; the equal ends may overlap.
  const auto middle = [front, behind](std::string_view key) {
    return front + behind >= key.size() ? std::string_view()
                                        : key.substr(front, key.size() - front - behind);
  };
  // "save" and "saveAs" are two keys.
  return !middle(left).empty() && !middle(right).empty() &&
         middle(left).find('.') == std::string_view::npos &&
         middle(right).find('.') == std::string_view::npos;
}

char First(std::string_view text) noexcept { return text.empty() ? '\0' : text.front(); }

class BaseCheck {
 public:
  explicit BaseCheck(std::vector<FileCheck>& files)
      : files_(files),
        workspace_(files.front().AllFiles()),
        merged_(files.front().Merged()),
        base_(*files.front().Base()) {
    for (FileCheck& file : files) {
      checks_.emplace(file.FileIndex(), &file);
    }
  }

  void Run() {
    FindMissing();
    FindSurplus();
    if (!missing_.empty() && !surplus_.empty()) {
      SortMissing();
      MatchIntendedKeys();
      MatchLookAlikes();
      MatchLostSeparators();
      MatchSimilarKeys();
      MatchTranslatedKeys();
    }
    ReportMissing();
    ReportSurplus();
    ReportEmpty();
  }

 private:
  const DictionaryFile& File(std::uint32_t index) const {
    return *workspace_.files[index].dictionary;
  }

  // Null if the file is not reported.
  FileCheck* CheckOf(std::uint32_t fileIndex) const {
    const auto found = checks_.find(fileIndex);
    return found != checks_.end() ? found->second : nullptr;
  }

  bool IsKeyExplained(std::string_view key) const {
    return std::any_of(files_.begin(), files_.end(),
                       [key](const FileCheck& file) { return file.IsKeyExplained(key); });
  }

  void FindMissing() {
    for (const std::uint32_t baseFile : base_.Files()) {
      if (!workspace_.OwesKeysOf(files_.front().FileIndex(), baseFile)) {
        continue;
      }
      FoundEntry neighbour;
      std::size_t first = missing_.size();  // of those without a neighbour
      const auto find = [&](const Entry& entry) {
        if (!IsMeantAsEntry(entry)) {
          return;
        }
        if (const FoundEntry found = merged_.Find(entry.key)) {
          if (!neighbour) {
            for (; first < missing_.size(); ++first) {
              missing_[first].neighbour = found;
              missing_[first].isBeforeNeighbour = true;
            }
          }
          neighbour = found;
        } else if (base_.Find(entry.key).entry == &entry && !IsKeyExplained(entry.key) &&
                   !IsJudgedAsPluralForm(files_.front(), entry.key)) {
          missing_.push_back({base_.Find(entry.key), neighbour});
        }
      };
      const DictionaryFile& file = File(baseFile);
      std::for_each(file.Entries().begin(), file.Entries().end(), find);
      std::for_each(file.LostEntries().begin(), file.LostEntries().end(), find);
    }
  }

  void FindSurplus() {
    for (const std::uint32_t fileIndex : merged_.Files()) {
      FileCheck* const check = CheckOf(fileIndex);
      const DictionaryFile& file = File(fileIndex);
      const Entry* neighbour = nullptr;
      const auto find = [&](const Entry& entry, bool isLost) {
        if (const FoundEntry meant =
                !isLost && check != nullptr ? FindSplitKey(*check, entry) : FoundEntry{}) {
          surplus_.push_back({check, fileIndex, &entry, meant.entry->key, neighbour, isLost, true});
          return;
        }
        if (base_.Find(entry.key)) {
          neighbour = &entry;
          return;
        }
        const bool isExplained = !isLost && check != nullptr && check->IsExplained(entry);
        if (isExplained || merged_.Find(entry.key).entry == &entry) {
          surplus_.push_back(
              {check, fileIndex, &entry, IntendedKey(entry), neighbour, isLost, isExplained});
        }
      };
      if (file.Source().EncodedAsUtf16() == Utf16::kNo) {
        for (const Entry& entry : file.Entries()) {
          find(entry, false);
        }
      }
      for (const Entry& entry : file.LostEntries()) {
        find(entry, true);
      }
    }
  }

  // --- The key that each surplus key stands for.

  std::string_view MissingName(std::size_t index) const { return missing_[index].base.entry->key; }

  void SortMissing() {
    sorted_.resize(missing_.size());
    for (std::size_t i = 0; i < sorted_.size(); ++i) {
      sorted_[i] = i;
    }
    std::sort(sorted_.begin(), sorted_.end(),
              [this](std::size_t a, std::size_t b) { return MissingName(a) < MissingName(b); });
  }

  // The position in sorted_ of the first key that is greater than `key`.
  std::size_t Behind(std::string_view key) const {
    const auto found =
        std::upper_bound(sorted_.begin(), sorted_.end(), key,
                         [this](std::string_view a, std::size_t b) { return a < MissingName(b); });
    return static_cast<std::size_t>(found - sorted_.begin());
  }

  static void Explain(SurplusKey& surplus) {
    if (surplus.file != nullptr) {
      surplus.file->Explain(*surplus.entry);
    }
    surplus.isExplained = true;
  }

  // Lines that are reported already, and that give a key as soon as they are mended.
  void MatchIntendedKeys() {
    for (const SurplusKey& surplus : surplus_) {
      if (surplus.name.data() == surplus.entry->key.data() &&
          surplus.name.size() == surplus.entry->key.size()) {
        continue;
      }
      const std::size_t behind = Behind(surplus.name);
      if (behind > 0 && MissingName(sorted_[behind - 1]) == surplus.name) {
        missing_[sorted_[behind - 1]].isExplained = true;
      }
    }
  }

  void MatchLookAlikes() {
    const std::hash<std::string> hash;
    std::vector<std::pair<std::size_t, std::size_t>> forms;  // hashes and indices of missing keys
    for (std::size_t i = 0; i < missing_.size(); ++i) {
      if (!missing_[i].isExplained) {
        forms.emplace_back(hash(LookAlikeForm(MissingName(i))), i);
      }
    }
    std::sort(forms.begin(), forms.end());
    for (SurplusKey& surplus : surplus_) {
      const std::string form = LookAlikeForm(surplus.name);
      const auto found =
          std::lower_bound(forms.begin(), forms.end(), std::pair(hash(form), std::size_t{0}));
      if (found == forms.end() || missing_[found->second].isExplained ||
          LookAlikeForm(MissingName(found->second)) != form) {
        continue;
      }
      MissingKey& missing = missing_[found->second];
      missing.isExplained = true;
      if (surplus.IsReported()) {
        ReportLookAlike(surplus, missing);
      }
      Explain(surplus);
    }
  }

  static void ReportLookAlike(const SurplusKey& surplus, const MissingKey& missing) {
    const std::string_view key = surplus.entry->key;
    const std::string_view wanted = missing.base.entry->key;
    Sentence message = {"look-alike-key.composed", {std::string(key), std::string(wanted)}};
    std::string_view where = key;
    if (AreEqualButForCase(key, wanted)) {
      message.key = "look-alike-key.case";
    } else if (Decompose(key) != Decompose(wanted)) {
      const auto same = static_cast<std::size_t>(
          std::mismatch(key.begin(), key.end(), wanted.begin(), wanted.end()).first - key.begin());
      // The first letter of the key that is not the one of the base, or a letter of the base that
      // is not in ASCII, which has its mate there.
      std::size_t start = std::min(same, key.size() - 1);
      while (start > 0 && IsContinuation(key[start])) {
        --start;
      }
      const CodePoint odd = FirstCodePoint(key.substr(start));
      where = key.substr(start, odd.length);
      message.key = LetterMessage(odd.value);
      message.arguments.push_back(CodePointName(odd.value));
    }
    Finding& finding = surplus.file->Add(RuleId::kLookAlikeKey, Severity::kError, where, wanted,
                                         std::move(message));
    finding.mend = {"look-alike-key.mend", {std::string(wanted)}};
    finding.related.push_back(surplus.file->RelatedBase(missing.base, wanted));
  }

  static const char* LetterMessage(char32_t character) noexcept {
    constexpr char32_t kGreek = 0x0370;
    constexpr char32_t kCyrillic = 0x0400;
    constexpr char32_t kBehindCyrillic = 0x0530;
    if (character >= kCyrillic && character < kBehindCyrillic) {
      return "look-alike-key.cyrillic";
    }
    return character >= kGreek && character < kCyrillic ? "look-alike-key.greek"
                                                        : "look-alike-key.character";
  }

  // "msg.savedThe file is saved": the line begins with a missing key, and no separator follows.
  void MatchLostSeparators() {
    // The longest other missing key that a missing key begins with, by position in sorted_.
    std::vector<std::size_t> shorter(sorted_.size(), kNone);
    for (std::size_t i = 1; i < sorted_.size(); ++i) {
      std::size_t start = i - 1;
      while (start != kNone && !IsStart(start, MissingName(sorted_[i]))) {
        start = shorter[start];
      }
      shorter[i] = start;
    }
    for (SurplusKey& surplus : surplus_) {
      const std::size_t behind = Behind(surplus.name);
      std::size_t start = behind == 0 ? kNone : behind - 1;
      while (start != kNone && !IsStart(start, surplus.name)) {
        start = shorter[start];
      }
      for (; start != kNone; start = shorter[start]) {
        MissingKey& missing = missing_[sorted_[start]];
        if (!missing.isExplained && IsCutAt(surplus, missing.base.entry->key.size())) {
          missing.isExplained = true;
          if (surplus.IsReported()) {
            ReportLostSeparator(surplus, missing);
          }
          Explain(surplus);
          break;
        }
      }
    }
  }

  bool IsStart(std::size_t position, std::string_view key) const {
    const std::string_view start = MissingName(sorted_[position]);
    return key.size() > start.size() && key.substr(0, start.size()) == start;
  }

  // Whether a separator was lost behind the first `length` bytes of the key.
  bool IsCutAt(const SurplusKey& surplus, std::size_t length) {
    const std::string_view rest = surplus.name.substr(length);
    const char next = rest.front();
    if (rest.size() < 2 || std::string_view("._-/").find(next) != std::string_view::npos) {
      return false;  // a longer key
    }
    if (std::string_view("=:;,").find(next) != std::string_view::npos ||
        !IsAscii(rest.substr(0, 1))) {
      return true;
    }
    if (AreBeforeTabs(surplus.fileIndex)) {
      return !IsBeforeTab(*surplus.entry);
    }
    return IsAsciiUpper(next) &&
           (surplus.entry->text.empty() || !IsAscii(rest) || !HasBaseCamelCase());
  }

  // Whether most lines of the file have a tab as separator.
  bool AreBeforeTabs(std::uint32_t fileIndex) {
    const auto [known, isNew] = areBeforeTabs_.emplace(fileIndex, false);
    if (isNew) {
      const std::vector<Entry>& entries = File(fileIndex).Entries();
      const auto tabs = std::count_if(entries.begin(), entries.end(), IsBeforeTab);
      known->second = static_cast<std::size_t>(tabs) * 2 > entries.size();
    }
    return known->second;
  }

  // Whether keys such as "menu.openFile" are usual.
  bool HasBaseCamelCase() {
    constexpr std::size_t kUsual = 20;  // one of twenty
    if (!hasBaseCamelCase_) {
      std::size_t count = 0;
      for (const std::uint32_t baseFile : base_.Files()) {
        for (const Entry& entry : File(baseFile).Entries()) {
          const bool hasHump =
              std::adjacent_find(entry.key.begin(), entry.key.end(), [](char a, char b) {
                return IsAsciiLower(a) && IsAsciiUpper(b);
              }) != entry.key.end();
          count += hasHump ? 1U : 0U;
        }
      }
      hasBaseCamelCase_ = count * kUsual > base_.KeyCount();
    }
    return *hasBaseCamelCase_;
  }

  static void ReportLostSeparator(const SurplusKey& surplus, const MissingKey& missing) {
    const std::string_view key = missing.base.entry->key;
    const std::string_view rest = surplus.entry->key.substr(key.size());
    const bool isMark = std::string_view("=:;,").find(First(rest)) != std::string_view::npos;
    Finding& finding = surplus.file->Add(RuleId::kLostSeparator, Severity::kError,
                                         isMark ? rest.substr(0, 1) : rest, key,
                                         {isMark ? "lost-separator.mark" : "lost-separator.message",
                                          {std::string(key), std::string(rest.substr(0, 1))}});
    finding.mend = {isMark ? "lost-separator.mend_mark" : "lost-separator.mend",
                    {std::string(key)}};
    finding.related.push_back(surplus.file->RelatedBase(missing.base, key));
  }

  void MatchSimilarKeys() {
    std::vector<std::string_view> missingKeys;
    std::vector<std::size_t> missingIndices;
    for (std::size_t i = 0; i < missing_.size(); ++i) {
      if (!missing_[i].isExplained) {
        missingKeys.push_back(MissingName(i));
        missingIndices.push_back(i);
      }
    }
    std::vector<std::string_view> surplusKeys;
    std::vector<std::size_t> surplusIndices;
    for (std::size_t i = 0; i < surplus_.size(); ++i) {
      if (!surplus_[i].isExplained) {
        surplusKeys.push_back(surplus_[i].name);
        surplusIndices.push_back(i);
      }
    }
    for (const SimilarKeys& found : FindSimilarKeys(missingKeys, surplusKeys)) {
      MissingKey& missing = missing_[missingIndices[found.missing]];
      SurplusKey& surplus = surplus_[surplusIndices[found.surplus]];
      missing.isExplained = true;
      if (surplus.file != nullptr) {
        Finding& finding = AddMissing(*surplus.file, surplus.entry->key, missing);
        finding.hint = {"missing.typing_mistake", {}};
        finding.mend = {"look-alike-key.mend",
                        {std::string(MissingName(missingIndices[found.missing]))}};
      }
      Explain(surplus);
    }
  }

  // "menu.fichier" in the place of "menu.file": one part of the key is another word, and no other key
  // is missing or surplus in this place.
  void MatchTranslatedKeys() {
    struct Gap {
      MissingKey* missing = nullptr;
      SurplusKey* surplus = nullptr;
      bool hasMore = false;
    };
    std::map<const Entry*, Gap> gaps;  // by the entry in front of them
    for (MissingKey& missing : missing_) {
      if (!missing.isExplained && !missing.isBeforeNeighbour && missing.neighbour) {
        Gap& gap = gaps[missing.neighbour.entry];
        gap.hasMore = gap.hasMore || gap.missing != nullptr;
        gap.missing = &missing;
      }
    }
    for (SurplusKey& surplus : surplus_) {
      const auto gap = surplus.IsReported() ? gaps.find(surplus.neighbour) : gaps.end();
      if (gap != gaps.end()) {
        gap->second.hasMore = gap->second.hasMore || gap->second.surplus != nullptr;
        gap->second.surplus = &surplus;
      }
    }
    for (auto& [neighbour, gap] : gaps) {
      if (gap.surplus == nullptr || gap.hasMore ||
          !DifferInOnePart(gap.missing->base.entry->key, gap.surplus->name)) {
        continue;
      }
      gap.missing->isExplained = true;
      Finding& finding = AddMissing(*gap.surplus->file, gap.surplus->entry->key, *gap.missing);
      finding.hint = {"missing.translated_key", {}};
      finding.mend = {"missing.translated_key_mend", {std::string(gap.missing->base.entry->key)}};
      Explain(*gap.surplus);
    }
  }

  // --- What is left.

  static Finding& AddMissing(FileCheck& file, std::string_view where, const MissingKey& missing) {
    const std::string_view key = missing.base.entry->key;
    Finding& finding = file.Add(RuleId::kMissing, Severity::kWarning, where, key,
                                {"missing.message", {std::string(key)}});
    finding.related.push_back(file.RelatedBase(missing.base, key));
    return finding;
  }

  // Each stands where its line belongs. Of several files the one with its neighbour lacks it.
  void ReportMissing() {
    for (const MissingKey& missing : missing_) {
      if (missing.isExplained) {
        continue;
      }
      if (!missing.neighbour) {
        const SourceFile& source = files_.front().Source();
        AddMissing(files_.front(), source.LineCount() > 0 ? source.Line(1) : source.Bytes(),
                   missing);
      } else if (FileCheck* const file = CheckOf(missing.neighbour.file)) {
        Finding& finding = AddMissing(*file, missing.neighbour.entry->key, missing);
        finding.hint = {missing.isBeforeNeighbour ? "missing.before" : "missing.behind", {}};
        finding.mend = {"missing.mend", {std::string(missing.base.entry->key)}};
      }
    }
  }

  void ReportSurplus() {
    for (const SurplusKey& surplus : surplus_) {
      if (surplus.IsReported() && !workspace_.files[surplus.fileIndex].isSetOfItsOwn &&
          !IsJudgedAsPluralForm(*surplus.file, surplus.entry->key)) {
        const std::string_view key = surplus.entry->key;
        surplus.file
            ->Add(RuleId::kSurplus, Severity::kWarning, key, key,
                  {"surplus.message", {std::string(key)}})
            .mend = {"surplus.mend", {}};
      }
    }
  }

  void ReportEmpty() {
    for (FileCheck& file : files_) {
      if (file.Source().EncodedAsUtf16() != Utf16::kNo) {
        continue;
      }
      for (const Entry& entry : file.File().Entries()) {
        if (!IsBlankText(entry.text) || file.IsExplained(entry) ||
            merged_.Find(entry.key).entry != &entry) {
          continue;
        }
        const FoundEntry base = base_.Find(entry.key);
        if (base && !IsBlankText(base.entry->text)) {
          Finding& finding = file.Add(RuleId::kEmpty, Severity::kWarning,
                                      entry.text.empty() ? entry.key : entry.text, entry.key,
                                      {"empty.message", {std::string(entry.key)}});
          finding.related.push_back(file.RelatedBase(base, base.entry->key));
          file.Explain(entry);
        }
      }
    }
  }

  std::vector<FileCheck>& files_;
  const Workspace& workspace_;
  const MergedDictionary& merged_;
  const MergedDictionary& base_;
  std::map<std::uint32_t, FileCheck*> checks_;  // by index of the file
  std::vector<MissingKey> missing_;
  std::vector<SurplusKey> surplus_;
  std::vector<std::size_t> sorted_;  // indices of missing_, by key
  std::map<std::uint32_t, bool> areBeforeTabs_;
  std::optional<bool> hasBaseCamelCase_;
};

}  // namespace

void CheckBesideBase(std::vector<FileCheck>& files) {
  const bool isUncertain = std::any_of(files.begin(), files.end(), [](const FileCheck& file) {
    return file.IsWholeFileExplained() || file.IsIdDoubtful();
  });
  if (files.front().Base() != nullptr && !isUncertain) {
    BaseCheck(files).Run();
  }
}

}  // namespace KelmoLibs::Lang
