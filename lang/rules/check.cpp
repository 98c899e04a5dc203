#include "lang/rules/check.h"

#include <utility>

namespace KelmoLibs::Lang {

const PlaceholderUse& RunCheck::PlaceholdersOfBase() {
  if (!placeholdersOfBase_) {
    placeholdersOfBase_ = UseOfPlaceholders(workspace_, *workspace_.Base());
  }
  return *placeholdersOfBase_;
}

FileCheck::FileCheck(RunCheck& run, std::uint32_t fileIndex, const RuleSettings& settings)
    : run_(run),
      fileIndex_(fileIndex),
      file_(*AllFiles().files[fileIndex].dictionary),
      merged_(AllFiles().dictionaries.find(file_.IntendedId())->second),
      base_(AllFiles().BaseOf(fileIndex)),
      language_(LanguageOf(file_.IntendedId())),
      alphabet_(language_.primary),
      explained_(std::size_t{file_.Source().LineCount()} + 1),
      settings_(settings) {}

Finding& FileCheck::Add(RuleId rule, Severity severity, std::string_view where,
                        std::string_view key, Sentence message) {
  Finding& finding = AddToFile(rule, severity, std::move(message));
  finding.place = PlaceIn(fileIndex_, where);
  finding.key = key;
  return finding;
}

Finding& FileCheck::AddToFile(RuleId rule, Severity severity, Sentence message) {
  Finding& finding = run_.Add(rule, severity, fileIndex_);
  finding.id = file_.IntendedId();
  finding.message = std::move(message);
  return finding;
}

void FileCheck::AddBaseOf(Finding& finding) const {
  const bool mayHave = base_ != nullptr && !finding.key.empty();
  if (const FoundEntry base = mayHave ? base_->Find(finding.key) : FoundEntry{}) {
    finding.related.push_back(RelatedBase(base, base.entry->text));
  }
}

Place FileCheck::PlaceIn(std::uint32_t file, std::string_view part) const noexcept {
  Place place = AllFiles().files[file].Source().PlaceOf(part);
  place.file = file;
  return place;
}

RelatedPlace FileCheck::RelatedBase(const FoundEntry& base, std::string_view where) const {
  return {PlaceIn(base.file, where), {"related.base", {KeptText(base.entry->text)}}};
}

Finding& TextCheck::Add(RuleId rule, Severity severity, std::string_view where,
                        Sentence message) const {
  Finding& finding = file.Add(rule, severity, where, entry.key, std::move(message));
  if (base) {
    finding.related.push_back(file.RelatedBase(base, base.entry->text));
  }
  return finding;
}

}  // namespace KelmoLibs::Lang
