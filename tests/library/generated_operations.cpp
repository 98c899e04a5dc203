// Computes with generated values and prints a checksum for each ten thousand operations: of every
// bit of the results and every character of the texts. Builds that print the same compute the same.
//
//   generated_operations                         prints the checked-in file
//   generated_operations --digest=N --seed=S     N operations of each kind, from another seed on

#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>

#include "kelmo_localizer.h"
#include "tests/support/bits.h"
#include "tests/support/checksum.h"
#include "tests/support/nan_text.h"
#include "tests/support/private_members.h"
#include "tests/support/random_numbers.h"

using KelmoLibs::Localize::Phyval::Double;

namespace {

void AddValue(const Double& value, Checksum& checksum) {
  checksum.Add(value.value);
  checksum.Add(value.absTolerance);
  checksum.Add(value.relTolerance);
  checksum.Add(value.unit != nullptr ? value.unit->code : -1);
}

// ---- Values as hosts use them

Double MakeValue(RandomNumbers& random, int code) {
  // Both parts of the tolerance are positive, about 1e-8 to 1e8: otherwise rounding would not end.
  const double number = random.OfMagnitude(-30, 60);
  double tolerance = random.Fraction() + 0.1;
  for (int i = random.Below(16) - 8; i != 0; i += i < 0 ? 1 : -1) {
    tolerance = i < 0 ? tolerance / 10 : tolerance * 10;
  }
  return {number, tolerance, tolerance / number, code};
}

// The operations that Operate and OperateOn share: 0 to 3 and 5 of 8.
void ComputeOrCompare(int operation, Double& left, const Double& right, Checksum& checksum) {
  switch (operation) {
    case 0:
      AddValue(left + right, checksum);
      break;
    case 1:
      AddValue(left - right, checksum);
      break;
    case 2:
      AddValue(left * right.value, checksum);
      break;
    case 3:
      AddValue(left / right.value, checksum);
      break;
    default:
      checksum.Add(left < right);
      checksum.Add(left == right);
      checksum.Add(left > right);
      break;
  }
}

void Operate(RandomNumbers& random, Checksum& checksum) {
  constexpr int kCodes[][2] = {{10001, 10001}, {10001, 10002}, {10002, 10001}, {10002, 10002},
                               {40001, 40002}, {40002, 40001}, {40002, 40002}, {20001, 20001}};
  const auto& codes = kCodes[random.Below(8)];
  Double left = MakeValue(random, codes[0]);
  const Double right = MakeValue(random, codes[1]);
  const int operation = random.Below(8);
  switch (operation) {
    case 4:
      AddValue(left.ConvertTo(right.absTolerance, right.relTolerance, codes[1]), checksum);
      break;
    case 6:
      checksum.Add(left.Return());
      checksum.Add(T(left));
      checksum.Add(Ts(left, right.value));
      checksum.Add(Vs(left, right.value));
      break;
    case 7:
      checksum.AddText(left.to_string(L';'));
      checksum.AddText(left.to_string());
      break;
    default:
      ComputeOrCompare(operation, left, right, checksum);
      break;
  }
}

// ---- Values of any number, with and without a unit

double AnyNumber(RandomNumbers& random) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNumbers[] = {0,
                                 -0.0,
                                 1,
                                 -1,
                                 0.5,
                                 -2.5,
                                 40.1,
                                 0.0273,
                                 1.005,
                                 1e15,
                                 1e22,
                                 -1e99,
                                 4503599627370495.5,
                                 0.49999999999999994,
                                 5e-324,
                                 -2.225073858507201e-308,  // just denormal
                                 2.2250738585072014e-308,
                                 std::numeric_limits<double>::max(),
                                 std::numeric_limits<double>::lowest(),
                                 kInfinity,
                                 -kInfinity,
                                 std::numeric_limits<double>::quiet_NaN()};
  constexpr std::uint64_t kSignAndFraction = 0x800FFFFFFFFFFFFF;
  switch (random.Below(16)) {
    case 0:
      return NumberOf(random.Bits());
    case 1:
      return NumberOf(random.Bits() & kSignAndFraction);  // denormal
    case 2:
      return random.OfMagnitude(960, 1024);
    case 3:
      return random.Below(2'000'001) / 2.0 - 500'000;  // halves
    case 4:
    case 5:
    case 6:
    case 7:
      return AnyOf(random, kNumbers);
    default:
      return random.OfMagnitude(-30, 60);
  }
}

double AnyTolerance(RandomNumbers& random) {
  constexpr double kTolerances[] = {0, 0.001, 0.01, 0.05, 0.1, 1, 5, 150, 1e-9, 1e9, 1e-12, 2e11};
  switch (random.Below(8)) {
    case 0:
      return AnyNumber(random);
    case 1:
    case 2:
      return std::abs(random.OfMagnitude(-40, 40));
    default:
      return AnyOf(random, kTolerances);
  }
}

Double AnyValue(RandomNumbers& random) {
  constexpr int kCodes[] = {10001, 10002, 10002, 20001, 30001, 40001, 40002, 40002,
                            10,    20,    10000, 10003, 99,    0,     -1,    -40002};
  constexpr const wchar_t* kTexts[] = {
      L"\u043C",                                                // Cyrillic em
      L"in",     L"m2",      L"%",      L"K",       L"\u00B0",  // degree sign
      L"rad",    L"length",  L"meter",  L"meter ",  L"inch",   L"inch ", L"area", L"square meter",
      L"degree", L"degree ", L"radian", L"radian ", L"m",      L"",      nullptr};
  const double number = AnyNumber(random);
  const double absolute = AnyTolerance(random);
  const double relative = random.Below(2) == 0 ? 0 : AnyTolerance(random);
  if (random.Below(4) == 0) {
    return {number, absolute, relative, AnyOf(random, kTexts)};
  }
  return {number, absolute, relative, AnyOf(random, kCodes)};
}

void AddUnit(const Double& value, Checksum& checksum) {
  AddValue(value, checksum);
  if (value.unit != nullptr) {
    checksum.Add(value.unit->factor);
    checksum.AddText(value.unit->symbol);
    checksum.AddText(value.unit->name);
    checksum.Add(value.unit->GetSid());
    checksum.Add(value.unit->GetStype());
  }
}

void AddPrinted(const std::wstring& text, Checksum& checksum) {
  checksum.AddText(NormalizeNaN(text));
}

// Rounding ends only if the tolerance is positive and finite, or NaN.
bool RoundingEnds(double tolerance) {
  return std::isnan(tolerance) ||
         (tolerance > 0 && tolerance < std::numeric_limits<double>::infinity());
}

void OperateOn(Double& left, const Double& right, RandomNumbers& random, Checksum& checksum) {
  const int operation = random.Below(8);
  switch (operation) {
    case 4:
      if (left.unit != nullptr) {  // ConvertTo does not check it
        const int code = right.unit != nullptr ? right.unit->code : 20001;
        AddValue(left.ConvertTo(right.absTolerance, right.relTolerance, code), checksum);
        checksum.Add(Vs(left, right.value));
      }
      break;
    case 6:
      CheckCorrect(left);
      CheckCorrect(left, right);
      break;
    case 7:
      checksum.Add(T(left));
      checksum.Add(Ts(left, right.value));
      if (RoundingEnds(T(left))) {
        checksum.Add(left.Return());
        AddPrinted(left.to_string(L';'), checksum);
        AddPrinted(left.to_string(), checksum);
      }
      break;
    default:
      ComputeOrCompare(operation, left, right, checksum);
      break;
  }
}

void OperateOnAny(RandomNumbers& random, Checksum& checksum) {
  Double left = AnyValue(random);
  Double right = AnyValue(random);
  if (left.unit != nullptr && random.Below(4) != 0) {  // otherwise most quantities would differ
    right = Double(right.value, right.absTolerance, right.relTolerance,
                   left.unit->code / 1000 * 1000 + 1 + random.Below(2));
  }
  AddUnit(left, checksum);
  AddUnit(right, checksum);
  try {
    OperateOn(left, right, random, checksum);
  } catch (const std::invalid_argument& refusal) {
    checksum.AddText(refusal.what());
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  const Generated generated(argumentCount, arguments);
  generated.Print("operations", Operate);
  generated.Print("operations on any values", OperateOnAny);
  Init0(L".");
  generated.Print("operations on any values after the start", OperateOnAny);
}
