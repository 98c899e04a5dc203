// Eight bytes looked at as one number. The first byte is the lowest, as on every little-endian system.
// Everything that searches words of text relies on that.
#pragma once

// Microsoft's compiler does not define the macro, and has little-endian targets only.
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "kelmo_Mestrel_Localizer needs a little-endian system"
#endif

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace KelmoLibs::Localize {

constexpr std::size_t kWordBytes = 8;

constexpr std::uint64_t kEveryByte = 0x0101010101010101;  // times a byte: a word of it
constexpr std::uint64_t kHighestBits = 0x80 * kEveryByte;

inline std::uint64_t WordAt(const void* bytes) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, kWordBytes);
  return word;
}

/// The highest bit of each byte of `word` that is 0, and perhaps of a 1 above one.
constexpr std::uint64_t ZeroBytes(std::uint64_t word) noexcept {
  return (word - kEveryByte) & ~word & kHighestBits;
}

/// Which byte has the lowest of `bits`, which are highest bits of bytes, and not none.
constexpr std::size_t PortableLowestByte(std::uint64_t bits) noexcept {
  const std::uint64_t below = (bits & (~bits + 1)) - 1;
  return static_cast<std::size_t>((((below & kEveryByte) * kEveryByte) >> 56U) - 1);
}

#ifdef _MSC_VER
constexpr std::size_t LowestByte(std::uint64_t bits) noexcept { return PortableLowestByte(bits); }
#else
constexpr std::size_t LowestByte(std::uint64_t bits) noexcept {
  return static_cast<std::size_t>(__builtin_ctzll(bits)) / 8;
}
#endif

}  // namespace KelmoLibs::Localize
