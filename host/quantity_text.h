// Physical values as text.
#pragma once

#include "cldr/number_format.h"
#include "host/number_spec.h"
#include "host/text_sink.h"
#include "host/unit_set.h"
#include "kelmo/kelmo.h"

namespace KelmoLibs::Host {

struct QuantityStyle {
  bool hasName = false;              // the name of the unit in place of its symbol
  bool isNumber = false;             // neither symbol nor name
  bool isFine = false;               // rounds by the power of ten at or below the tolerance
  bool hasAllDigits = false;         // where the tolerance justifies no number of digits
  const NumberSpec* spec = nullptr;  // the digits are those that it says
};

/// Writes a quantity: see kelmo_quantity_print. Nothing is written if the result is not KELMO_OK.
kelmo_status WriteQuantity(const UnitSet& units, const LanguageChain& languages,
                           const kelmo_quantity& quantity, const QuantityStyle& style,
                           const Cldr::NumberFormat& format, TextSink& sink) noexcept;

/// The number that WriteQuantity writes if the tolerance justifies it.
kelmo_status RoundQuantity(const UnitSet& units, const kelmo_quantity& quantity,
                           double& result) noexcept;

}  // namespace KelmoLibs::Host
