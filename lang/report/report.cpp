#include "lang/report/report.h"

#include <algorithm>
#include <tuple>

namespace KelmoLibs::Lang {

void SortFindings(std::vector<Finding>& findings) {
  const auto rank = [](const Finding& finding) {
    const Place& place = finding.place;
    return std::make_tuple(-static_cast<int>(finding.severity), place.file, place.line,
                           place.column);
  };
  std::stable_sort(
      findings.begin(), findings.end(),
      [rank](const Finding& left, const Finding& right) { return rank(left) < rank(right); });
}

Summary SummaryOf(const Report& report) {
  Summary summary;
  for (const Finding& finding : report.findings) {
    summary.Add(finding.severity, 1);
  }
  for (const CountedFindings& counted : report.counted) {
    summary.Add(counted.severity, counted.count);
  }
  for (const WorkspaceFile& file : report.workspace.files) {
    summary.files += file.isReported ? 1 : 0;
  }
  return summary;
}

}  // namespace KelmoLibs::Lang
