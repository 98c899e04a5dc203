// The report for people.
#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "lang/report/report.h"
#include "lang/report/visible_text.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kShownOfARule = 20;
constexpr std::size_t kMarginWidth = 5;  // of a line number, without the blank behind it
constexpr std::size_t kLabelWidth = 8;   // of "base:" at least, which ends above the text

// The escape sequences of terminals.
constexpr std::string_view kBold = "\x1B[1m";
constexpr std::string_view kRed = "\x1B[1;31m";
constexpr std::string_view kYellow = "\x1B[1;33m";
constexpr std::string_view kCyan = "\x1B[1;36m";
constexpr std::string_view kBlue = "\x1B[1;34m";
constexpr std::string_view kPlain = "\x1B[0m";

std::string_view ColourOf(Severity severity) {
  return severity == Severity::kError ? kRed : severity == Severity::kWarning ? kYellow : kCyan;
}

std::string RightAligned(std::string_view text, std::size_t width) {
  const std::size_t used = WidthOf(text);
  return std::string(width - std::min(width, used), ' ') + std::string(text);
}

class TextWriter {
 public:
  TextWriter(const Report& report, const Texts& texts, const TextStyle& style)
      : report_(report), texts_(texts), style_(style) {
    for (const char* const label :
         {"label.base", "label.hint", "label.mend", "label.or", "label.see"}) {
      labelWidth_ = std::max<std::size_t>(labelWidth_, WidthOf(texts.Find(label) + ':'));
    }
  }

  std::string Write() {
    std::array<std::size_t, kRuleCount> notShown = {};
    std::array<std::size_t, kRuleCount> shown = {};
    for (const Finding& finding : report_.findings) {
      const auto rule = static_cast<std::size_t>(finding.rule);
      if (style_.showsAll || shown[rule] < kShownOfARule) {
        ++shown[rule];
        WriteFinding(finding);
      } else {
        ++notShown[rule];
      }
    }
    WriteNotShown(notShown);
    if (!report_.findings.empty()) {
      text_ += texts_.Find("report.rules") + '\n';
    }
    WriteNotCompared();
    for (const Sentence& stale : report_.staleIgnored) {
      text_ += Say(stale) + '\n';
    }
    WriteSummary();
    return std::move(text_);
  }

 private:
  void Coloured(std::string_view colour, std::string_view text) {
    if (style_.hasColours && !text.empty()) {
      text_.append(colour).append(text).append(kPlain);
    } else {
      text_ += text;
    }
  }

  std::string Say(const Sentence& sentence) const { return VisibleText(texts_.Say(sentence)); }

  const SourceFile& SourceOf(const Place& place) const {
    return report_.workspace.files[place.file].Source();
  }

  std::string NameOf(const Place& place) const { return VisibleText(SourceOf(place).Name()); }

  void WriteFinding(const Finding& finding) {
    const Place& place = finding.place;
    std::string where = NameOf(place) + ':';
    if (place.line > 0) {
      where += std::to_string(place.line) + ':' + std::to_string(place.column) + ':';
    }
    Coloured(kBold, where);
    text_ += ' ';
    Coloured(
        ColourOf(finding.severity),
        texts_.Find(std::string("severity.") + std::string(SeverityName(finding.severity))) + ':');
    text_ += ' ';
    Coloured(kBold, Say(finding.message));
    text_.append(" [").append(RuleOf(finding.rule).name).append("]\n");
    WriteSource(finding);
    if (!finding.mend.IsEmpty()) {
      WriteLabelled(texts_.Find("label.mend"), Say(finding.mend));
    }
    if (!finding.mendCommand.empty()) {
      WriteLabelled(texts_.Find(finding.mend.IsEmpty() ? "label.mend" : "label.or"),
                    "kelmo-lang " + VisibleText(finding.mendCommand));
    }
    for (const RelatedPlace& related : finding.related) {
      std::string at = NameOf(related.place);
      if (related.place.line > 0) {
        at += ':' + std::to_string(related.place.line);
      }
      WriteLabelled(LabelOf(related.message.key), at + ' ' + Say(related.message));
    }
  }

  void WriteSource(const Finding& finding) {
    const Place& place = finding.place;
    if (place.line == 0) {
      if (!finding.hint.IsEmpty()) {
        WriteLabelled(texts_.Find("label.hint"), Say(finding.hint));
      }
      return;
    }
    const std::string_view line = SourceOf(place).Line(place.line);
    const auto lineStart = static_cast<std::size_t>(line.data() - SourceOf(place).Bytes().data());
    const std::string number = RightAligned(std::to_string(place.line), kMarginWidth);
    const unsigned margin = static_cast<unsigned>(number.size()) + 3;  // with " | "
    const std::size_t offset = std::min(place.offset - lineStart, line.size());
    const Excerpt excerpt =
        ExcerptOf(line, offset, place.length, std::max(style_.width, 2 * margin) - margin);
    Coloured(kBlue, number + " |");
    text_.append(" ").append(excerpt.text).append("\n");
    Coloured(kBlue, std::string(number.size(), ' ') + " |");
    text_.append(1 + std::size_t{excerpt.markStart}, ' ');
    std::string marks(excerpt.markWidth, '^');
    if (!finding.hint.IsEmpty()) {
      marks += ' ' + Say(finding.hint);
    }
    Coloured(ColourOf(finding.severity), marks);
    text_ += '\n';
  }

  void WriteLabelled(const std::string& label, std::string_view said) {
    Coloured(kBlue, RightAligned(label + ':', labelWidth_));
    text_.append(" ").append(said).append("\n");
  }

  // The label of "related.base" is the text "label.base".
  std::string LabelOf(std::string_view sentence) const {
    const std::string key = "label." + std::string(sentence.substr(sentence.rfind('.') + 1));
    const std::string label = texts_.Find(key);
    return label == key ? texts_.Find("label.see") : label;
  }

  void WriteNotShown(std::array<std::size_t, kRuleCount>& notShown) {
    for (const CountedFindings& counted : report_.counted) {
      notShown[static_cast<std::size_t>(counted.rule)] += counted.count;
    }
    for (const Rule& rule : AllRules()) {
      if (const std::size_t count = notShown[static_cast<std::size_t>(rule.id)]; count > 0) {
        text_ += texts_.Say({style_.showsAll ? "report.more" : "report.more_with_all",
                             {std::to_string(count), std::string(rule.name)}});
        text_ += '\n';
      }
    }
  }

  void WriteNotCompared() {
    if (!report_.rulesNotRun.empty()) {
      std::string rules;
      for (const RuleId rule : report_.rulesNotRun) {
        rules.append(rules.empty() ? "" : ", ").append(RuleOf(rule).name);
      }
      text_ += texts_.Say({"report.no_base", {rules}}) + '\n';
      if (!report_.possibleBase.empty()) {
        text_ += Say({"report.base_suggestion", {report_.possibleBase}}) + '\n';
      }
    }
    if (!report_.setsOfTheirOwn.empty()) {
      std::string files;
      for (const std::uint32_t file : report_.setsOfTheirOwn) {
        files.append(files.empty() ? "" : ", ").append(NameOf({file}));
      }
      text_ += texts_.Say({"report.sets_of_their_own", {files}}) + '\n';
    }
  }

  void WriteSummary() {
    const Summary summary = SummaryOf(report_);
    std::string counts;
    const auto add = [&](const char* key, Severity severity, std::size_t count) {
      if (count > 0) {
        counts += counts.empty() ? "" : ", ";
        std::string said = texts_.Say({key, {std::to_string(count)}});
        counts +=
            style_.hasColours ? std::string(ColourOf(severity)) + said + std::string(kPlain) : said;
      }
    };
    add("summary.errors.#", Severity::kError, summary.errors);
    add("summary.warnings.#", Severity::kWarning, summary.warnings);
    add("summary.notes.#", Severity::kNote, summary.notes);
    if (counts.empty()) {
      counts = texts_.Find("summary.nothing");
    }
    text_ += texts_.Say({"summary.files.#", {std::to_string(summary.files), counts}}) + '\n';
  }

  const Report& report_;
  const Texts& texts_;
  const TextStyle& style_;
  std::size_t labelWidth_ = kLabelWidth;  // so that all labels of a language end in one column
  std::string text_;
};

}  // namespace

std::string TextReport(const Report& report, const Texts& texts, const TextStyle& style) {
  return TextWriter(report, texts, style).Write();
}

}  // namespace KelmoLibs::Lang
