#include "lang/commands/ignore.h"

#include <system_error>

#include "lang/project/projects.h"
#include "lang/reading/file_bytes.h"
#include "lang/reading/file_names.h"
#include "text/utf8_characters.h"

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;

Answer Wrong(const Texts& texts, const Sentence& sentence) {
  return WrongUse("kelmo-lang ignore", sentence, texts);
}

Answer Problem(const Texts& texts, const std::string& path, const Sentence& reason) {
  return {kStatusWrong, "", ProblemLine(path, reason, texts)};
}

}  // namespace

Answer Ignore(const IgnoreOptions& options, const Texts& texts) {
  const Rule* const rule = FindRule(options.rule);
  if (rule == nullptr) {
    return Wrong(texts, {"rules.unknown", {options.rule}});
  }
  if (options.reason.empty()) {
    return Wrong(texts, {"ignore.reason", {}});
  }
  for (const std::string* const text : {&options.file, &options.key, &options.reason}) {
    if (!Localize::IsUtf8(*text)) {
      return Wrong(texts, {"ignore.not_utf8", {*text}});
    }
  }
  const fs::path file = fs::u8path(options.file);
  std::error_code error;
  if (!fs::is_regular_file(file, error)) {
    return Problem(texts, options.file, {"problem.unreadable", {}});
  }
  const std::optional<fs::path> found = FindProjectFile(file.parent_path());
  const fs::path path = found ? *found : file.parent_path() / kProjectFileName;
  const std::string name = GenericName(path);
  std::string bytes;
  if (fs::exists(path, error)) {  // never write over one, found or not
    const std::optional<std::string> read = ReadFileBytes(path);
    if (!read) {
      return Problem(texts, name, {"problem.unreadable", {}});
    }
    bytes = *read;
    std::vector<ProjectFault> faults;
    const Project project = ParseProject(bytes, path, faults);
    if (!faults.empty()) {
      const ProjectFault& fault = faults.front();
      return Problem(texts,
                     name + ':' + std::to_string(fault.line) + ':' + std::to_string(fault.column),
                     fault.sentence);
    }
    if (project.FindIgnored(file, rule->id, options.key) != nullptr) {
      return {0, LineOf({"ignore.already", {name}}, texts), ""};
    }
  }
  const std::string written =
      WithIgnored(bytes, {NameInProject(file, path), options.key, rule->id}, options.reason);
  if (WriteFileBytes(path, written)) {
    return Problem(texts, name, {"problem.unwritable", {}});
  }
  return {0, LineOf({"ignore.written", {name}}, texts), ""};
}

}  // namespace KelmoLibs::Lang
