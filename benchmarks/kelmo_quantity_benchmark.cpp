// The cost of physical values: converting, computing, printing and reading them, with the engineering
// units and their German names.
#include <stdlib.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "benchmarks/support/child_program.h"
#include "benchmarks/support/engineering_units.h"
#include "benchmarks/support/run_benchmarks.h"
#include "kelmo/kelmo.h"
#include "kelmo_localizer.h"
#include "tests/support/random_numbers.h"

#ifdef KELMO_HAS_UDUNITS
#include <udunits2.h>
#endif
#ifdef KELMO_HAS_ICU_MESSAGES
#include <unicode/measunit.h>
#include <unicode/numberformatter.h>
#endif

namespace benchmarks {
namespace {

using KelmoLibs::Localize::Phyval::Double;

// Codes of kinds and units in the engineering units. The first library has the first two as well.
constexpr std::int32_t kMetre = 10001;
constexpr std::int32_t kInch = 10002;
constexpr std::int32_t kMillimetre = 10003;
constexpr std::int32_t kCelsius = 18002;
constexpr std::int32_t kFahrenheit = 18003;
constexpr std::int32_t kFirstUnit = 1;  // in a kind: its factor is 1

constexpr std::size_t kMaxTextLength = 128;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

using Buffer = std::array<char, kMaxTextLength>;

// Each iteration does one operation, on the next operands.
template <class Operation>
void Register(const std::string& name, std::size_t operands, Operation operation) {
  benchmark::RegisterBenchmark(name.c_str(), [operands, operation](benchmark::State& state) {
    std::size_t i = 0;
    for ([[maybe_unused]] auto iteration : state) {
      benchmark::DoNotOptimize(operation(i));
      i = i + 1 < operands ? i + 1 : 0;
    }
  });
}

bool IsNear(double left, double right) { return std::abs(left - right) <= 1e-12 * std::abs(right); }

// ---- Converting

constexpr std::array<std::size_t, 2> kCounts = {1, 1000};

double FactorOf(const EngineeringUnits& units, std::int32_t code) {
  return units.Find(code).factor;
}

// Values and the place for their results; several subjects share them.
template <class Value>
struct Values {
  std::vector<Value> from;
  std::vector<Value> to;
};

// Each iteration converts `count` values. `convert` gets them and their number, and does all of
// them in one call. `read` gets what is compared with the result of the first subject of a row.
template <class Value>
class ConversionRow {
 public:
  ConversionRow(std::string row, std::vector<Value> values, double (*read)(const Value&))
      : row_(std::move(row)),
        values_(std::make_shared<Values<Value>>(Values<Value>{values, values})),
        read_(read) {}

  template <class Convert>
  void Add(const char* subject, Convert convert) {
    const auto values = values_;
    const std::size_t all = values->from.size();
    convert(values->from.data(), all, values->to.data());
    if (expected_.empty()) {
      expected_ = values->to;
    }
    for (std::size_t i = 0; i < all; ++i) {
      Require(IsNear(read_(values->to[i]), read_(expected_[i])), "a conversion is wrong");
    }
    for (const std::size_t count : kCounts) {
      benchmark::RegisterBenchmark(NameWithSize("quantity/" + row_ + "/" + subject, count).c_str(),
                                   [values, convert, count](benchmark::State& state) {
                                     for ([[maybe_unused]] auto iteration : state) {
                                       convert(values->from.data(), count, values->to.data());
                                       benchmark::ClobberMemory();
                                     }
                                     SetOperations(state, count);
                                   });
    }
  }

 private:
  std::string row_;
  std::shared_ptr<Values<Value>> values_;
  double (*read_)(const Value&);
  std::vector<Value> expected_;
};

// What a host writes that keeps two factors.
struct Factors {
  double from;
  double to;
};

void ConvertPlainNumbers(const double* values, std::size_t count, double* results,
                         Factors factors) {
  for (std::size_t i = 0; i < count; ++i) {
    results[i] = factors.from * values[i] / factors.to;
  }
}

void ConvertPlainStructs(const kelmo_quantity* values, std::size_t count, kelmo_quantity* results,
                         Factors factors, std::int32_t code) {
  for (std::size_t i = 0; i < count; ++i) {
    results[i] =
        kelmo_quantity_of(factors.from * values[i].number / factors.to,
                          factors.from * values[i].absolute_tolerance / factors.to, 0, code);
  }
}

// Lengths in units of the codes, mixed.
std::vector<kelmo_quantity> RandomQuantities(std::initializer_list<std::int32_t> codes,
                                             std::size_t count) {
  RandomNumbers random(1);
  std::vector<kelmo_quantity> quantities;
  for (std::size_t i = 0; i < count; ++i) {
    const auto index = static_cast<std::size_t>(random.Below(static_cast<int>(codes.size())));
    quantities.push_back(
        kelmo_quantity_of(1 + 1000 * random.Fraction(), 0.01, 0, *(codes.begin() + index)));
  }
  return quantities;
}

std::vector<double> NumbersOf(const std::vector<kelmo_quantity>& quantities) {
  std::vector<double> numbers;
  numbers.reserve(quantities.size());
  for (const kelmo_quantity& quantity : quantities) {
    numbers.push_back(quantity.number);
  }
  return numbers;
}

double ReadNumber(const double& number) { return number; }
double ReadQuantity(const kelmo_quantity& quantity) { return quantity.number; }

#ifdef KELMO_HAS_UDUNITS

struct UdunitsDeleter {
  void operator()(ut_system* system) const { ut_free_system(system); }
  void operator()(ut_unit* unit) const { ut_free(unit); }
  void operator()(cv_converter* converter) const { cv_free(converter); }
};
using UdunitsUnit = std::unique_ptr<ut_unit, UdunitsDeleter>;
using UdunitsConverter = std::unique_ptr<cv_converter, UdunitsDeleter>;

// The units that come with the library.
ut_system* Udunits() {
  static const std::unique_ptr<ut_system, UdunitsDeleter> system = [] {
    ut_set_error_message_handler(&ut_ignore);
    return std::unique_ptr<ut_system, UdunitsDeleter>(ut_read_xml(nullptr));
  }();
  Require(system != nullptr, "UDUNITS does not find its units");
  return system.get();
}

UdunitsUnit ParsedByUdunits(const std::string& text) {
  return UdunitsUnit(ut_parse(Udunits(), text.c_str(), UT_UTF8));
}

std::shared_ptr<cv_converter> UdunitsConversion(const std::string& from, const std::string& to) {
  std::shared_ptr<cv_converter> converter(
      ut_get_converter(ParsedByUdunits(from).get(), ParsedByUdunits(to).get()), UdunitsDeleter());
  Require(converter != nullptr, "UDUNITS does not convert");
  return converter;
}

#endif

// The plain numbers of `quantities`, which are `from`.
ConversionRow<double> MakeNumbersRow(const EngineeringUnits& units, const char* row,
                                     const std::vector<kelmo_quantity>& quantities,
                                     std::int32_t from, std::int32_t to) {
  ConversionRow<double> numbers(row, NumbersOf(quantities), &ReadNumber);
  numbers.Add("kelmo",
              [&units, from, to](const double* values, std::size_t count, double* results) {
                kelmo_units_convert(units.Units(), from, to, values, count, results);
              });
  return numbers;
}

ConversionRow<kelmo_quantity> MakeStructsRow(const EngineeringUnits& units, const char* row,
                                             const std::vector<kelmo_quantity>& quantities,
                                             std::int32_t to) {
  ConversionRow<kelmo_quantity> structs(row, quantities, &ReadQuantity);
  structs.Add("kelmo", [&units, to](const kelmo_quantity* values, std::size_t count,
                                    kelmo_quantity* results) {
    kelmo_quantity_convert(units.Units(), values, count, to, results);
  });
  return structs;
}

void RegisterConversions(const EngineeringUnits& units) {
  const Factors factors = {FactorOf(units, kInch), FactorOf(units, kMillimetre)};
  const auto inches = RandomQuantities({kInch}, kCounts.back());
  auto numbers = MakeNumbersRow(units, "convert_numbers", inches, kInch, kMillimetre);
  numbers.Add("plain_loop", [factors](const double* values, std::size_t count, double* results) {
    ConvertPlainNumbers(values, count, results, factors);
  });
#ifdef KELMO_HAS_UDUNITS
  numbers.Add("udunits", [converter = UdunitsConversion("inch", "mm")](
                             const double* values, std::size_t count, double* results) {
    cv_convert_doubles(converter.get(), values, count, results);
  });
#endif
  auto structs = MakeStructsRow(units, "convert_structs", inches, kMillimetre);
  structs.Add("plain_loop",
              [factors](const kelmo_quantity* values, std::size_t count, kelmo_quantity* results) {
                ConvertPlainStructs(values, count, results, factors, kMillimetre);
              });

  const auto lengths = RandomQuantities({kInch, kMetre, kMillimetre, 10009}, kCounts.back());
  std::unordered_map<std::int32_t, double> factorsOfCodes;
  for (const kelmo_quantity& length : lengths) {
    factorsOfCodes.emplace(length.code, FactorOf(units, length.code));
  }
  auto mixed = MakeStructsRow(units, "convert_mixed", lengths, kMillimetre);
  mixed.Add("std_unordered_map", [factors, factorsOfCodes](const kelmo_quantity* values,
                                                           std::size_t count,
                                                           kelmo_quantity* results) {
    for (std::size_t i = 0; i < count; ++i) {
      ConvertPlainStructs(values + i, 1, results + i,
                          {factorsOfCodes.find(values[i].code)->second, factors.to}, kMillimetre);
    }
  });
}

void RegisterPointConversions(const EngineeringUnits& units) {
  const auto temperatures = RandomQuantities({kCelsius}, kCounts.back());
  auto numbers = MakeNumbersRow(units, "convert_points", temperatures, kCelsius, kFahrenheit);
  const kelmo_unit from = units.Find(kCelsius);
  const kelmo_unit to = units.Find(kFahrenheit);
  numbers.Add("plain_loop", [from, to](const double* values, std::size_t count, double* results) {
    for (std::size_t i = 0; i < count; ++i) {
      results[i] = (from.factor * values[i] + from.offset - to.offset) / to.factor;
    }
  });
#ifdef KELMO_HAS_UDUNITS
  numbers.Add("udunits", [converter = UdunitsConversion("degC", "degF")](
                             const double* values, std::size_t count, double* results) {
    cv_convert_doubles(converter.get(), values, count, results);
  });
#endif
  auto structs = MakeStructsRow(units, "convert_point_structs", temperatures, kFahrenheit);
  structs.Add("plain_loop", [from, to](const kelmo_quantity* values, std::size_t count,
                                       kelmo_quantity* results) {
    ConvertPlainStructs(values, count, results, {from.factor, to.factor}, to.code);
    for (std::size_t i = 0; i < count; ++i) {
      results[i].number = (from.factor * values[i].number + from.offset - to.offset) / to.factor;
    }
  });
}

// ---- Computing

constexpr std::size_t kOperands = 4096;  // a processor learns to predict a few hundred

// Pairs of metres and inches. The first library has another inch.
struct Pairs {
  std::vector<kelmo_quantity> left = RandomQuantities({kMetre, kInch}, kOperands);
  std::vector<kelmo_quantity> right = {left.rbegin(), left.rend()};
  std::vector<Double> leftDoubles = DoublesOf(left);
  std::vector<Double> rightDoubles = DoublesOf(right);

 private:
  static std::vector<Double> DoublesOf(const std::vector<kelmo_quantity>& quantities) {
    std::vector<Double> doubles;
    doubles.reserve(quantities.size());
    for (const auto& [number, absolute, relative, code, reserved] : quantities) {
      doubles.emplace_back(number, absolute, relative, code);
    }
    return doubles;
  }
};

void RegisterArithmetic(const EngineeringUnits& units, Pairs& pairs) {
  const auto add = [&units, &pairs](std::size_t i) {
    kelmo_quantity sum = {};
    kelmo_quantity_add(units.Units(), &pairs.left[i], &pairs.right[i], &sum);
    return sum;
  };
  const auto compare = [&units, &pairs](std::size_t i) {
    std::int32_t order = 0;
    kelmo_quantity_compare(units.Units(), &pairs.left[i], &pairs.right[i], &order);
    return order;
  };
  for (std::size_t i = 0; i < kOperands; ++i) {
    const kelmo_quantity& left = pairs.left[i];
    const kelmo_quantity& right = pairs.right[i];
    const double leftFactor = FactorOf(units, left.code);
    const double rightFactor = FactorOf(units, right.code);
    Require(add(i).number == left.number + rightFactor * right.number / leftFactor,
            "a sum is wrong");
    const double difference = leftFactor * left.number - rightFactor * right.number;
    Require(compare(i) == (difference > 0 ? 1 : 0) - (difference < 0 ? 1 : 0),
            "a comparison is wrong");
  }
  Register("quantity/add/kelmo", kOperands, add);
  Register("quantity/compare/kelmo", kOperands, compare);
  Register("quantity/add/double", kOperands,
           [&pairs](std::size_t i) { return pairs.leftDoubles[i] + pairs.rightDoubles[i]; });
  Register("quantity/compare/double", kOperands,
           [&pairs](std::size_t i) { return pairs.leftDoubles[i] < pairs.rightDoubles[i]; });
}

// All units but those whose symbol another unit has too, in random order.
struct Searched {
  std::vector<kelmo_unit> units;
  std::vector<std::string> symbols;
};

Searched RandomSearches(const EngineeringUnits& units) {
  std::vector<kelmo_unit> unique;
  kelmo_unit unit = {};
  unit.size = sizeof unit;
  for (std::size_t i = 0; i < kelmo_units_count(units.Units(), 0); ++i) {
    kelmo_unit found = unit;
    kelmo_units_at(units.Units(), units.German(), 0, i, &unit);
    if (kelmo_units_find_text(units.Units(), units.German(), 0, unit.symbol.data, unit.symbol.size,
                              &found, nullptr) == KELMO_OK &&
        found.code == unit.code) {
      unique.push_back(unit);
    }
  }
  RandomNumbers random(1);
  Searched searched;
  for (std::size_t i = 0; i < kOperands; ++i) {
    searched.units.push_back(
        unique[static_cast<std::size_t>(random.Below(static_cast<int>(unique.size())))]);
    searched.symbols.emplace_back(searched.units.back().symbol.data);
  }
  return searched;
}

void RegisterSearches(const EngineeringUnits& units, const Searched& searched) {
  std::unordered_map<std::int32_t, kelmo_unit> byCode;
  std::unordered_map<std::string_view, kelmo_unit> bySymbol;
  for (std::size_t i = 0; i < kOperands; ++i) {
    byCode.emplace(searched.units[i].code, searched.units[i]);
    bySymbol.emplace(searched.symbols[i], searched.units[i]);
  }
  const auto findCode = [&units, &searched](std::size_t i) {
    kelmo_unit unit = {};
    unit.size = sizeof unit;
    kelmo_units_find(units.Units(), units.German(), searched.units[i].code, &unit);
    return unit;
  };
  const auto findText = [&units, &searched](std::size_t i) {
    const std::string& symbol = searched.symbols[i];
    kelmo_unit unit = {};
    unit.size = sizeof unit;
    kelmo_units_find_text(units.Units(), units.German(), 0, symbol.data(), symbol.size(), &unit,
                          nullptr);
    return unit;
  };
  for (std::size_t i = 0; i < kOperands; ++i) {
    Require(findCode(i).symbol.data == searched.units[i].symbol.data, "a search is wrong");
    Require(findText(i).code == searched.units[i].code, "a search for a text is wrong");
  }
  Register("quantity/find_code/kelmo", kOperands, findCode);
  Register("quantity/find_code/std_unordered_map", kOperands, [byCode, &searched](std::size_t i) {
    return byCode.find(searched.units[i].code)->second;
  });
  Register("quantity/find_text/kelmo", kOperands, findText);
  Register("quantity/find_text/std_unordered_map", kOperands, [bySymbol, &searched](std::size_t i) {
    return bySymbol.find(searched.symbols[i])->second;
  });
}

// ---- Printing

// Magnitudes from 2^minExponent to below 2^maxExponent, positive and negative.
struct PrintedShape {
  const char* row;
  int minExponent;
  int maxExponent;
  int minDecimals;
  int maxDecimals;
};

constexpr PrintedShape kPrintedShapes[] = {
    {"print_usual", 0, 20, 0, 3},  {"print_integers", 0, 30, 0, 0}, {"print_small", -20, 0, 4, 9},
    {"print_large", 20, 40, 0, 2}, {"print_many", 0, 17, 7, 9},     {"print_any", -20, 20, 0, 9},
};
constexpr std::array<double, 10> kTolerances = {1,    0.1,  0.01, 0.001, 1e-4,
                                                1e-5, 1e-6, 1e-7, 1e-8,  1e-9};
constexpr int kShortest = -1;  // as decimals: all digits

struct Printed {
  kelmo_quantity quantity;
  double rounded;
  int decimals;
  Double value;  // of the first library
};

std::vector<Printed> RandomPrinted(const EngineeringUnits& units, const PrintedShape& shape) {
  RandomNumbers random(1);
  std::vector<Printed> printed;
  for (std::size_t i = 0; i < kOperands; ++i) {
    const double number = random.OfMagnitude(shape.minExponent, shape.maxExponent);
    const int decimals =
        shape.minDecimals + random.Below(shape.maxDecimals - shape.minDecimals + 1);
    const double tolerance =
        decimals != kShortest ? kTolerances[static_cast<std::size_t>(decimals)] : 0;
    const kelmo_quantity quantity = kelmo_quantity_of(number, tolerance, 0, kMillimetre);
    double rounded = number;
    Require(decimals == kShortest ||
                kelmo_quantity_round(units.Units(), &quantity, &rounded) == KELMO_OK,
            "a number cannot be rounded");
    printed.push_back({quantity, rounded, decimals, Double(number, tolerance, 0, kMetre)});
  }
  return printed;
}

std::string_view PrintedByKelmo(const kelmo_units* units, const kelmo_view* view,
                                const kelmo_quantity& quantity, std::uint32_t flags,
                                Buffer& buffer) {
  kelmo_print_options options = {};
  options.size = sizeof options;
  options.flags = flags;
  std::size_t size = 0;
  kelmo_quantity_print(units, view, &quantity, &options, buffer.data(), buffer.size(), &size);
  return {buffer.data(), size};
}

std::string_view PrintedByToChars(const Printed& printed, Buffer& buffer) {
  char* const end = buffer.data() + buffer.size();
  const std::to_chars_result result =
      printed.decimals == kShortest ? std::to_chars(buffer.data(), end, printed.rounded)
                                    : std::to_chars(buffer.data(), end, printed.rounded,
                                                    std::chars_format::fixed, printed.decimals);
  return {buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())};
}

// With the symbol, as a host would. All digits: those that are always enough.
std::string_view PrintedBySnprintf(const Printed& printed, Buffer& buffer) {
  const int size = printed.decimals == kShortest
                       ? std::snprintf(buffer.data(), buffer.size(), "%.17g mm", printed.rounded)
                       : std::snprintf(buffer.data(), buffer.size(), "%.*f mm", printed.decimals,
                                       printed.rounded);
  return {buffer.data(), static_cast<std::size_t>(size)};
}

std::string WithComma(std::string_view text) {
  std::string result(text);
  std::replace(result.begin(), result.end(), '.', ',');
  return result;
}

std::string WithoutMarks(std::string_view text) {
  std::string result(text);
  result.erase(std::remove(result.begin(), result.end(), '.'), result.end());
  return result;
}

// Each iteration prints one value, the next one.
template <class Print>
void RegisterPrinting(const std::string& row, const char* subject, std::vector<Printed>& printed,
                      Print print) {
  Register("quantity/" + row + "/" + subject, kOperands, [&printed, print](std::size_t i) {
    Buffer buffer;  // not initialised: no host does that
    benchmark::DoNotOptimize(buffer.data());
    const auto text = print(printed[i], buffer);
    benchmark::ClobberMemory();
    return text.size();
  });
}

#ifdef KELMO_HAS_ICU_MESSAGES

// Formatters for each number of decimals, made before.
class IcuFormatters {
 public:
  explicit IcuFormatters(const icu::MeasureUnit& unit) {
    using icu::number::Precision;
    const auto base = icu::number::NumberFormatter::withLocale(icu::Locale::getGermany())
                          .grouping(UNUM_GROUPING_OFF)
                          .unit(unit)
                          .unitWidth(UNUM_UNIT_WIDTH_SHORT);
    for (int decimals = 0; decimals < static_cast<int>(kTolerances.size()); ++decimals) {
      formatters_.push_back(base.precision(Precision::fixedFraction(decimals)));
    }
    formatters_.push_back(base.precision(Precision::unlimited()));
  }

  std::string Print(const Printed& printed) const {
    const std::size_t index = printed.decimals != kShortest
                                  ? static_cast<std::size_t>(printed.decimals)
                                  : formatters_.size() - 1;
    UErrorCode status = U_ZERO_ERROR;
    std::string text;
    formatters_[index].formatDouble(printed.rounded, status).toString(status).toUTF8String(text);
    return text;
  }

 private:
  std::vector<icu::number::LocalizedNumberFormatter> formatters_;
};

void RegisterIcu(const std::string& row, std::vector<Printed>& printed) {
  static const IcuFormatters numbers{icu::MeasureUnit()};
  static const IcuFormatters units{icu::MeasureUnit::getMillimeter()};
  for (const Printed& value : printed) {
    Buffer buffer;
    const std::string number = WithComma(PrintedByToChars(value, buffer));
    Require(value.decimals == kShortest || numbers.Print(value) == number,
            "ICU prints another number");
    Require(value.decimals == kShortest || units.Print(value) == number + " mm",
            "ICU prints another text");
  }
  RegisterPrinting(row, "icu_number", printed,
                   [](const Printed& value, Buffer&) { return numbers.Print(value); });
  RegisterPrinting(row, "icu_unit", printed,
                   [](const Printed& value, Buffer&) { return units.Print(value); });
}

#endif

void CheckPrinting(const EngineeringUnits& units, const Printed& printed) {
  Buffer buffer;
  const std::string number(PrintedByToChars(printed, buffer));
  const std::string expected = WithComma(number) + "\u00A0mm";
  const bool hasAll = printed.decimals == kShortest;
  const std::uint32_t flags = hasAll ? KELMO_PRINT_ALL_DIGITS : 0;
  const auto print = [&](const kelmo_view* view) {
    return std::string(PrintedByKelmo(units.Units(), view, printed.quantity, flags, buffer));
  };
  if (hasAll) {  // std::to_chars writes some with an exponent where the library does not
    std::string text = print(nullptr);
    Require(std::strtod(text.c_str(), nullptr) == printed.rounded, "all digits are wrong");
    return;
  }
  Require(print(units.German()) == expected, "kelmo_quantity_print gives another text");
  Require(WithoutMarks(print(units.GermanInGroups())) == expected, "groups are wrong");
  Require(PrintedBySnprintf(printed, buffer) == number + " mm", "snprintf prints another text");
}

// The rounded number as the first library prints it: without a symbol.
void RegisterFirstLibrary(const std::string& row, std::vector<Printed>& printed) {
  RegisterPrinting(row, "double_comma", printed,
                   [](Printed& value, Buffer&) { return value.value.to_string(L','); });
  RegisterPrinting(row, "double_locale", printed,
                   [](Printed& value, Buffer&) { return value.value.to_string(); });
  for (Printed& value : printed) {
    Buffer buffer;
    const std::string expected = WithComma(PrintedByToChars(value, buffer));
    const std::wstring text = value.value.to_string(L',');
    Require(std::wstring(expected.begin(), expected.end()) == text, "to_string(L',') is wrong");
    Require(value.value.to_string() == text, "to_string() is wrong");
  }
}

void RegisterPrintedShape(const EngineeringUnits& units, const PrintedShape& shape,
                          std::vector<Printed>& printed, bool hasLocale) {
  for (const Printed& value : printed) {
    CheckPrinting(units, value);
  }
  const std::string row = shape.row;
  const bool hasAll = shape.maxDecimals == kShortest;
  const std::uint32_t flags = hasAll ? KELMO_PRINT_ALL_DIGITS : 0;
  const auto byKelmo = [&units, flags](const kelmo_view* view, std::uint32_t more) {
    return [&units, view, all = flags | more](const Printed& value, Buffer& buffer) {
      return PrintedByKelmo(units.Units(), view, value.quantity, all, buffer);
    };
  };
  RegisterPrinting(row, "kelmo", printed, byKelmo(units.German(), 0));
  RegisterPrinting(row, "kelmo_groups", printed, byKelmo(units.GermanInGroups(), 0));
  RegisterPrinting(row, "kelmo_name", printed, byKelmo(units.German(), KELMO_PRINT_NAME));
  RegisterPrinting(row, "kelmo_number", printed, byKelmo(nullptr, KELMO_PRINT_NUMBER));
  RegisterPrinting(row, "std_to_chars", printed, &PrintedByToChars);
  RegisterPrinting(row, "snprintf", printed, &PrintedBySnprintf);
#ifdef KELMO_HAS_ICU_MESSAGES
  RegisterIcu(row, printed);
#endif
  if (hasLocale && !hasAll) {  // without a tolerance, its loop does not end
    RegisterFirstLibrary(row, printed);
  }
}

// ---- Reading

constexpr std::int32_t kUnknown = 0;
constexpr std::int32_t kAmbiguous = 1;

// What stands behind a number: as a German types it, and in the syntax of UDUNITS.
struct TypedUnit {
  const char* typed;
  const char* udunits;
  std::int32_t code;  // kUnknown or kAmbiguous: it is refused
};

// A number with `digits` digits, in groups or not, `decimals` of them behind the mark, and perhaps an
// exponent.
struct TypedShape {
  const char* row;
  int digits;
  int decimals;
  bool isGrouped;
  const char* exponent;
  std::vector<TypedUnit> units;
};

std::vector<TypedShape> TypedShapes() {
  return {
      {"read_millimetres", 3, 1, false, "", {{" mm", " mm", kMillimetre}}},
      {"read_groups", 6, 1, true, "", {{" kPa", " kPa", 17003}}},
      {"read_exponent", 3, 1, false, "e-3", {{" m\u00B3/h", " m3/h", 23003}}},
      {"read_degrees", 2, 0, false, "", {{"\u00B0", " degree", 40001}}},
      {"read_name", 3, 1, false, "", {{" Kubikmeter pro Stunde", " meter^3 per hour", 23003}}},
      {"read_keyboard", 3, 1, false, "", {{" m3/h", " m3/h", 23003}}},
      {"read_unknown", 3, 1, false, "", {{" Widgets", " Widgets", kUnknown}}},
      {"read_ambiguous", 3, 1, false, "", {{" kp\u00B7m", " kgf.m", kAmbiguous}}},
      {"read_any",
       6,
       3,
       false,
       "",
       {{" mm", " mm", 10003},
        {" cm", " cm", 10004},
        {" km", " km", 10006},
        {" in", " in", 10002},
        {" kPa", " kPa", 17003},
        {" bar", " bar", 17007},
        {" m\u00B3/h", " m3/h", 23003},
        {" l/min", " l/min", 23006},
        {"\u00B0", " degree", 40001},
        {" Meter", " meter", 10001},
        {" Kubikmeter", " meter^3", 11001}}},
  };
}

struct Typed {
  std::string text;
  std::string plain;  // the same with a point and without groups
  std::string udunits;
  std::int32_t base;         // code of the unit of the result; 0: refused
  double expected;           // NaN: refused
  double expectedOfUdunits;  // it refuses no text because of several meanings
  std::size_t unit;          // index of the shape's units
};

Typed RandomTyped(const EngineeringUnits& units, const TypedShape& shape, RandomNumbers& random) {
  const auto digit = [&random](int lowest) {
    return static_cast<char>('0' + lowest + random.Below(10 - lowest));
  };
  const int integers = shape.digits - shape.decimals;
  std::string text;
  std::string plain;
  if (random.Below(4) == 0) {
    text = plain = "-";
  }
  for (int i = 0; i < shape.digits; ++i) {
    if (i == integers) {
      text += ',';
      plain += '.';
    } else if (shape.isGrouped && i != 0 && (integers - i) % 3 == 0) {
      text += ' ';
    }
    const char next = digit(i == 0 ? 1 : 0);
    text += next;
    plain += next;
  }
  plain += shape.exponent;
  const auto index = static_cast<std::size_t>(random.Below(static_cast<int>(shape.units.size())));
  const TypedUnit& unit = shape.units[index];
  const double number = std::strtod(plain.c_str(), nullptr);
  Typed typed = {text + shape.exponent + unit.typed,
                 plain + unit.typed,
                 plain + unit.udunits,
                 0,
                 kNan,
                 unit.code == kAmbiguous ? number : kNan,
                 index};
  if (unit.code != kUnknown && unit.code != kAmbiguous) {
    typed.base = unit.code / 1000 * 1000 + kFirstUnit;
    typed.expected = typed.expectedOfUdunits = number * FactorOf(units, unit.code);
  }
  return typed;
}

// In the base unit, as the other subjects. NaN if the text is refused.
double ReadByKelmo(const EngineeringUnits& units, const Typed& typed, kelmo_problems* problems) {
  kelmo_quantity quantity = {};
  if (kelmo_quantity_read(units.Units(), units.German(), typed.text.data(), typed.text.size(),
                          nullptr, &quantity, problems) != KELMO_OK) {
    return kNan;
  }
  double base = 0;
  kelmo_units_convert(units.Units(), quantity.code, typed.base, &quantity.number, 1, &base);
  return base;
}

using FactorMap = std::unordered_map<std::string_view, double>;

double ReadByStrtod(const FactorMap& factors, const Typed& typed) {
  const char* const text = typed.plain.c_str();
  char* end = nullptr;
  const double number = std::strtod(text, &end);
  while (*end == ' ') {
    ++end;
  }
  const auto found = factors.find(
      std::string_view(end, typed.plain.size() - static_cast<std::size_t>(end - text)));
  return found != factors.end() ? number * found->second : kNan;
}

FactorMap FactorsOfTexts(const EngineeringUnits& units) {
  FactorMap factors;
  kelmo_unit unit = {};
  unit.size = sizeof unit;
  for (std::size_t i = 0; i < kelmo_units_count(units.Units(), 0); ++i) {
    kelmo_units_at(units.Units(), units.German(), 0, i, &unit);
    for (const kelmo_string text : {unit.symbol, unit.name}) {
      const auto [place, isNew] =
          factors.emplace(std::string_view(text.data, text.size), unit.factor);
      place->second = isNew ? unit.factor : kNan;
    }
  }
  factors.emplace("m3/h", FactorOf(units, 23003));  // as typed
  return factors;
}

#ifdef KELMO_HAS_UDUNITS

// The text is a unit for UDUNITS: a number makes it a multiple. `base` is the unit of the result.
double ReadByUdunits(const Typed& typed, ut_unit* base) {
  const UdunitsUnit unit = ParsedByUdunits(typed.udunits);
  if (unit == nullptr) {
    return kNan;
  }
  const UdunitsConverter converter(ut_get_converter(unit.get(), base));
  return cv_convert_double(converter.get(), 1);
}

#endif

bool IsSame(double result, double expected) {
  return std::isnan(expected) ? std::isnan(result) : IsNear(result, expected);
}

void RegisterTypedShape(const EngineeringUnits& units, const FactorMap& factors,
                        const TypedShape& shape, std::vector<Typed>& texts) {
  RandomNumbers random(1);
  for (std::size_t i = 0; i < kOperands; ++i) {
    texts.push_back(RandomTyped(units, shape, random));
    Require(IsSame(ReadByKelmo(units, texts[i], nullptr), texts[i].expected),
            "kelmo_quantity_read is wrong");
    Require(IsSame(ReadByStrtod(factors, texts[i]), texts[i].expected), "strtod is wrong");
  }
  const std::string name = std::string("quantity/") + shape.row + "/";
  Register(name + "kelmo", kOperands,
           [&units, &texts](std::size_t i) { return ReadByKelmo(units, texts[i], nullptr); });
  Register(name + "strtod_and_map", kOperands,
           [&factors, &texts](std::size_t i) { return ReadByStrtod(factors, texts[i]); });
  if (std::isnan(texts.front().expected)) {
    kelmo_problems* made = nullptr;
    Require(kelmo_problems_create(&made) == KELMO_OK, "there is no list of problems");
    const std::shared_ptr<kelmo_problems> problems(made, &kelmo_problems_destroy);
    Register(name + "kelmo_with_problem", kOperands, [&units, &texts, problems](std::size_t i) {
      kelmo_problems_clear(problems.get());
      return ReadByKelmo(units, texts[i], problems.get());
    });
  }
#ifdef KELMO_HAS_UDUNITS
  // The base units of the shape, parsed before.
  std::vector<std::shared_ptr<ut_unit>> bases;
  const std::map<std::int32_t, const char*> baseTexts = {
      {10, "m"}, {11, "m3"}, {17, "Pa"}, {23, "m3/s"}, {40, "degree"}, {0, "kgf.m"}};
  for (const TypedUnit& unit : shape.units) {
    bases.emplace_back(ParsedByUdunits(baseTexts.at(unit.code / 1000)).release(), UdunitsDeleter());
  }
  const auto byUdunits = [&texts, bases](std::size_t i) {
    return ReadByUdunits(texts[i], bases[texts[i].unit].get());
  };
  for (std::size_t i = 0; i < kOperands; ++i) {
    Require(IsSame(byUdunits(i), texts[i].expectedOfUdunits), "UDUNITS reads another value");
  }
  Register(name + "udunits", kOperands, byUdunits);
#endif
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  Init0(L"no folder");  // the units that the class Double computes with
  const EngineeringUnits units;
  RegisterConversions(units);
  RegisterPointConversions(units);
  Pairs pairs;
  RegisterArithmetic(units, pairs);
  const Searched searched = RandomSearches(units);
  RegisterSearches(units, searched);

  const bool hasLocale = MakeGermanLocale();
  if (hasLocale) {
    ::setenv("LC_ALL", "de_DE.UTF-8", 1);
  } else {
    (void)std::fputs("no localedef: the first library's to_string is left out\n", stderr);
  }
  std::list<std::vector<Printed>> printed;
  for (const PrintedShape& shape : kPrintedShapes) {
    RegisterPrintedShape(units, shape, printed.emplace_back(RandomPrinted(units, shape)),
                         hasLocale);
  }
  constexpr PrintedShape kAllDigits = {"print_all_digits", -20, 40, kShortest, kShortest};
  RegisterPrintedShape(units, kAllDigits, printed.emplace_back(RandomPrinted(units, kAllDigits)),
                       hasLocale);

  const FactorMap factors = FactorsOfTexts(units);
  std::list<std::vector<Typed>> typed;
  for (const TypedShape& shape : TypedShapes()) {
    RegisterTypedShape(units, factors, shape, typed.emplace_back());
  }
  return RunBenchmarks(argc, argv);
}
