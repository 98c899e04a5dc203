// The layout of the exported classes. Hosts create the objects in their own memory and read the
// fields. A change of a size, offset or type would break every existing host. std::wstring has 32
// bytes in GCC's and Microsoft's libraries (40 in a debug build of the latter), which determines
// the size of ValueType.
#pragma once

#include <cstddef>
#include <string>
#include <type_traits>

#include "kelmo_localizer.h"

namespace class_layout {

using KelmoLibs::Localize::Phyval::Double;
using KelmoLibs::Localize::Phyval::ValueType;

// NOLINTBEGIN(modernize-type-traits): it is compiled as C++14 as well
static_assert(sizeof(Double) == 32 && alignof(Double) == 8, "Double: size");
static_assert(offsetof(Double, value) == 0, "Double: value");
static_assert(offsetof(Double, absTolerance) == 8, "Double: absTolerance");
static_assert(offsetof(Double, relTolerance) == 16, "Double: relTolerance");
static_assert(offsetof(Double, unit) == 24, "Double: unit");
static_assert(std::is_same<decltype(Double::value), double>::value, "Double: value");
static_assert(std::is_same<decltype(Double::absTolerance), double>::value, "Double: absTolerance");
static_assert(std::is_same<decltype(Double::relTolerance), double>::value, "Double: relTolerance");
static_assert(std::is_same<decltype(Double::unit), ValueType*>::value, "Double: unit");

static_assert(sizeof(ValueType) == 16 + 2 * sizeof(std::wstring), "ValueType: size");
static_assert(alignof(ValueType) == 8, "ValueType: alignment");
static_assert(offsetof(ValueType, code) == 0, "ValueType: code");
static_assert(offsetof(ValueType, factor) == 8, "ValueType: factor");
static_assert(offsetof(ValueType, symbol) == 16, "ValueType: symbol");
static_assert(offsetof(ValueType, name) == 16 + sizeof(std::wstring), "ValueType: name");
static_assert(sizeof(ValueType::code) == 4, "ValueType: code");
static_assert(std::is_same<decltype(ValueType::code), int>::value, "ValueType: code");
static_assert(std::is_same<decltype(ValueType::factor), double>::value, "ValueType: factor");
static_assert(std::is_same<decltype(ValueType::symbol), std::wstring>::value, "ValueType: symbol");
static_assert(std::is_same<decltype(ValueType::name), std::wstring>::value, "ValueType: name");
// NOLINTEND(modernize-type-traits)

}  // namespace class_layout
