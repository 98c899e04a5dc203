#include <algorithm>
#include <string>

#include "host/unit_files.h"
#include "host/unit_lines.h"

namespace KelmoLibs::Host {
namespace {

constexpr std::size_t kFields = 3;

// The first library takes any blank as a separator, so that no symbol has a blank. Here a line with at
// least two tabs is separated by tabs alone; several of them are one.
std::vector<UnitField> Split(std::string_view line) {
  std::vector<UnitField> fields = SplitAtTabs(line);
  fields.erase(std::remove_if(fields.begin(), fields.end(),
                              [](const UnitField& field) { return field.text.empty(); }),
               fields.end());
  if (std::count(line.begin(), line.end(), '\t') >= 2) {
    return fields;
  }
  std::vector<UnitField> words = SplitIntoWords(line);
  if (words.size() > kFields) {  // the name has all of them
    const char* const begin = words[2].text.data();
    const std::string_view last = words.back().text;
    words[2].text = {begin, static_cast<std::size_t>(last.data() + last.size() - begin)};
    words.resize(kFields);
  }
  return words;
}

void ReadLine(std::string_view line, UnitLines& lines, LanguageUnits& language) {
  const std::vector<UnitField> fields = Split(line);
  if (fields.empty()) {
    return;
  }
  if (fields.size() != kFields) {
    lines.TellFault(fields.size() < kFields ? "a line needs a code, a symbol and a name"
                                            : "a line has three fields with tabs between them");
    return;
  }
  const auto code = ReadCode(fields[0].text);
  if (!code || !FaultOfCode(*code).empty()) {
    lines.TellFault("\"" + std::string(fields[0].text) + "\" is not the code of a unit",
                    fields[0].column);
    return;
  }
  for (std::size_t i = 1; i < kFields; ++i) {
    const std::string fault = FaultOfUnitText(fields[i].text, i == 1 ? "symbol" : "name");
    if (!fault.empty()) {
      lines.TellFault(fault, fields[i].column);
      return;
    }
  }
  if (lines.IsNew(NormalCode(*code))) {
    language.names.try_emplace(NormalCode(*code),
                               UnitNames{std::string(fields[1].text), std::string(fields[2].text)});
  }
}

}  // namespace

void ReadUnitNames(std::string_view bytes, std::string_view fileName, UnitCollection& units,
                   ProblemList* problems) {
  UnitLines lines(bytes, fileName, problems);
  const auto header = lines.First();
  const auto words = SplitIntoWords(WithoutComment(header.value_or(std::string_view())));
  if (words.empty() || words[0].text.front() == '#' || ReadCode(words[0].text)) {
    lines.TellFault("the first line has no id of a language: nothing is read");
    return;
  }
  LanguageUnits& language = units.NamesIn(words[0].text);
  while (const auto line = lines.Next()) {
    ReadLine(WithoutComment(*line), lines, language);
  }
}

}  // namespace KelmoLibs::Host
