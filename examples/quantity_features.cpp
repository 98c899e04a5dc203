// The sections of docs/quantities.md, each as a function. Run it in this folder.
#include <algorithm>
#include <iostream>
#include <kelmo/kelmo.hpp>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

// Codes of units/engineering.txt.
constexpr int kLength = 10;
constexpr int kPressure = 17;
constexpr int kMetre = 10001;
constexpr int kInch = 10002;
constexpr int kMillimetre = 10003;
constexpr int kPascal = 17001;
constexpr int kBar = 17007;
constexpr int kMillibar = 17008;
constexpr int kCelsius = 18002;
constexpr int kFahrenheit = 18003;
constexpr int kFahrenheitDifference = 19003;
constexpr int kDegree = 40001;

// A view of no texts: it has the languages of the user, and their format of numbers.
kelmo::View ViewOf(const char* language) {
  kelmo::ViewOptions options;
  options.languages = {language, "en"};
  options.numbers = kelmo::number_format_of_language(language);
  return {kelmo::Loader().finish(), options};
}

kelmo::Units EngineeringUnits() {
  kelmo::UnitsLoader loader;
  loader.add_file("../units/engineering.txt");
  for (const char* const language : {"de", "en", "fi", "fr", "ru"}) {
    loader.add_file(std::string("../units/LANG/") + language + "-val.txt",
                    kelmo::UnitsFormat::names);
  }
  return loader.finish();
}

void OwnUnits() {
  kelmo::UnitsLoader loader(kelmo::UnitsStart::built_in);  // those of the first library
  loader.add({10002, 0.0254, "in", "inch"});               // replaces its inch of 0.0273 m
  loader.add({10900, 0.25, "HM", "half module"});          // 10900 to 10999 are for hosts
  loader.add_kind(1000, "n", "strokes");                   // so are kinds from 1000 on
  loader.add({1000001, 1, "str", "stroke"});
  const kelmo::Units units = loader.finish();
  std::cout << units.convert(10, 10900, kMetre) << " m\n";
  for (const kelmo::Unit& unit : units.of_kind(kLength)) {
    std::cout << unit.code << ' ' << unit.symbol << ' ' << unit.name << '\n';
  }
}

void Languages(const kelmo::Units& units) {
  const kelmo::Quantity pressure(units, 1013.25, kMillibar, 0.1);
  for (const char* const language : {"de", "en", "ru"}) {
    kelmo::PrintOptions withName;
    withName.name = true;
    const kelmo::View view = ViewOf(language);
    std::cout << pressure.str(view) << " = " << pressure.str(view, withName) << '\n';
  }
}

void ComboBox(const kelmo::Units& units) {
  const kelmo::View view = ViewOf("ru");
  for (const kelmo::Unit& unit : units.of_kind(kPressure, view)) {
    std::cout << unit.symbol << "; ";
  }
  std::cout << '\n';
}

void Computing(const kelmo::Units& units) {
  const kelmo::Quantity side(units, 1.5, kMetre, 0.01);  // 1.5 m, known to 0.01 m
  const kelmo::Quantity edge(units, 10, kInch, 0.1);
  std::cout << side + edge << ", " << edge + side << ", " << 2 * edge << ", " << side / edge << '\n'
            << side.to(kMillimetre) << '\n';
  try {
    std::cout << side + kelmo::Quantity(units, 90, kDegree);
  } catch (const kelmo::UnitError& error) {
    std::cout << error.what() << '\n';
  }
}

void Printing(const kelmo::Units& units) {
  for (const double tolerance : {0.001, 0.05, 1.0, 150.0, 0.0}) {
    std::cout << kelmo::Quantity(units, 1234.5678, kMetre, tolerance) << "; ";
  }
  const kelmo::Quantity exact(units, 1234.5678, kMetre);  // the tolerance is 0
  kelmo::PrintOptions options;
  options.numbers = kelmo::number_format_of_language("de");
  options.numbers->is_grouped = 1;
  std::cout << exact.str(kelmo::View(), options) << '\n';
  options.all_digits = false;
  try {
    std::cout << exact.str(kelmo::View(), options);
  } catch (const kelmo::UnitError& error) {
    std::cout << error.what() << '\n';
  }
}

void Converting(const kelmo::Units& units) {
  kelmo::PrintOptions fine;
  fine.fine = true;
  for (const char* const typed : {"1 in", "5 ft", "36.6 °C"}) {
    const kelmo::Quantity given = units.read(typed);  // known to one unit of the last digit
    const kelmo::Quantity converted = given.to(given.code() == kInch      ? kMillimetre
                                               : given.code() == kCelsius ? kFahrenheit
                                                                          : kMetre);
    std::cout << typed << " = " << converted.number() << ": " << converted << ", or "
              << converted.str(kelmo::View(), fine) << ", or " << converted.with_tolerance(0.1)
              << '\n';
  }
}

void Placeholders(const kelmo::Units& units) {
  kelmo::Loader loader;
  loader.add_memory("de Deutsch\npump Druck {p}, Temperatur {t:.1f}\n", "de.txt");
  const kelmo::View view(loader.finish(), {"de"});
  std::cout << view.tr("pump", kelmo::arg("p", kelmo::Quantity(units, 2.5, kBar, 0.1)),
                       kelmo::arg("t", kelmo::Quantity(units, 21.75, kCelsius, 0.01)))
            << '\n';
}

void Reading(const kelmo::Units& units) {
  const kelmo::View view = ViewOf("de");
  for (const char* const typed :
       {"12,5 mm", "1 234,5 kPa", "-3,2e-3 m3/h", "90°", "12.5 mm", "7 Pfund", "7", "3 a", "5 м"}) {
    kelmo::Problems problems;
    if (const auto quantity = units.read(typed, view, problems)) {
      std::cout << typed << " -> " << quantity->str(view) << '\n';
    } else {
      const kelmo::Problem problem = problems.at(0);
      std::cout << typed << " -> " << problem.text << '\n';
    }
  }
  kelmo::ReadOptions options;
  options.kind = kPressure;
  options.code = kPascal;  // of a number without a unit
  std::cout << units.read("5", view, options) << '\n';
  try {
    units.read("5 m", view, options);
  } catch (const kelmo::ReadError& error) {
    std::cout << error.what() << '\n';
  }
}

void Temperatures(const kelmo::Units& units) {
  const kelmo::Quantity inside(units, 21.5, kCelsius, 0.1);
  const kelmo::Quantity outside(units, -40, kCelsius, 0.1);
  std::cout << outside.to(kFahrenheit) << '\n' << inside - outside << '\n';
  const kelmo::Quantity warmer =
      inside + kelmo::Quantity(units, 9, kFahrenheitDifference, 0.1);  // 9 °F more
  std::cout << warmer << '\n';
  try {
    std::cout << inside + outside;
  } catch (const kelmo::UnitError& error) {
    std::cout << error.what() << '\n';
  }
}

void Sorting(const kelmo::Units& units) {
  std::vector<kelmo::Quantity> lengths;
  for (const char* const typed : {"1 m", "1 in", "20 mm", "0.5 ft", "100 cm"}) {
    lengths.push_back(units.read(typed));
  }
  std::sort(lengths.begin(), lengths.end());
  for (const kelmo::Quantity& length : lengths) {
    std::cout << length << "; ";
  }
  const std::unordered_set<kelmo::Quantity> different(lengths.begin(), lengths.end());
  std::cout << different.size() << " different, together " << kelmo::sum(lengths) << '\n';
}

void Files() {
  kelmo::Problems problems;
  kelmo::UnitsLoader loader;
  loader.add_memory(
      "# code, factor, offset, symbol, name\n"
      "17000\t\t\tp\tpressure\n"
      "17001\t1\t\tPa\tpascal\n"
      "17900\t101325/760\t\tмм рт. ст.\tmillimetre of mercury\n"
      "17901\t0,5\t\thPa\thalf a pascal\n"
      "17902\t100\t\thPa\n",
      "own_units.txt", problems);
  loader.add_memory("10001 1.0 m meter\n20001 1.0 m2 square meter\n", "phyval.txt", problems,
                    kelmo::UnitsFormat::four_fields);
  const kelmo::Units units = loader.finish(problems);
  for (const kelmo::Problem& problem : problems) {
    std::cout << problem.text << '\n';
  }
  std::cout << units.read("760 мм рт. ст.").to(kPascal) << '\n';
}

}  // namespace

int main() try {
  OwnUnits();
  const kelmo::Units units = EngineeringUnits();
  Languages(units);
  ComboBox(units);
  Computing(units);
  Printing(units);
  Converting(units);
  Placeholders(units);
  Reading(units);
  Temperatures(units);
  Sorting(units);
  Files();
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
