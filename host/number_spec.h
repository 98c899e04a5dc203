// The format of a number in a placeholder: `8.2f` in `{0:8.2f}`.
#pragma once

#include <cstdint>
#include <string_view>

namespace KelmoLibs::Host {

enum class Alignment { kDefault, kLeft, kRight, kCenter };
enum class SignOption { kOnlyMinus, kAlways, kBlank };

constexpr int kMaxWidth = 255;
constexpr int kMaxDecimals = 99;
constexpr int kNoDecimals = -1;

struct NumberSpec {
  std::string_view fill = " ";  // one character
  Alignment alignment = Alignment::kDefault;
  SignOption sign = SignOption::kOnlyMinus;
  bool isZeroPadded = false;
  int width = 0;  // in characters
  int decimals = kNoDecimals;
  char type = '\0';  // d, f, e, g or none
};

enum class SpecError { kNone, kUnknown, kWidth, kDecimals };

/// Reads the parts [fill and alignment][sign][0][width][.decimals][type], as the library fmt has
/// them. `spec` has its default values before, and is unspecified after an error. `spec.fill` is
/// part of `text`. Precondition: `text` is UTF-8.
SpecError ReadNumberSpec(std::string_view text, NumberSpec& spec) noexcept;

}  // namespace KelmoLibs::Host
