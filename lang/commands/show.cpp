// The messages come from the library's own readers, which load the files into local objects here.
// Tested by the transcripts in tests/data/lang/transcripts.
#include "lang/commands/show.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "dictionary/dictionary_reader.h"
#include "frame/error_list.h"
#include "lang/commands/rows.h"
#include "lang/reading/workspace.h"
#include "lang/report/visible_text.h"
#include "lang/rules/edit_distance.h"
#include "lang/unicode/ascii.h"
#include "lang/unicode/utf8_from_wide.h"
#include "storage/text_hash.h"
#include "text/file_path.h"
#include "text/utf8.h"
#include "unittables/language_table.h"

namespace KelmoLibs::Lang {
namespace {

constexpr unsigned kIndent = 2;
constexpr unsigned kDeepIndent = 4;

std::string Quoted(std::string_view text) { return '"' + VisibleText(text) + '"'; }

// The path that the messages of the library have: of a host that loads this file by this name.
std::wstring HostPath(const SourceFile& source, bool isUnitTable) {
  std::filesystem::path folder = source.Path().parent_path();
  std::string name = source.Path().filename().u8string();
  if (isUnitTable && folder.filename() == "LANG" &&
      Localize::DecodeUtf8(name) != Localize::kNeutralUnitTableName) {
    folder = folder.parent_path();  // Init adds this folder itself, and a slash
    name = "LANG/" + name;
  }
  const std::string folderName = folder.empty() ? "." : folder.u8string();
  return Localize::JoinPath(Localize::DecodeUtf8(folderName), Localize::DecodeUtf8(name));
}

// The files that are shown, as a program has them after it has loaded them.
class LoadedFiles {
 public:
  explicit LoadedFiles(const Workspace& workspace) {
    for (std::uint32_t i = 0; i < workspace.files.size(); ++i) {
      const WorkspaceFile& file = workspace.files[i];
      if (file.isReported && file.dictionary) {
        merged_[IdOf(*file.dictionary)].Merge(i, *file.dictionary);
      }
    }
  }

  const std::map<std::string, MergedDictionary>& Merged() const noexcept { return merged_; }
  const MergedDictionary& MergedOf(const DictionaryFile& file) const {
    return merged_.find(IdOf(file))->second;
  }

  // Loads the file and returns the new messages of the library.
  std::vector<std::string> Load(const WorkspaceFile& file) {
    const std::int64_t before = messages_.Count();
    const std::wstring path = HostPath(file.Source(), file.units != nullptr);
    if (file.units) {
      file.units->AppendMessages(path, messages_);
    } else {
      WindowsText text(file.Source().Raw());
      ReadDictionary(text, language_, dictionaries_, [this, &path](std::wstring_view key) {
        messages_.Append(Localize::KeyAlreadyDeclaredMessage(key, path));
      });
    }
    std::vector<std::string> texts;
    for (std::int64_t i = before; i < messages_.Count(); ++i) {
      texts.push_back(Utf8FromWide(messages_.At(static_cast<std::int32_t>(i))));
    }
    return texts;
  }

 private:
  // What hosts ask for. A file that is not read has only the intended id.
  static std::string IdOf(const DictionaryFile& file) {
    return std::string(file.HasHeader() ? file.Id() : file.IntendedId());
  }

  std::map<std::string, MergedDictionary> merged_;
  Localize::CurrentLanguage language_;
  Localize::DictionaryTable dictionaries_;
  Localize::ErrorList messages_;
};

class Listing {
 public:
  Listing(const Workspace& workspace, LoadedFiles& loaded, const Texts& texts)
      : workspace_(workspace), loaded_(loaded), texts_(texts) {}

  std::string Take() { return std::move(text_); }

  // ---- A whole file

  void AddFile(const WorkspaceFile& file) {
    text_ += text_.empty() ? "" : "\n";
    Title(VisibleText(file.Source().Name()));
    if (file.units) {
      AddUnitTable(*file.units);
    } else {
      AddDictionary(*file.dictionary);
    }
    const std::vector<std::string> messages = loaded_.Load(file);
    if (!messages.empty()) {
      AddTitle("show.messages");
      for (const std::string& message : messages) {
        AddLines(message);
      }
    }
  }

  // ---- A key

  // False if there is no such key.
  bool AddKey(std::string_view key) {
    bool isFound = false;
    for (const auto& [id, dictionary] : loaded_.Merged()) {
      if (const FoundEntry found = dictionary.Find(key)) {
        text_ += text_.empty() ? "" : "\n";
        isFound = AddEntry(id, dictionary, found) || isFound;
      }
    }
    std::int32_t code = 0;
    const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), code);
    for (const WorkspaceFile& file : workspace_.files) {
      if (file.isReported && file.units && error == std::errc() && end == key.data() + key.size()) {
        isFound = AddUnit(*file.units, code) || isFound;
      }
    }
    if (!isFound) {
      AddMissingKey(key);
    }
    return isFound;
  }

 private:
  std::string Say(const Sentence& sentence) const { return VisibleText(texts_.Say(sentence)); }
  void Title(const std::string& title) { text_ += title + ":\n"; }
  void AddTitle(const char* key) { text_ += std::string(kIndent, ' ') + texts_.Find(key) + ":\n"; }

  void AddRows(const std::vector<Cells>& rows, unsigned indent) {
    text_ += AlignedRows(rows, indent);
  }

  // The lines of a message, which may have invisible characters.
  void AddLines(std::string_view message) {
    while (!message.empty()) {
      const std::string_view line = message.substr(0, message.find('\n'));
      text_ += std::string(kDeepIndent, ' ') + VisibleText(line) + '\n';
      message.remove_prefix(std::min(line.size() + 1, message.size()));
    }
  }

  static std::string PlaceText(const SourceFile& source, std::string_view part) {
    return VisibleText(source.Name()) + ':' + std::to_string(source.LineOf(part.data()));
  }

  std::string LineText(const SourceFile& source, std::string_view part) const {
    return Say({"show.line", {std::to_string(source.LineOf(part.data()))}});
  }

  Cells Labelled(const char* label, const std::string& value) const {
    return {texts_.Find(label) + ':', value};
  }

  // What the library does not read, and why; empty if it reads all.
  std::string LossText(const SourceFile& source, Stop stop, std::size_t at,
                       std::size_t lostLines) const {
    if (source.EncodedAsUtf16() != Utf16::kNo) {
      return Say({"show.lost.utf16", {}});
    }
    if (source.LineEnds() == LineEnd::kCr) {
      return Say({"show.lost.cr", {}});
    }
    if (stop == Stop::kEndOfFile) {
      return "";
    }
    const Place place = source.PlaceOf(source.Bytes().substr(at, 1));
    const std::string where = std::to_string(place.line) + ':' + std::to_string(place.column);
    return Say({stop == Stop::kNotUtf8 ? "show.lost.not_utf8.#" : "show.lost.control_z.#",
                {std::to_string(lostLines), where}});
  }

  void AddDictionary(const DictionaryFile& file) {
    const SourceFile& source = file.Source();
    const MergedDictionary& merged = loaded_.MergedOf(file);
    std::vector<Cells> repeated;
    for (const Entry& entry : file.Entries()) {
      const FoundEntry first = merged.Find(entry.key);
      if (first.entry != &entry) {
        const SourceFile& other = workspace_.files[first.file].Source();
        const std::string place = &other == &source ? LineText(source, first.entry->key)
                                                    : PlaceText(other, first.entry->key);
        repeated.push_back({LineText(source, entry.key), Quoted(entry.key), Quoted(entry.text),
                            Say({"show.counts", {place}})});
      }
    }
    std::vector<Cells> rows = {Labelled("show.kind", texts_.Find("show.kind.dictionary"))};
    if (file.HasHeader()) {
      rows.push_back(Labelled("show.id", Quoted(file.Id())));
      rows.push_back(Labelled("show.language", Quoted(file.DisplayName())));
    } else {
      rows.push_back(Labelled("show.id", texts_.Find("show.no_id")));
    }
    rows.push_back(Labelled("show.texts", std::to_string(file.Entries().size() - repeated.size())));
    const std::string loss =
        LossText(source, file.StopsBecause(), file.StopsAt(), file.LostEntries().size());
    if (!loss.empty()) {
      rows.push_back(Labelled("show.lost", loss));
    }
    AddRows(rows, kIndent);
    if (!repeated.empty()) {
      AddTitle("show.repeated");
      AddRows(repeated, kDeepIndent);
    }
  }

  Cells CellsOf(const UnitLine& line) const {
    return {std::to_string(line.code), Quoted(TextAsRead(line.symbol)),
            Quoted(TextAsRead(line.name)), Say({"show.line", {std::to_string(line.line)}})};
  }

  void AddUnitTable(const UnitFile& file) {
    const SourceFile& source = file.Source();
    const bool isWhole = file.Header() == UnitHeader::kWhole;
    std::vector<Cells> rows = {
        Labelled("show.kind", texts_.Find("show.kind.unit_table")),
        Labelled("show.language_key",
                 isWhole ? Quoted(file.LanguageKey()) : texts_.Find("show.refused")),
        Labelled("show.units", std::to_string(isWhole ? file.Units().size() : 0))};
    const auto stopLine =
        source.LineCount() == 0 ? 0 : source.LineOf(source.Raw().data() + file.StopsAt());
    const std::string loss = LossText(source, file.StopsBecause(), file.StopsAt(),
                                      source.LineCount() - std::min(source.LineCount(), stopLine));
    if (!loss.empty()) {
      rows.push_back(Labelled("show.lost", loss));
    }
    AddRows(rows, kIndent);
    if (isWhole) {
      AddUnitLines(file);
    }
  }

  void AddUnitLines(const UnitFile& file) {
    std::vector<Cells> units;
    for (const std::uint32_t unit : file.Units()) {
      units.push_back(CellsOf(file.Lines()[unit]));
    }
    AddRows(units, kDeepIndent);
    std::vector<Cells> repeated;
    for (const UnitLine& line : file.Lines()) {
      const UnitLine* const first = file.Find(line.code);
      if (first != &line) {
        Cells cells = CellsOf(line);
        cells.push_back(Say({"show.counts", {Say({"show.line", {std::to_string(first->line)}})}}));
        repeated.push_back(std::move(cells));
      }
    }
    if (!repeated.empty()) {
      AddTitle("show.repeated");
      AddRows(repeated, kDeepIndent);
    }
    std::vector<Cells> dropped;
    for (const std::string_view line : file.DroppedLines()) {
      dropped.push_back({LineText(file.Source(), line), Quoted(line)});
    }
    if (!dropped.empty()) {
      AddTitle("show.dropped");
      AddRows(dropped, kDeepIndent);
    }
  }

  // False if the entry lies behind a fault.
  bool AddEntry(const std::string& id, const MergedDictionary& dictionary,
                const FoundEntry& found) {
    const SourceFile& source = workspace_.files[found.file].Source();
    Title(Say({"show.key", {std::string(found.entry->key), id}}));
    std::vector<Cells> rows = {
        Labelled(found.isLost ? "show.lost_text" : "show.text", Quoted(found.entry->text)),
        Labelled("show.place", PlaceText(source, found.entry->key))};
    for (const std::uint32_t file : dictionary.Files()) {
      const DictionaryFile& other = *workspace_.files[file].dictionary;
      for (const Entry& entry : other.Entries()) {
        if (entry.key == found.entry->key && &entry != found.entry) {
          rows.push_back(Labelled("show.ignored",
                                  PlaceText(other.Source(), entry.key) + ' ' + Quoted(entry.text)));
        }
      }
    }
    if (found.isLost) {
      const DictionaryFile& file = *workspace_.files[found.file].dictionary;
      rows.push_back(Labelled("show.reason", LossText(source, file.StopsBecause(), file.StopsAt(),
                                                      file.LostEntries().size())));
    }
    AddRows(rows, kIndent);
    return !found.isLost;
  }

  bool AddUnit(const UnitFile& file, std::int32_t code) {
    const UnitLine* const unit = file.Header() == UnitHeader::kWhole ? file.Find(code) : nullptr;
    if (unit == nullptr) {
      return false;
    }
    text_ += text_.empty() ? "" : "\n";
    Title(Say({"show.key", {std::to_string(code), std::string(file.LanguageKey())}}));
    AddRows({Labelled("show.symbol", Quoted(TextAsRead(unit->symbol))),
             Labelled("show.name", Quoted(TextAsRead(unit->name))),
             Labelled("show.place", PlaceText(file.Source(), unit->codeField))},
            kIndent);
    return true;
  }

  void AddMissingKey(std::string_view key) {
    text_ += text_.empty() ? "" : "\n";
    text_ += Say({"show.no_key", {std::string(key)}}) + '\n';
    std::vector<Cells> rows;
    for (const Near& near : NearKeys(key)) {
      rows.push_back(Labelled("show.near", Quoted(near.entry->key)));
      rows.back().push_back(PlaceText(workspace_.files[near.file].Source(), near.entry->key));
    }
    AddRows(rows, kIndent);
    if (!loaded_.Merged().empty()) {
      const std::wstring wide = Localize::DecodeUtf8(WellFormedText(key));
      Localize::ErrorList messages;
      messages.Append(Localize::KeyNotFoundMessage(wide, Localize::HashText(wide)));
      AddTitle("show.messages");
      AddLines(Utf8FromWide(messages.At(0)));
    }
  }

  struct Near {
    std::size_t distance;
    std::uint32_t file;
    const Entry* entry;
  };

  // The nearest keys of all files, the best first. Letters of another case are near.
  std::vector<Near> NearKeys(std::string_view key) const {
    constexpr std::size_t kMost = 5;
    constexpr std::size_t kShort = 5;
    const std::size_t limit = key.size() < kShort ? 1 : 2;
    const std::string lower = AsciiLowerCase(key);
    std::vector<Near> keys;
    for (std::uint32_t i = 0; i < workspace_.files.size(); ++i) {
      const WorkspaceFile& file = workspace_.files[i];
      if (!file.isReported || !file.dictionary) {
        continue;
      }
      for (const Entry& entry : file.dictionary->Entries()) {
        const bool counts = loaded_.MergedOf(*file.dictionary).Find(entry.key).entry == &entry;
        if (counts && entry.key.size() <= lower.size() + kMost &&
            entry.key.size() + kMost >= lower.size()) {
          const std::size_t distance = EditDistance(lower, AsciiLowerCase(entry.key), limit);
          if (distance <= limit) {
            keys.push_back({distance, i, &entry});
          }
        }
      }
    }
    std::stable_sort(keys.begin(), keys.end(), [](const Near& left, const Near& right) {
      return left.distance < right.distance;
    });
    keys.resize(std::min(keys.size(), kMost));
    return keys;
  }

  const Workspace& workspace_;
  LoadedFiles& loaded_;
  const Texts& texts_;
  std::string text_;
};

bool HasShownFile(const Workspace& workspace) {
  return std::any_of(workspace.files.begin(), workspace.files.end(),
                     [](const WorkspaceFile& file) { return file.isReported; });
}

}  // namespace

Answer Show(const ShowOptions& options, const Texts& texts) {
  std::vector<FileProblem> problems;
  const Workspace workspace =
      ReadWorkspace({ExpandPaths({options.path}, problems), std::nullopt}, problems);
  Answer answer;
  for (const FileProblem& problem : problems) {
    answer.error += VisibleText(problem.path + ": " + texts.Find(problem.reason)) + '\n';
  }
  if (!HasShownFile(workspace)) {
    answer.status = kStatusWrong;
    return answer;
  }
  LoadedFiles loaded(workspace);
  Listing listing(workspace, loaded, texts);
  if (options.key) {
    answer.status = listing.AddKey(*options.key) ? 0 : kStatusMissing;
  } else {
    for (const WorkspaceFile& file : workspace.files) {
      if (file.isReported) {
        listing.AddFile(file);
      }
    }
  }
  answer.status = problems.empty() ? answer.status : kStatusWrong;
  answer.output = listing.Take();
  return answer;
}

}  // namespace KelmoLibs::Lang
