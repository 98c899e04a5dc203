// The cost of computing with values, beside a plain conversion from inches to meters.
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "benchmarks/support/run_benchmarks.h"
#include "kelmo_localizer.h"
#include "tests/support/random_numbers.h"

#ifdef KELMO_HAS_UDUNITS
#include <udunits2.h>
#endif

namespace benchmarks {
namespace {

using KelmoLibs::Localize::Phyval::Double;
using KelmoLibs::Localize::Phyval::ValueType;

constexpr std::size_t kOperands = 256;
constexpr std::size_t kMixedOperands = 4096;  // a processor learns to predict a few hundred
constexpr double kInch = 0.0273;
constexpr int kMeterCode = 10001;
constexpr int kInchCode = 10002;

// Symbols and names of the units after Init0, and a text of no unit.
constexpr std::array<const wchar_t*, 9> kTexts = {L"\u043C",  // Cyrillic em
                                                  L"in",     L"K",     L"\u00B0",       L"rad",
                                                  L"meter ", L"inch ", L"koefficient ", L"furlong"};
constexpr std::array<int, 9> kCodes = {10001, 10002, 30001, 40001, 40002, 10001, 10002, 30001, 0};

struct Operands {
  std::vector<Double> meters;
  std::vector<Double> inches;
  std::vector<double> inchNumbers;  // the numbers of `inches`
  std::vector<double> factors;
  std::vector<Double> left;  // meters and inches, mixed, as in `right`
  std::vector<Double> right;
  std::vector<std::size_t> texts;  // indices of kTexts
};

Operands RandomOperands() {
  RandomNumbers random(1);
  const auto number = [&random] { return 1000 * random.Fraction(); };
  Operands operands;
  for (std::size_t i = 0; i < kOperands; ++i) {
    const double inch = number();
    operands.meters.emplace_back(number(), 0.01, 0.0, kMeterCode);
    operands.inches.emplace_back(inch, 0.1, 0.0, kInchCode);
    operands.inchNumbers.push_back(inch);
    operands.factors.push_back(number());
  }
  const auto any = [&] {
    return Double(number(), 0.1, 0.0, random.Below(2) == 0 ? kMeterCode : kInchCode);
  };
  for (std::size_t i = 0; i < kMixedOperands; ++i) {
    operands.left.push_back(any());
    operands.right.push_back(any());
    operands.texts.push_back(static_cast<std::size_t>(random.Below(kTexts.size())));
  }
  return operands;
}

// Each iteration does one operation, on the next operands.
template <class Operation>
void Register(const std::string& name, Operation operation, std::size_t operands = kOperands) {
  benchmark::RegisterBenchmark(name.c_str(), [operation, operands](benchmark::State& state) {
    std::size_t i = 0;
    for ([[maybe_unused]] auto iteration : state) {
      benchmark::DoNotOptimize(operation(i));
      i = i + 1 < operands ? i + 1 : 0;
    }
  });
}

void CheckMembers(Operands& operands) {
  const double sum = (Double(1, 0.01, 0, kMeterCode) + Double(1, 0.01, 0, kInchCode)).value;
  Require(std::abs(sum - 1.0273) < 1e-15, "1 m + 1 in is not 1.0273 m");
  for (std::size_t i = 0; i < kOperands; ++i) {
    Double& meter = operands.meters[i];
    Double& inch = operands.inches[i];
    const double converted = kInch * inch.value;
    Require((meter + inch).value == meter.value + converted, "add is wrong");
    Require((meter - inch).value == meter.value - converted, "subtract is wrong");
    Require((meter == inch) == (meter.value == converted), "equal is wrong");
    Require((meter < inch) == (meter.value < converted), "less is wrong");
    Require((meter > inch) == (meter.value > converted), "greater is wrong");
    Require(inch.ConvertTo(0.01, 0, kMeterCode).value == converted, "convert is wrong");
    Require((inch * operands.factors[i]).value == inch.value * operands.factors[i],
            "multiply is wrong");
  }
  for (std::size_t i = 0; i < kMixedOperands; ++i) {
    Double& left = operands.left[i];
    Double& right = operands.right[i];
    const double converted = right.unit->factor * right.value / left.unit->factor;
    Require((left + right).value == left.value + converted, "add_any_units is wrong");
  }
  for (std::size_t i = 0; i < kTexts.size(); ++i) {
    const ValueType* const unit = Double(1, 0.01, 0, kTexts[i]).unit;
    Require((unit != nullptr ? unit->code : 0) == kCodes[i], "construct_by_any_text is wrong");
  }
  Require(Double(1, 0.01, 0, kInchCode).unit->factor == kInch, "construct_by_code is wrong");
  Require(Double(1, 0.01, 0, L"in").unit->factor == kInch, "construct_by_symbol is wrong");
  Require(Double(1, 0.01, 0, L"inch ").unit->factor == kInch, "construct_by_name is wrong");
  Require(Double(1, 0.01, 0, L"furlong").unit == nullptr, "construct_by_unknown_text is wrong");
}

void RegisterMembers(Operands& operands) {
  auto& [meters, inches, inchNumbers, factors, left, right, texts] = operands;
  Register("values/add/kelmo",
           [&meters = meters, &inches = inches](std::size_t i) { return meters[i] + inches[i]; });
  Register("values/subtract/kelmo",
           [&meters = meters, &inches = inches](std::size_t i) { return meters[i] - inches[i]; });
  Register("values/equal/kelmo",
           [&meters = meters, &inches = inches](std::size_t i) { return meters[i] == inches[i]; });
  Register("values/less/kelmo",
           [&meters = meters, &inches = inches](std::size_t i) { return meters[i] < inches[i]; });
  Register("values/greater/kelmo",
           [&meters = meters, &inches = inches](std::size_t i) { return meters[i] > inches[i]; });
  Register("values/convert/kelmo",
           [&inches = inches](std::size_t i) { return inches[i].ConvertTo(0.01, 0, kMeterCode); });
  Register("values/multiply/kelmo", [&inches = inches, &factors = factors](std::size_t i) {
    return inches[i] * factors[i];
  });
  const auto& numbers = inchNumbers;
  Register("values/construct_by_code/kelmo",
           [&numbers](std::size_t i) { return Double(numbers[i], 0.1, 0, kInchCode); });
  Register("values/construct_by_symbol/kelmo",
           [&numbers](std::size_t i) { return Double(numbers[i], 0.1, 0, L"in"); });
  Register("values/construct_by_name/kelmo",
           [&numbers](std::size_t i) { return Double(numbers[i], 0.1, 0, L"inch "); });
  Register("values/construct_by_unknown_text/kelmo",
           [&numbers](std::size_t i) { return Double(numbers[i], 0.1, 0, L"furlong"); });
  Register("values/construct_by_cyrillic/kelmo",
           [&numbers](std::size_t i) { return Double(numbers[i], 0.1, 0, kTexts[0]); });
  Register(
      "values/add_any_units/kelmo",
      [&left = left, &right = right](std::size_t i) { return left[i] + right[i]; }, kMixedOperands);
  Register(
      "values/construct_by_any_text/kelmo",
      [&texts = texts](std::size_t i) { return Double(1, 0.1, 0, kTexts[texts[i]]); },
      kMixedOperands);
}

#ifdef KELMO_HAS_UDUNITS

// A system with only the units of the library: with more units its lookups would be slower.
class UdunitsSystem {
 public:
  UdunitsSystem() {
    ut_set_error_message_handler(&ut_ignore);
    Map("meter", "m", meter_);
    Map("inch", "in", inch_);
    Map("koefficient", "K", coefficient_);
    Map("degree", "deg", degree_);
    Map("radian", "rad", radian_);
  }
  UdunitsSystem(const UdunitsSystem&) = delete;
  UdunitsSystem& operator=(const UdunitsSystem&) = delete;
  ~UdunitsSystem() {
    cv_free(converter_);
    for (ut_unit* const unit : {radian_, degree_, coefficient_, inch_, meter_}) {
      ut_free(unit);
    }
    ut_free_system(system_);
  }

  ut_system* System() const noexcept { return system_; }
  const cv_converter* InchesToMeters() const noexcept { return converter_; }

 private:
  static void Map(const char* name, const char* symbol, ut_unit* unit) {
    Require(ut_map_name_to_unit(name, UT_ASCII, unit) == UT_SUCCESS, "UDUNITS refuses a name");
    Require(ut_map_symbol_to_unit(symbol, UT_ASCII, unit) == UT_SUCCESS,
            "UDUNITS refuses a symbol");
  }

  ut_system* system_ = ut_new_system();
  ut_unit* meter_ = ut_new_base_unit(system_);
  ut_unit* inch_ = ut_scale(kInch, meter_);
  ut_unit* coefficient_ = ut_new_base_unit(system_);
  ut_unit* degree_ = ut_new_base_unit(system_);
  ut_unit* radian_ = ut_scale(57.29577951308232, degree_);
  cv_converter* converter_ = ut_get_converter(inch_, meter_);
};

void CheckUdunits(const UdunitsSystem& units, const std::vector<double>& inches) {
  for (const double inch : inches) {
    const double meters = cv_convert_double(units.InchesToMeters(), inch);
    Require(std::abs(meters - kInch * inch) <= 1e-15 * meters,
            "udunits_converter gives a wrong number");
  }
  for (const char* const text : {"in", "inch"}) {
    ut_unit* const unit = ut_parse(units.System(), text, UT_ASCII);
    ut_unit* const meter = ut_parse(units.System(), "meter", UT_ASCII);
    cv_converter* const converter = ut_get_converter(unit, meter);
    Require(converter != nullptr && cv_convert_double(converter, 1) == kInch,
            "udunits_parse gives a wrong unit");
    cv_free(converter);
    ut_free(meter);
    ut_free(unit);
  }
  Require(ut_parse(units.System(), "furlong", UT_ASCII) == nullptr,
          "udunits_parse accepts an unknown unit");
}

void RegisterUdunits(const UdunitsSystem& units, const std::vector<double>& inches) {
  const cv_converter* const converter = units.InchesToMeters();
  for (const char* const row :
       {"add", "subtract", "equal", "less", "greater", "convert", "multiply", "construct_by_code",
        "construct_by_symbol", "construct_by_name", "construct_by_unknown_text",
        "construct_by_cyrillic", "add_any_units", "construct_by_any_text"}) {
    Register(
        "values/" + std::string(row) + "/udunits_converter",
        [converter, &inches](std::size_t i) { return cv_convert_double(converter, inches[i]); });
  }
  ut_system* const system = units.System();
  const auto registerParse = [system](const std::string& row, const char* text) {
    Register("values/" + row + "/udunits_parse", [system, text](std::size_t) {
      ut_unit* const unit = ut_parse(system, text, UT_ASCII);
      ut_free(unit);  // may be null
      return unit;
    });
  };
  registerParse("construct_by_symbol", "in");
  registerParse("construct_by_name", "inch");
  registerParse("construct_by_unknown_text", "furlong");
}

#endif

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  Init0(L"no folder");  // sets the units that a host computes with
  Operands operands = RandomOperands();
  CheckMembers(operands);
  RegisterMembers(operands);
#ifdef KELMO_HAS_UDUNITS
  const UdunitsSystem units;
  CheckUdunits(units, operands.inchNumbers);
  RegisterUdunits(units, operands.inchNumbers);
#endif
  return RunBenchmarks(argc, argv);
}
