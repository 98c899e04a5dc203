#include "lang/commands/answer.h"

#include "lang/report/visible_text.h"

namespace KelmoLibs::Lang {

std::string LineOf(const Sentence& sentence, const Texts& texts) {
  return VisibleText(texts.Say(sentence)) + '\n';
}

std::string ProblemLine(const std::string& path, const Sentence& reason, const Texts& texts) {
  return LineOf({"problem.line", {path.empty() ? R"("")" : path, texts.Say(reason)}}, texts);
}

Answer WrongUse(const std::string& command, const Sentence& sentence, const Texts& texts) {
  return {kStatusWrong, "", LineOf({"usage.wrong", {command, texts.Say(sentence)}}, texts)};
}

}  // namespace KelmoLibs::Lang
