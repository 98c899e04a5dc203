// Numbers as text.
#pragma once

#include "cldr/number_format.h"
#include "host/argument.h"
#include "host/number_spec.h"
#include "host/text_sink.h"

namespace KelmoLibs::Host {

/// Whether `spec` can be used for `number`: `d` is for integers, without decimals. Precondition:
/// `number` is not a text.
bool Fits(const NumberSpec& spec, const Argument& number) noexcept;

/// Writes a number by `spec`, with the marks, groups and digits of `format`.
///
/// With `f`, `e`, `g` or decimals an integer is written as the double of the same value. A double has
/// as many decimals as `spec` says. Without them, `e` and `g` have six; `f` and no
/// type have those of the argument. One that is kShortest has six with `f`, and without a type the
/// shortest text that reads as the same number, with an exponent below 0.0001 and from 1e16 on.
/// Infinity is "\u221E", and what is not a number is "NaN", without a sign. The last digit is
/// rounded by the exact value, and to even between two values. `0` puts zeroes behind the sign;
/// they are not grouped, and it does nothing where there is an alignment, and for infinity and NaN.
/// Digits behind an exponent's mark are not grouped.
///
/// Takes no memory. Preconditions: `number` is not a text; `spec` fits.
void WriteNumber(const Argument& number, const NumberSpec& spec, const Cldr::NumberFormat& format,
                 TextSink& sink) noexcept;

/// Writes `integer` / 10^`decimals` with so many decimals, with the marks, groups and digits of `format`, as
/// WriteNumber does without a type. -0 keeps its sign.
///
/// Preconditions: `integer` has no fraction and is below kDecimalLimit; `decimals` is 0 to 9.
void WriteDecimal(double integer, int decimals, const Cldr::NumberFormat& format,
                  TextSink& sink) noexcept;

/// 2^52: all integers below it are doubles, and the double nearest to integer / 10^decimals has the digits of
/// the integer.
constexpr double kDecimalLimit = 4503599627370496.0;

}  // namespace KelmoLibs::Host
