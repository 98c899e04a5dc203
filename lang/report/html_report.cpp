#include "lang/report/html_report.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "lang/report/html.h"
#include "lang/report/html_style.h"
#include "lang/report/percent_encoding.h"
#include "lang/report/visible_text.h"
#include "lang/unicode/code_points.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kShownOfARule = 100;  // in one file
// Of a long line, in characters.
constexpr std::size_t kShownInFront = 80;
constexpr std::size_t kShownMarked = 200;
constexpr std::size_t kShownBehind = 160;

// The findings of one rule in one file.
struct RuleGroup {
  RuleId rule;
  std::vector<const Finding*> findings;
  std::size_t more = 0;  // that are not shown
};

struct FileGroup {
  std::uint32_t file = 0;
  SeverityCounts counts;
  std::vector<RuleGroup> rules;  // in the order of their worst findings
};

RuleGroup& GroupOf(RuleId rule, FileGroup& file) {
  const auto found = std::find_if(file.rules.begin(), file.rules.end(),
                                  [rule](const RuleGroup& group) { return group.rule == rule; });
  return found != file.rules.end() ? *found : file.rules.emplace_back(RuleGroup{rule, {}, 0});
}

// The reported files, worst first.
std::vector<FileGroup> FilesOf(const Report& report) {
  std::vector<FileGroup> all(report.workspace.files.size());
  for (std::uint32_t i = 0; i < all.size(); ++i) {
    all[i].file = i;
  }
  for (const Finding& finding : report.findings) {
    FileGroup& file = all[finding.place.file];
    file.counts.Add(finding.severity, 1);
    RuleGroup& group = GroupOf(finding.rule, file);
    if (group.findings.size() < kShownOfARule) {
      group.findings.push_back(&finding);
    } else {
      ++group.more;
    }
  }
  for (const CountedFindings& counted : report.counted) {
    all[counted.file].counts.Add(counted.severity, counted.count);
    GroupOf(counted.rule, all[counted.file]).more += counted.count;
  }
  std::vector<FileGroup> files;
  for (FileGroup& file : all) {
    if (report.workspace.files[file.file].isReported) {
      files.push_back(std::move(file));
    }
  }
  std::stable_sort(files.begin(), files.end(), [](const FileGroup& left, const FileGroup& right) {
    return std::tie(left.counts.errors, left.counts.warnings, left.counts.notes) >
           std::tie(right.counts.errors, right.counts.warnings, right.counts.notes);
  });
  return files;
}

// The length of the folder, with the slash at its end, in which all files are. Findings name them
// without it.
std::size_t FolderLength(const Workspace& workspace) {
  std::string_view folder;
  for (const WorkspaceFile& file : workspace.files) {
    const std::string_view name = file.Source().Name();
    if (&file == &workspace.files.front()) {
      folder = name;
    }
    std::size_t same = 0;
    while (same < std::min(folder.size(), name.size()) && folder[same] == name[same]) {
      ++same;
    }
    folder = folder.substr(0, folder.substr(0, same).find_last_of("/\\") + 1);  // npos + 1 is 0
  }
  return folder.size();
}

// A line around a marked part, cut if it is long.
std::string HtmlOfLine(std::string_view line, std::size_t offset, std::size_t length) {
  constexpr std::string_view kCut = u8"…";
  constexpr std::size_t kLongestCharacter = 4;
  const auto take = [](std::string_view& text, std::size_t count) {
    const std::string_view all = text;
    for (; count > 0 && !text.empty(); --count) {
      TakeCharacter(text);
    }
    return all.substr(0, all.size() - text.size());
  };
  std::string_view front = line.substr(0, offset);
  std::string html;
  if (front.size() > kLongestCharacter * kShownInFront) {
    front.remove_prefix(front.size() - kLongestCharacter * kShownInFront);
    while (!front.empty() && IsContinuation(front.front())) {
      front.remove_prefix(1);  // the rest of a character
    }
    html += kCut;
  }
  std::string_view behind = line.substr(offset);
  const std::string_view marked = take(behind, std::min(length, kShownMarked));
  const std::string_view shown = take(behind, kShownBehind);
  html += HtmlOfSource(front);
  html += "<mark>" + HtmlOfSource(marked) + "</mark>";
  html += HtmlOfSource(shown);
  html += behind.empty() ? std::string_view() : kCut;
  return html;
}

class HtmlWriter {
 public:
  HtmlWriter(const Page& page, const Texts& texts)
      : page_(page),
        report_(page.report),
        texts_(texts),
        files_(FilesOf(page.report)),
        folderLength_(FolderLength(page.report.workspace)) {}

  std::string Write() {
    const std::string title = Text("page.title");
    html_ = "<!DOCTYPE html>\n<html lang=\"" + HtmlOf(texts_.Language()) +
            "\">\n<head>\n<meta charset=\"utf-8\">\n"
            "<meta http-equiv=\"Content-Security-Policy\" "
            "content=\"default-src 'none'; style-src 'unsafe-inline'\">\n"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
            "<title>" +
            title + "</title>\n<style>" + std::string(kHtmlStyle) + "</style>\n</head>\n<body>\n";
    html_ += "<h1>" + title + "</h1>\n";
    WriteSummary();
    WriteProblems();
    WriteTable();
    for (const FileGroup& file : files_) {
      WriteFile(file);
    }
    html_ += "<footer>" + Text("page.limits") + ' ' + Text("page.untouched") +
             "</footer>\n</body>\n</html>\n";
    return std::move(html_);
  }

 private:
  std::string Text(const std::string& key) const { return HtmlOf(texts_.Find(key)); }
  std::string Say(const Sentence& sentence) const { return HtmlOf(sentence, texts_); }

  void Paragraph(const char* kind, const std::string& content) {
    html_.append("<p class=\"").append(kind).append("\">").append(content).append("</p>\n");
  }

  const WorkspaceFile& FileOf(std::uint32_t file) const { return report_.workspace.files[file]; }
  std::string NameOf(std::uint32_t file) const {
    return FileOf(file).Source().Name().substr(folderLength_);
  }

  void WriteCount(const char* kind, const char* key, std::size_t count) {
    if (count > 0) {
      html_.append("<span class=\"count ").append(kind).append("\">");
      html_ += Say({key, {std::to_string(count)}}) + "</span>\n";
    }
  }

  void WriteSummary() {
    const Summary summary = SummaryOf(report_);
    html_ += "<p>\n";
    WriteCount("error", "summary.errors.#", summary.errors);
    WriteCount("warning", "summary.warnings.#", summary.warnings);
    WriteCount("note", "summary.notes.#", summary.notes);
    if (summary.All() == 0 && page_.problems.empty() && summary.files > 0) {
      html_ += "<span class=\"count good\">" + Text("summary.nothing") + "</span>\n";
    }
    html_ += "</p>\n";
    if (folderLength_ > 0) {
      const std::string& name = report_.workspace.files.front().Source().Name();
      Paragraph("soft", Say({"page.files", {name.substr(0, folderLength_)}}));
    }
    if (report_.workspace.baseFile) {
      Paragraph("soft", Say({"page.base", {NameOf(*report_.workspace.baseFile)}}));
    } else if (!report_.rulesNotRun.empty()) {
      Paragraph("soft", Text("page.no_base"));
    }
    if (!page_.folderOfCopies.empty() && !page_.copies.empty()) {
      Paragraph("box", Say({"page.folder", {page_.folderOfCopies, FilesWithCopies()}}));
    }
    if (summary.All() > 0) {
      Paragraph("soft", Text("page.tab"));
    }
  }

  std::string FilesWithCopies() const {
    std::string names;
    std::uint32_t last = 0;
    for (const MendedCopy& copy : page_.copies) {
      if (names.empty() || copy.file != last) {
        names += (names.empty() ? "" : ", ") + NameOf(copy.file);
      }
      last = copy.file;
    }
    return names;
  }

  void WriteProblems() {
    if (page_.problems.empty()) {
      return;
    }
    html_ += "<div class=\"box error\">\n<h3>" + Text("page.problems") + "</h3>\n<ul>\n";
    for (const PageProblem& problem : page_.problems) {
      html_ += "<li>" + Isolated(problem.path) + ": " + Say(problem.reason) + "</li>\n";
    }
    html_ += "</ul>\n</div>\n";
  }

  void WriteNumber(const char* kind, std::size_t number) {
    html_ += "<td class=\"number";
    html_ += number > 0 ? std::string(" some ") + kind : "";
    html_ += "\">" + std::to_string(number) + "</td>";
  }

  void WriteTable() {
    if (files_.empty()) {
      return;
    }
    html_ += "<table>\n<thead><tr><th>" + Text("page.file") + "</th>";
    for (const char* const key : {"page.texts", "page.errors", "page.warnings", "page.notes"}) {
      html_ += "<th class=\"number\">" + Text(key) + "</th>";
    }
    html_ += "</tr></thead>\n<tbody>\n";
    for (const FileGroup& file : files_) {
      const std::string name = Isolated(NameOf(file.file));
      html_ += "<tr><td>";
      html_ += file.rules.empty()
                   ? name
                   : "<a href=\"#file" + std::to_string(file.file) + "\">" + name + "</a>";
      if (file.rules.empty()) {
        html_ += "<br><span class=\"soft\">" + WhatIsFine(file.file) + "</span>";
      }
      html_ += "</td><td class=\"number some\">" + TextCount(file.file) + "</td>";
      WriteNumber("error", file.counts.errors);
      WriteNumber("warning", file.counts.warnings);
      WriteNumber("note", file.counts.notes);
      html_ += "</tr>\n";
    }
    html_ += "</tbody>\n</table>\n";
  }

  // What the library reads of the file: a number, or nothing for a unit table.
  std::string TextCount(std::uint32_t file) const {
    const auto& dictionary = FileOf(file).dictionary;
    const bool isText = dictionary && dictionary->Source().EncodedAsUtf16() == Utf16::kNo;
    return !dictionary ? "" : std::to_string(isText ? dictionary->Entries().size() : 0);
  }

  std::string WhatIsFine(std::uint32_t file) const {
    return FileOf(file).dictionary ? Say({"page.fine.#", {TextCount(file)}})
                                   : Text("page.fine.units");
  }

  void WriteFile(const FileGroup& file) {
    if (file.rules.empty()) {
      return;
    }
    html_ += "<section id=\"file" + std::to_string(file.file) + "\">\n<h2>" +
             Isolated(NameOf(file.file)) + "</h2>\n";
    WriteCopies(file.file);
    WriteLines(file);
    for (const RuleGroup& group : file.rules) {
      WriteRule(group);
    }
    html_ += "</section>\n";
  }

  void WriteCopies(std::uint32_t file) {
    std::string certain;
    std::string guessed;
    for (const MendedCopy& copy : page_.copies) {
      if (copy.file == file) {
        std::string link =
            "<li><a href=\"" + PercentEncoded(copy.path) + "\">" + Isolated(copy.path) + "</a>";
        for (const Sentence& change : copy.changes) {
          link += (&change == &copy.changes.front() ? ": " : "; ") + Say(change);
        }
        link += "</li>\n";
        (copy.readAs.empty() ? certain : guessed) += link;
      }
    }
    for (const auto& [key, links] :
         {std::pair("page.mended", &certain), std::pair("page.guessed", &guessed)}) {
      if (!links->empty()) {
        html_ += "<div class=\"box\">\n" + Text(key) + "\n<ul>\n" + *links + "</ul>\n</div>\n";
      }
    }
  }

  static std::string AnchorOf(const Place& place) {
    return "file" + std::to_string(place.file) + "line" + std::to_string(place.line);
  }

  // The lines of the findings, so that a person can begin with the last one: the numbers of the
  // lines in front of it then stay right.
  void WriteLines(const FileGroup& file) {
    std::map<std::uint32_t, std::string, std::greater<>> links;
    for (const RuleGroup& group : file.rules) {
      for (const Finding* const finding : group.findings) {
        const Place& place = finding->place;
        if (place.line > 0) {
          links.try_emplace(place.line, "<a href=\"#" + AnchorOf(place) + "\">" +
                                            std::to_string(place.line) + "</a>");
        }
      }
    }
    if (links.size() > 1) {
      std::string lines = Text("page.lines");
      for (const auto& [line, link] : links) {
        lines += ' ' + link;
      }
      Paragraph("soft", lines);
    }
  }

  void WriteRule(const RuleGroup& group) {
    const Rule& rule = RuleOf(group.rule);
    const Severity worst =
        group.findings.empty() ? rule.severity : group.findings.front()->severity;
    html_.append("<div class=\"rule ").append(SeverityName(worst)).append("\">\n<h3>");
    html_ += Text("severity." + std::string(SeverityName(worst))) + ": " +
             Text("rule." + std::string(rule.name) + ".title") + "</h3>\n";
    for (const Finding* const finding : group.findings) {
      WriteFinding(*finding);
    }
    if (group.more > 0) {
      Paragraph("finding soft", Say({"page.more.#", {std::to_string(group.more)}}));
    }
    WriteExplanation(rule);
    html_ += "</div>\n";
  }

  // Open where the rule appears for the first time on the page.
  void WriteExplanation(const Rule& rule) {
    const bool isFirst = !std::exchange(isExplained_[static_cast<std::size_t>(rule.id)], true);
    html_ += isFirst ? "<details open>" : "<details>";
    html_ += "<summary>" + Text("page.explanation") + "</summary>\n<dl>\n";
    for (const char* const part : {"cause", "library", "mend"}) {
      const std::string key = "rule." + std::string(rule.name) + '.' + part;
      html_ += "<dt>" + Text(std::string("page.") + part) + "</dt><dd>" + Text(key) + "</dd>\n";
    }
    html_ += "</dl>\n</details>\n";
  }

  void WriteFinding(const Finding& finding) {
    const Place& place = finding.place;
    const bool isFirst = place.line > 0 && anchors_.insert(AnchorOf(place)).second;
    html_ += isFirst ? "<div class=\"finding\" id=\"" + AnchorOf(place) + "\">\n<p>"
                     : "<div class=\"finding\">\n<p>";
    if (place.line > 0) {
      html_ +=
          "<span class=\"where\">" + Say({"page.line", {std::to_string(place.line)}}) + ":</span> ";
    }
    html_ += Say(finding.message) + "</p>\n";
    if (place.line > 0) {
      const SourceFile& source = FileOf(place.file).Source();
      const std::string_view line = source.Line(place.line);
      const auto start = static_cast<std::size_t>(line.data() - source.Bytes().data());
      html_ += R"(<bdi class="source" dir="auto">)" +
               HtmlOfLine(line, std::min(place.offset - start, line.size()), place.length) +
               "</bdi>\n";
    }
    if (!finding.hint.IsEmpty()) {
      Paragraph("hint", Say(finding.hint));
    }
    if (!finding.mend.IsEmpty()) {
      Paragraph("mend", "<strong>" + Text("label.mend") + ":</strong> " + Say(finding.mend));
    }
    for (const RelatedPlace& related : finding.related) {
      WriteRelated(related);
    }
    html_ += "</div>\n";
  }

  void WriteRelated(const RelatedPlace& related) {
    std::string where = Isolated(NameOf(related.place.file));
    if (related.place.line > 0) {
      where += ", " + Say({"page.line", {std::to_string(related.place.line)}});
    }
    Paragraph("soft", where + ": " + Say(related.message));
  }

  const Page& page_;
  const Report& report_;
  const Texts& texts_;
  std::vector<FileGroup> files_;
  std::size_t folderLength_;
  std::array<bool, kRuleCount> isExplained_ = {};
  std::set<std::string> anchors_;
  std::string html_;
};

}  // namespace

std::string HtmlReport(const Page& page, const Texts& texts) {
  return HtmlWriter(page, texts).Write();
}

}  // namespace KelmoLibs::Lang
