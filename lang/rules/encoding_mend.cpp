#include "lang/rules/encoding_mend.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "lang/rules/fix_command.h"
#include "lang/unicode/code_page_guess.h"

namespace KelmoLibs::Lang {

std::string_view BytesBeyondAscii(std::string_view bytes) noexcept {
  constexpr std::size_t kLongest = 24;
  std::size_t length = 0;
  while (length < std::min(kLongest, bytes.size()) &&
         static_cast<unsigned char>(bytes[length]) >= 0x80) {
    ++length;
  }
  return bytes.substr(0, length);
}

void AddCodePageMend(const SourceFile& source, const std::vector<std::string_view>& samples,
                     std::string_view fault, const std::string& language, Finding& finding) {
  const std::optional<CodePageGuess> guess = GuessCodePage(samples, language);
  if (!guess) {
    finding.mend = {"encoding.mend.unknown", {}};
    return;
  }
  const std::string name(CodePageName(guess->page));
  const std::string letters = Utf8FromCodePage(guess->page, fault);
  if (!guess->other) {
    finding.hint = {"encoding.guess", {name, letters}};
    finding.mendCommand = FixCommand("--from " + name + ' ', source.Name());
    return;
  }
  const std::string other(CodePageName(*guess->other));
  finding.hint = {"encoding.guess.two",
                  {name, letters, other, Utf8FromCodePage(*guess->other, fault)}};
  finding.mend = {"encoding.mend.choose", {name, other, FixCommand("", source.Name())}};
}

void AddUtf16Mend(const SourceFile& source, Finding& finding) {
  const bool isLittle = source.EncodedAsUtf16() == Utf16::kLittleEndian;
  const bool hasMark = Utf16Mark(source.Raw()) != Utf16::kNo;
  const char* const option = isLittle ? "--from utf-16le " : "--from utf-16be ";
  finding.mendCommand = FixCommand(hasMark ? "" : option, source.Name());
}

}  // namespace KelmoLibs::Lang
