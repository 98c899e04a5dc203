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

/** Formats a quantity as the text that `<<` writes. The format is one of a string: fill, alignment and
 * width. A precision throws fmt::format_error: it would cut digits off. */
template <>
struct fmt::formatter<kelmo::Quantity> : fmt::formatter<fmt::string_view> {
  /** Reads the format. */
  template <class Context>
  constexpr auto parse(Context& context) {
    const auto end = fmt::formatter<fmt::string_view>::parse(context);
    if (kelmo::detail::has_precision(context.begin(), end)) {
      throw fmt::format_error("a quantity has no precision: its tolerance rounds it");
    }
    return end;
  }

  /** Writes the text of `quantity`. Throws std::bad_alloc, and UnitError as str does. */
  template <class Context>
  auto format(const kelmo::Quantity& quantity, Context& context) const {
    return fmt::formatter<fmt::string_view>::format(quantity.str(), context);
  }
};

#endif  // KELMO_KELMO_FMT_HPP
