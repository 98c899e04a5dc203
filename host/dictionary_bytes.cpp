#include "host/dictionary_bytes.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "dictionary/dictionary_line.h"
#include "dictionary/entry_estimate.h"
#include "platform/native_files.h"
#include "text/utf8_characters.h"

namespace KelmoLibs::Host {
namespace {

using Localize::DictionaryLine;
using Localize::SplitDictionaryLine;
using Localize::WellFormedUtf8Length;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool StartsWith(std::string_view text, std::string_view start) noexcept {
  return text.substr(0, start.size()) == start;
}

// Whether plural rules and number formats may know it: "de", "de-AT", "sr_Latn_RS".
bool IsLanguageId(std::string_view id) noexcept {
  constexpr std::size_t kLongestLanguage = 3;
  constexpr std::size_t kLongestPart = 8;
  const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  const std::size_t language = std::min(id.find_first_of("-_"), id.size());
  if (language < 2 || language > kLongestLanguage ||
      !std::all_of(id.begin(), id.begin() + static_cast<std::ptrdiff_t>(language), isLetter)) {
    return false;
  }
  std::size_t size = 1;  // of the current part
  for (const char c : id.substr(language)) {
    const bool isMark = c == '-' || c == '_';
    if ((isMark && size == 0) || (!isMark && !isLetter(c) && (c < '0' || c > '9'))) {
      return false;
    }
    size = isMark ? 0 : size + 1;
    if (size > kLongestPart) {
      return false;
    }
  }
  return size != 0;
}

// So that the next push_back does not throw. Room for only one more would copy all with each file.
template <class Vector>
void ReserveOneMore(Vector& values) {
  if (values.size() == values.capacity()) {
    values.reserve(2 * values.size() + 1);
  }
}

class Reader {
 public:
  Reader(std::string_view fileName, const ReadingOptions& options, TextCollection& texts,
         ProblemList* problems)
      : fileName_(fileName), options_(options), texts_(texts), problems_(problems) {}

  void Read(std::string_view bytes) {
    if (StartsWith(bytes, kByteOrderMark)) {
      Tell(ProblemCode::kByteOrderMark,
           options_.isLenient ? ProblemSeverity::kNote : ProblemSeverity::kError, {1, 1}, {});
      if (options_.isLenient) {
        bytes.remove_prefix(kByteOrderMark.size());
      }
    }
    const bool endsAtControlZ = Localize::ControlZEndsText();
    // not covered, true of `endsAtControlZ`: Windows only
    const std::size_t end = endsAtControlZ ? bytes.find('\x1A') : std::string_view::npos;
    const std::string_view text = bytes.substr(0, end);
    const std::size_t valid = WellFormedUtf8Length(text);
    const bool hasFaults = valid < text.size();
    skipsFaults_ = hasFaults && options_.isLenient;
    const bool isCut = hasFaults && !options_.isLenient;
    ReadLines(isCut ? text.substr(0, valid) : text);
    if (isCut) {
      TellDropped(ProblemCode::kNotUtf8, PlaceBehind(text.substr(0, valid)), bytes.size() - valid);
    }
    // not covered, true of `text.size() < bytes.size()`: Windows only
    else if (text.size() < bytes.size()) {
      // not covered: Windows only
      TellDropped(ProblemCode::kControlZ, PlaceBehind(text), bytes.size() - text.size() - 1);
    }
    if (language_ == nullptr) {
      Tell(ProblemCode::kEmptyFile, ProblemSeverity::kWarning, {}, {});
    }
  }

 private:
  struct Position {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
  };

  // As text mode does it: CR LF ends a line as LF does; every other CR stays.
  void ReadLines(std::string_view bytes) {
    for (std::uint32_t number = 1; !bytes.empty(); ++number) {
      const std::size_t end = bytes.find('\n');
      std::string_view line = bytes.substr(0, end);
      bytes.remove_prefix(std::min(line.size() + 1, bytes.size()));
      if (skipsFaults_) {
        line = WithoutFaults(line, number);
      }
      if (end != std::string_view::npos && !line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
      }
      bytesRead_ += line.size() + 1;
      ReadLine(line, number, bytes.size());
    }
  }

  // `rest`: the bytes behind the line.
  void ReadLine(std::string_view line, std::uint32_t number, std::size_t rest) {
    const DictionaryLine fields = SplitDictionaryLine(line);
    if (language_ == nullptr) {
      ReadHeader(fields);
    } else if (!line.empty()) {
      if (language_->IsFull()) {
        const std::size_t entries = language_->Entries().size();
        language_->Grow(entries + Localize::ExtrapolateCount(entries - olderEntries_, bytesRead_,
                                                             bytesRead_ + rest));
      }
      std::size_t lineBreaks = 0;
      const std::string_view text = options_.isLenient || options_.readsLineBreaks
                                        ? WithLineBreaks(fields.text, lineBreaks)
                                        : fields.text;
      const TextRecord* const existing =
          language_->Add({fields.key, text, file_, number, options_.hasUtf16, options_.hasPercent,
                          options_.isOverride});
      if (existing != nullptr) {
        TellRepeated(*existing, number, fields.key);
      } else if (lineBreaks != 0 && !options_.readsLineBreaks) {
        TellLineBreaks(number, fields.key, lineBreaks);
      }
    }
  }

  void ReadHeader(const DictionaryLine& fields) {
    ReserveOneMore(texts_.files);
    ReserveOneMore(texts_.languages);
    ReserveOneMore(texts_.overrides);
    auto file = std::make_unique<const std::string>(fileName_);
    const bool hasName = fields.text.find_first_not_of(" \t\r") != std::string_view::npos;
    std::string name(hasName ? fields.text : std::string_view());
    language_ = texts_.FindLanguage(fields.key);
    if (language_ == nullptr) {
      texts_.languages.push_back(std::make_unique<LanguageTexts>(fields.key));
      language_ = texts_.languages.back().get();
    }
    if (!options_.isOverride && !language_->IsOfProgram()) {
      TakeFromOverrides();
    }
    const bool mayName = !options_.isOverride || !language_->IsOfProgram();
    if (mayName && language_->Name().empty()) {
      language_->SetName(std::move(name));
    }
    if (!IsLanguageId(fields.key) && !StartsWith(fields.key, kByteOrderMark)) {
      TellNoId(fields.key);
    }
    olderEntries_ = language_->Entries().size();
    file_ = static_cast<std::uint32_t>(texts_.files.size());
    texts_.files.push_back(std::move(file));
    if (options_.isOverride) {
      texts_.overrides.push_back({language_, olderEntries_, file_});
    }
  }

  // An override does not change the menu of a program: the files of the program give the place and
  // the name of the language.
  void TakeFromOverrides() noexcept {
    auto& languages = texts_.languages;
    const auto place = std::find_if(languages.begin(), languages.end(),
                                    [](const auto& language) { return !language->IsOfProgram(); });
    const auto taken = std::find_if(place, languages.end(), [this](const auto& language) {
      return language.get() == language_;
    });
    std::rotate(place, taken, taken + 1);
    language_->SetOfProgram();
  }

  // The text with a line break in place of each backslash and n; valid until the next call.
  std::string_view WithLineBreaks(std::string_view text, std::size_t& count) {
    if (text.find("\\n") == std::string_view::npos) {
      return text;
    }
    buffer_.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
      const bool isLineBreak = text.substr(i, 2) == "\\n";
      buffer_ += isLineBreak ? '\n' : text[i];
      i += isLineBreak ? 1U : 0U;
      count += isLineBreak ? 1U : 0U;
    }
    return buffer_;
  }

  // A copy of the line without the bytes that are not UTF-8; valid until the next call. Tells each of
  // their runs.
  std::string_view WithoutFaults(std::string_view line, std::uint32_t number) {
    mended_.clear();
    Position position{number, 1};
    for (;;) {
      const std::size_t valid = WellFormedUtf8Length(line);
      mended_ += line.substr(0, valid);
      position.column += Localize::CountCharacters(line.substr(0, valid));
      line.remove_prefix(valid);
      if (line.empty()) {
        return mended_;
      }
      const std::size_t skipped = FaultLength(line);
      TellDropped(ProblemCode::kNotUtf8, position, skipped);
      position.column += static_cast<std::uint32_t>(skipped);
      line.remove_prefix(skipped);
    }
  }

  // Length of the run of bytes that are not UTF-8 at the start of `bytes`, which has one.
  static std::size_t FaultLength(std::string_view bytes) noexcept {
    constexpr std::size_t kLongestCharacter = 4;
    std::size_t length = 1;
    while (length < bytes.size() &&
           WellFormedUtf8Length(bytes.substr(length, kLongestCharacter)) == 0) {
      ++length;
    }
    return length;
  }

  // In columns, a byte that is not UTF-8 counts as a character.
  static Position PlaceBehind(std::string_view text) noexcept {
    const auto lineFeeds = std::count(text.begin(), text.end(), '\n');
    Position position{static_cast<std::uint32_t>(lineFeeds) + 1, 1};
    text.remove_prefix(text.rfind('\n') + 1);  // npos + 1 is 0
    position.column += Localize::CountCharacters(text);
    return position;
  }

  void TellDropped(ProblemCode code, const Position& position, std::size_t bytes) {
    if (problems_ != nullptr) {
      // not covered, true of `bytes == 0`: Windows only
      const auto severity = bytes == 0 ? ProblemSeverity::kNote : ProblemSeverity::kError;
      problems_->Append([&] {
        Problem problem = Describe(code, severity, position, {});
        problem.detail = std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes") + " dropped";
        return problem;
      });
    }
  }

  void TellRepeated(const TextRecord& existing, std::uint32_t number, std::string_view key) {
    if (problems_ == nullptr || (existing.isOverride != 0 && existing.file != file_)) {
      return;
    }
    problems_->Append([&] {
      Problem problem =
          Describe(ProblemCode::kKeyRepeated, ProblemSeverity::kWarning, {number, 1}, key);
      problem.detail = "the text of " + *texts_.files[existing.file] + ":" +
                       std::to_string(existing.line) + " stays";
      return problem;
    });
  }

  void TellNoId(std::string_view id) {
    if (problems_ != nullptr) {
      problems_->Append([&] {
        Problem problem =
            Describe(ProblemCode::kNoLanguageId, ProblemSeverity::kWarning, {1, 1}, {});
        problem.detail = "it begins with \"" + std::string(id) + "\"";
        return problem;
      });
    }
  }

  void TellLineBreaks(std::uint32_t number, std::string_view key, std::size_t count) {
    if (problems_ != nullptr) {
      problems_->Append([&] {
        Problem problem =
            Describe(ProblemCode::kLineBreak, ProblemSeverity::kNote, {number, 0}, key);
        problem.detail = std::to_string(count) + (count == 1 ? " line break" : " line breaks");
        return problem;
      });
    }
  }

  void Tell(ProblemCode code, ProblemSeverity severity, const Position& position,
            std::string_view key) {
    if (problems_ != nullptr) {
      problems_->Append([&] { return Describe(code, severity, position, key); });
    }
  }

  Problem Describe(ProblemCode code, ProblemSeverity severity, const Position& position,
                   std::string_view key) const {
    Problem problem;
    problem.code = code;
    problem.severity = severity;
    problem.line = position.line;
    problem.column = position.column;
    problem.key = key;
    problem.language = language_ != nullptr ? language_->Id() : std::string();
    problem.file = fileName_;
    return problem;
  }

  std::string_view fileName_;
  const ReadingOptions& options_;
  TextCollection& texts_;
  ProblemList* problems_;
  bool skipsFaults_ = false;
  LanguageTexts* language_ = nullptr;
  std::uint32_t file_ = 0;
  std::size_t bytesRead_ = 0;
  std::size_t olderEntries_ = 0;  // of the language, from other files
  std::string buffer_;
  std::string mended_;
};

}  // namespace

void ReadDictionaryBytes(std::string_view bytes, std::string_view fileName,
                         const ReadingOptions& options, TextCollection& texts,
                         ProblemList* problems) {
  Reader(fileName, options, texts, problems).Read(bytes);
}

}  // namespace KelmoLibs::Host
