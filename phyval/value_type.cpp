#include "kelmo_localizer.h"

namespace KelmoLibs::Localize::Phyval {

// The signatures of the exported members are fixed: no const, no noexcept. The parameters do not
// have the names of the fields, as in the header: compilers would warn that they hide the fields.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name, readability-make-member-function-const)

ValueType::ValueType(int unitCode, double unitFactor, const wchar_t* unitSymbol,
                     const wchar_t* unitName)
    : code(unitCode), factor(unitFactor), symbol(unitSymbol), name(unitName) {}

ValueType::ValueType(const ValueType&) = default;

// Copies: a row that was moved from stays a usable row.
// NOLINTNEXTLINE(cert-oop11-cpp, performance-move-constructor-init)
ValueType::ValueType(ValueType&& other) : ValueType(other) {}

ValueType::~ValueType() = default;

int ValueType::GetSid() { return code < 100 ? 0 : code % 1000; }

int ValueType::GetStype() { return code < 100 ? code : code / 1000; }

// NOLINTEND(readability-inconsistent-declaration-parameter-name, readability-make-member-function-const)

}  // namespace KelmoLibs::Localize::Phyval
