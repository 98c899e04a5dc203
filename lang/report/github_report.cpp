// The report as commands of GitHub's build service, which shows each finding beside its line.
#include "lang/report/machine_text.h"
#include "lang/report/report.h"
#include "lang/report/visible_text.h"

namespace KelmoLibs::Lang {
namespace {

// Escapes the data of a command; in its properties, colons and commas too.
std::string Escaped(std::string_view text, bool isProperty) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '%':
        escaped += "%25";
        break;
      case '\r':
        escaped += "%0D";
        break;
      case '\n':
        escaped += "%0A";
        break;
      case ':':
        escaped += isProperty ? "%3A" : ":";
        break;
      case ',':
        escaped += isProperty ? "%2C" : ",";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string_view CommandOf(Severity severity) {
  return severity == Severity::kNote ? "notice" : SeverityName(severity);
}

}  // namespace

std::string GithubReport(const Report& report) {
  std::string text;
  const auto property = [&text](std::string_view name, std::string_view value) {
    text.append(text.back() == ' ' ? "" : ",").append(name).append("=");
    text += Escaped(value, true);
  };
  for (const Finding& finding : report.findings) {
    const Place& place = finding.place;
    text.append("::").append(CommandOf(finding.severity)).append(" ");
    property("file", VisibleText(report.workspace.files[place.file].Source().Name()));
    if (place.line > 0) {
      property("line", std::to_string(place.line));
      property("col", std::to_string(place.column));
      if (place.length > 0) {  // the last marked column
        property("endColumn", std::to_string(place.column + place.length - 1));
      }
    }
    property("title", "kelmo-lang: " + std::string(RuleOf(finding.rule).name));
    text.append("::").append(Escaped(EnglishLines(finding), false)).append("\n");
  }
  return text;
}

}  // namespace KelmoLibs::Lang
