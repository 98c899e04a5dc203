// What fills a placeholder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <variant>

#include "kelmo/kelmo.h"

namespace KelmoLibs::Host {

/// As the decimals of a number: as many as the shortest text that reads as the same number has.
constexpr int kShortest = -1;

class UnitSet;

/// A physical value and the units that say what its code means. Someone else owns them.
struct QuantityArgument {
  const UnitSet* units;
  const kelmo_quantity* quantity;
};

struct Argument {
  using Value =
      std::variant<std::string_view, std::int64_t, std::uint64_t, double, QuantityArgument>;

  std::string_view name;     // empty: it has only its position
  Value value;               // a text: any bytes
  int decimals = kShortest;  // of a double; at most kMaxDecimals (number_spec.h)
  bool isCount = false;      // chooses the plural form
  bool isFloat = false;      // the double is a float: its shortest text is that of the float

  bool IsText() const noexcept { return std::holds_alternative<std::string_view>(value); }
  bool IsNumber() const noexcept {
    return !IsText() && !std::holds_alternative<QuantityArgument>(value);
  }
  bool IsInteger() const noexcept {
    return std::holds_alternative<std::int64_t>(value) ||
           std::holds_alternative<std::uint64_t>(value);
  }
};

/// The arguments of a call. Someone else owns them.
struct Arguments {
  const Argument* data = nullptr;
  std::size_t size = 0;
};

}  // namespace KelmoLibs::Host
