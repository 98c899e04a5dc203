// Checks any bytes with all rules of kelmo-lang, as a dictionary, its base and a unit table, writes the
// reports, and mends the files. The files are separated by lines that have only a form feed; without
// one, the bytes are one dictionary.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "dictionary/dictionary_line.h"
#include "lang/commands/mended_bytes.h"
#include "lang/report/html_report.h"
#include "lang/report/report.h"
#include "lang/rules/check_workspace.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/model/disagreement.h"
#include "tests/model/model.h"
#include "tests/support/encode_utf8.h"
#include "text/utf8_characters.h"

using namespace KelmoLibs::Lang;

namespace {

void Expect(bool isTrue, const char* what) {
  if (!isTrue) {
    throw Disagreement(what);
  }
}

// ---- What the library reads

// By other code than the tool's.
std::vector<std::string> LinesOnWindows(const std::string& raw) {
  std::string text = EncodeUtf8(model::Decode(raw.substr(0, raw.find('\x1A'))));
  for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;) {
    text.erase(at, 1);
  }
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, end));
    text.erase(0, end + 1);
  }
  return lines;
}

void CompareEntries(const DictionaryFile& file) {
  const std::vector<std::string> lines = LinesOnWindows(file.Source().Raw());
  Expect(file.HasHeader() == !lines.empty(), "the header");
  std::size_t read = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto [key, text] = KelmoLibs::Localize::SplitDictionaryLine(lines[i]);
    if (i == 0) {
      Expect(file.Id() == key && file.DisplayName() == text, "the first line");
    } else if (!lines[i].empty()) {
      Expect(read < file.Entries().size(), "too few entries");
      const Entry& entry = file.Entries()[read++];
      Expect(entry.key == key && entry.text == text, "an entry");
    }
  }
  Expect(read == file.Entries().size(), "too many entries");
}

// ---- What is reported

void CheckPlace(const Workspace& workspace, const Place& place) {
  Expect(place.file < workspace.files.size(), "the file of a place");
  const SourceFile& source = workspace.files[place.file].Source();
  Expect(place.line <= source.LineCount(), "the line of a place");
  if (place.line == 0) {
    Expect(place.column == 0 && place.length == 0, "a place of a whole file");
    return;
  }
  const std::uint32_t length = KelmoLibs::Localize::CountCharacters(source.Line(place.line));
  // One column behind the line is its end. The end of a line may have two bytes.
  constexpr std::uint32_t kLineEnd = 2;
  Expect(place.column >= 1 && place.column <= length + 1 + kLineEnd, "the column of a place");
  Expect(place.length <= length && place.column - 1 + place.length <= length + kLineEnd,
         "the length of a place");
}

void CheckSentence(const Texts& texts, const Sentence& sentence) {
  Expect(sentence.IsEmpty() || texts.Say(sentence) != sentence.key, "a sentence without a text");
}

void CheckFinding(const Workspace& workspace, const Texts& texts, const Finding& finding) {
  CheckPlace(workspace, finding.place);
  Expect(!finding.message.IsEmpty(), "a finding without a message");
  for (const Sentence& sentence : {finding.message, finding.hint, finding.mend}) {
    CheckSentence(texts, sentence);
  }
  for (const RelatedPlace& related : finding.related) {
    CheckPlace(workspace, related.place);
    CheckSentence(texts, related.message);
  }
}

void CheckUtf8(const std::string& text) {
  Expect(EncodeUtf8(model::Decode(text)) == text, "a report that is not UTF-8");
}

void CheckReports(const Report& report, const Texts& texts) {
  for (const bool hasColours : {false, true}) {
    const std::string text = TextReport(report, texts, {hasColours, true, 80});
    Expect(report.findings.empty() || !text.empty(), "an empty report");
    CheckUtf8(text);
  }
  const auto json = nlohmann::json::parse(JsonReport(report));  // throws also if it is not UTF-8
  Expect(json.at("findings").size() == report.findings.size(), "the findings in JSON");
  if (report.workspace.files.front().Source().Raw().size() % 16 == 0) {  // it is long: seldom
    const auto sarif = nlohmann::json::parse(SarifReport(report));
    Expect(sarif.at("runs").at(0).at("results").size() == report.findings.size(),
           "the findings in SARIF");
  }
  CheckUtf8(GithubReport(report));
  CheckUtf8(HtmlReport({report, {}, {}, {}}, texts));
}

// ---- What is mended

// Mending twice changes as much as mending once, and the library reads at least as much as before.
void CheckMending(const DictionaryFile& file, const std::optional<NamedEncoding>& encoding) {
  const MendedBytes mended = MendBytes(file.Source().Raw(), encoding);
  if (mended.changes.empty() || !mended.refusal.IsEmpty()) {
    Expect(mended.bytes == file.Source().Raw(), "bytes that are changed without a reason");
    return;
  }
  const DictionaryFile after("", {}, mended.bytes);
  // What the library reads of UTF-16, also of what a user takes for it, are no entries.
  const bool isUtf16 = file.Source().EncodedAsUtf16() != Utf16::kNo ||
                       (encoding && std::holds_alternative<Utf16>(*encoding));
  Expect(isUtf16 || after.Entries().size() >= file.Entries().size(), "fewer entries after mending");
  const MendedBytes again = MendBytes(mended.bytes, encoding);
  Expect(again.changes.empty() && again.bytes == mended.bytes, "bytes that are changed again");
}

// ---- The files

Workspace WorkspaceOf(std::string_view bytes) {
  constexpr std::string_view kSeparator = "\n\f\n";
  constexpr std::array kNames = {"fr.txt", "en.txt", "fr-val.txt"};
  Workspace workspace;
  for (const std::string_view name : kNames) {
    const std::size_t end = std::min(bytes.find(kSeparator), bytes.size());
    const std::string part(bytes.substr(0, end));
    WorkspaceFile file;
    if (name == kNames.back()) {
      file.units = std::make_unique<UnitFile>(std::string(name), std::string(name), part);
    } else {
      file.dictionary =
          std::make_unique<DictionaryFile>(std::string(name), std::string(name), part);
      CompareEntries(*file.dictionary);
    }
    workspace.files.push_back(std::move(file));
    if (end == bytes.size()) {
      break;
    }
    bytes.remove_prefix(end + kSeparator.size());
  }
  if (workspace.files.size() > 1) {
    workspace.baseFile = 1;
  }
  for (std::uint32_t i = 0; i < workspace.files.size(); ++i) {
    if (const auto& dictionary = workspace.files[i].dictionary) {
      workspace.dictionaries[std::string(dictionary->IntendedId())].Merge(i, *dictionary);
    }
  }
  return workspace;
}

}  // namespace

void CheckWith(std::string_view bytes) {
  static const Texts texts("en");
  const Workspace workspace = WorkspaceOf(bytes);
  const Report report{workspace, CheckWorkspace(workspace).Take(), {}, {}, {}};
  for (const Finding& finding : report.findings) {
    CheckFinding(workspace, texts, finding);
  }
  CheckReports(report, texts);
  for (const WorkspaceFile& file : workspace.files) {
    if (file.dictionary) {
      CheckMending(*file.dictionary, std::nullopt);
      CheckMending(*file.dictionary, CodePage::kWindows1252);
      CheckMending(*file.dictionary, Utf16::kLittleEndian);
    }
  }
}
