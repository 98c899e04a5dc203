#include "lang/project/baseline.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <nlohmann/json.hpp>

#include "lang/report/machine_text.h"
#include "lang/report/visible_text.h"

namespace KelmoLibs::Lang {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kFormatVersion = 1;

// The names of all files, as the baseline file has them.
std::vector<std::string> NamesOf(const Workspace& workspace, const std::filesystem::path& path) {
  std::vector<std::string> names;
  names.reserve(workspace.files.size());
  for (const WorkspaceFile& file : workspace.files) {
    names.push_back(WellFormedText(NameInProject(file.Source().Path(), path)));
  }
  return names;
}

}  // namespace

std::string WriteBaseline(const Workspace& workspace, const std::vector<Finding>& findings,
                          const std::filesystem::path& path) {
  const std::vector<std::string> names = NamesOf(workspace, path);
  std::vector<std::string> lines;
  lines.reserve(findings.size());
  for (const Finding& finding : findings) {
    lines.push_back(Json({{"file", names[finding.place.file]},
                          {"rule", RuleOf(finding.rule).name},
                          {"key", WellFormedText(finding.key)},
                          {"message", EnglishText(finding.message)},
                          {"fingerprint", FingerprintOf(IdentityOf(finding))}})
                        .dump());
  }
  std::sort(lines.begin(), lines.end());
  std::string bytes = "{\n\"version\": " + std::to_string(kFormatVersion) + ",\n\"findings\": [";
  const char* separator = "\n";
  for (const std::string& line : lines) {
    bytes.append(separator).append(line);
    separator = ",\n";
  }
  return bytes + "\n]\n}\n";
}

std::optional<ProjectFault> RemoveAccepted(std::string_view bytes, const Workspace& workspace,
                                           const std::filesystem::path& path,
                                           std::vector<Finding>& findings) {
  const Json top = Json::parse(bytes, nullptr, false);
  std::map<std::string, std::size_t> accepted;  // how often, by file and fingerprint
  const auto read = [&] {
    // No value is copied: copies of values that are nested deep would need much of the stack.
    if (!top.is_object() || !top.contains("version") || top["version"] != kFormatVersion ||
        !top.contains("findings") || !top["findings"].is_array()) {
      return false;
    }
    for (const Json& record : top["findings"]) {
      if (!record.is_object() || !record.contains("file") || !record["file"].is_string() ||
          !record.contains("fingerprint") || !record["fingerprint"].is_string()) {
        return false;
      }
      ++accepted[record["file"].get<std::string>() + '\0' +
                 record["fingerprint"].get<std::string>()];
    }
    return true;
  };
  if (!read()) {
    return ProjectFault{0, 0, {"baseline.no_baseline", {}}};
  }
  const std::vector<std::string> names = NamesOf(workspace, path);
  const auto isAccepted = [&](const Finding& finding) {
    const auto found =
        accepted.find(names[finding.place.file] + '\0' + FingerprintOf(IdentityOf(finding)));
    if (found == accepted.end() || found->second == 0) {
      return false;
    }
    --found->second;
    return true;
  };
  findings.erase(std::remove_if(findings.begin(), findings.end(), isAccepted), findings.end());
  return std::nullopt;
}

}  // namespace KelmoLibs::Lang
