// What the benchmarks of quantities compute with: the engineering units, and a view of German.
#pragma once

#include <cstdint>

#include "kelmo/kelmo.h"

namespace benchmarks {

class EngineeringUnits {
 public:
  EngineeringUnits();
  EngineeringUnits(const EngineeringUnits&) = delete;
  EngineeringUnits& operator=(const EngineeringUnits&) = delete;
  ~EngineeringUnits();

  const kelmo_units* Units() const { return units_; }

  /// A view that writes "1234,5 mm".
  const kelmo_view* German() const { return german_; }

  /// A view that writes "1.234,5 mm".
  const kelmo_view* GermanInGroups() const { return germanInGroups_; }

  /// The unit with that code. Ends the program if there is none.
  kelmo_unit Find(std::int32_t code) const;

 private:
  kelmo_units* units_ = nullptr;
  kelmo_view* german_ = nullptr;
  kelmo_view* germanInGroups_ = nullptr;
};

}  // namespace benchmarks
