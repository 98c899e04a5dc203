#include "lang/project/project.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <set>
#include <system_error>
#include <utility>

#include "lang/project/json_tree.h"
#include "lang/reading/file_names.h"
#include "lang/reading/pattern.h"
#include "lang/unicode/code_points.h"

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;
using Kind = JsonValue::Kind;

constexpr std::array<std::string_view, 4> kLevels = {"off", "note", "warning", "error"};
constexpr std::array<std::string_view, 4> kFailOn = {"never", "note", "warning", "error"};

std::string_view NameOf(Kind kind) {
  constexpr std::array<std::string_view, 6> kNames = {"null",   "boolean", "number",
                                                      "string", "array",   "object"};
  return kNames[static_cast<std::size_t>(kind)];
}

// Reads the values of a project file and notes what is wrong with them.
class ProjectReader {
 public:
  ProjectReader(std::string_view bytes, Project& project, std::vector<ProjectFault>& faults)
      : bytes_(bytes), project_(project), faults_(faults) {}

  void Read() {
    const JsonResult json = ReadJson(bytes_);
    if (!json.value) {
      Complain(json.faultAt, {"project.json", {}});
    } else if (Is(*json.value, Kind::kObject)) {
      ReadTop(*json.value);
    }
  }

 private:
  // Nobody reads more, and each needs the file up to its place.
  static constexpr std::size_t kMostFaults = 20;

  void Complain(std::size_t at, Sentence sentence) {
    if (faults_.size() >= kMostFaults) {
      return;
    }
    const std::string_view before = bytes_.substr(0, at);
    const std::size_t lineStart = before.rfind('\n') + 1;  // npos + 1 is 0
    faults_.push_back(
        {static_cast<std::uint32_t>(std::count(before.begin(), before.end(), '\n')) + 1,
         Localize::CountCharacters(before.substr(lineStart)) + 1, std::move(sentence)});
  }

  bool Is(const JsonValue& value, Kind kind) {
    if (value.kind != kind) {
      Complain(value.begin,
               {"project.type", {std::string(NameOf(kind)), std::string(NameOf(value.kind))}});
      return false;
    }
    return true;
  }

  // Calls `read(name, value)` for each member; false from it is a complaint about the name. Returns
  // the names that it has seen.
  template <class Reader>
  std::set<std::string_view> ReadMembers(const JsonValue& object, Reader read) {
    std::set<std::string_view> seen;
    for (std::size_t i = 0; i < object.names.size(); ++i) {
      const JsonValue& name = object.names[i];
      if (!seen.insert(name.text).second) {
        Complain(name.begin, {"project.repeated", {name.text}});
      } else if (!read(name.text, object.items[i])) {
        Complain(name.begin, {"project.unknown", {name.text}});
      }
    }
    return seen;
  }

  // Members that an object needs, as text or as number.
  struct Wanted {
    std::string_view name;
    std::string* text;
    double* number;
  };

  // False if there is a fault.
  bool ReadRecord(const JsonValue& object, const std::vector<Wanted>& wanted) {
    const std::size_t faultsBefore = faults_.size();
    if (!Is(object, Kind::kObject)) {
      return false;
    }
    const auto seen = ReadMembers(object, [&](std::string_view name, const JsonValue& value) {
      const auto found = std::find_if(wanted.begin(), wanted.end(),
                                      [name](const Wanted& one) { return one.name == name; });
      if (found == wanted.end()) {
        return false;
      }
      if (found->text != nullptr && Is(value, Kind::kString)) {
        *found->text = value.text;
        if (value.text.empty() && name != "key") {  // the empty key is a key
          Complain(value.begin, {"project.empty", {std::string(name)}});
        }
      } else if (found->number != nullptr && Is(value, Kind::kNumber)) {
        *found->number = value.number;
      }
      return true;
    });
    for (const Wanted& one : wanted) {
      if (seen.count(one.name) == 0) {
        Complain(object.begin, {"project.lacks", {std::string(one.name)}});
      }
    }
    return faults_.size() == faultsBefore;
  }

  void ReadTop(const JsonValue& top) {
    ReadMembers(top, [this](std::string_view name, const JsonValue& value) {
      if (name == "base") {
        ReadPath(name, value, project_.base);
      } else if (name == "baseline") {
        ReadPath(name, value, project_.baseline);
      } else if (name == "failOn") {
        if (const auto index = ReadChoice(value, kFailOn)) {
          project_.failOn = static_cast<FailOn>(*index);
        }
      } else if (name == "levels") {
        ReadLevels(value);
      } else if (name == "ignored") {
        ReadEach(value, &ProjectReader::ReadIgnored);
      } else if (name == "limits") {
        ReadEach(value, &ProjectReader::ReadLimit);
      } else {
        return false;
      }
      return true;
    });
  }

  void ReadPath(std::string_view name, const JsonValue& value, std::optional<fs::path>& path) {
    if (!Is(value, Kind::kString)) {
      return;
    }
    if (value.text.empty()) {
      Complain(value.begin, {"project.empty", {std::string(name)}});
    } else if (value.text.find('\0') != std::string::npos) {  // the system would cut the path there
      Complain(value.begin, {"project.path", {value.text}});
    } else {
      path = NormalPath(project_.path.parent_path() / fs::u8path(value.text));
    }
  }

  std::optional<std::size_t> ReadChoice(const JsonValue& value,
                                        const std::array<std::string_view, 4>& choices) {
    if (!Is(value, Kind::kString)) {
      return std::nullopt;
    }
    const auto* const found = std::find(choices.begin(), choices.end(), value.text);
    if (found == choices.end()) {
      std::string all;
      for (const std::string_view choice : choices) {
        all.append(all.empty() ? "" : ", ").append(choice);
      }
      Complain(value.begin, {"project.choice", {value.text, all}});
      return std::nullopt;
    }
    return static_cast<std::size_t>(found - choices.begin());
  }

  void ReadLevels(const JsonValue& value) {
    if (!Is(value, Kind::kObject)) {
      return;
    }
    ReadMembers(value, [this](std::string_view name, const JsonValue& level) {
      const Rule* const rule = FindRule(name);
      if (rule == nullptr) {
        return false;
      }
      if (const auto index = ReadChoice(level, kLevels)) {
        project_.levels[static_cast<std::size_t>(rule->id)] = static_cast<Level>(*index);
      }
      return true;
    });
  }

  void ReadEach(const JsonValue& array, void (ProjectReader::*read)(const JsonValue&)) {
    if (Is(array, Kind::kArray)) {
      for (const JsonValue& item : array.items) {
        (this->*read)(item);
      }
    }
  }

  void ReadIgnored(const JsonValue& value) {
    IgnoredFinding ignored{};
    std::string rule;
    std::string reason;
    if (!ReadRecord(value, {{"file", &ignored.file, nullptr},
                            {"key", &ignored.key, nullptr},
                            {"rule", &rule, nullptr},
                            {"reason", &reason, nullptr}})) {
      return;
    }
    if (const Rule* const found = FindRule(rule)) {
      ignored.rule = found->id;
      project_.ignored.push_back(std::move(ignored));
    } else {
      Complain(value.begin, {"project.rule", {rule}});
    }
  }

  void ReadLimit(const JsonValue& value) {
    constexpr double kMost = 1'000'000;
    KeyLimit limit;
    double characters = 0;
    if (!ReadRecord(value, {{"key", &limit.keys, nullptr}, {"characters", nullptr, &characters}})) {
      return;
    }
    if (characters < 1 || characters > kMost || characters != std::floor(characters)) {
      Complain(value.begin, {"project.characters", {}});
      return;
    }
    limit.characters = static_cast<std::uint32_t>(characters);
    project_.limits.push_back(std::move(limit));
  }

  std::string_view bytes_;
  Project& project_;
  std::vector<ProjectFault>& faults_;
};

std::string Quoted(std::string_view text) { return nlohmann::json(text).dump(); }

}  // namespace

std::optional<Level> FindLevel(std::string_view name) noexcept {
  const auto* const found = std::find(kLevels.begin(), kLevels.end(), name);
  return found == kLevels.end() ? std::nullopt
                                : std::optional(static_cast<Level>(found - kLevels.begin()));
}

std::optional<FailOn> FindFailOn(std::string_view name) noexcept {
  const auto* const found = std::find(kFailOn.begin(), kFailOn.end(), name);
  return found == kFailOn.end() ? std::nullopt
                                : std::optional(static_cast<FailOn>(found - kFailOn.begin()));
}

const IgnoredFinding* Project::FindIgnored(const fs::path& file, RuleId rule,
                                           std::string_view key) const {
  std::string name;
  const auto found = std::find_if(ignored.begin(), ignored.end(), [&](const IgnoredFinding& one) {
    if (one.rule != rule || !FitsPattern(key, one.key)) {
      return false;
    }
    if (name.empty()) {
      name = NameInProject(file, path);
    }
    return FitsPattern(name, one.file);
  });
  return found != ignored.end() ? &*found : nullptr;
}

Project ParseProject(std::string_view bytes, fs::path path, std::vector<ProjectFault>& faults) {
  Project project;
  project.path = std::move(path);
  ProjectReader(bytes, project, faults).Read();
  return project;
}

std::optional<fs::path> FindProjectFile(const fs::path& folder) {
  std::error_code error;
  const fs::path start = folder.empty() ? fs::path(".") : folder;  // no empty path is absolute
  for (fs::path at = AbsolutePath(start, error); !error;) {
    if (fs::is_regular_file(at / kProjectFileName, error)) {
      return at / kProjectFileName;
    }
    for (const char* const mark : {".git", ".hg", ".svn"}) {
      if (fs::exists(at / mark, error)) {
        return std::nullopt;
      }
    }
    const fs::path above = at.parent_path();
    if (above == at) {
      break;
    }
    at = above;
    error.clear();
  }
  return std::nullopt;
}

std::string NameInProject(const fs::path& file, const fs::path& project) {
  std::error_code error;
  const fs::path folder = AbsolutePath(project, error).parent_path();
  return GenericName(AbsolutePath(file, error).lexically_relative(folder));
}

std::string WithIgnored(std::string_view bytes, const IgnoredFinding& ignored,
                        std::string_view reason) {
  const std::string record =
      "{\"file\": " + Quoted(ignored.file) + ", \"key\": " + Quoted(ignored.key) +
      ", \"rule\": " + Quoted(RuleOf(ignored.rule).name) + ", \"reason\": " + Quoted(reason) + "}";
  const std::string member = "\"ignored\": [\n    " + record + "\n  ]";
  if (bytes.empty()) {
    return "{\n  " + member + "\n}\n";
  }
  const JsonResult json = ReadJson(bytes);
  const JsonValue& top = *json.value;
  const JsonValue* array = nullptr;
  for (std::size_t i = 0; i < top.names.size(); ++i) {
    if (top.names[i].text == "ignored") {
      array = &top.items[i];
    }
  }
  // The new text goes behind the last value of the list, or of the file.
  const JsonValue& list = array != nullptr ? *array : top;
  const std::string& added = array != nullptr ? record : member;
  const std::string indent = array != nullptr ? "\n    " : "\n  ";
  if (!list.items.empty()) {
    const std::size_t at = list.items.back().end;
    return std::string(bytes.substr(0, at)) + ',' + indent + added + std::string(bytes.substr(at));
  }
  return std::string(bytes.substr(0, list.begin + 1)) + indent + added +
         (array != nullptr ? "\n  " : "\n") + std::string(bytes.substr(list.end - 1));
}

}  // namespace KelmoLibs::Lang
