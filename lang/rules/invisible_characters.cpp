// Rule invisible-character: characters without a form in a text. Tested by
// invisible_characters_test.cpp.
#include <cstddef>
#include <string>
#include <string_view>

#include "lang/rules/check.h"
#include "lang/unicode/code_points.h"

namespace KelmoLibs::Lang {
namespace {

constexpr char32_t kSoftHyphen = 0x00AD;
constexpr char32_t kZeroWidthSpace = 0x200B;
constexpr char32_t kWordJoiner = 0x2060;
constexpr char32_t kByteOrderMark = 0xFEFF;
constexpr char32_t kPopFormatting = 0x202C;
constexpr char32_t kPopIsolate = 0x2069;

// Whether the language has no blanks between words, so that its texts mark where a line may end.
bool IsWrittenWithoutBlanks(std::string_view language) {
  return IsOneOfLanguages(language, " th lo km my ");
}

// The key of the message about a character; empty if it is not one of this rule.
std::string_view MessageOf(char32_t character) noexcept {
  switch (character) {
    case kSoftHyphen:
      return "invisible-character.soft-hyphen";
    case kZeroWidthSpace:
      return "invisible-character.zero-width-space";
    case kWordJoiner:
      return "invisible-character.word-joiner";
    case kByteOrderMark:
      return "invisible-character.byte-order-mark";
    default:
      return {};
  }
}

// Whether there may be one: U+00AD begins with C2, U+200B to U+2069 with E2 80 or E2 81, U+FEFF with
// EF BB.
bool MayHaveInvisible(std::string_view text) noexcept {
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte >= 0xC2U) {
      const auto next = static_cast<unsigned char>(text[i + 1]);
      if ((byte == 0xC2U && next == 0xADU) || (byte == 0xE2U && next <= 0x81U) ||
          (byte == 0xEFU && next == 0xBBU)) {
        return true;
      }
    }
  }
  return false;
}

bool Has(std::string_view text, std::string_view part) noexcept {
  return text.find(part) != std::string_view::npos;
}

// The controls of direction that lack their end, or the end that lacks its begin.
std::string_view LoneControl(std::string_view text) noexcept {
  std::size_t embeddings = 0;
  std::size_t isolates = 0;
  std::string_view lastEmbedding;
  std::string_view lastIsolate;
  std::string_view lone;
  VisitCodePoints(text, [&](char32_t character, std::string_view part) {
    if (character == kPopFormatting || character == kPopIsolate) {
      std::size_t& depth = character == kPopFormatting ? embeddings : isolates;
      if (depth == 0) {
        lone = part;
        return false;
      }
      --depth;
    } else if (character >= 0x202A && character <= 0x202E) {
      ++embeddings;
      lastEmbedding = part;
    } else if (character >= 0x2066 && character <= 0x2068) {
      ++isolates;
      lastIsolate = part;
    }
    return true;
  });
  return !lone.empty() ? lone : embeddings > 0 ? lastEmbedding : isolates > 0 ? lastIsolate : "";
}

}  // namespace

void CheckInvisibleCharacters(const TextCheck& check) {
  if (!MayHaveInvisible(check.Text())) {
    return;
  }
  if (!IsWrittenWithoutBlanks(check.file.FileLanguage().primary)) {
    bool isFound = false;
    VisitCodePoints(check.Text(), [&](char32_t character, std::string_view part) {
      const std::string_view message = MessageOf(character);
      if (!message.empty() && !Has(check.BaseText(), part)) {
        check.Add(RuleId::kInvisibleCharacter, Severity::kWarning, part,
                  {std::string(message), {}});
        isFound = true;
      }
      return !isFound;
    });
    if (isFound) {
      return;
    }
  }
  const std::string_view lone = LoneControl(check.Text());
  if (!lone.empty() && LoneControl(check.BaseText()).empty()) {
    check.Add(RuleId::kInvisibleCharacter, Severity::kWarning, lone,
              {"invisible-character.direction", {}});
  }
}

}  // namespace KelmoLibs::Lang
