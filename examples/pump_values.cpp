// The sheet of a pump with its values, in two languages, and what users type. Run it in this folder.
#include <algorithm>
#include <iostream>
#include <kelmo/kelmo.hpp>
#include <string>
#include <vector>

using kelmo::arg;
using kelmo::Quantity;

// Codes of units/engineering.txt, and one of this program.
constexpr int kMetre = 10001, kStage = 10900, kTurnPerSecond = 14001, kTurnPerMinute = 14002;
constexpr int kPressure = 17, kKilopascal = 17003, kM3PerHour = 23003, kLitrePerMinute = 23006;

static kelmo::Units LoadUnits() {
  kelmo::UnitsLoader loader;
  loader.add_file("../units/engineering.txt");
  loader.add_file("../units/LANG/de-val.txt", kelmo::UnitsFormat::names);
  loader.add_file("../units/LANG/en-val.txt", kelmo::UnitsFormat::names);
  loader.add({kStage, 16, "st", "stage"});  // 16 m: the head of one stage of this pump
  return loader.finish();
}

static void PrintSheet(const kelmo::View& view, const kelmo::Units& units) {
  const Quantity flow(units, 52.5, kM3PerHour, 0.05);  // known to 0.05 m³/h
  const Quantity head(units, 48, kMetre, 0.5);
  const Quantity speed(units, 2900, kTurnPerMinute, 6);
  std::cout << view.tr("sheet.title") << '\n'
            << view.tr("sheet.pump", "NP 50-200") << '\n'
            << view.tr("sheet.customer", arg("name", "Anna Berg"), arg("city", "Åbo")) << '\n'
            << view.tr("sheet.stages", kelmo::count(3)) << '\n'
            << view.tr("sheet.flow", flow, flow.to(kLitrePerMinute)) << '\n'
            << view.tr("sheet.head", head, head.to(kStage)) << '\n'
            << view.tr("sheet.speed", speed, speed.to(kTurnPerSecond)) << '\n'
            << view.tr("sheet.duty", arg("flow", flow), arg("head", head)) << '\n';
}

static void PrintSorted(const kelmo::View& view, const kelmo::Units& units) {
  std::vector<Quantity> pressures;
  for (const char* const text : {"4.7 bar", "1013 mbar", "35 psi", "300 kPa", "0.25 MPa"}) {
    pressures.push_back(units.read(text));  // without a view: the format of programs
  }
  std::sort(pressures.begin(), pressures.end());
  std::cout << view.tr("sheet.pressures") << '\n';
  for (const Quantity& pressure : pressures) {
    std::cout << "  " << pressure.str(view) << '\n';
  }
}

// What a user types, in kPa, or what is wrong with it.
static std::string Answer(const char* typed, const kelmo::View& view, const kelmo::Units& units) {
  kelmo::Problems problems;
  kelmo::ReadOptions options;
  options.kind = kPressure;
  if (const auto pressure = units.read(typed, view, problems, options)) {
    return view.tr("typed.read", pressure->to(kKilopascal), arg("typed", typed));
  }
  const kelmo::Problem problem = problems.at(0);
  return view.tr("typed." + std::to_string(problem.code), arg("typed", typed),
                 arg("column", problem.column));
}

int main() try {
  const kelmo::Units units = LoadUnits();
  kelmo::Loader loader;
  loader.add_folder("pump_values");
  const kelmo::Texts texts = loader.finish();
  for (const char* const language : {"de", "en"}) {
    const kelmo::View view(texts, {language, "en"});
    PrintSheet(view, units);
    PrintSorted(view, units);
    for (const char* const typed : {"4,7 bar", "4.7 bar", "1 200 mbar", "5 barr", "5", "3 m"}) {
      std::cout << Answer(typed, view, units) << '\n';
    }
    std::cout << '\n';
  }
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
