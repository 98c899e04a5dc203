// The powers of ten that are doubles.
#pragma once

#include <array>

namespace KelmoLibs::Host {

/// 10^0 to 10^22.
constexpr std::array<double, 23> kPowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                 1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

}  // namespace KelmoLibs::Host
