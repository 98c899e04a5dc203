#include "lang/rules/check.h"

#include <utility>

namespace KelmoLibs::Lang {

FileCheck::FileCheck(const Workspace& workspace, std::uint32_t fileIndex, Findings& findings,
                     const RuleSettings& settings)
    : workspace_(workspace),
      fileIndex_(fileIndex),
      file_(*workspace.files[fileIndex].dictionary),
      merged_(workspace.dictionaries.find(file_.IntendedId())->second),
      base_(workspace.BaseOf(fileIndex)),
      language_(LanguageOf(file_.IntendedId())),
      explained_(std::size_t{file_.Source().LineCount()} + 1),
      findings_(findings),
      settings_(settings) {}

Finding& FileCheck::Add(RuleId rule, Severity severity, std::string_view where,
                        std::string_view key, Sentence message) {
  Finding& finding = AddToFile(rule, severity, std::move(message));
  finding.place = PlaceIn(fileIndex_, where);
  finding.key = key;
  return finding;
}

Finding& FileCheck::AddToFile(RuleId rule, Severity severity, Sentence message) {
  Finding& finding = findings_.Add(rule, severity, fileIndex_);
  finding.id = file_.IntendedId();
  finding.message = std::move(message);
  return finding;
}

Place FileCheck::PlaceIn(std::uint32_t file, std::string_view part) const noexcept {
  Place place = workspace_.files[file].Source().PlaceOf(part);
  place.file = file;
  return place;
}

Finding& TextCheck::Add(RuleId rule, Severity severity, std::string_view where,
                        Sentence message) const {
  Finding& finding = file.Add(rule, severity, where, entry.key, std::move(message));
  if (base) {
    finding.related.push_back({file.PlaceIn(base.file, base.entry->text),
                               {"related.base", {std::string(base.entry->text)}}});
  }
  return finding;
}

}  // namespace KelmoLibs::Lang
