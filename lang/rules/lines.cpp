// Lines that mean something else to their author than to the library. The shape of the key tells,
// never the text alone. Tested by lines_test.cpp.
#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>
#include <utility>

#include "lang/rules/check.h"
#include "lang/rules/header_fault.h"
#include "lang/rules/line_kind.h"
#include "lang/rules/split_key.h"
#include "lang/unicode/ascii.h"
#include "lang/unicode/blanks.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/hex.h"

namespace KelmoLibs::Lang {
namespace {

using Entries = std::vector<const Entry*>;

constexpr std::size_t kRelatedPlaces = 9;
constexpr std::size_t kFewestOfColumn = 3;
constexpr std::size_t kSingleFindings = 5;  // more lines with the same fault make one finding

constexpr std::array<const char*, kTextFormatCount> kFormatMessages = {
    "",
    "other-format.key_value",
    "other-format.spreadsheet",
    "other-format.json",
    "other-format.po",
    "other-format.xml",
    "other-format.strings",
    "other-format.yaml",
};

std::string_view LineOf(const Entry& entry) noexcept {
  const char* const end = entry.text.empty() ? entry.key.data() + entry.key.size()
                                             : entry.text.data() + entry.text.size();
  return {entry.key.data(), static_cast<std::size_t>(end - entry.key.data())};
}

class LineCheck {
 public:
  explicit LineCheck(FileCheck& check)
      : check_(check), entries_(check.File().Entries()), shape_(entries_) {}

  void Run() {
    if (FindRichText() || FindMovedColumns() || FindOtherFormat()) {
      return;
    }
    GroupLines();
    ReportConflicts();
    if (wordComments_.size() * 2 <= entries_.size()) {
      comments_.insert(comments_.end(), wordComments_.begin(), wordComments_.end());
      std::sort(comments_.begin(), comments_.end(),
                [](const Entry* a, const Entry* b) { return a->key.data() < b->key.data(); });
    }
    ReportGroup(RuleId::kComment, Severity::kWarning, comments_, "comment.message.#");
    ReportGroup(RuleId::kSection, Severity::kWarning, sections_, "section.message.#");
    ReportKeyValues();
    ReportBlanksInKeys();
    ReportSplitKeys();
    ReportContinuedTexts();
    ReportSecondTabs();
  }

 private:
  bool IsInBase(const Entry& entry) const noexcept { return bool{check_.FindInBase(entry.key)}; }

  void ReportFormat(std::string_view line, Sentence message, Sentence mend) {
    Finding& finding =
        check_.Add(RuleId::kOtherFormat, Severity::kError, line, {}, std::move(message));
    finding.mend = std::move(mend);
    check_.ExplainWholeFile();
  }

  bool FindRichText() {
    constexpr std::string_view kStart = "{\\rtf";
    if (check_.Source().Bytes().substr(0, kStart.size()) != kStart) {
      return false;
    }
    ReportFormat(check_.Source().Line(1), {"other-format.rtf", {}}, {"other-format.rtf_mend", {}});
    return true;
  }

  // The part behind the last tab of the line; empty if there is none.
  static std::string_view LastColumn(const Entry& entry) noexcept {
    const std::size_t tab = entry.text.rfind('\t');
    return tab != std::string_view::npos ? entry.text.substr(tab + 1)
           : IsBeforeTab(entry)          ? entry.text
                                         : std::string_view();
  }

  // The number that the key is; 0 if it is none.
  static std::uint32_t RowNumber(std::string_view key) noexcept {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), number);
    return error == std::errc() && end == key.data() + key.size() ? number : 0;
  }

  // Whether the keys of the base stand in the second column of most lines, behind texts or behind
  // numbers that count up.
  bool FindMovedColumns() {
    if (check_.Base() == nullptr) {
      return false;
    }
    Entries swapped;
    Entries numbered;
    std::uint32_t lastRow = 0;
    std::size_t lines = 0;
    for (const Entry& entry : entries_) {
      lines += entry.key.empty() || entry.text.empty() ? 0U : 1U;
      if (entry.key.empty() || entry.text.empty() || IsInBase(entry)) {
        continue;
      }
      const std::string_view second = entry.text.substr(0, entry.text.find_first_of(" \t"));
      if (const std::uint32_t row = RowNumber(entry.key);
          row > lastRow && check_.Base()->Find(second)) {
        lastRow = row;
        numbered.push_back(&entry);
      } else if (check_.Base()->Find(LastColumn(entry))) {
        swapped.push_back(&entry);
      }
    }
    const auto areMost = [lines](const Entries& some) {
      return some.size() >= kFewestOfColumn && some.size() * 2 > lines;
    };
    if (areMost(numbered)) {
      ReportFormat(LineOf(*numbered.front()), {"other-format.row_numbers", {}},
                   {"other-format.row_numbers_mend", {}});
    } else if (areMost(swapped)) {
      ReportFormat(LineOf(*swapped.front()), {"other-format.swapped", {}},
                   {"other-format.swapped_mend", {}});
    }
    return check_.IsWholeFileExplained();
  }

  // Whether most lines are of one other format.
  bool FindOtherFormat() {
    std::array<std::size_t, kTextFormatCount> counts{};
    std::array<const Entry*, kTextFormatCount> first{};
    std::size_t lines = 0;
    for (const Entry& entry : entries_) {
      const LineKind kind = KindOf(entry);
      if (kind != LineKind::kEntry && kind != LineKind::kSection) {
        continue;
      }
      const auto format = static_cast<std::size_t>(FormatOf(entry));
      first[format] = counts[format]++ == 0 ? &entry : first[format];
      ++lines;
    }
    counts[0] = 0;
    const auto most =
        static_cast<std::size_t>(std::max_element(counts.begin(), counts.end()) - counts.begin());
    if (counts[most] < 2 || counts[most] * 2 <= lines) {
      return false;
    }
    check_.Add(RuleId::kOtherFormat, Severity::kError, LineOf(*first[most]), {},
               {kFormatMessages[most], {std::to_string(counts[most])}});
    check_.ExplainWholeFile();
    return true;
  }

  // Finds the lines that need a closer look, by what may be wrong with them.
  void GroupLines() {
    for (const Entry& entry : entries_) {
      switch (KindOf(entry)) {
        case LineKind::kComment:
          comments_.push_back(&entry);
          continue;
        case LineKind::kWordComment:
          if (!IsInBase(entry)) {
            wordComments_.push_back(&entry);
          }
          continue;
        case LineKind::kSection:
          sections_.push_back(&entry);
          continue;
        case LineKind::kConflictStart:
        case LineKind::kConflictMid:
        case LineKind::kConflictEnd:
          conflicts_.push_back(&entry);
          continue;
        case LineKind::kEntry:
          break;
      }
      if (!IsAscii(entry.key)) {
        notAscii_.push_back(&entry);
      }
      if (entry.key.find('=') != std::string_view::npos) {
        equalsSigns_.push_back(&entry);
      }
      if (!entry.key.empty() && entry.text.find('\t') != std::string_view::npos) {
        secondTabs_.push_back(&entry);
      }
    }
  }

  // From each "<<<<<<<" to its ">>>>>>>". Without both, a line of "=" only divides the file.
  void ReportConflicts() {
    const Entry* start = nullptr;
    for (const Entry* const entry : conflicts_) {
      const LineKind kind = KindOf(*entry);
      if (kind == LineKind::kConflictStart) {
        start = entry;
      } else if (kind == LineKind::kConflictMid && start == nullptr) {
        comments_.push_back(entry);
      } else if (kind == LineKind::kConflictEnd) {
        ReportConflict(start != nullptr ? *start : *entry, *entry);
        start = nullptr;
      }
    }
    if (start != nullptr) {
      ReportConflict(*start, *start);
    }
  }

  void ReportConflict(const Entry& start, const Entry& end) {
    const std::uint32_t firstLine = check_.Source().LineOf(start.key.data());
    const std::uint32_t lastLine = check_.Source().LineOf(end.key.data());
    for (std::uint32_t line = firstLine; line <= lastLine; ++line) {
      check_.Explain(line);
    }
    Finding& finding = check_.Add(RuleId::kConflictMarker, Severity::kError, LineOf(start), {},
                                  {"conflict-marker.message", {}});
    finding.mend = {"conflict-marker.mend", {}};
    if (&start != &end) {
      finding.related.push_back(
          {check_.PlaceIn(check_.FileIndex(), LineOf(end)), {"conflict-marker.end", {}}});
    }
  }

  // One finding for all of `lines`, at the first one.
  void ReportGroup(RuleId rule, Severity severity, const Entries& lines, const char* message) {
    const Entry* first = nullptr;
    std::vector<RelatedPlace> related;
    std::size_t count = 0;
    for (const Entry* const entry : lines) {
      if (check_.IsExplained(*entry)) {
        continue;
      }
      check_.Explain(*entry);
      if (++count == 1) {
        first = entry;
      } else if (related.size() < kRelatedPlaces) {
        related.push_back(
            {check_.PlaceIn(check_.FileIndex(), LineOf(*entry)), {"related.also_here", {}}});
      }
    }
    if (first != nullptr) {
      check_.Add(rule, severity, LineOf(*first), first->key, {message, {std::to_string(count)}})
          .related = std::move(related);
    }
  }

  // A few lines "menu.open=Open" among others. With a base, the keys that it misses tell more.
  void ReportKeyValues() {
    if (check_.Base() != nullptr || !shape_.IsKnown()) {
      return;
    }
    Entries lines;
    std::copy_if(equalsSigns_.begin(), equalsSigns_.end(), std::back_inserter(lines),
                 [this](const Entry* entry) {
                   const std::size_t name = NameBeforeEqualsSign(entry->key);
                   return name > 0 && shape_.Fits(entry->key.substr(0, name));
                 });
    ReportGroup(RuleId::kOtherFormat, Severity::kError, lines, "other-format.equals_signs.#");
  }

  void ReportBlanksInKeys() {
    for (const Entry* const entry : notAscii_) {
      if (check_.IsExplained(*entry) || IsInBase(*entry)) {
        continue;
      }
      VisitCodePoints(entry->key, [this, entry](char32_t character, std::string_view part) {
        const Blank blank = BlankOf(character);
        if (blank == Blank::kNo || (blank == Blank::kJoiner && !JoinsAscii(*entry, part))) {
          return true;
        }
        ReportBlankInKey(*entry, part, character, blank);
        return false;
      });
    }
  }

  // A joiner belongs to the words of some scripts, none of which is Latin.
  static bool JoinsAscii(const Entry& entry, std::string_view joiner) noexcept {
    const char* const keyEnd = entry.key.data() + entry.key.size();
    const char* const end = joiner.data() + joiner.size();
    return joiner.data() == entry.key.data() || IsAscii({joiner.data() - 1, 1}) || end == keyEnd ||
           IsAscii({end, 1});
  }

  void ReportBlankInKey(const Entry& entry, std::string_view part, char32_t character,
                        Blank blank) {
    const char* message = "blank-in-key.other";
    switch (blank) {
      case Blank::kNoBreak:
        message = "blank-in-key.no_break";
        break;
      case Blank::kIdeographic:
        message = "blank-in-key.ideographic";
        break;
      case Blank::kInvisible:
      case Blank::kJoiner:
        message = "blank-in-key.invisible";
        break;
      case Blank::kNo:
      case Blank::kOther:
        break;
    }
    Finding& finding = check_.Add(RuleId::kBlankInKey, Severity::kError, part, entry.key,
                                  {message, {CodePointName(character), std::string(entry.key)}});
    const bool isInvisible = blank == Blank::kInvisible || blank == Blank::kJoiner;
    finding.mend = {isInvisible ? "blank-in-key.mend.delete" : "blank-in-key.mend.tab", {}};
    check_.Explain(entry);
  }

  // A space or tab, at which the library ends the key.
  void ReportSplitKeys() {
    for (const Entry& entry : entries_) {
      const FoundEntry base = FindSplitKey(check_, entry);
      if (!base || check_.IsExplained(entry)) {
        continue;
      }
      const char* const keyEnd = entry.key.data() + entry.key.size();
      const std::string key(base.entry->key);
      Finding& finding =
          check_.Add(RuleId::kBlankInKey, Severity::kError,
                     {keyEnd, static_cast<std::size_t>(entry.text.data() - keyEnd)},
                     base.entry->key, {"blank-in-key.space", {key, std::string(entry.key)}});
      finding.mend = {"blank-in-key.mend.space", {key}};
      finding.related.push_back(check_.RelatedBase(base, base.entry->key));
      check_.Explain(entry);
    }
  }

  // A line whose first word is no key but a word of the text of the line before.
  void ReportContinuedTexts() {
    if (!shape_.IsKnown()) {
      return;
    }
    const Entry* previous = nullptr;  // the entry that may be continued
    Entries lines;
    const Entry* const header = FindDisplacedHeader(check_);
    for (const Entry& entry : entries_) {
      if (previous != nullptr && !shape_.Fits(entry.key) && ContinuesText(entry) &&
          !check_.IsExplained(entry) && &entry != header) {
        lines.push_back(&entry);
        continue;
      }
      ReportContinuedText(previous, lines);
      previous = entry.text.empty() || check_.IsExplained(entry) ? nullptr : &entry;
    }
    ReportContinuedText(previous, lines);
  }

  // Whether the line looks like a part of a text. Precondition: its key has not the shape of keys.
  bool ContinuesText(const Entry& entry) const noexcept {
    if (IsInBase(entry)) {
      return false;
    }
    if (entry.key.empty()) {  // an indented line
      return !entry.text.empty() &&
             entry.text.find_first_not_of(" \t\r") != std::string_view::npos &&
             !shape_.Fits(entry.text.substr(0, entry.text.find_first_of(" \t")));
    }
    const bool isProse =
        (shape_.AreAscii() && !IsAscii(entry.key)) ||
        std::string_view(",.;:!?)\"").find(entry.key.back()) != std::string_view::npos ||
        std::string_view("(\"").find(entry.key.front()) != std::string_view::npos;
    const bool areWords = !entry.text.empty();
    const bool isBeforeBlank = shape_.AreBeforeTabs() && !IsBeforeTab(entry);
    return isBeforeBlank ? isProse || areWords : isProse && !IsBeforeTab(entry) && areWords;
  }

  // `lines`, which are emptied, continue the text of `entry`.
  void ReportContinuedText(const Entry* entry, Entries& lines) {
    if (lines.empty()) {
      return;
    }
    Finding& finding = check_.Add(
        RuleId::kContinuedText, Severity::kError, LineOf(*lines.front()), entry->key,
        {"continued-text.message.#", {std::to_string(lines.size()), std::string(entry->key)}});
    finding.mend = {"continued-text.mend", {}};
    finding.related.push_back(
        {check_.PlaceIn(check_.FileIndex(), entry->key), {"continued-text.begin", {}}});
    for (const Entry* const line : lines) {
      check_.Explain(*line);
    }
    check_.Explain(*entry);
    lines.clear();
  }

  // In many lines they are a third column of a spreadsheet. The lines are entries like others.
  void ReportSecondTabs() {
    Entries lines;
    for (const Entry* const entry : secondTabs_) {
      const FoundEntry base = check_.FindInBase(entry->key);
      const bool isMeant = base && base.entry->text.find('\t') != std::string_view::npos;
      if (!isMeant && !check_.IsExplained(*entry)) {
        lines.push_back(entry);
      }
    }
    const bool isColumn = lines.size() >= kFewestOfColumn && lines.size() * 2 > entries_.size();
    if (isColumn || lines.size() > kSingleFindings) {
      ReportSecondTab(*lines.front(), lines.size());
      return;
    }
    for (const Entry* const entry : lines) {
      ReportSecondTab(*entry, 1);
    }
  }

  void ReportSecondTab(const Entry& entry, std::size_t count) {
    const std::string_view behind = entry.text.substr(entry.text.find('\t'));
    check_
        .Add(RuleId::kSecondTab, Severity::kWarning, behind, entry.key,
             {"second-tab.message.#", {std::to_string(count)}})
        .mend = {"second-tab.mend", {}};
  }

  FileCheck& check_;
  const std::vector<Entry>& entries_;
  KeyShape shape_;
  Entries comments_;
  Entries wordComments_;
  Entries sections_;
  Entries conflicts_;
  Entries notAscii_;
  Entries equalsSigns_;
  Entries secondTabs_;
};

}  // namespace

void CheckLines(FileCheck& check) {
  const bool isRead = check.Source().EncodedAsUtf16() == Utf16::kNo;
  if (isRead && !check.IsWholeFileExplained()) {
    LineCheck(check).Run();
  }
}

}  // namespace KelmoLibs::Lang
