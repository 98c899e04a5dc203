#include "lang/report/report.h"

namespace KelmoLibs::Lang {

std::string TextReport(const Report& report, const Texts& texts, const TextStyle& /*style*/) {
  std::string text;
  for (const Finding& finding : report.findings) {
    const Place& place = finding.place;
    text += report.workspace.files[place.file].Source().Name();
    if (place.line > 0) {
      text += ':' + std::to_string(place.line) + ':' + std::to_string(place.column);
    }
    text += ": ";
    text += SeverityName(finding.severity);
    text += ": " + texts.Say(finding.message) + " [";
    text += RuleOf(finding.rule).name;
    text += "]\n";
  }
  return text;
}

}  // namespace KelmoLibs::Lang
