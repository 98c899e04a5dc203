/**
 * @file
 * Formats quantities with the library fmt, 9.1 and later.
 *
 *     fmt::format("{:>12}", kelmo::Quantity(units, 12.5, millimetre, 0.1));  // "     12.5 mm"
 *
 * kelmo.hpp does the same for std::format, where the C++ library has it.
 */
#ifndef KELMO_KELMO_FMT_HPP
#define KELMO_KELMO_FMT_HPP

#include <fmt/format.h>

#include "kelmo.hpp"

/** Formats a quantity as the text that `<<` writes. The format is one of a string: fill, alignment, width
 * and the largest number of characters. */
template <>
struct fmt::formatter<kelmo::Quantity> : fmt::formatter<fmt::string_view> {
  /** Writes the text of `quantity`. Throws std::bad_alloc, and UnitError as str does. */
  template <class Context>
  auto format(const kelmo::Quantity& quantity, Context& context) const {
    kelmo::PrintOptions options;
    options.all_digits = true;
    return fmt::formatter<fmt::string_view>::format(quantity.str(kelmo::View(), options), context);
  }
};

#endif  // KELMO_KELMO_FMT_HPP
