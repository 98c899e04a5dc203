// Tested by page_test.cpp.
#include "lang/commands/page.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <optional>
#include <random>
#include <set>
#include <system_error>
#include <utility>

#include "lang/commands/lint.h"
#include "lang/commands/mended_bytes.h"
#include "lang/reading/file_names.h"
#include "lang/unicode/code_page.h"
#include "platform/console.h"

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;

constexpr const char* kBaseName = "en.txt";
constexpr std::string_view kBaseId = "en";

// The file may be a device such as /dev/stdout, which WriteFileBytes could not replace.
bool WriteFile(const fs::path& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  file.close();
  return !file.fail();
}

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

// The encodings that the finding about the encoding guesses: they are arguments of its hint.
std::vector<CodePage> GuessesOf(const Report& report, std::uint32_t file) {
  std::vector<CodePage> pages;
  for (const Finding& finding : report.findings) {
    if (finding.rule == RuleId::kEncoding && finding.place.file == file) {
      for (const std::string& argument : finding.hint.arguments) {
        if (const std::optional<CodePage> page = FindCodePage(argument)) {
          pages.push_back(*page);
        }
      }
    }
  }
  return pages;
}

// Writes mended copies of the reported files into one folder.
class CopyWriter {
 public:
  // `folder` is made for the first copy.
  explicit CopyWriter(fs::path folder) : folder_(std::move(folder)) {}

  void Add(const Report& report, std::uint32_t file) {
    const SourceFile& source = report.workspace.files[file].Source();
    const std::vector<CodePage> guesses = GuessesOf(report, file);
    for (const CodePage page : guesses) {
      AddOne(file, source, page);
    }
    if (guesses.empty()) {
      AddOne(file, source, std::nullopt);
    }
  }

  bool IsWritten() const noexcept { return isWritten_; }
  const fs::path& Folder() const noexcept { return folder_; }
  const std::vector<MendedCopy>& Copies() const noexcept { return copies_; }

 private:
  void AddOne(std::uint32_t file, const SourceFile& source, std::optional<CodePage> page) {
    MendedBytes mended =
        MendBytes(source.Raw(), page ? std::optional<NamedEncoding>(*page) : std::nullopt);
    if (mended.changes.empty() || !mended.refusal.IsEmpty()) {
      return;
    }
    const std::string readAs(page ? CodePageName(*page) : "");
    const std::string name = NewName(source.Path(), readAs);
    std::error_code error;
    fs::create_directories(folder_, error);
    isWritten_ = WriteFile(folder_ / fs::u8path(name), mended.bytes) && isWritten_;
    copies_.push_back(
        {file, folder_.filename().u8string() + '/' + name, readAs, std::move(mended.changes)});
  }

  // "fr.txt", "fr.windows-1251.txt"; a second file with that name is "fr (2).txt".
  std::string NewName(const fs::path& path, const std::string& readAs) {
    const std::string start = path.stem().u8string() + (readAs.empty() ? "" : '.' + readAs);
    const std::string end = path.extension().u8string();
    std::string name = start + end;
    for (int number = 2; !names_.insert(name).second; ++number) {
      name = start;
      name.append(" (").append(std::to_string(number)).append(")").append(end);
    }
    return name;
  }

  fs::path folder_;
  std::set<std::string> names_;
  std::vector<MendedCopy> copies_;
  bool isWritten_ = true;
};

}  // namespace

bool WritePage(const Report& report, const std::vector<PageProblem>& problems, const fs::path& path,
               const Texts& texts) {
  CopyWriter copies(path.parent_path() / fs::u8path(path.stem().u8string() + "-mended"));
  for (std::uint32_t i = 0; i < report.workspace.files.size(); ++i) {
    if (report.workspace.files[i].isReported && report.workspace.files[i].dictionary) {
      copies.Add(report, i);
    }
  }
  std::error_code error;
  const fs::path folder = fs::absolute(copies.Folder(), error);
  const Page page{report, problems, copies.Copies(), folder.u8string()};
  return copies.IsWritten() && WriteFile(path, HtmlReport(page, texts));
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
