#include "lang/rules/unit_encoding.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lang/reading/language.h"
#include "lang/rules/fix_command.h"
#include "lang/unicode/code_page_guess.h"
#include "text/utf8.h"

namespace KelmoLibs::Lang {
namespace {

// The lines from the fault on that are not UTF-8; of a long file only the first ones.
std::vector<std::string_view> FaultyLines(const UnitFile& file) {
  constexpr std::uint32_t kMostLines = 200;
  constexpr std::size_t kLongestLine = 10'000;
  const SourceFile& source = file.Source();
  const std::uint32_t first = source.LineOf(source.Raw().data() + file.StopsAt());
  std::vector<std::string_view> lines;
  for (std::uint32_t i = first; i <= source.LineCount() && i - first < kMostLines; ++i) {
    const std::string_view line = source.Line(i);
    if (Localize::WellFormedUtf8Length(line) < line.size()) {
      lines.push_back(line.substr(0, kLongestLine));
    }
  }
  return lines;
}

// The bytes beyond ASCII at which the library stops.
std::string_view FaultyBytes(const UnitFile& file) {
  constexpr std::size_t kLongest = 24;
  const std::string_view bytes = file.Source().Bytes().substr(file.StopsAt());
  const auto* const end = std::find_if(bytes.begin(), bytes.end(),
                                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  return bytes.substr(0, std::min(kLongest, static_cast<std::size_t>(end - bytes.begin())));
}

void ExplainCodePage(const UnitFile& file, Finding& finding) {
  finding.mend = {"encoding.mend.unknown", {}};
  const std::string language = LanguageOf(file.LanguageKey()).primary;
  const std::optional<CodePageGuess> guess = GuessCodePage(FaultyLines(file), language);
  if (!guess) {
    return;
  }
  const std::string name(CodePageName(guess->page));
  const std::string letters = Utf8FromCodePage(guess->page, FaultyBytes(file));
  if (!guess->other) {
    finding.hint = {"encoding.guess", {name, letters}};
    finding.mend = {};
    finding.mendCommand = FixCommand("--from " + name + ' ', file.Source().Name());
    return;
  }
  const std::string other(CodePageName(*guess->other));
  finding.hint = {"encoding.guess.two",
                  {name, letters, other, Utf8FromCodePage(*guess->other, FaultyBytes(file))}};
  finding.mend = {"encoding.mend.choose", {name, other, FixCommand("", file.Source().Name())}};
}

}  // namespace

void ExplainEncoding(const UnitFile& file, Finding& finding) {
  const SourceFile& source = file.Source();
  const Utf16 utf16 = source.EncodedAsUtf16();
  if (utf16 == Utf16::kNo) {
    ExplainCodePage(file, finding);
    return;
  }
  const bool isLittle = utf16 == Utf16::kLittleEndian;
  const bool hasMark = source.Raw().compare(0, 2, isLittle ? "\xFF\xFE" : "\xFE\xFF") == 0;
  const char* const option = isLittle ? "--from utf-16le " : "--from utf-16be ";
  finding.mendCommand = FixCommand(hasMark ? "" : option, source.Name());
}

}  // namespace KelmoLibs::Lang
