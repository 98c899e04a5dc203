// What rounding and printing values costs.
#include <locale.h>
#include <stdlib.h>

#include <array>
#include <charconv>
#include <clocale>
#include <cstddef>
#include <cstdio>
#include <cwchar>
#include <iomanip>
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

constexpr std::size_t kNumbers = 256;
constexpr std::size_t kLongestText = 64;
constexpr std::array<double, 7> kTolerances = {1, 0.1, 0.01, 0.001, 0.0001, 0.00001, 0.000001};
constexpr const char* kGerman = "de_DE.UTF-8";

struct Number {
  Double value;
  double rounded;
  int decimals;
};

std::vector<Number> RandomNumbersToPrint() {
  RandomNumbers random(1);
  std::vector<Number> numbers;
  for (std::size_t i = 0; i < kNumbers; ++i) {
    const double magnitude = 1000000 * random.Fraction();
    const double number = i % 2 == 0 ? magnitude : -magnitude;
    const std::size_t decimals = i % kTolerances.size();
    Double value(number, kTolerances[decimals], 0, 10001);
    numbers.push_back({value, value.Return(), static_cast<int>(decimals)});
  }
  return numbers;
}

// The locales of the runtime and of C++ as they are to be for a while.
class UsersLocale {
 public:
  explicit UsersLocale(const char* name) { ::setenv("LC_ALL", name, 1); }
  UsersLocale(const UsersLocale&) = delete;
  UsersLocale& operator=(const UsersLocale&) = delete;
  ~UsersLocale() { ::unsetenv("LC_ALL"); }
};

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
  std::array<wchar_t, kLongestText> text = {};
  Require(std::swprintf(text.data(), text.size(), format, decimals, number) > 0,
          "swprintf does not print");
  return text.data();
}

std::wstring PrintedByToChars(double rounded, int decimals) {
  std::array<char, kLongestText> text = {};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), rounded,
                                 std::chars_format::fixed, decimals);
  return {text.data(), end.ptr};
}

std::wstring PrintedByStream(double rounded, int decimals) {
  std::wostringstream stream;
  stream << std::fixed << std::setprecision(decimals) << rounded;
  return stream.str();
}

// The calls alone that give a process the user's locale, and its own one back.
const char* SwitchToUsersLocaleAndBack() {
  const std::string previous = std::setlocale(LC_ALL, nullptr);
  (void)std::setlocale(LC_ALL, "");
  return std::setlocale(LC_ALL, previous.c_str());
}

// The numbers are so long that none lies halfway: rounding, then printing gives the runtime's digits.
void CheckTexts(std::vector<Number>& numbers) {
  for (auto& [value, rounded, decimals] : numbers) {
    const std::wstring text = PrintedByRuntime(L"%.*f", decimals, value.value);
    Require(PrintedByRuntime(L"%.*f", decimals, rounded) == text, "Return is wrong");
    Require(value.to_string(L'.') == text, "to_string(L'.') is wrong");
    Require(PrintedByToChars(rounded, decimals) == text, "to_chars is wrong");
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
    Require(std::setlocale(LC_ALL, locale) != nullptr, "the user's locale is not there");
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

void RegisterPlain(std::vector<Number>& numbers) {
  using State = benchmark::State;
  benchmark::RegisterBenchmark("printing/return/kelmo", [&numbers](State& state) {
    Iterate(state, numbers, [](Number& number) { return number.value.Return(); });
  });
  benchmark::RegisterBenchmark("printing/separator/kelmo", [&numbers](State& state) {
    Iterate(state, numbers, [](Number& number) { return number.value.to_string(L'.'); });
  });
  benchmark::RegisterBenchmark("printing/separator/std_to_chars", [&numbers](State& state) {
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
  RegisterPlain(numbers);
  CheckUsersTexts(numbers, "C.UTF-8");
  RegisterUsers(numbers, "C.UTF-8");
  if (MakeGermanLocale()) {
    CheckUsersTexts(numbers, kGerman);
    RegisterUsers(numbers, kGerman);
    CheckTextsUnderGlobalLocale(numbers);
    RegisterOtherGlobalLocale(numbers);
  } else {
    (void)std::fputs("no localedef: the rows of another locale are left out\n", stderr);
  }
  return RunBenchmarks(argc, argv);
}
