// The report as JSON.
#include <nlohmann/json.hpp>

#include "lang/report/machine_text.h"
#include "lang/report/report.h"
#include "lang/report/visible_text.h"

namespace KelmoLibs::Lang {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kFormatVersion = 1;

class JsonWriter {
 public:
  explicit JsonWriter(const Report& report) : report_(report) {}

  // One finding a line: the report of a large project need not be in memory as a tree too.
  std::string Write() const {
    std::string text = "{\n";
    const auto member = [&text](const char* name, const Json& value) {
      text.append("\"").append(name).append("\": ").append(value.dump()).append(",\n");
    };
    member("version", kFormatVersion);
    const auto& base = report_.workspace.baseFile;
    member("base", base ? Json(NameOf(*base)) : Json());
    member("files", Files());
    member("summary", SummaryMember());
    text += "\"findings\": [";
    const char* separator = "\n";
    for (const Finding& finding : report_.findings) {
      text += separator + FindingMember(finding).dump();
      separator = ",\n";
    }
    text += report_.findings.empty() ? "]\n}\n" : "\n]\n}\n";
    return text;
  }

 private:
  std::string NameOf(std::uint32_t file) const {
    return WellFormedText(report_.workspace.files[file].Source().Name());
  }

  Json Files() const {
    Json files = Json::array();
    for (std::uint32_t i = 0; i < report_.workspace.files.size(); ++i) {
      const WorkspaceFile& file = report_.workspace.files[i];
      if (!file.isReported) {
        continue;
      }
      Json member = {{"file", NameOf(i)}, {"kind", file.dictionary ? "dictionary" : "units"}};
      member["id"] = file.dictionary ? Json(WellFormedText(file.dictionary->IntendedId())) : Json();
      member["comparedWithBase"] = report_.workspace.BaseOf(i) != nullptr && !file.isSetOfItsOwn;
      files.push_back(std::move(member));
    }
    return files;
  }

  Json SummaryMember() const {
    const Summary summary = SummaryOf(report_);
    Json rules = Json::array();
    for (const RuleId rule : report_.rulesNotRun) {
      rules.push_back(RuleOf(rule).name);
    }
    return {{"errors", summary.errors},
            {"warnings", summary.warnings},
            {"notes", summary.notes},
            {"files", summary.files},
            {"notListed", summary.All() - report_.findings.size()},
            {"rulesNotRun", rules}};
  }

  void AddPlace(const Place& place, Json& member) const {
    member["file"] = NameOf(place.file);
    const bool hasLine = place.line > 0;
    member["line"] = hasLine ? Json(place.line) : Json();
    member["column"] = hasLine ? Json(place.column) : Json();
    member["endColumn"] = hasLine ? Json(place.column + place.length) : Json();
  }

  Json FindingMember(const Finding& finding) const {
    const auto orNull = [](const std::string& text) { return text.empty() ? Json() : Json(text); };
    Json member = Json::object();
    AddPlace(finding.place, member);
    member["severity"] = SeverityName(finding.severity);
    member["rule"] = RuleOf(finding.rule).name;
    member["id"] = WellFormedText(finding.id);
    member["key"] = WellFormedText(finding.key);
    member["message"] = EnglishText(finding.message);
    member["hint"] = finding.hint.IsEmpty() ? Json() : Json(EnglishText(finding.hint));
    member["mend"] = orNull(EnglishMend(finding));
    member["command"] =
        orNull(finding.mendCommand.empty() ? "" : "kelmo-lang " + VisibleText(finding.mendCommand));
    member["related"] = Json::array();
    for (const RelatedPlace& related : finding.related) {
      Json place = Json::object();
      AddPlace(related.place, place);
      place["message"] = EnglishText(related.message);
      member["related"].push_back(std::move(place));
    }
    return member;
  }

  const Report& report_;
};

}  // namespace

std::string JsonReport(const Report& report) { return JsonWriter(report).Write(); }

}  // namespace KelmoLibs::Lang
