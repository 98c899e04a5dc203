// Ten thousand operations on generated values, as one number: a checksum of every bit of their
// results and every character of their texts. Two builds that print the same compute the same.

#include <cstdint>
#include <cstdio>
#include <string>

#include "kelmo_localizer.h"
#include "tests/support/bits.h"
#include "tests/support/private_members.h"
#include "tests/support/random_numbers.h"

using KelmoLibs::Localize::Phyval::Double;

namespace {

constexpr int kOperations = 10000;

class Checksum {
 public:
  void Add(std::uint64_t bits) {
    for (int i = 0; i < 64; i += 8) {
      sum_ = (sum_ ^ ((bits >> static_cast<unsigned>(i)) & 0xFFU)) * 0x100000001B3;  // FNV-1a
    }
  }
  void Add(double number) { Add(BitsOf(number)); }
  void Add(const Double& value) {
    Add(value.value);
    Add(value.absTolerance);
    Add(value.relTolerance);
    Add(static_cast<std::uint64_t>(value.unit != nullptr ? value.unit->code : -1));
  }
  void Add(const std::wstring& text) {
    for (const wchar_t c : text) {
      Add(static_cast<std::uint64_t>(c));
    }
    Add(std::uint64_t{text.size()});
  }
  std::uint64_t Sum() const { return sum_; }

 private:
  std::uint64_t sum_ = 0xCBF29CE484222325;
};

std::uint64_t Bit(bool holds) { return holds ? 1 : 0; }

Double MakeValue(RandomNumbers& random, int code) {
  // A tolerance of 1e-8 to 1e8, of both parts: what is added is positive, or the text never ends.
  const double number = random.OfMagnitude(-30, 60);
  double tolerance = random.Fraction() + 0.1;
  for (int i = random.Below(16) - 8; i != 0; i += i < 0 ? 1 : -1) {
    tolerance = i < 0 ? tolerance / 10 : tolerance * 10;
  }
  return {number, tolerance, tolerance / number, code};
}

void Operate(RandomNumbers& random, Checksum& checksum) {
  constexpr int kCodes[][2] = {{10001, 10001}, {10001, 10002}, {10002, 10001}, {10002, 10002},
                               {40001, 40002}, {40002, 40001}, {40002, 40002}, {20001, 20001}};
  const auto& codes = kCodes[random.Below(8)];
  Double left = MakeValue(random, codes[0]);
  const Double right = MakeValue(random, codes[1]);
  switch (random.Below(8)) {
    case 0:
      checksum.Add(left + right);
      break;
    case 1:
      checksum.Add(left - right);
      break;
    case 2:
      checksum.Add(left * right.value);
      break;
    case 3:
      checksum.Add(left / right.value);
      break;
    case 4:
      checksum.Add(left.ConvertTo(right.absTolerance, right.relTolerance, codes[1]));
      break;
    case 5:
      checksum.Add(Bit(left < right));
      checksum.Add(Bit(left == right));
      checksum.Add(Bit(left > right));
      break;
    case 6:
      checksum.Add(left.Return());
      checksum.Add(T(left));
      checksum.Add(Ts(left, right.value));
      checksum.Add(Vs(left, right.value));
      break;
    default:
      checksum.Add(left.to_string(L';'));
      checksum.Add(left.to_string());
      break;
  }
}

}  // namespace

int main() {
  RandomNumbers random(1);
  Checksum checksum;
  for (int i = 0; i < kOperations; ++i) {
    Operate(random, checksum);
  }
  std::printf("%d operations: %016llx\n", kOperations,
              static_cast<unsigned long long>(checksum.Sum()));
}
