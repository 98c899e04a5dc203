#include "lang/rules/check_workspace.h"

#include "lang/rules/check.h"

namespace KelmoLibs::Lang {
namespace {

// Whether hosts see this entry, and nothing else is reported about its line.
bool IsTextChecked(const FileCheck& check, const Entry& entry) {
  return check.Merged().Find(entry.key).entry == &entry && !check.IsExplained(entry);
}

void CheckTexts(FileCheck& check) {
  if (check.Source().EncodedAsUtf16() != Utf16::kNo) {
    return;  // what the library reads of it are no texts
  }
  for (const Entry& entry : check.File().Entries()) {
    if (!IsTextChecked(check, entry)) {
      continue;
    }
    const FoundEntry base = check.Base() != nullptr ? check.Base()->Find(entry.key) : FoundEntry{};
    const TextCheck text{check, entry, base};
    CheckPlaceholders(text);
    CheckMarkup(text);
    CheckPunctuation(text);
    CheckWords(text);
  }
}

void CheckDictionary(const Workspace& workspace, const MergedDictionary& dictionary,
                     const SettingsOfFiles& settings, Findings& findings) {
  std::vector<FileCheck> files;
  for (const std::uint32_t file : dictionary.Files()) {
    if (workspace.files[file].isReported) {
      files.emplace_back(workspace, file, findings, settings.Of(file));
    }
  }
  if (files.empty()) {
    return;
  }
  for (FileCheck& file : files) {
    CheckEncoding(file);
    CheckCharacters(file);
    CheckLines(file);
    CheckKeys(file);
  }
  CheckBesideBase(files);
  for (FileCheck& file : files) {
    CheckTexts(file);
  }
  CheckPlurals(files);
  CheckConsistency(files);
}

}  // namespace

Findings CheckWorkspace(const Workspace& workspace, const SettingsOfFiles& settings) {
  Findings findings;
  for (const auto& [id, dictionary] : workspace.dictionaries) {
    CheckDictionary(workspace, dictionary, settings, findings);
  }
  for (std::uint32_t i = 0; i < workspace.files.size(); ++i) {
    if (workspace.files[i].units && workspace.files[i].isReported) {
      CheckUnits(workspace, i, findings);
    }
  }
  return findings;
}

}  // namespace KelmoLibs::Lang
