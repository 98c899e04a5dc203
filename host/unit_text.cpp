#include "host/unit_text.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "host/typed_blanks.h"
#include "text/utf8_characters.h"

namespace KelmoLibs::Host {
namespace {

struct Replacement {
  char32_t from;
  char32_t to;
};

constexpr char32_t kNone = 0;         // in place of a character that does not count
constexpr char32_t kZero = 0x110000;  // in place of U+0000: no symbol has it

// Sorted. What people type for characters that keyboards lack, and characters with two code points.
constexpr std::array<Replacement, 24> kTyped = {{
    {U'"', U'\u2033'},   // second of an angle
    {U'\'', U'\u2032'},  // minute of an angle
    {U'*', U'\u00B7'},      {U'^', kNone},          {U'\u00B2', U'2'},      {U'\u00B3', U'3'},
    {U'\u00B5', U'u'},                               // micro
    {U'\u00B9', U'1'},      {U'\u00BA', U'\u00B0'},  // the ordinal indicator for the degree sign
    {U'\u03BC', U'u'},                               // Greek mu
    {U'\u2019', U'\u2032'}, {U'\u201D', U'\u2033'}, {U'\u2070', U'0'},      {U'\u2074', U'4'},
    {U'\u2075', U'5'},      {U'\u2076', U'6'},      {U'\u2077', U'7'},      {U'\u2078', U'8'},
    {U'\u2079', U'9'},      {U'\u207B', U'-'},      {U'\u2126', U'\u03A9'},  // ohm sign
    {U'\u212B', U'\u00C5'},                                                  // angstrom sign
    {U'\u2212', U'-'},      {U'\u22C5', U'\u00B7'},                          // dot operator
}};

// Sorted. Letters that look like Latin ones.
constexpr std::array<Replacement, 35> kLookalikes = {{
    {U'\u0391', U'A'}, {U'\u0392', U'B'}, {U'\u0395', U'E'}, {U'\u0396', U'Z'}, {U'\u0397', U'H'},
    {U'\u0399', U'I'}, {U'\u039A', U'K'}, {U'\u039C', U'M'}, {U'\u039D', U'N'}, {U'\u039F', U'O'},
    {U'\u03A1', U'P'}, {U'\u03A4', U'T'}, {U'\u03A5', U'Y'}, {U'\u03A7', U'X'}, {U'\u03BF', U'o'},
    {U'\u0410', U'A'}, {U'\u0412', U'B'}, {U'\u0415', U'E'}, {U'\u041A', U'K'}, {U'\u041C', U'M'},
    {U'\u041D', U'H'}, {U'\u041E', U'O'}, {U'\u0420', U'P'}, {U'\u0421', U'C'}, {U'\u0422', U'T'},
    {U'\u0425', U'X'}, {U'\u0430', U'a'}, {U'\u0435', U'e'}, {U'\u043A', U'k'}, {U'\u043C', U'm'},
    {U'\u043E', U'o'}, {U'\u0440', U'p'}, {U'\u0441', U'c'}, {U'\u0443', U'y'}, {U'\u0445', U'x'},
}};

// What the characters of ASCII become: most texts have no others. None of them becomes a character of
// kLookalikes.
struct AsciiFolds {
  // not covered: the compiler runs it
  constexpr AsciiFolds() noexcept {
    for (std::size_t i = 0; i < of.size(); ++i) {
      of[i] = static_cast<char32_t>(i);
    }
    for (const Replacement& replacement : kTyped) {
      if (replacement.from < of.size()) {
        of[replacement.from] = replacement.to;
      }
    }
    of[U'\t'] = U' ';
  }

  std::array<char32_t, 0x80> of = {};
};

constexpr AsciiFolds kAsciiFolds;

template <std::size_t size>
char32_t Replace(char32_t character, const std::array<Replacement, size>& table) noexcept {
  const auto found = std::lower_bound(
      table.begin(), table.end(), character,
      [](const Replacement& entry, char32_t wanted) { return entry.from < wanted; });
  return found != table.end() && found->from == character ? found->to : character;
}

// The characters of a text, with those that stand for others replaced.
class Characters {
 public:
  Characters(std::string_view text, UnitTextMatch match) noexcept : rest_(text), match_(match) {}

  // kNone at the end.
  char32_t Next() noexcept {
    while (!rest_.empty()) {
      const char32_t character = Fold(Take());
      if (character != kNone) {
        return character;
      }
    }
    return kNone;
  }

 private:
  char32_t Take() noexcept {
    const auto first = static_cast<unsigned char>(rest_.front());
    if (first < 0x80) {
      rest_.remove_prefix(1);
      return first != kNone ? first : kZero;
    }
    if (const std::size_t blank = BlankLength(rest_); blank != 0) {
      rest_.remove_prefix(blank);
      return U' ';
    }
    char32_t character = first;
    std::size_t size = 1;
    while (size < rest_.size() && size < 4 && Localize::IsContinuation(rest_[size])) {
      character = (character << 6U) | (static_cast<unsigned char>(rest_[size]) & 0x3FU);
      ++size;
    }
    rest_.remove_prefix(size);
    // Without the bits that mark the first byte.
    constexpr std::array<char32_t, 5> kBits = {0, 0xFFFFFFFF, 0x7FF, 0xFFFF, 0x1FFFFF};
    return character & kBits[size];
  }

  char32_t Fold(char32_t character) const noexcept {
    if (match_ == UnitTextMatch::kExact) {
      return character == U'\t' ? U' ' : character;
    }
    if (character < kAsciiFolds.of.size()) {
      return kAsciiFolds.of[character];
    }
    const char32_t typed = Replace(character, kTyped);
    return match_ == UnitTextMatch::kLooks ? Replace(typed, kLookalikes) : typed;
  }

  std::string_view rest_;
  UnitTextMatch match_;
};

}  // namespace

bool IsSameUnitText(std::string_view left, std::string_view right, UnitTextMatch match) noexcept {
  if (left == right) {
    return true;
  }
  Characters some(left, match);
  Characters others(right, match);
  for (;;) {
    const char32_t character = some.Next();
    if (character != others.Next()) {
      return false;
    }
    if (character == kNone) {
      return true;
    }
  }
}

std::uint64_t HashOfUnitText(std::string_view text) noexcept {
  constexpr std::uint64_t kPrime = 0x100000001B3;
  std::uint64_t hash = 0xCBF29CE484222325;
  Characters characters(text, UnitTextMatch::kLooks);
  while (const char32_t character = characters.Next()) {
    hash = (hash ^ character) * kPrime;
  }
  // The last characters have changed the low bits only.
  constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;
  return hash * kGoldenRatio;
}

}  // namespace KelmoLibs::Host
