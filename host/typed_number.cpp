// typed_number_test.cpp covers the rules, and reads back what WriteNumber prints.
#include "host/typed_number.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <system_error>

#include "host/powers_of_ten.h"
#include "host/typed_blanks.h"
#include "text/utf8.h"

namespace KelmoLibs::Host {
namespace {

static_assert(FLT_EVAL_METHOD == 0, "each operation must round to double, or the last bits differ");

constexpr std::string_view kBlank = " ";  // stands for all blanks
constexpr std::string_view kApostrophes[] = {"'", "\u2019"};
constexpr std::string_view kMinusSign = "\u2212";

constexpr int kLargestExponent =
    99999;  // a larger one makes no difference: 500 digits move it less

constexpr std::size_t kDigitsOfUint64 = 19;                           // any so many fit in
constexpr std::uint64_t kIntegersOfDouble = std::uint64_t{1} << 53U;  // all up to it are doubles

constexpr unsigned char Byte(char c) noexcept { return static_cast<unsigned char>(c); }

struct Digit {
  unsigned value = 0;
  std::size_t size = 0;  // in bytes; 0: no digit
};

// What may stand between two groups of digits.
struct Separator {
  std::string_view text;  // kBlank for all blanks
  std::size_t size = 0;   // in bytes, as typed; 0: no separator
};

bool IsApostrophe(std::string_view mark) noexcept {
  return mark == kApostrophes[0] || mark == kApostrophes[1];
}

// Functions that return false have found a fault: `fault_` at `at_`.
class Reader {
 public:
  Reader(std::string_view text, const Cldr::NumberFormat& format) noexcept
      : text_(text), format_(format) {}

  TypedNumber Read() noexcept {
    TypedNumber result;
    const bool isNegative = TakeSign(true);
    begin_ = at_;
    if (TakeNumber() && Evaluate(result)) {
      result.number = isNegative ? -result.number : result.number;
    } else {
      result = {fault_};
    }
    result.end = at_;
    return result;
  }

 private:
  bool Fail(NumberFault fault, std::size_t place) noexcept {
    fault_ = fault;
    at_ = place;
    return false;
  }

  // Most marks have one byte: a call that compares the others would take as long as all the rest.
  bool HasAt(std::size_t at, std::string_view mark) const noexcept {
    return !mark.empty() && at < text_.size() && text_[at] == mark.front() &&
           (mark.size() == 1 || text_.substr(at, mark.size()) == mark);
  }

  Digit DigitAt(std::size_t at) const noexcept {
    if (at == text_.size()) {
      return {};
    }
    const unsigned value = Byte(text_[at]) - unsigned{'0'};
    if (value <= 9) {
      return {value, 1};
    }
    return format_.zeroDigit == U'0' ? Digit() : DigitOfFormatAt(at);
  }

  Digit DigitOfFormatAt(std::size_t at) const noexcept {
    const unsigned char lead = Byte(text_[at]);
    const std::size_t size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (text_.size() - at < size) {
      return {};
    }
    // The last byte of a character has its last six bits.
    const char32_t value = (Byte(text_[at + size - 1]) - format_.zeroDigit) & 0x3FU;
    if (value > 9) {
      return {};
    }
    std::array<char, 4> bytes = {};
    const std::string_view digit(bytes.data(),
                                 Localize::EncodeUtf8(format_.zeroDigit + value, bytes.data()));
    return HasAt(at, digit) ? Digit{static_cast<unsigned>(value), digit.size()} : Digit();
  }

  Separator SeparatorAt(std::size_t at) const noexcept {
    const std::string_view mark = format_.groupMark;
    if (HasAt(at, mark)) {
      return {BlankLength(mark) == mark.size() ? kBlank : mark, mark.size()};
    }
    if (const std::size_t size = BlankLength(text_.substr(at)); size != 0) {
      return {kBlank, size};
    }
    if (IsApostrophe(mark)) {
      for (const std::string_view apostrophe : kApostrophes) {
        if (HasAt(at, apostrophe)) {
          return {apostrophe, apostrophe.size()};
        }
      }
    }
    return {};
  }

  // Whether there is the usual mark of another format. Precondition: there is none of this one.
  bool HasOtherMarkAt(std::size_t at) const noexcept {
    return at < text_.size() && (text_[at] == '.' || text_[at] == ',');
  }

  bool TakeBidiMark() noexcept {
    const std::size_t size = BidiMarkLength(text_.substr(at_));
    at_ += size;
    return size != 0;
  }

  // Takes a sign, if there is one, and the bidi marks around it. Returns whether it is a minus. The
  // minus sign of a format may begin with a bidi mark.
  bool TakeSign(bool isBehindBlanks) noexcept {
    std::string_view sign;
    do {
      if (isBehindBlanks) {
        at_ = SkipBlanks(text_, at_);
      }
      sign = SignHere();
    } while (sign.empty() && TakeBidiMark());
    at_ += sign.size();
    while (TakeBidiMark()) {
    }
    return !sign.empty() && sign != "+";
  }

  std::string_view SignHere() const noexcept {
    for (const std::string_view sign :
         {format_.minusSign, std::string_view("-"), std::string_view("+"), kMinusSign}) {
      if (HasAt(at_, sign)) {
        return sign;
      }
    }
    return {};
  }

  bool TakeNumber() noexcept {
    if (!FindDigits() || !TakeGroups() || !TakeFraction()) {
      return false;
    }
    TakeExponent();
    return FindEnd();
  }

  // Whether the number begins here.
  bool FindDigits() noexcept {
    const std::size_t decimalMark =
        HasAt(at_, format_.decimalMark) ? format_.decimalMark.size() : 0;
    if (DigitAt(at_ + decimalMark).size != 0) {
      return true;
    }
    const Separator separator = SeparatorAt(at_);
    if (separator.size != 0) {
      const bool isInNumber = separator.text != kBlank && DigitAt(at_ + separator.size).size != 0;
      return Fail(isInNumber ? NumberFault::kGroups : NumberFault::kNoNumber, at_);
    }
    const bool isInNumber = HasOtherMarkAt(at_) && DigitAt(at_ + 1).size != 0;
    return Fail(isInNumber ? NumberFault::kDecimalMark : NumberFault::kNoNumber, at_);
  }

  bool TakeDigits() noexcept {
    for (Digit digit = DigitAt(at_); digit.size != 0; digit = DigitAt(at_)) {
      if (count_ == kMostTypedDigits) {
        return Fail(NumberFault::kTooLong, at_);
      }
      digits_[count_] = static_cast<char>('0' + digit.value);
      ++count_;
      mantissa_ = 10 * mantissa_ + digit.value;
      at_ += digit.size;
    }
    return true;
  }

  bool TakeGroups() noexcept {
    constexpr std::size_t kUsualSize = 3;
    const bool hasGroups = format_.groupSize != 0;
    const std::size_t last = hasGroups ? format_.groupSize : kUsualSize;
    const std::size_t further = hasGroups ? format_.furtherGroupSize : kUsualSize;
    std::string_view separator;
    for (std::size_t before = at_;;) {  // the last separator
      const std::size_t countBefore = count_;
      if (!TakeDigits()) {
        return false;
      }
      const std::size_t size = count_ - countBefore;
      const bool isFirst = separator.empty();
      const Separator next = HasAt(at_, format_.decimalMark) ? Separator() : SeparatorAt(at_);
      if (next.size == 0 || DigitAt(at_ + next.size).size == 0) {
        if (!isFirst && size != last) {
          return Fail(NumberFault::kGroups, before);
        }
        return true;
      }
      if (!isFirst && size != further) {
        return Fail(NumberFault::kGroups, before);
      }
      if (isFirst ? size > further || !(hasGroups || next.text == kBlank)
                  : next.text != separator) {
        return Fail(NumberFault::kGroups, at_);
      }
      separator = next.text;
      before = at_;
      at_ += next.size;
    }
  }

  bool TakeFraction() noexcept {
    if (!HasAt(at_, format_.decimalMark)) {
      return true;
    }
    at_ += format_.decimalMark.size();
    const std::size_t integerDigits = count_;
    if (!TakeDigits()) {
      return false;
    }
    exponent_ = -static_cast<int>(count_ - integerDigits);
    return true;
  }

  void TakeExponent() noexcept {
    if (at_ == text_.size() || (text_[at_] != 'e' && text_[at_] != 'E')) {
      return;
    }
    const std::size_t begin = at_;
    ++at_;
    const bool isNegative = TakeSign(false);
    const std::size_t digits = at_;
    int typed = 0;
    for (Digit digit = DigitAt(at_); digit.size != 0; digit = DigitAt(at_)) {
      typed = std::min(10 * typed + static_cast<int>(digit.value), kLargestExponent);
      at_ += digit.size;
    }
    exponent_ += isNegative ? -typed : typed;
    if (at_ == digits) {  // the letter belongs to what stands behind the number
      at_ = begin;
    }
  }

  // Whether the number can end here.
  bool FindEnd() noexcept {
    while (TakeBidiMark()) {
    }
    if (HasAt(at_, format_.decimalMark)) {
      return Fail(NumberFault::kDecimalMark, at_);
    }
    if (DigitAt(at_).size != 0) {  // behind a bidi mark
      return Fail(NumberFault::kGroups, at_);
    }
    if (const Separator separator = SeparatorAt(at_); separator.size != 0) {
      const bool endsNumber = separator.text == kBlank || IsApostrophe(separator.text);
      if (!endsNumber || DigitAt(at_ + separator.size).size != 0) {
        return Fail(NumberFault::kGroups, at_);
      }
      return true;
    }
    if (HasOtherMarkAt(at_)) {
      return Fail(NumberFault::kDecimalMark, at_);
    }
    return true;
  }

  bool Evaluate(TypedNumber& result) noexcept {
    const auto power = static_cast<std::size_t>(std::abs(exponent_));
    if (count_ > kDigitsOfUint64 || mantissa_ > kIntegersOfDouble || power >= kPowersOfTen.size()) {
      return EvaluateDigits(result);
    }
    // Both operands are exact: the result is rounded once.
    const auto mantissa = static_cast<double>(mantissa_);
    const bool isFraction = exponent_ < 0;
    result.number = isFraction ? mantissa / kPowersOfTen[power] : mantissa * kPowersOfTen[power];
    result.lastDigit = isFraction ? 1 / kPowersOfTen[power] : kPowersOfTen[power];
    return true;
  }

  bool EvaluateDigits(TypedNumber& result) noexcept {
    const bool isZero =
        std::all_of(digits_.data(), digits_.data() + count_, [](char c) { return c == '0'; });
    result.number = Value(count_);
    if ((result.number == 0) != isZero || exponent_ > std::numeric_limits<double>::max_exponent10) {
      return Fail(NumberFault::kRange, begin_);
    }
    digits_[0] = '1';
    result.lastDigit = std::max(Value(1), std::numeric_limits<double>::denorm_min());
    return true;
  }

  // The value of the first `count` digits, with the exponent. 0 if it is out of range.
  double Value(std::size_t count) noexcept {
    char* const exponent = digits_.data() + count;
    *exponent = 'e';
    const char* const end =
        std::to_chars(exponent + 1, digits_.data() + digits_.size(), exponent_).ptr;
    double value = 0;
    const std::from_chars_result read = std::from_chars(digits_.data(), end, value);
    return read.ec == std::errc() ? value : 0;
  }

  std::string_view text_;
  const Cldr::NumberFormat& format_;
  std::size_t at_ = 0;
  std::size_t begin_ = 0;  // of the digits
  NumberFault fault_ = NumberFault::kNone;
  std::size_t count_ = 0;       // of `digits_`
  std::uint64_t mantissa_ = 0;  // their value, modulo 2^64
  int exponent_ = 0;            // of the last digit
  std::array<char, kMostTypedDigits + std::string_view("e-100499").size()>
      digits_;  // 0 to 9; not initialised: that would take longer than most numbers
};

}  // namespace

TypedNumber ReadTypedNumber(std::string_view text, const Cldr::NumberFormat& format) noexcept {
  return Reader(text, format).Read();
}

}  // namespace KelmoLibs::Host
