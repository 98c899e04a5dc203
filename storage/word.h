// Eight bytes as one number, and searches in it. The first byte is the lowest one: all code that
// searches words of text depends on a little-endian system.
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

constexpr std::uint64_t kEveryByte = 0x0101010101010101;  // times a byte: eight copies of that byte
constexpr std::uint64_t kHighestBits = 0x80 * kEveryByte;

inline std::uint64_t LoadWord(const void* bytes) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, kWordBytes);
  return word;
}

/// The highest bit of each byte of `word` that is 0. A byte that is 1 may be marked too, but only
/// above a marked byte: the lowest mark is always right.
constexpr std::uint64_t ZeroBytes(std::uint64_t word) noexcept {
  return (word - kEveryByte) & ~word & kHighestBits;
}

/// Index of the byte with the lowest mark. `marks` has highest bits of bytes only; precondition:
/// not 0.
constexpr std::size_t PortableLowestByteIndex(std::uint64_t marks) noexcept {
  const std::uint64_t below = (marks & (~marks + 1)) - 1;
  return static_cast<std::size_t>((((below & kEveryByte) * kEveryByte) >> 56U) - 1);
}

#ifdef _MSC_VER
constexpr std::size_t LowestByteIndex(std::uint64_t marks) noexcept {
  return PortableLowestByteIndex(marks);
}
#else
constexpr std::size_t LowestByteIndex(std::uint64_t marks) noexcept {
  return static_cast<std::size_t>(__builtin_ctzll(marks)) / 8;
}
#endif

}  // namespace KelmoLibs::Localize
