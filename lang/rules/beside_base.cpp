#include <algorithm>

#include "lang/rules/check.h"
#include "lang/rules/plural_keys.h"

namespace KelmoLibs::Lang {

void CheckBesideBase(std::vector<FileCheck>& files) {
  FileCheck& first = files.front();
  const bool isUncertain = std::any_of(files.begin(), files.end(), [](const FileCheck& file) {
    return file.IsWholeFileExplained() || file.IsIdDoubtful();
  });
  if (first.Base() == nullptr || isUncertain) {
    return;
  }
  for (const std::uint32_t baseFile : first.Base()->Files()) {
    for (const Entry& entry : first.AllFiles().files[baseFile].dictionary->Entries()) {
      if (!first.Merged().Find(entry.key) && !IsJudgedAsPluralForm(first, entry.key)) {
        Finding& finding = first.AddToFile(RuleId::kMissing, Severity::kWarning,
                                           {"missing.message", {std::string(entry.key)}});
        finding.key = entry.key;
        finding.related.push_back(
            {first.PlaceIn(baseFile, entry.key), {"related.base", {std::string(entry.text)}}});
      }
    }
  }
}

}  // namespace KelmoLibs::Lang
