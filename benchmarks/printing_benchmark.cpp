// The cost of rounding and printing values.
#include <locale.h>
#include <stdlib.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cwchar>
#include <iomanip>
#include <list>
#include <locale>
#include <sstream>
#include <string>
#include <vector>

#include "benchmarks/support/child_program.h"
#include "benchmarks/support/run_benchmarks.h"
#include "kelmo_localizer.h"
#include "tests/support/random_numbers.h"

namespace benchmarks {
namespace {

using KelmoLibs::Localize::Phyval::Double;

constexpr std::size_t kNumbers = 4096;  // a processor learns to predict a few hundred
constexpr std::size_t kMaxTextLength = 64;
constexpr int kMinDecimals = -3;
constexpr std::array<double, 13> kTolerances = {1000, 100,  10,   1,    0.1,  0.01, 0.001,
                                                1e-4, 1e-5, 1e-6, 1e-7, 1e-8, 1e-9};
constexpr const char* kGerman = "de_DE.UTF-8";

struct Number {
  Double value;
  double rounded;
  int decimals;
};

/// Magnitudes from 2^minExponent to below 2^maxExponent. A number of decimals of -1 rounds to tens.
struct Shape {
  const char* row;
  int minExponent;
  int maxExponent;
  int minDecimals;
  int maxDecimals;
};

constexpr Shape kShapes[] = {
    {"separator_integers", 0, 30, 0, 0},      {"separator_rounded", 10, 30, -3, -1},
    {"separator_small", -20, 0, 4, 9},        {"separator_large", 20, 40, 0, 2},
    {"separator_many_decimals", 0, 17, 7, 9}, {"separator_any", -20, 20, -3, 9},
};

Number MakeNumber(double number, int decimals) {
  Double value(number, kTolerances[static_cast<std::size_t>(decimals - kMinDecimals)], 0, 10001);
  return {value, value.Return(), std::max(decimals, 0)};
}

// Up to a million, positive or negative, with up to six decimals.
std::vector<Number> RandomNumbersToPrint() {
  RandomNumbers random(1);
  std::vector<Number> numbers;
  for (std::size_t i = 0; i < kNumbers; ++i) {
    const double magnitude = 1000000 * random.Fraction();
    const double number = random.Below(2) == 0 ? magnitude : -magnitude;
    numbers.push_back(MakeNumber(number, random.Below(7)));
  }
  return numbers;
}

std::vector<Number> RandomNumbersOfShape(const Shape& shape) {
  RandomNumbers random(1);
  std::vector<Number> numbers;
  for (std::size_t i = 0; i < kNumbers; ++i) {
    const double number = random.OfMagnitude(shape.minExponent, shape.maxExponent);
    const int choices = shape.maxDecimals - shape.minDecimals + 1;
    numbers.push_back(MakeNumber(number, shape.minDecimals + random.Below(choices)));
  }
  return numbers;
}

// Sets the user's locale for a scope.
class UsersLocale {
 public:
  explicit UsersLocale(const char* name) { ::setenv("LC_ALL", name, 1); }
  UsersLocale(const UsersLocale&) = delete;
  UsersLocale& operator=(const UsersLocale&) = delete;
  ~UsersLocale() { ::unsetenv("LC_ALL"); }
};

// Sets the global locale of C++ for a scope.
class GlobalLocale {
 public:
  explicit GlobalLocale(const char* name) : previous_(std::locale::global(std::locale(name))) {}
  GlobalLocale(const GlobalLocale&) = delete;
  GlobalLocale& operator=(const GlobalLocale&) = delete;
  ~GlobalLocale() { std::locale::global(previous_); }

 private:
  std::locale previous_;
};

std::wstring PrintedByRuntime(const wchar_t* format, int decimals, double number) {
  std::array<wchar_t, kMaxTextLength> text = {};
  Require(std::swprintf(text.data(), text.size(), format, decimals, number) > 0,
          "swprintf does not print");
  return text.data();
}

std::wstring PrintedByToChars(double rounded, int decimals) {
  std::array<char, kMaxTextLength> text = {};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), rounded,
                                 std::chars_format::fixed, decimals);
  return {text.data(), end.ptr};
}

std::wstring PrintedByStream(double rounded, int decimals) {
  std::wostringstream stream;
  stream << std::fixed << std::setprecision(decimals) << rounded;
  return stream.str();
}

// Only the calls that switch a process to the user's locale and back.
const char* SwitchToUsersLocaleAndBack() {
  const std::string previous = std::setlocale(LC_ALL, nullptr);
  (void)std::setlocale(LC_ALL, "");
  return std::setlocale(LC_ALL, previous.c_str());
}

// None of these numbers lies halfway between two results. So the library prints the same digits as
// the runtime.
void CheckTexts(std::vector<Number>& numbers) {
  for (auto& [value, rounded, decimals] : numbers) {
    const std::wstring text = PrintedByRuntime(L"%.*f", decimals, value.value);
    Require(PrintedByRuntime(L"%.*f", decimals, rounded) == text, "Return is wrong");
    Require(value.to_string(L'.') == text, "to_string(L'.') is wrong");
    Require(PrintedByToChars(rounded, decimals) == text, "to_chars is wrong");
  }
}

// These numbers may lie halfway between two results in double precision. The runtime's digits may
// then differ.
void CheckTextsOfShape(std::vector<Number>& numbers) {
  for (auto& [value, rounded, decimals] : numbers) {
    const double limit = 0.52 * value.absTolerance;  // scaling rounds too
    Require(std::abs(rounded - value.value) <= limit, "Return is wrong");
    Require(value.to_string(L'.') == PrintedByToChars(rounded, decimals),
            "to_string(L'.') or to_chars is wrong");
  }
}

void CheckTextsUnderGlobalLocale(std::vector<Number>& numbers) {
  const GlobalLocale german(kGerman);
  for (auto& [value, rounded, decimals] : numbers) {
    const std::wstring text = PrintedByRuntime(L"%'.*f", decimals, value.value);
    Require(value.to_string(L'.') == text, "to_string(L'.') is wrong under another global locale");
    Require(PrintedByStream(rounded, decimals) == text, "wostringstream is wrong");
  }
}

void CheckUsersTexts(std::vector<Number>& numbers, const char* locale) {
  const UsersLocale user(locale);
  for (auto& [value, rounded, decimals] : numbers) {
    Require(std::setlocale(LC_ALL, locale) != nullptr, "the user's locale is missing");
    const std::wstring text = PrintedByRuntime(L"%.*f", decimals, value.value);
    Require(std::setlocale(LC_ALL, "C") != nullptr, "there is no locale C");
    Require(value.to_string() == text, "to_string() is wrong for a user of another locale");
  }
}

template <class Operation>
void Iterate(benchmark::State& state, std::vector<Number>& numbers, Operation operation) {
  std::size_t i = 0;
  for ([[maybe_unused]] auto iteration : state) {
    benchmark::DoNotOptimize(operation(numbers[i]));
    i = (i + 1) % kNumbers;
  }
}

void RegisterReturn(std::vector<Number>& numbers) {
  benchmark::RegisterBenchmark("printing/return/kelmo", [&numbers](benchmark::State& state) {
    Iterate(state, numbers, [](Number& number) { return number.value.Return(); });
  });
}

void RegisterSeparator(std::vector<Number>& numbers, const std::string& row) {
  using State = benchmark::State;
  const std::string name = "printing/" + row;
  benchmark::RegisterBenchmark((name + "/kelmo").c_str(), [&numbers](State& state) {
    Iterate(state, numbers, [](Number& number) { return number.value.to_string(L'.'); });
  });
  benchmark::RegisterBenchmark((name + "/std_to_chars").c_str(), [&numbers](State& state) {
    Iterate(state, numbers,
            [](Number& number) { return PrintedByToChars(number.rounded, number.decimals); });
  });
}

void RegisterUsers(std::vector<Number>& numbers, const std::string& locale) {
  using State = benchmark::State;
  const std::string kelmo = "printing/users_locale/kelmo/" + locale;
  benchmark::RegisterBenchmark(kelmo.c_str(), [&numbers, locale](State& state) {
    const UsersLocale user(locale.c_str());
    Iterate(state, numbers, [](Number& number) { return number.value.to_string(); });
  });
  const std::string peer = "printing/users_locale/setlocale/" + locale;
  benchmark::RegisterBenchmark(peer.c_str(), [&numbers, locale](State& state) {
    const UsersLocale user(locale.c_str());
    Iterate(state, numbers, [](Number&) { return SwitchToUsersLocaleAndBack(); });
  });
}

void RegisterOtherGlobalLocale(std::vector<Number>& numbers) {
  using State = benchmark::State;
  benchmark::RegisterBenchmark("printing/separator_other_locale/kelmo", [&numbers](State& state) {
    const GlobalLocale german(kGerman);
    Iterate(state, numbers, [](Number& number) { return number.value.to_string(L'.'); });
  });
  benchmark::RegisterBenchmark(
      "printing/separator_other_locale/std_wostringstream", [&numbers](State& state) {
        const GlobalLocale german(kGerman);
        Iterate(state, numbers,
                [](Number& number) { return PrintedByStream(number.rounded, number.decimals); });
      });
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  Init0(L"no folder");
  std::vector<Number> numbers = RandomNumbersToPrint();
  CheckTexts(numbers);
  RegisterReturn(numbers);
  RegisterSeparator(numbers, "separator");
  std::list<std::vector<Number>> numbersOfShapes;
  for (const Shape& shape : kShapes) {
    std::vector<Number>& ofShape = numbersOfShapes.emplace_back(RandomNumbersOfShape(shape));
    CheckTextsOfShape(ofShape);
    RegisterSeparator(ofShape, shape.row);
  }
  CheckUsersTexts(numbers, "C.UTF-8");
  RegisterUsers(numbers, "C.UTF-8");
  if (MakeGermanLocale()) {
    CheckUsersTexts(numbers, kGerman);
    RegisterUsers(numbers, kGerman);
    CheckTextsUnderGlobalLocale(numbers);
    RegisterOtherGlobalLocale(numbers);
  } else {
    (void)std::fputs("no localedef: the rows with another locale are left out\n", stderr);
  }
  return RunBenchmarks(argc, argv);
}
