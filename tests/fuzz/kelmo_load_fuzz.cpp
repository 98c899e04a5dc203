// Loads any bytes as a dictionary of kelmo. Strict, it has the languages, keys and texts of the
// first library. Lenient, it loses only the bytes that it tells. Line breaks that are asked for
// are read, and not told. All entries are found by their keys.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "host/dictionary_bytes.h"
#include "host/key_bytes.h"
#include "platform/native_files.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/model/call_sequence.h"
#include "tests/model/disagreement.h"
#include "tests/model/library_under_test.h"
#include "tests/model/model.h"
#include "tests/support/encode_utf8.h"
#include "text/utf8_characters.h"

namespace {

using KelmoLibs::Host::KeyBytes;
using KelmoLibs::Host::Problem;
using KelmoLibs::Host::ProblemCode;
using KelmoLibs::Host::ProblemList;
using KelmoLibs::Host::ReadDictionaryBytes;
using KelmoLibs::Host::ReadingOptions;
using KelmoLibs::Host::TextCollection;
using KelmoLibs::Host::TextRecord;
using KelmoLibs::Localize::IsUtf8;
using KelmoLibs::Localize::WellFormedUtf8Length;

struct Loaded {
  Loaded(std::string_view bytes, const ReadingOptions& options) {
    ReadDictionaryBytes(bytes, "file", options, texts, &problems);
  }
  TextCollection texts;
  ProblemList problems;
};

void Expect(bool holds, const char* what) {
  if (!holds) {
    throw Disagreement(what);
  }
}

void CheckEntries(const TextCollection& texts) {
  Expect(texts.languages.size() <= 1 && texts.files.size() == texts.languages.size(),
         "one language for a file");
  for (const auto& language : texts.languages) {
    Expect(IsUtf8(language->Id()) && IsUtf8(language->Name()), "a header in UTF-8");
    std::uint32_t line = 1;
    for (const TextRecord* const entry : language->Entries()) {
      Expect(language->Find(KeyBytes(entry->Key())) == entry, "an entry is found by its key");
      Expect(IsUtf8(entry->Key()) && IsUtf8(entry->Text()), "an entry in UTF-8");
      Expect(entry->line > line, "lines in order");
      line = entry->line;
    }
  }
}

// The number at the start of the detail.
std::size_t DroppedBytes(const ProblemList& problems, ProblemCode code) {
  std::size_t dropped = 0;
  for (const Problem& problem : problems.All()) {
    Expect(IsUtf8(problem.key) && IsUtf8(problem.language), "a problem in UTF-8");
    dropped += problem.code == code ? std::stoul(problem.detail) : 0;
  }
  return dropped;
}

std::size_t CountOf(const ProblemList& problems, ProblemCode code) {
  return static_cast<std::size_t>(
      std::count_if(problems.All().begin(), problems.All().end(),
                    [code](const Problem& problem) { return problem.code == code; }));
}

// Line breaks that are asked for are read as a lenient load reads them, but not told.
void CheckLineBreaks(const Loaded& lenient, const Loaded& asked) {
  Expect(asked.texts.languages.size() == lenient.texts.languages.size(), "the same language");
  for (std::size_t i = 0; i < lenient.texts.languages.size(); ++i) {
    const auto& entries = lenient.texts.languages[i]->Entries();
    const auto& askedEntries = asked.texts.languages[i]->Entries();
    Expect(std::equal(entries.begin(), entries.end(), askedEntries.begin(), askedEntries.end(),
                      [](const TextRecord* left, const TextRecord* right) {
                        return left->Key() == right->Key() && left->Text() == right->Text();
                      }),
           "the same texts");
  }
  Expect(CountOf(asked.problems, ProblemCode::kLineBreak) == 0 &&
             asked.problems.All().size() + CountOf(lenient.problems, ProblemCode::kLineBreak) ==
                 lenient.problems.All().size(),
         "only line breaks are not told");
}

std::wstring UpToNul(std::string_view text) {
  return model::Decode(std::string(text.substr(0, text.find('\0'))));
}

void CheckWithTheFirstLibrary(std::string_view bytes, const Loaded& strict) {
  Disk disk;
  disk.Write(L"dictionary.txt", std::string(bytes));
  const LibraryUnderTest library;
  const auto& first = library.Exports();
  first.LoadDictionary(L".", L"dictionary.txt");
  const auto inside = library.LookInside();
  const bool hasLanguage = !strict.texts.languages.empty();
  const std::string id = hasLanguage ? strict.texts.languages.front()->Id() : "";
  Expect(inside && inside->currentLanguage == model::Decode(id), "the language");
  if (hasLanguage) {
    for (const TextRecord* const entry : strict.texts.languages.front()->Entries()) {
      if (entry->Key().find('\0') == std::string_view::npos) {
        Expect(
            first.LANG(model::Decode(std::string(entry->Key())).c_str()) == UpToNul(entry->Text()),
            "the text of a key");
      }
    }
  }
  // Each line that is not empty is an entry or a repeated key.
  std::size_t lines = 0;
  for (const std::wstring& line : model::LinesOf(std::string(bytes))) {
    lines += line.empty() ? 0 : 1;
  }
  const bool hasEmptyHeader = hasLanguage && model::LinesOf(std::string(bytes)).front().empty();
  const std::size_t entries = hasLanguage
                                  ? strict.texts.languages.front()->Entries().size() +
                                        CountOf(strict.problems, ProblemCode::kKeyRepeated) +
                                        (hasEmptyHeader ? 0 : 1)
                                  : 0;
  Expect(entries == lines, "the number of entries");
}

}  // namespace

void CheckWith(std::string_view bytes) {
  const Loaded strict(bytes, {});
  const Loaded lenient(bytes, {true, true, true});
  const Loaded asked(bytes, {true, true, true, true, true, true});
  CheckEntries(strict.texts);
  CheckEntries(lenient.texts);
  CheckLineBreaks(lenient, asked);
  CheckWithTheFirstLibrary(bytes, strict);

  const std::size_t end =
      KelmoLibs::Localize::ControlZEndsText() ? bytes.find('\x1A') : std::string_view::npos;
  const std::string_view text = bytes.substr(0, end);
  const std::size_t valid = WellFormedUtf8Length(text);
  Expect(DroppedBytes(strict.problems, ProblemCode::kNotUtf8) ==
             (valid < text.size() ? bytes.size() - valid : 0),
         "strict: everything behind the first fault is dropped");
  std::size_t faults = 0;
  for (std::string_view rest = text; !rest.empty();) {
    rest.remove_prefix(WellFormedUtf8Length(rest));
    faults += rest.empty() ? 0 : 1;
    rest.remove_prefix(rest.empty() ? 0 : 1);
  }
  Expect(DroppedBytes(lenient.problems, ProblemCode::kNotUtf8) == faults,
         "lenient: only faults are dropped");
  const std::size_t behind = text.size() < bytes.size() ? bytes.size() - text.size() - 1 : 0;
  Expect(DroppedBytes(lenient.problems, ProblemCode::kControlZ) == behind,
         "lenient: what a byte 0x1A drops is told");
}
