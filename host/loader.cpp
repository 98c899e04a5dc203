#include "host/loader.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/idle_overrides.h"
#include "host/unreadable_file.h"
#include "platform/native_files.h"
#include "text/utf8_characters.h"

namespace KelmoLibs::Host {
namespace {

using Localize::FileBytes;
using Localize::SystemError;

bool EndsWith(std::string_view text, std::string_view end) noexcept {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// A name that begins with a point is hidden: editors lock files by such links.
bool IsDictionary(std::string_view name) noexcept {
  return EndsWith(name, ".txt") && !EndsWith(name, "-val.txt") && name.front() != '.';
}

// Whether a file or folder that cannot be read may be missing. Tells the error if not.
bool IsLeftOut(const std::string& path, SystemError error, const ReadingOptions& options,
               ProblemList* problems) {
  if (options.isOptional && !path.empty() && Localize::IsNothingThere(path, error)) {
    return true;
  }
  TellUnreadable(ProblemCode::kCannotRead, path, Localize::DescribeError(error), problems);
  return false;
}

void TellEmptyFolder(const std::string& path, ProblemList* problems) {
  if (problems != nullptr) {
    problems->Append([&] {
      Problem problem;
      problem.code = ProblemCode::kEmptyFolder;
      problem.severity = ProblemSeverity::kWarning;
      problem.file = path;
      return problem;
    });
  }
}

}  // namespace

bool Loader::AddFile(const std::string& path, const ReadingOptions& options,
                     ProblemList* problems) {
  if (HasZero(ProblemCode::kCannotRead, path, problems)) {
    return false;
  }
  FileBytes bytes;
  if (const SystemError error = Localize::ReadFileAt(path, bytes); !error.IsNone()) {
    return IsLeftOut(path, error, options, problems);
  }
  AddMemory(bytes.View(), path, options, problems);
  return true;
}

bool Loader::AddFolder(const std::string& path, const ReadingOptions& options,
                       ProblemList* problems) {
  if (HasZero(ProblemCode::kCannotRead, path, problems)) {
    return false;
  }
  std::vector<std::string> names;
  if (const SystemError error = Localize::ListFilesAt(path, names); !error.IsNone()) {
    return IsLeftOut(path, error, options, problems);
  }
  names.erase(std::remove_if(names.begin(), names.end(),
                             [](const std::string& name) { return !IsDictionary(name); }),
              names.end());
  if (names.empty()) {
    TellEmptyFolder(path, problems);
  }
  std::sort(names.begin(), names.end());
  bool isWhole = true;
  for (const std::string& name : names) {
    if (!Localize::IsUtf8(name)) {  // no problem could name the file
      TellUnreadable(ProblemCode::kCannotRead, path, "the name of a file is not UTF-8", problems);
      isWhole = false;
    } else {
      isWhole = AddFile(Localize::JoinNative(path, name), options, problems) && isWhole;
    }
  }
  return isWhole;
}

void Loader::AddMemory(std::string_view bytes, std::string_view name, const ReadingOptions& options,
                       ProblemList* problems) {
  ReadDictionaryBytes(bytes, name, options, texts_, problems);
}

TextCollection Loader::Finish(ProblemList* problems) noexcept {
  if (problems != nullptr) {
    TellIdleOverrides(texts_, *problems);
  }
  return std::exchange(texts_, {});
}

}  // namespace KelmoLibs::Host
