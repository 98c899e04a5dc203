// The report as SARIF 2.1.0.
#include <map>
#include <nlohmann/json.hpp>

#include "lang/report/machine_text.h"
#include "lang/report/percent_encoding.h"
#include "lang/report/report.h"
#include "lang/report/visible_text.h"
#include "lang/unicode/ascii.h"

namespace KelmoLibs::Lang {
namespace {

using Json = nlohmann::ordered_json;

// A relative reference, or a file URI for an absolute path.
std::string UriOf(std::string_view path) {
  const bool hasDrive = path.size() > 2 && IsAsciiLetter(path[0]) && path.substr(1, 2) == ":/";
  std::string uri;
  if (hasDrive) {
    uri = "file:///" + std::string(path.substr(0, 2));
    path.remove_prefix(2);
  } else if (path.substr(0, 2) == "//") {
    uri = "file:";  // a computer follows
  } else if (path.substr(0, 1) == "/") {
    uri = "file://";
  }
  return uri + PercentEncoded(path);
}

Json RuleMember(const Rule& rule) {
  const Texts& texts = EnglishTexts();
  const std::string key = "rule." + std::string(rule.name);
  const std::string cause = texts.Find(key + ".cause");
  const std::string help = texts.Find(key + ".library") + ' ' + texts.Find(key + ".mend");
  return {{"id", rule.name},
          {"shortDescription", {{"text", cause}}},
          {"help", {{"text", help}}},
          {"defaultConfiguration",
           {{"enabled", rule.isOnByDefault}, {"level", SeverityName(rule.severity)}}}};
}

class SarifWriter {
 public:
  explicit SarifWriter(const Report& report) : report_(report) {}

  // One result a line.
  std::string Write() {
    Json rules = Json::array();
    for (const Rule& rule : AllRules()) {
      rules.push_back(RuleMember(rule));
    }
    const Json driver = {{"name", "kelmo-lang"}, {"rules", rules}};
    std::string text =
        "{\n\"$schema\": \"https://json.schemastore.org/sarif-2.1.0.json\",\n"
        "\"version\": \"2.1.0\",\n\"runs\": [{\n\"tool\": {\"driver\": ";
    text += driver.dump() + "},\n\"columnKind\": \"unicodeCodePoints\",\n\"results\": [";
    const char* separator = "\n";
    for (const Finding& finding : report_.findings) {
      text += separator + ResultMember(finding).dump();
      separator = ",\n";
    }
    text += report_.findings.empty() ? "]\n}]\n}\n" : "\n]\n}]\n}\n";
    return text;
  }

 private:
  Json PhysicalLocation(const Place& place) const {
    const std::string& name = report_.workspace.files[place.file].Source().Name();
    Json location = {{"artifactLocation", {{"uri", UriOf(name)}}}};
    if (place.line > 0) {
      location["region"] = {{"startLine", place.line},
                            {"startColumn", place.column},
                            {"endColumn", place.column + place.length}};
    }
    return location;
  }

  Json ResultMember(const Finding& finding) {
    Json location = {{"physicalLocation", PhysicalLocation(finding.place)}};
    if (!finding.key.empty()) {
      location["logicalLocations"] =
          Json::array({{{"name", WellFormedText(finding.key)}, {"kind", "resource"}}});
    }
    Json result = {{"ruleId", RuleOf(finding.rule).name},
                   {"ruleIndex", static_cast<std::size_t>(finding.rule)},
                   {"level", SeverityName(finding.severity)},
                   {"message", {{"text", EnglishLines(finding)}}},
                   {"locations", Json::array({location})}};
    for (const RelatedPlace& related : finding.related) {
      Json place = {{"physicalLocation", PhysicalLocation(related.place)},
                    {"message", {{"text", EnglishText(related.message)}}}};
      result["relatedLocations"].push_back(std::move(place));
    }
    const std::string identity =
        report_.workspace.files[finding.place.file].Source().Name() + '\0' + IdentityOf(finding);
    result["partialFingerprints"] = {
        {"kelmoLang/v1", FingerprintOf(identity) + ":" + std::to_string(++numbers_[identity])}};
    return result;
  }

  const Report& report_;
  std::map<std::string, std::size_t> numbers_;  // findings so far, by identity
};

}  // namespace

std::string SarifReport(const Report& report) { return SarifWriter(report).Write(); }

}  // namespace KelmoLibs::Lang
