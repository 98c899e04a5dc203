// The C functions for physical values. kelmo.h has the contracts.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "cldr/number_format.h"
#include "host/c_arguments.h"
#include "host/c_objects.h"
#include "host/quantity.h"
#include "host/quantity_text.h"
#include "host/text_sink.h"
#include "host/typed_quantity.h"
#include "kelmo/kelmo.h"

using KelmoLibs::Cldr::NumberFormat;
using KelmoLibs::Host::GiveSize;
using KelmoLibs::Host::IsKnownKind;
using KelmoLibs::Host::IsString;
using KelmoLibs::Host::LanguagesOf;
using KelmoLibs::Host::ListOf;
using KelmoLibs::Host::QuantityStyle;
using KelmoLibs::Host::StringOf;
using KelmoLibs::Host::Take;
using KelmoLibs::Host::TextSink;
using KelmoLibs::Host::TypedQuantityOptions;

namespace {

// The format of numbers of a call: that of its options, of its view, or the default one.
kelmo_status TakeFormat(const kelmo_number_format* given, const kelmo_view* view,
                        NumberFormat& taken) noexcept {
  if (given != nullptr) {
    return KelmoLibs::Host::TakeNumberFormat(*given, taken);
  }
  if (view != nullptr) {
    taken = view->view.Numbers();
  }
  return KELMO_OK;
}

// Checks that no pointer is null, and calls `compute` with what they point to.
template <class Compute, class Result, class... Operands>
kelmo_status With(const kelmo_units* units, Compute compute, Result* result,
                  const Operands*... operands) noexcept {
  if (units == nullptr || result == nullptr || (... || (operands == nullptr))) {
    return KELMO_INVALID_ARGUMENT;
  }
  return compute(units->set, *operands..., *result);
}

}  // namespace

extern "C" {
// NOLINTBEGIN(readability-identifier-naming): the names of kelmo.h

kelmo_status kelmo_quantity_add(const kelmo_units* units, const kelmo_quantity* left,
                                const kelmo_quantity* right, kelmo_quantity* result) {
  return With(units, KelmoLibs::Host::Add, result, left, right);
}

kelmo_status kelmo_quantity_subtract(const kelmo_units* units, const kelmo_quantity* left,
                                     const kelmo_quantity* right, kelmo_quantity* result) {
  return With(units, KelmoLibs::Host::Subtract, result, left, right);
}

kelmo_status kelmo_quantity_multiply(const kelmo_units* units, const kelmo_quantity* quantity,
                                     double factor, kelmo_quantity* result) {
  return With(units, KelmoLibs::Host::Multiply, result, quantity, &factor);
}

kelmo_status kelmo_quantity_divide(const kelmo_units* units, const kelmo_quantity* quantity,
                                   double divisor, kelmo_quantity* result) {
  return With(units, KelmoLibs::Host::Divide, result, quantity, &divisor);
}

kelmo_status kelmo_quantity_ratio(const kelmo_units* units, const kelmo_quantity* left,
                                  const kelmo_quantity* right, double* result) {
  return With(units, KelmoLibs::Host::RatioOf, result, left, right);
}

kelmo_status kelmo_quantity_sum(const kelmo_units* units, const kelmo_quantity* quantities,
                                size_t count, kelmo_quantity* result) {
  if (units == nullptr || quantities == nullptr || count == 0 || result == nullptr) {
    return KELMO_INVALID_ARGUMENT;
  }
  return KelmoLibs::Host::SumOf(units->set, quantities, count, *result);
}

kelmo_status kelmo_quantity_compare(const kelmo_units* units, const kelmo_quantity* left,
                                    const kelmo_quantity* right, int32_t* result) {
  return With(units, KelmoLibs::Host::Compare, result, left, right);
}

kelmo_status kelmo_quantity_hash(const kelmo_units* units, const kelmo_quantity* quantity,
                                 uint64_t* result) {
  return With(units, KelmoLibs::Host::HashOf, result, quantity);
}

kelmo_status kelmo_quantity_convert(const kelmo_units* units, const kelmo_quantity* quantities,
                                    size_t count, int32_t code, kelmo_quantity* results) {
  if (units == nullptr || (count != 0 && (quantities == nullptr || results == nullptr))) {
    return KELMO_INVALID_ARGUMENT;
  }
  return KelmoLibs::Host::Convert(units->set, quantities, count, code, results);
}

kelmo_status kelmo_quantity_round(const kelmo_units* units, const kelmo_quantity* quantity,
                                  double* result) {
  return With(units, KelmoLibs::Host::RoundQuantity, result, quantity);
}

kelmo_status kelmo_quantity_print(const kelmo_units* units, const kelmo_view* view,
                                  const kelmo_quantity* quantity,
                                  const kelmo_print_options* options, char* buffer, size_t capacity,
                                  size_t* needed) {
  constexpr std::uint32_t kFlags =
      KELMO_PRINT_NAME | KELMO_PRINT_NUMBER | KELMO_PRINT_ALL_DIGITS | KELMO_PRINT_FINE;
  kelmo_print_options known = {};
  if (units == nullptr || quantity == nullptr || !Take(options, known) ||
      (known.flags & ~kFlags) != 0 || (buffer == nullptr && capacity != 0)) {
    return KELMO_INVALID_ARGUMENT;
  }
  NumberFormat format;
  kelmo_status status = TakeFormat(known.numbers, view, format);
  if (status != KELMO_OK) {
    return status;
  }
  QuantityStyle style;
  style.hasName = (known.flags & KELMO_PRINT_NAME) != 0;
  style.isNumber = (known.flags & KELMO_PRINT_NUMBER) != 0;
  style.isFine = (known.flags & KELMO_PRINT_FINE) != 0;
  style.hasAllDigits = (known.flags & KELMO_PRINT_ALL_DIGITS) != 0;
  TextSink sink(buffer, capacity);
  status =
      KelmoLibs::Host::WriteQuantity(units->set, LanguagesOf(view), *quantity, style, format, sink);
  if (status == KELMO_OK) {
    GiveSize(sink.Finish(), needed);
  }
  return status;
}

kelmo_status kelmo_quantity_read(const kelmo_units* units, const kelmo_view* view, const char* text,
                                 size_t text_size, const kelmo_read_options* options,
                                 kelmo_quantity* result, kelmo_problems* problems) {
  kelmo_read_options known = {};
  if (units == nullptr || !IsString(text, text_size) || !Take(options, known) ||
      known.reserved != 0 || result == nullptr) {
    return KELMO_INVALID_ARGUMENT;
  }
  NumberFormat format;
  const kelmo_status status = TakeFormat(known.numbers, view, format);
  if (status != KELMO_OK) {
    return status;
  }
  TypedQuantityOptions taken;
  taken.kind =
      known.kind != 0 || known.code == 0 ? known.kind : KelmoLibs::Host::KindOf(known.code);
  taken.absoluteTolerance = known.absolute_tolerance;
  taken.relativeTolerance = known.relative_tolerance;
  if (known.code != 0) {
    taken.unit = units->set.Find(known.code);
    if (taken.unit == nullptr) {
      return KELMO_UNKNOWN_UNIT;
    }
    if (known.kind != 0 && KelmoLibs::Host::KindOf(known.code) != known.kind) {
      return KELMO_DIFFERENT_KINDS;
    }
  }
  if (!IsKnownKind(units->set, taken.kind) || !KelmoLibs::Host::CanBeRead(format)) {
    return KELMO_INVALID_ARGUMENT;
  }
  return KelmoLibs::Host::ReadQuantity(units->set, LanguagesOf(view), StringOf(text, text_size),
                                       taken, format, *result, ListOf(problems));
}

// NOLINTEND(readability-identifier-naming)
}  // extern "C"
