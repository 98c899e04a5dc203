#include "dictionary/key.h"

#include <algorithm>
#include <new>
#include <string>
#include <type_traits>

namespace KelmoLibs::Localize {
namespace {

template <class Left, class Right>
int CompareUnits(const Left* left, const Right* right, std::size_t length) noexcept {
  const auto value = [](auto unit) { return static_cast<std::uint32_t>(unit); };
  for (std::size_t i = 0; i < length; ++i) {
    if (value(left[i]) != value(right[i])) {
      return value(left[i]) < value(right[i]) ? -1 : 1;
    }
  }
  return 0;
}

int CompareLengths(std::size_t left, std::size_t right) noexcept {
  return left < right ? -1 : left > right ? 1 : 0;
}

constexpr std::size_t kWideUnitSizeLog2 = sizeof(wchar_t) == 4 ? 2 : 1;

}  // namespace

// Collects the bits of both neighbours of each character. So 0, whose lower neighbour has all bits,
// never fits into fewer bytes than a wchar_t, and the largest value of a size never fits into that
// size.
StoredKey::StoredKey(std::wstring_view text) noexcept {
  std::uint32_t bits = 0;
  for (const wchar_t character : text) {
    const std::uint32_t value = std::char_traits<wchar_t>::to_int_type(character);
    bits |= (value - 1) | (value + 1);
  }
  const std::size_t unitSizeLog2 = bits <= 0xFF ? 0 : bits <= 0xFFFF ? 1 : kWideUnitSizeLog2;
  lengthAndUnitSize_ = (text.size() << kUnitSizeBits) | unitSizeLog2;
}

StoredKey* StoredKey::ConstructAt(std::byte* memory, std::wstring_view text) const noexcept {
  // The arena of the table owns it. NOLINTNEXTLINE(cppcoreguidelines-owning-memory)
  auto* const key = new (memory) StoredKey(*this);
  key->Visit([text](const auto* units) {
    using Unit = std::remove_const_t<std::remove_pointer_t<decltype(units)>>;
    std::transform(text.begin(), text.end(), const_cast<Unit*>(units),
                   [](wchar_t character) { return static_cast<Unit>(character); });
  });
  return key;
}

int Compare(const StoredKey& left, const StoredKey& right) noexcept {
  const int order = CompareLengths(left.Length(), right.Length());
  return order != 0 ? order : left.Visit([&](auto* leftUnits) {
    return right.Visit(
        [&](auto* rightUnits) { return CompareUnits(leftUnits, rightUnits, left.Length()); });
  });
}

int Compare(const StoredKey& left, std::wstring_view right) noexcept {
  const int order = CompareLengths(left.Length(), right.size());
  return order != 0 ? order : left.Visit([&](auto* units) {
    return CompareUnits(units, right.data(), right.size());
  });
}

}  // namespace KelmoLibs::Localize
