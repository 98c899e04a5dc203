#include "host/number_spec.h"

#include <algorithm>
#include <cstddef>

#include "text/ascii_digit.h"
#include "text/utf8_characters.h"

namespace KelmoLibs::Host {
namespace {

constexpr int kTooLarge = 1000;  // above all limits

std::size_t FirstCharacterLength(std::string_view text) noexcept {
  std::size_t length = 1;
  while (length < text.size() && Localize::IsContinuation(text[length])) {
    ++length;
  }
  return length;
}

Alignment AlignmentAt(std::string_view text, std::size_t index) noexcept {
  switch (index < text.size() ? text[index] : '\0') {
    case '<':
      return Alignment::kLeft;
    case '>':
      return Alignment::kRight;
    case '^':
      return Alignment::kCenter;
    default:
      return Alignment::kDefault;
  }
}

void TakeAlignment(std::string_view& text, NumberSpec& spec) noexcept {
  const std::size_t fillLength = FirstCharacterLength(text);
  spec.alignment = AlignmentAt(text, fillLength);
  if (spec.alignment != Alignment::kDefault) {
    spec.fill = text.substr(0, fillLength);
    text.remove_prefix(fillLength + 1);
    return;
  }
  spec.alignment = AlignmentAt(text, 0);
  if (spec.alignment != Alignment::kDefault) {
    text.remove_prefix(1);
  }
}

bool Take(char expected, std::string_view& text) noexcept {
  if (text.empty() || text.front() != expected) {
    return false;
  }
  text.remove_prefix(1);
  return true;
}

int TakeNumber(std::string_view& text) noexcept {
  int number = 0;
  while (!text.empty() && Localize::IsAsciiDigit(text.front())) {
    number = std::min(10 * number + (text.front() - '0'), kTooLarge);
    text.remove_prefix(1);
  }
  return number;
}

}  // namespace

SpecError ReadNumberSpec(std::string_view text, NumberSpec& spec) noexcept {
  TakeAlignment(text, spec);
  if (Take('+', text)) {
    spec.sign = SignOption::kAlways;
  } else if (Take(' ', text)) {
    spec.sign = SignOption::kBlank;
  } else {
    Take('-', text);
  }
  spec.isZeroPadded = Take('0', text);
  spec.width = TakeNumber(text);
  if (Take('.', text)) {
    if (text.empty() || !Localize::IsAsciiDigit(text.front())) {
      return SpecError::kUnknown;
    }
    spec.decimals = TakeNumber(text);
  }
  if (!text.empty() && std::string_view("dfeg").find(text.front()) != std::string_view::npos) {
    spec.type = text.front();
    text.remove_prefix(1);
  }
  if (!text.empty()) {
    return SpecError::kUnknown;
  }
  if (spec.width > kMaxWidth) {
    return SpecError::kWidth;
  }
  return spec.decimals > kMaxDecimals ? SpecError::kDecimals : SpecError::kNone;
}

}  // namespace KelmoLibs::Host
