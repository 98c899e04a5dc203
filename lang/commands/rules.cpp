#include "lang/commands/rules.h"

#include <algorithm>

#include "lang/commands/help.h"
#include "lang/report/visible_text.h"
#include "lang/rules/rule.h"

namespace KelmoLibs::Lang {
namespace {

std::string Padded(std::string text, std::size_t width) {
  text.append(width - std::min<std::size_t>(width, WidthOf(text)), ' ');
  return text;
}

std::string SeverityText(const Rule& rule, const Texts& texts) {
  return texts.Find(rule.isOnByDefault ? "severity." + std::string(SeverityName(rule.severity))
                                       : "severity.off");
}

// The first sentence of an explanation.
std::string FirstSentence(const std::string& text) {
  const std::size_t end = text.find(". ");
  return end == std::string::npos ? text : text.substr(0, end + 1);
}

std::string TextOf(const Rule& rule, const char* part, const Texts& texts) {
  return texts.Find("rule." + std::string(rule.name) + '.' + part);
}

}  // namespace

Answer Rules(const RulesOptions& options, const Texts& texts, unsigned width) {
  if (options.rule) {
    return ExplainRule(*options.rule, texts, width);
  }
  std::size_t nameWidth = 0;
  std::size_t severityWidth = 0;
  for (const Rule& rule : AllRules()) {
    nameWidth = std::max(nameWidth, rule.name.size());
    severityWidth = std::max<std::size_t>(severityWidth, WidthOf(SeverityText(rule, texts)));
  }
  Answer answer;
  for (const Rule& rule : AllRules()) {
    answer.output += Padded(std::string(rule.name), nameWidth + 2) +
                     Padded(SeverityText(rule, texts), severityWidth + 2) +
                     FirstSentence(TextOf(rule, "cause", texts)) +
                     (rule.needsBase ? " (" + texts.Find("rules.needs_base") + ')' : "") + '\n';
  }
  return answer;
}

Answer ExplainRule(std::string_view name, const Texts& texts, unsigned width) {
  const Rule* const rule = FindRule(name);
  if (rule == nullptr) {
    return WrongUse("kelmo-lang rules", {"rules.unknown", {std::string(name)}}, texts);
  }
  std::string head = std::string(rule->name) + " (" + SeverityText(*rule, texts);
  if (rule->needsBase) {
    head += ", " + texts.Find("rules.needs_base");
  }
  Answer answer;
  answer.output = head + ")\n";
  for (const char* const part : {"cause", "library", "mend"}) {
    answer.output += '\n' + Wrap(TextOf(*rule, part, texts), 0, 0, width) + '\n';
  }
  return answer;
}

}  // namespace KelmoLibs::Lang
