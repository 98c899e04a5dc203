// Converts a number to its bits, and back.
#pragma once

#include <cstdint>
#include <cstring>

inline std::uint64_t BitsOf(double number) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &number, sizeof(bits));
  return bits;
}

inline double NumberOf(std::uint64_t bits) {
  double number = 0;
  std::memcpy(&number, &bits, sizeof(number));
  return number;
}
