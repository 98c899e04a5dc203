// Tested by mended_bytes_test.cpp.
#include "lang/commands/mended_bytes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <utility>

#include "lang/reading/dictionary_file.h"
#include "lang/reading/language.h"
#include "lang/report/visible_text.h"
#include "lang/unicode/ascii.h"
#include "lang/unicode/byte_order_mark.h"
#include "lang/unicode/code_page_guess.h"
#include "lang/unicode/utf16.h"
#include "text/utf8_characters.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

constexpr std::array<std::pair<std::string_view, Utf16>, 2> kUtf16Names = {
    {{"utf-16le", Utf16::kLittleEndian}, {"utf-16be", Utf16::kBigEndian}}};

std::size_t CountOf(std::string_view text, std::string_view part) noexcept {
  std::size_t count = 0;
  for (std::size_t i = text.find(part); i != std::string_view::npos; i = text.find(part, i + 1)) {
    ++count;
  }
  return count;
}

// Mends one file. Each step takes what the step before has made.
class Mending {
 public:
  Mending(std::string_view raw, const std::optional<NamedEncoding>& encoding)
      : raw_(raw), encoding_(encoding) {}

  MendedBytes Run() {
    TranslateUtf16();
    if (result_.refusal.IsEmpty() && !isUtf16Left_) {
      MendLines();
      ReportLines();
    }
    if (result_.refusal.IsEmpty() && !result_.changes.empty()) {
      CompareEntries();
    }
    if (!result_.refusal.IsEmpty()) {
      result_.changes.clear();
    }
    if (result_.changes.empty()) {
      result_.bytes = raw_;
    }
    return std::move(result_);
  }

 private:
  void TranslateUtf16() {
    result_.bytes = raw_;
    const Utf16 found = FindUtf16(raw_);
    const bool hasMark = Utf16Mark(raw_) != Utf16::kNo;
    const Utf16* const named = encoding_ ? std::get_if<Utf16>(&*encoding_) : nullptr;
    if (found != Utf16::kNo && !hasMark && named == nullptr) {
      isUtf16Left_ = true;
      result_.left.push_back(
          {"fix.left.utf16", {found == Utf16::kBigEndian ? "utf-16be" : "utf-16le"}});
      return;
    }
    if (found == Utf16::kNo && (named == nullptr || Localize::IsUtf8(raw_))) {
      return;
    }
    const Utf16 encoding = hasMark || named == nullptr ? found : *named;
    const bool isBigEndian = encoding == Utf16::kBigEndian;
    std::string utf8 = Utf8FromUtf16(raw_, isBigEndian);
    // U+FFFD that is written in the file is no half of a character.
    std::size_t written = 0;
    for (std::size_t i = 0; i + 1 < raw_.size(); i += 2) {
      written += raw_.substr(i, 2) == (isBigEndian ? "\xFF\xFD" : "\xFD\xFF") ? 1U : 0U;
    }
    if (CountOf(utf8, kReplacement) != written) {
      result_.refusal = {"fix.refused.utf16", {}};
      return;
    }
    result_.bytes = std::move(utf8);
    result_.changes.push_back({"fix.utf16", {}});
  }

  // The bytes of a line as UTF-8, without a byte-order mark.
  void AppendLine(std::string_view line, std::string& mended) {
    const std::string_view withoutMarks = WithoutByteOrderMarks(line);
    marks_ += (line.size() - withoutMarks.size()) / kByteOrderMark.size();
    if (Localize::IsUtf8(withoutMarks)) {
      mended += withoutMarks;
      return;
    }
    const CodePage* const page = encoding_ ? std::get_if<CodePage>(&*encoding_) : nullptr;
    if (IsDamagedUtf8(withoutMarks)) {
      damagedLine_ = damaged_++ == 0 ? line_ : damagedLine_;
      mended += withoutMarks;
      return;
    }
    if (samples_.size() < kSampledLines) {
      samples_.push_back(withoutMarks.substr(0, kSampledBytes));
    }
    if (page == nullptr) {
      notUtf8Line_ = notUtf8_++ == 0 ? line_ : notUtf8Line_;
      mended += withoutMarks;
    } else {
      Translate(*page, withoutMarks, mended);
    }
  }

  void Translate(CodePage page, std::string_view line, std::string& mended) {
    for (const char& byte : line) {
      if (result_.refusal.IsEmpty() && !CharacterOf(page, byte)) {
        result_.refusal = {
            "fix.refused.byte",
            {std::to_string(line_), std::string(CodePageName(page)), VisibleText({&byte, 1})}};
      }
    }
    ++translated_;
    mended += Utf8FromCodePage(page, line);
  }

  void MendLines() {
    const std::string translated = std::exchange(result_.bytes, {});
    const std::string_view bytes = translated;
    const bool isCr =
        bytes.find('\n') == std::string_view::npos && bytes.find('\r') != std::string_view::npos;
    const char end = isCr ? '\r' : '\n';
    std::string mended;
    mended.reserve(bytes.size());
    for (std::size_t start = 0; start < bytes.size();) {
      const std::size_t found = bytes.find(end, start);
      const std::size_t behind = std::min(found, bytes.size());
      ++line_;
      AppendLine(bytes.substr(start, behind - start), mended);
      if (found != std::string_view::npos) {
        mended += '\n';
      }
      start = behind + 1;
    }
    if (notUtf8_ > 0) {
      AddGuess(bytes);
    } else if (translated_ > 0) {
      Doubt(std::get<CodePage>(*encoding_), bytes);
    }
    result_.bytes = std::move(mended);
    if (isCr) {
      result_.changes.push_back({"fix.line_ends", {}});
    }
  }

  std::optional<CodePageGuess> Guess(std::string_view bytes) const {
    const std::string_view id =
        WithoutByteOrderMarks(bytes.substr(0, bytes.find_first_of(" \t\r\n")));
    return GuessCodePage(samples_, LanguageOf(id).primary);
  }

  void Doubt(CodePage named, std::string_view bytes) {
    const std::optional<CodePageGuess> guess = Guess(bytes);
    if (!guess || guess->other || guess->page == named) {
      return;
    }
    // The first words that are not in ASCII.
    constexpr std::size_t kShown = 24;
    const std::string_view line = samples_.front();
    const auto* const odd =
        std::find_if(line.begin(), line.end(), [](char c) { return (c & 0x80) != 0; });
    const std::string_view words =
        line.substr(static_cast<std::size_t>(odd - line.begin()), kShown);
    const std::string_view part = words.substr(0, words.find_first_of("\t\r"));
    result_.doubt = {"fix.refused.guess",
                     {std::string(CodePageName(named)), Utf8FromCodePage(named, part),
                      std::string(CodePageName(guess->page)), Utf8FromCodePage(guess->page, part)}};
  }

  void AddGuess(std::string_view bytes) {
    Sentence left = {"fix.left.encoding.#",
                     {std::to_string(notUtf8_), std::to_string(notUtf8Line_)}};
    if (const auto guess = Guess(bytes)) {
      left.key = guess->other ? "fix.left.encoding.two.#" : "fix.left.encoding.one_guess.#";
      left.arguments.emplace_back(CodePageName(guess->page));
      left.arguments.emplace_back(CodePageName(guess->other.value_or(guess->page)));
    }
    result_.left.push_back(std::move(left));
  }

  void ReportLines() {
    if (marks_ > 0) {
      result_.changes.push_back({"fix.marks.#", {std::to_string(marks_)}});
    }
    if (translated_ > 0) {
      const CodePage page = std::get<CodePage>(*encoding_);
      result_.changes.push_back(
          {"fix.code_page.#", {std::to_string(translated_), std::string(CodePageName(page))}});
    }
    if (damaged_ > 0) {
      result_.left.push_back(
          {"fix.left.damaged.#", {std::to_string(damaged_), std::to_string(damagedLine_)}});
    }
  }

  // The first text of each key, as hosts see it.
  using SeenTexts = std::unordered_map<std::string_view, std::string_view>;

  static SeenTexts TextsOf(const DictionaryFile& file, std::size_t count) {
    SeenTexts texts;
    for (std::size_t i = 0; i < count; ++i) {
      texts.try_emplace(file.Entries()[i].key, file.Entries()[i].text);
    }
    return texts;
  }

  void CompareEntries() {
    const DictionaryFile before("", "", std::string(raw_));
    const DictionaryFile after("", "", result_.bytes);
    const SourceFile& source = before.Source();
    // What the library reads of UTF-16, or of a file with CRs as line ends, are no entries.
    if (source.EncodedAsUtf16() != Utf16::kNo || source.LineEnds() == LineEnd::kCr ||
        before.Entries().empty()) {
      return;
    }
    const bool isCut = before.StopsBecause() == Stop::kNotUtf8 &&
                       source.LineOf(source.Raw().data() + before.StopsAt()) ==
                           source.LineOf(before.Entries().back().key.data());
    const std::size_t whole = before.Entries().size() - (isCut ? 1 : 0);
    const SeenTexts seen = TextsOf(before, whole);
    const SeenTexts seenAfter = TextsOf(after, after.Entries().size());
    for (std::size_t i = 0; i < whole; ++i) {
      const std::string_view key = before.Entries()[i].key;
      const std::string_view keyAfter = WithoutByteOrderMarks(key);
      const auto found = seenAfter.find(keyAfter);
      // A key of nothing but a mark, without a text, leaves an empty line.
      const bool isLine = !keyAfter.empty() || !before.Entries()[i].text.empty() || key.empty();
      if (isLine && (found == seenAfter.end() || found->second != seen.at(key))) {
        Refuse(source.LineOf(key.data()), keyAfter);
        return;
      }
    }
    CompareCutEntry(before, isCut, seen, seenAfter);
  }

  void CompareCutEntry(const DictionaryFile& before, bool isCut, const SeenTexts& seen,
                       const SeenTexts& seenAfter) {
    if (!isCut) {
      return;
    }
    const Entry& cut = before.Entries().back();
    const std::string_view key = WithoutByteOrderMarks(cut.key);
    if (cut.text.empty() || seen.count(cut.key) != 0) {
      return;  // perhaps only a part of a key, or a text that no host sees
    }
    const auto found = seenAfter.find(key);
    if (found == seenAfter.end() || found->second.substr(0, cut.text.size()) != cut.text) {
      Refuse(before.Source().LineOf(cut.key.data()), key);
    }
  }

  void Refuse(std::uint32_t line, std::string_view key) {
    result_.refusal = {"fix.refused.entry", {std::to_string(line), std::string(key)}};
  }

  static constexpr std::size_t kSampledLines = 1000;
  static constexpr std::size_t kSampledBytes = 1000;

  std::string_view raw_;
  const std::optional<NamedEncoding>& encoding_;
  MendedBytes result_;
  bool isUtf16Left_ = false;
  std::size_t line_ = 0;
  std::size_t marks_ = 0;
  std::size_t translated_ = 0;
  std::size_t damaged_ = 0;
  std::size_t damagedLine_ = 0;
  std::size_t notUtf8_ = 0;
  std::size_t notUtf8Line_ = 0;
  std::vector<std::string_view> samples_;
};

}  // namespace

std::optional<NamedEncoding> FindEncoding(std::string_view name) {
  if (const std::optional<CodePage> page = FindCodePage(name)) {
    return *page;
  }
  for (const auto& [known, utf16] : kUtf16Names) {
    if (AreEqualButForCase(name, known)) {
      return utf16;
    }
  }
  return std::nullopt;
}

std::vector<std::string> EncodingNames() {
  std::vector<std::string> names;
  names.reserve(kAllCodePages.size() + kUtf16Names.size());
  for (const CodePage page : kAllCodePages) {
    names.emplace_back(CodePageName(page));
  }
  for (const auto& [name, utf16] : kUtf16Names) {
    names.emplace_back(name);
  }
  return names;
}

MendedBytes MendBytes(std::string_view raw, const std::optional<NamedEncoding>& encoding) {
  return Mending(raw, encoding).Run();
}

}  // namespace KelmoLibs::Lang
