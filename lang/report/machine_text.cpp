#include "lang/report/machine_text.h"

#include <cstdint>

#include "lang/report/visible_text.h"
#include "lang/unicode/hex.h"

namespace KelmoLibs::Lang {

const Texts& EnglishTexts() {
  static const Texts texts("en");
  return texts;
}

std::string EnglishText(const Sentence& sentence) {
  return VisibleText(EnglishTexts().Say(sentence));
}

std::string EnglishMend(const Finding& finding) {
  if (!finding.mend.IsEmpty()) {
    return EnglishText(finding.mend);
  }
  return finding.mendCommand.empty() ? "" : "kelmo-lang " + VisibleText(finding.mendCommand);
}

std::string EnglishLines(const Finding& finding) {
  std::string lines = EnglishText(finding.message);
  for (const std::string& more :
       {finding.hint.IsEmpty() ? "" : EnglishText(finding.hint), EnglishMend(finding)}) {
    if (!more.empty()) {
      lines.append("\n").append(more);
    }
  }
  return lines;
}

std::string IdentityOf(const Finding& finding) {
  std::string identity(RuleOf(finding.rule).name);
  identity += '\0';
  identity += finding.key;
  identity += '\0';
  identity += finding.message.key;
  for (const std::string& argument : finding.message.arguments) {
    if (argument.find_first_not_of("0123456789") != std::string::npos) {
      identity += '\0';
      identity += argument;
    }
  }
  return identity;
}

// FNV-1a.
std::string FingerprintOf(std::string_view identity) {
  constexpr unsigned kDigits = 16;
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const char c : identity) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
  }
  std::string fingerprint;
  AppendHex(hash, kDigits, fingerprint);
  return fingerprint;
}

}  // namespace KelmoLibs::Lang
