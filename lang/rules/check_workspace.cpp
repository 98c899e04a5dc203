#include "lang/rules/check_workspace.h"

#include <string_view>

#include "lang/rules/check.h"
#include "lang/unicode/code_points.h"

namespace KelmoLibs::Lang {
namespace {

// Tells how much of the bytes of all files is checked. The checks of lines are half of the work on a
// file, and those of texts the other half.
class Progress {
 public:
  Progress(const Workspace& workspace, const std::function<void(double)>& report)
      : report_(report) {
    for (const WorkspaceFile& file : workspace.files) {
      total_ += file.isReported ? Size(file) : 0;
    }
  }

  void AddHalf(const FileCheck& check) {
    done_ += static_cast<double>(check.Source().Raw().size()) / 2;
    Show(0);
  }

  // `share` of the half of this file that is not added yet.
  void ShowHalf(const FileCheck& check, double share) {
    Show(share * static_cast<double>(check.Source().Raw().size()) / 2);
  }

 private:
  static double Size(const WorkspaceFile& file) {
    return static_cast<double>(file.Source().Raw().size());
  }
  void Show(double more) {
    if (report_ && total_ > 0) {
      report_((done_ + more) / total_);
    }
  }

  const std::function<void(double)>& report_;
  double total_ = 0;
  double done_ = 0;
};

// Whether hosts see this entry, and nothing else is reported about its line.
bool IsTextChecked(const FileCheck& check, const Entry& entry) {
  return check.Merged().Find(entry.key).entry == &entry && !check.IsExplained(entry);
}

// Whether the text is a single character, which is its own name: ":" for "Colon".
bool IsCharacter(std::string_view text) {
  return !text.empty() && FirstCodePoint(text).length == text.size();
}

void CheckText(const TextCheck& check) {
  CheckPlaceholders(check);
  CheckNumbers(check);
  CheckMarkup(check);
  CheckAddresses(check);
  if (!IsCharacter(check.Text())) {
    CheckEndMarks(check);
    CheckBrackets(check);
  }
  CheckAccelerators(check);
  CheckInvisibleCharacters(check);
  CheckMixedScripts(check);
  CheckForeignLetters(check);
  CheckUntranslated(check);
  CheckDoubled(check);
  CheckLength(check);
}

void CheckTexts(FileCheck& check, Progress& progress) {
  if (check.Source().EncodedAsUtf16() != Utf16::kNo) {
    return;  // what the library reads of it are no texts
  }
  constexpr std::size_t kEntriesAtOnce = 0x1000;
  const std::vector<Entry>& entries = check.File().Entries();
  for (const Entry& entry : entries) {
    if (const auto index = static_cast<std::size_t>(&entry - entries.data());
        index % kEntriesAtOnce == 0) {
      progress.ShowHalf(check, static_cast<double>(index) / static_cast<double>(entries.size()));
    }
    if (!IsTextChecked(check, entry)) {
      continue;
    }
    CheckText({check, entry, check.FindInBase(entry.key)});
  }
}

void CheckDictionary(RunCheck& run, const MergedDictionary& dictionary,
                     const SettingsOfFiles& settings, Progress& progress) {
  std::vector<FileCheck> files;
  for (const std::uint32_t file : dictionary.Files()) {
    if (run.AllFiles().files[file].isReported) {
      files.emplace_back(run, file, settings.Of(file));
    }
  }
  if (files.empty()) {
    return;
  }
  for (FileCheck& file : files) {
    CheckEncoding(file);
    CheckOddCharacters(file);
    CheckLines(file);
    CheckKeys(file);
    CheckDecomposedLetters(file);
    progress.AddHalf(file);
  }
  CheckBesideBase(files);
  for (FileCheck& file : files) {
    CheckTexts(file, progress);
    progress.AddHalf(file);
  }
  CheckPlurals(files);
  CheckConsistency(files);
}

}  // namespace

Findings CheckWorkspace(const Workspace& workspace, const SettingsOfFiles& settings,
                        const std::function<void(double)>& progress) {
  Findings findings;
  RunCheck run(workspace, findings);
  Progress done(workspace, progress);
  for (const auto& [id, dictionary] : workspace.dictionaries) {
    CheckDictionary(run, dictionary, settings, done);
  }
  for (std::uint32_t i = 0; i < workspace.files.size(); ++i) {
    if (workspace.files[i].units && workspace.files[i].isReported) {
      CheckUnits(workspace, i, findings);
    }
  }
  return findings;
}

}  // namespace KelmoLibs::Lang
