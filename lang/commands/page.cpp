// Tested by page_test.cpp.
#include "lang/commands/page.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "lang/commands/lint.h"
#include "lang/commands/mended_bytes.h"
#include "lang/reading/file_bytes.h"
#include "lang/reading/file_names.h"
#include "lang/report/visible_text.h"
#include "lang/unicode/code_page.h"
#include "platform/console.h"

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;

constexpr const char* kBaseName = "en.txt";
constexpr std::string_view kBaseId = "en";

// The file may be a device such as /dev/stdout, which WriteFileBytes could not replace.
// What a double click means.
std::string FolderOf(const Desktop& desktop) {
  const fs::path& folder = desktop.programFolder;
  return folder.empty() || FilesOfFolder(folder).empty() ? "." : folder.u8string();
}

// The dictionary in the same folder that translations are most probably compared with.
std::optional<std::string> DefaultBase(const std::string& path) {
  std::error_code error;
  const fs::path given = fs::u8path(path);
  const fs::path folder = fs::is_directory(given, error) ? given : given.parent_path();
  if (fs::is_regular_file(folder / kBaseName, error)) {
    return (folder / kBaseName).u8string();
  }
  for (const fs::path& file : FilesOfFolder(folder.empty() ? fs::path(".") : folder)) {
    if (!IsUnitTableName(file) && ReadId(file) == kBaseId) {
      return file.u8string();
    }
  }
  return std::nullopt;
}

// A new folder that no other program knows.
std::optional<fs::path> NewFolder(const fs::path& dataFolder) {
  constexpr int kParts = 4;
  constexpr std::string_view kLetters = "0123456789abcdef";
  if (dataFolder.empty()) {
    return std::nullopt;
  }
  std::random_device random;
  std::string name;
  for (int i = 0; i < kParts; ++i) {
    for (std::uint32_t bits = random(), digit = 0; digit < 8; ++digit, bits >>= 4U) {
      name += kLetters[bits & 0xFU];
    }
  }
  const fs::path folder = dataFolder / "kelmo-lang" / name;
  std::error_code error;
  fs::create_directories(folder.parent_path(), error);
  return fs::create_directory(folder, error) ? std::optional(folder) : std::nullopt;
}

int Fail(const std::string& message, const Desktop& desktop, const Texts& texts) {
  Write(Stream::kError, message + texts.Find("page.press_enter") + '\n');
  desktop.waitForEnter();
  return kStatusWrong;
}

std::string Message(const char* key, const fs::path& path, const Texts& texts) {
  return LineOf({key, {path.u8string()}}, texts);
}

// The files that were read. No copy and no page is written over one of them, whatever links there are.
std::set<std::string> FilesOf(const Workspace& workspace) {
  std::set<std::string> files;
  for (const WorkspaceFile& file : workspace.files) {
    files.insert(FileKey(file.Source().Path()));
  }
  return files;
}

// By file, the encodings that its finding about the encoding guesses: they are arguments of its hint.
std::map<std::uint32_t, std::vector<CodePage>> GuessesOf(const Report& report) {
  std::map<std::uint32_t, std::vector<CodePage>> pages;
  for (const Finding& finding : report.findings) {
    if (finding.rule == RuleId::kEncoding) {
      for (const std::string& argument : finding.hint.arguments) {
        if (const std::optional<CodePage> page = FindCodePage(argument)) {
          pages[finding.place.file].push_back(*page);
        }
      }
    }
  }
  return pages;
}

// The start of a long name, so that a longer ending still makes the name of a file.
std::string CutName(const std::string& name) {
  constexpr std::size_t kLongest = 100;  // in bytes
  std::string_view left = name;
  while (!left.empty() && name.size() - left.size() < kLongest) {
    TakeCharacter(left);
  }
  return name.substr(0, name.size() - left.size());
}

// Writes mended copies of the reported files into one folder.
class CopyWriter {
 public:
  // `folder` is made for the first copy.
  CopyWriter(const Report& report, fs::path folder, std::set<std::string> readFiles)
      : report_(report), folder_(std::move(folder)), taken_(std::move(readFiles)) {}

  void Run() {
    const auto guesses = GuessesOf(report_);
    for (std::uint32_t i = 0; i < report_.workspace.files.size(); ++i) {
      const WorkspaceFile& file = report_.workspace.files[i];
      if (!file.isReported || !file.dictionary) {
        continue;
      }
      const auto guessed = guesses.find(i);
      if (guessed == guesses.end()) {
        Add(i, std::nullopt);
        continue;
      }
      for (const CodePage page : guessed->second) {
        Add(i, page);
      }
    }
  }

  const fs::path& Folder() const noexcept { return folder_; }
  const std::vector<MendedCopy>& Copies() const noexcept { return copies_; }
  const std::vector<PageProblem>& Problems() const noexcept { return problems_; }

 private:
  void Add(std::uint32_t file, std::optional<CodePage> page) {
    const SourceFile& source = report_.workspace.files[file].Source();
    MendedBytes mended =
        MendBytes(source.Raw(), page ? std::optional<NamedEncoding>(*page) : std::nullopt);
    if (mended.changes.empty() || !mended.refusal.IsEmpty()) {
      return;
    }
    const std::string readAs(page ? CodePageName(*page) : "");
    const std::string name = NewName(source.Path(), readAs);
    const fs::path path = folder_ / fs::u8path(name);
    std::error_code error;
    const bool isNewFolder = fs::create_directory(folder_, error);
    // Links could lead anywhere.
    if (fs::is_symlink(folder_, error) || fs::is_symlink(path, error) ||
        WriteFileBytes(path, mended.bytes)) {
      if (isNewFolder) {
        fs::remove(folder_, error);
      }
      problems_.push_back({GenericName(path), {"problem.unwritable", {}}});
      return;
    }
    copies_.push_back(
        {file, folder_.filename().u8string() + '/' + name, readAs, std::move(mended.changes)});
  }

  // "fr.txt", "fr.windows-1251.txt"; a second file with that name is "fr (2).txt".
  std::string NewName(const fs::path& path, const std::string& readAs) {
    const std::string start =
        CutName(path.stem().u8string()) + (readAs.empty() ? "" : '.' + readAs);
    const std::string end = CutName(path.extension().u8string());
    std::string name = start + end;
    for (int number = 2; !taken_.insert(FileKey(folder_ / fs::u8path(name))).second; ++number) {
      name = start;
      name.append(" (").append(std::to_string(number)).append(")").append(end);
    }
    return name;
  }

  const Report& report_;
  fs::path folder_;
  std::set<std::string> taken_;  // by the files that were read and by copies
  std::vector<MendedCopy> copies_;
  std::vector<PageProblem> problems_;
};

}  // namespace

std::vector<PageProblem> WritePage(const Report& report, std::vector<PageProblem> problems,
                                   const fs::path& path, const Texts& texts) {
  std::set<std::string> readFiles = FilesOf(report.workspace);
  if (readFiles.count(FileKey(path)) != 0) {
    return {{GenericName(path), {"problem.is_read", {}}}};
  }
  const PageProblem unwritable = {GenericName(path), {"problem.unwritable", {}}};
  std::error_code error;
  if (path.filename().empty() || fs::is_directory(path, error)) {
    return {unwritable};
  }
  CopyWriter copies(report, path.parent_path() / fs::u8path(path.stem().u8string() + "-mended"),
                    std::move(readFiles));
  copies.Run();
  problems.insert(problems.end(), copies.Problems().begin(), copies.Problems().end());
  const fs::path folder = AbsolutePath(copies.Folder(), error);
  const Page page{report, std::move(problems), copies.Copies(), folder.u8string()};
  std::vector<PageProblem> failures = copies.Problems();
  if (WriteFileBytes(path, HtmlReport(page, texts))) {
    failures.push_back(unwritable);
  }
  return failures;
}

bool AreDropped(const std::vector<std::string>& arguments) {
  return std::all_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
    std::error_code error;
    return fs::exists(fs::u8path(argument), error);
  });
}

int ShowPage(const std::vector<std::string>& paths, const Desktop& desktop, const Texts& texts) {
  LintOptions options;
  options.paths = paths.empty() ? std::vector<std::string>{FolderOf(desktop)} : paths;
  options.defaultBase = DefaultBase(options.paths.front());
  const std::optional<fs::path> folder = NewFolder(desktop.dataFolder);
  if (!folder) {
    return Fail(Message("page.no_folder", desktop.dataFolder, texts), desktop, texts);
  }
  const fs::path page = *folder / "page.html";
  options.html = page.u8string();
  const Answer answer = Lint(options, texts, {}, {});
  std::error_code error;
  if (!fs::exists(page, error)) {
    return Fail(answer.error, desktop, texts);
  }
  return desktop.open(page) ? answer.status
                            : Fail(Message("page.not_opened", page, texts), desktop, texts);
}

}  // namespace KelmoLibs::Lang
