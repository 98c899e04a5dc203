// Units and quantities of the C++ face over the built file, as a host uses them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iomanip>
#include <kelmo/kelmo.hpp>
#include <limits>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <unordered_set>
#include <utility>
#include <vector>

#include "tests/support/scratch_folder.h"

namespace {

constexpr std::int32_t kMetre = 10001;
constexpr std::int32_t kMillimetre = 10003;
constexpr std::int32_t kPascal = 17001;
constexpr std::int32_t kKilopascal = 17003;
constexpr std::int32_t kBar = 17007;
constexpr std::int32_t kKelvin = 18001;
constexpr std::int32_t kCelsius = 18002;
constexpr std::int32_t kCelsiusDifference = 19002;
constexpr std::int32_t kNoUnit = 99001;

constexpr std::string_view kUnits =
    "10000\t\t\tL\tlength\n"
    "10001\t1\t\tm\tmetre\n"
    "10003\t0.001\t\tmm\tmillimetre\n"
    "17000\t\t\tp\tpressure\n"
    "17001\t1\t\tPa\tpascal\n"
    "17003\t1000\t\tkPa\tkilopascal\n"
    "17007\t1e5\t\tbar\tbar\n"
    "18000\t\t\tT\ttemperature\n"
    "18001\t1\t\tK\tkelvin\t19001\n"
    "18002\t1\t273.15\t\u00B0C\tdegree Celsius\t19002\n"
    "19000\t\t\tT\ttemperature difference\n"
    "19001\t1\t\tK\tkelvin (difference)\n"
    "19002\t1\t\t\u00B0C\tdegree Celsius (difference)\n";

constexpr std::string_view kGermanNames =
    "de Deutsch\n10000\tL\tL\u00E4nge\n10001\tm\tMeter\n10003\tmm\tMillimeter\n17007\tbar\tBar\n";
constexpr std::string_view kRussianNames =
    "ru \u0420\u0443\u0441\u0441\u043A\u0438\u0439\n"
    "10001\t\u043C\t\u043C\u0435\u0442\u0440\n";

kelmo::Units Load() {
  kelmo::UnitsLoader loader;
  loader.add_memory(kUnits, "units.txt");
  loader.add_memory(kGermanNames, "de-val.txt", kelmo::UnitsFormat::names);
  loader.add_memory(kRussianNames, "ru-val.txt", kelmo::UnitsFormat::names);
  return loader.finish();
}

kelmo::View ViewOf(const std::string& language) {
  kelmo::Loader loader;
  loader.add_memory(language + "\nhead Head {0}\nbig {0:.2f}\nnamed {head} and {1}\n",
                    language + ".txt");
  return kelmo::View(loader.finish(), {language});
}

template <class Thrown>
struct Caught {
  kelmo_status status;
  std::string what;
};

// The exception of a call, which is exactly a Thrown: no class that derives from it.
template <class Thrown, class Call>
Caught<Thrown> Catch(Call call) {
  try {
    call();
  } catch (const kelmo::Error& error) {
    EXPECT_EQ(typeid(error), typeid(Thrown)) << error.what();
    return {error.status(), error.what()};
  }
  ADD_FAILURE() << "no exception";
  return {KELMO_OK, ""};
}

template <class Thrown, class Call>
void ExpectThrow(Call call, kelmo_status status, const std::string& what) {
  const Caught<Thrown> caught = Catch<Thrown>(call);
  EXPECT_EQ(caught.status, status) << what;
  EXPECT_EQ(caught.what, what);
}

template <class Call>
void ExpectUnitError(Call call, kelmo_status status, const std::string& what) {
  ExpectThrow<kelmo::UnitError>(call, status, what);
}

std::vector<std::string> TextsOf(const kelmo::Problems& problems) {
  std::vector<std::string> texts;
  for (const kelmo::Problem& problem : problems) {
    texts.push_back(problem.text);
  }
  return texts;
}

// All parts of a unit.
std::string Print(const kelmo::Unit& unit) {
  std::ostringstream text;
  text << unit.code << ' ' << unit.kind << ' ' << unit.difference << ' ' << unit.factor << ' '
       << unit.offset << ' ' << unit.symbol << ' ' << unit.name;
  return text.str();
}

std::vector<std::string> Print(const std::vector<kelmo::Unit>& units) {
  std::vector<std::string> texts;
  for (const kelmo::Unit& unit : units) {
    texts.push_back(Print(unit));
  }
  return texts;
}

std::string NoPoints(const std::string& units) {
  return "kelmo: points of a scale have differences, but no sums, products, ratios or relative "
         "tolerances: " +
         units;
}

using Lines = std::vector<std::string>;

// ---- Units

TEST(KelmoFaceUnits, FindsUnitsByTheirCode) {
  const kelmo::Units units = Load();
  const kelmo::View german = ViewOf("de");
  ASSERT_TRUE(units.find(kCelsius));
  EXPECT_EQ(Print(*units.find(kCelsius)), "18002 18 19002 1 273.15 \u00B0C degree Celsius");
  EXPECT_EQ(Print(*units.find(kMetre)), "10001 10 0 1 0 m metre");
  EXPECT_EQ(Print(*units.find(kMetre, german)), "10001 10 0 1 0 m Meter");
  EXPECT_EQ(Print(*units.find(kMetre, ViewOf("ru"))),
            "10001 10 0 1 0 \u043C \u043C\u0435\u0442\u0440");
  EXPECT_EQ(Print(*units.find(kPascal, german)), "17001 17 0 1 0 Pa pascal");
  EXPECT_FALSE(units.find(kNoUnit));
  EXPECT_FALSE(units.find(0));
}

TEST(KelmoFaceUnits, FindsUnitsByTheirSymbolOrName) {
  const kelmo::Units units = Load();
  const kelmo::View german = ViewOf("de");
  EXPECT_EQ(units.find("mm").code, kMillimetre);
  EXPECT_EQ(units.find("millimetre").code, kMillimetre);
  EXPECT_EQ(units.find(std::string_view("mm and more", 2)).code, kMillimetre);
  EXPECT_EQ(Print(units.find("Millimeter", german)), "10003 10 0 0.001 0 mm Millimeter");
  EXPECT_EQ(units.find("\u00B0C").code, kCelsius);
  EXPECT_EQ(units.find("\u00B0C", kelmo::View(), 19).code, kCelsiusDifference);
}

TEST(KelmoFaceUnits, TellWhyATextIsNoUnit) {
  const kelmo::Units units = Load();
  const kelmo::View german = ViewOf("de");
  ExpectThrow<kelmo::ReadError>([&] { units.find("furlong"); }, KELMO_UNKNOWN_UNIT,
                                "error: The unit is not known: \"furlong\"");
  ExpectThrow<kelmo::ReadError>(
      [&] { units.find("mm", german, 17); }, KELMO_DIFFERENT_KINDS,
      "error: The unit is one of another quantity: \"mm\" is a unit of L\u00E4nge, not of "
      "pressure");
  ExpectThrow<kelmo::ReadError>(
      [&] { units.find("\u043C", german); }, KELMO_AMBIGUOUS_UNIT,
      "error: The unit is ambiguous: \"\u043C\" only looks like 10001 Meter (m): it has letters of "
      "another script");
  ExpectThrow<kelmo::Error>([&] { units.find("\xFF"); }, KELMO_INVALID_UTF8,
                            "kelmo: a text, path, name or id is not UTF-8");
}

TEST(KelmoFaceUnits, ListsKindsAndTheirUnits) {
  const kelmo::Units units = Load();
  EXPECT_EQ(Print(units.kinds()),
            (Lines{"10000 10 0 0 0 L length", "17000 17 0 0 0 p pressure",
                   "18000 18 0 0 0 T temperature", "19000 19 0 0 0 T temperature difference"}));
  EXPECT_EQ(Print(units.kinds(ViewOf("de"))).front(), "10000 10 0 0 0 L L\u00E4nge");
  EXPECT_EQ(Print(units.of_kind(10)),
            (Lines{"10001 10 0 1 0 m metre", "10003 10 0 0.001 0 mm millimetre"}));
  EXPECT_EQ(Print(units.of_kind(10, ViewOf("de"))),
            (Lines{"10001 10 0 1 0 m Meter", "10003 10 0 0.001 0 mm Millimeter"}));
  EXPECT_EQ(units.of_kind(0).size(), 9U);
  EXPECT_TRUE(units.of_kind(99).empty());
}

TEST(KelmoFaceUnits, ConvertsPlainNumbers) {
  const kelmo::Units units = Load();
  EXPECT_EQ(units.convert(12.5, kBar, kKilopascal), 1250);
  EXPECT_EQ(units.convert(20, kCelsius, kKelvin), 293.15);
  const std::vector<double> bars = {1, 2.5, -3};
  std::vector<double> kilopascals(3);
  units.convert(kBar, kKilopascal, bars.data(), bars.size(), kilopascals.data());
  EXPECT_EQ(kilopascals, (std::vector<double>{100, 250, -300}));
  units.convert(kBar, kKilopascal, nullptr, 0, nullptr);
  ExpectUnitError([&] { (void)units.convert(1, kMetre, kBar); }, KELMO_DIFFERENT_KINDS,
                  "kelmo: m (length) and bar (pressure) are units of different quantities");
  ExpectUnitError([&] { (void)units.convert(1, kMetre, kNoUnit); }, KELMO_UNKNOWN_UNIT,
                  "kelmo: there is no unit 99001");
}

TEST(KelmoFaceUnits, MayBeNone) {
  const kelmo::Units none;
  EXPECT_EQ(none.handle(), nullptr);
  EXPECT_FALSE(none.find(kMetre));
  EXPECT_TRUE(none.kinds().empty());
  EXPECT_TRUE(none.of_kind(0).empty());
  ExpectThrow<kelmo::Error>([&] { none.find("m"); }, KELMO_INVALID_ARGUMENT,
                            "kelmo: KELMO_INVALID_ARGUMENT");
  ExpectThrow<kelmo::Error>([&] { none.read("1 m"); }, KELMO_INVALID_ARGUMENT,
                            "kelmo: KELMO_INVALID_ARGUMENT");
  kelmo::Problems problems;
  ExpectThrow<kelmo::Error>([&] { none.read("1 m", kelmo::View(), problems); },
                            KELMO_INVALID_ARGUMENT, "kelmo: KELMO_INVALID_ARGUMENT");
  EXPECT_TRUE(problems.empty());
  ExpectUnitError([&] { (void)none.convert(1, kMetre, kBar); }, KELMO_INVALID_ARGUMENT,
                  "kelmo: KELMO_INVALID_ARGUMENT");
  ExpectUnitError([&] { kelmo::Quantity(none, 1, kMetre); }, KELMO_UNKNOWN_UNIT,
                  "kelmo: there is no unit 10001");
}

TEST(KelmoFaceUnits, LiveAsLongAsAnyoneNeedsThem) {
  kelmo::Units units;
  std::optional<kelmo::Quantity> quantity;
  {
    const kelmo::Units loaded = Load();
    units = loaded;
    quantity.emplace(loaded, 2, kMetre, 0.5);
  }
  const std::string_view name = units.find(kMetre)->name;
  const kelmo::Quantity copy = *quantity;
  units = kelmo::Units();
  quantity.reset();
  EXPECT_EQ(name, "metre");  // the copy keeps them
  EXPECT_EQ(copy.str(), "2.0\u00A0m");
  EXPECT_EQ(copy.units().find(kBar)->symbol, "bar");
}

TEST(KelmoFaceUnits, AreNoneOnceTheyWereMovedFrom) {
  kelmo::Units units = Load();
  const kelmo::Units target = std::move(units);
  EXPECT_EQ(units.handle(), nullptr);  // NOLINT(bugprone-use-after-move): it is allowed
  EXPECT_TRUE(target.find(kMetre));
}

TEST(KelmoFaceUnits, GiveTheirHandleToTheFunctionsOfC) {
  kelmo_units_loader* loader = nullptr;
  ASSERT_EQ(kelmo_units_loader_create(KELMO_UNITS_AFTER_INIT, &loader), KELMO_OK);
  kelmo_units* made = nullptr;
  ASSERT_EQ(kelmo_units_loader_finish(loader, &made, nullptr), KELMO_OK);
  kelmo_units_loader_destroy(loader);
  const kelmo::Units units(made);
  EXPECT_EQ(units.handle(), made);
  EXPECT_EQ(kelmo_units_count(units.handle(), 0), units.of_kind(0).size());
}

// ---- Loading

TEST(KelmoFaceUnitsLoader, BeginsWithTheUnitsOfTheFirstLibrary) {
  const auto factor = [](kelmo::UnitsStart start, std::int32_t code) {
    const auto unit = kelmo::UnitsLoader(start).finish().find(code);
    return unit ? unit->factor : -1;
  };
  EXPECT_EQ(factor(kelmo::UnitsStart::none, 10002), -1);
  EXPECT_EQ(factor(kelmo::UnitsStart::built_in, 10002), 0.0273);
  EXPECT_GT(factor(kelmo::UnitsStart::built_in, 30001), 0);
  EXPECT_EQ(factor(kelmo::UnitsStart::after_init, 30001), 0);
  EXPECT_TRUE(kelmo::UnitsLoader().finish().kinds().empty());
}

TEST(KelmoFaceUnitsLoader, AddsTheUnitsAndKindsOfAHost) {
  kelmo::UnitsLoader loader;
  loader.add_memory(kUnits, "units.txt");
  kelmo::Problems problems;
  EXPECT_TRUE(loader.add({10900, 0.5, "stage", "pump stage"}, problems));
  loader.add({1000001, 2, "pt", ""});
  loader.add({1001001, 1, "\u00B0X", "degree X", 5, 1002001});
  loader.add({1002001, 1, "X", "X"});
  loader.add({kMetre, 1, "M", "my metre"});
  loader.add_kind(10, "l", "my length");
  loader.add_kind(1000, "s", "size");
  const kelmo::Units units = loader.finish(problems);
  EXPECT_EQ(TextsOf(problems), Lines());
  EXPECT_EQ(Print(*units.find(10900)), "10900 10 0 0.5 0 stage pump stage");
  EXPECT_EQ(Print(*units.find(1000001)), "1000001 1000 0 2 0 pt ");
  EXPECT_EQ(Print(*units.find(1001001)), "1001001 1001 1002001 1 5 \u00B0X degree X");
  EXPECT_EQ(Print(*units.find(kMetre)), "10001 10 0 1 0 M my metre");
  EXPECT_EQ(Print(units.kinds().front()), "10000 10 0 0 0 l my length");
  EXPECT_EQ(Print(units.kinds()[4]), "1000000 1000 0 0 0 s size");
  EXPECT_EQ(Print(units.kinds()[5]), "1001000 1001 0 0 0  ");
}

TEST(KelmoFaceUnitsLoader, RefusesUnitsThatAreNotAllowed) {
  kelmo::UnitsLoader loader;
  kelmo::Problems problems;
  const kelmo::NewUnit zero = {10900, 0, "x", ""};
  const std::string line =
      "error: A unit is dropped: the factor is not a number above 0 (unit \"10900\")";
  ExpectThrow<kelmo::Error>([&] { loader.add(zero); }, KELMO_INVALID_ARGUMENT, line);
  EXPECT_FALSE(loader.add(zero, problems));
  EXPECT_EQ(TextsOf(problems), Lines{line});
  EXPECT_EQ(problems.at(0).code, KELMO_PROBLEM_UNIT);
  EXPECT_EQ(problems.at(0).severity, kelmo::Severity::error);
  ExpectThrow<kelmo::Error>([&] { loader.add_kind(10, "3", "three"); }, KELMO_INVALID_ARGUMENT,
                            "error: A unit is dropped: the symbol begins like a number (unit "
                            "\"10\")");
  EXPECT_TRUE(loader.finish().of_kind(0).empty());
}

TEST(KelmoFaceUnitsLoader, RefusesNumbersThatNoKindHas) {
  kelmo::UnitsLoader loader;
  constexpr std::int32_t kWraps =
      536870912;  // 1000 times this is a multiple of 2 to the power of 32
  for (const std::int32_t kind :
       {0, -1, -kWraps + 10, 2147484, kWraps + 10, std::numeric_limits<std::int32_t>::min(),
        std::numeric_limits<std::int32_t>::max()}) {
    SCOPED_TRACE(kind);
    EXPECT_EQ(Catch<kelmo::Error>([&] { loader.add_kind(kind, "x", "x"); }).status,
              KELMO_INVALID_ARGUMENT);
  }
  loader.add_kind(2147483, "x", "the last kind");
  loader.add({2147483647, 1, "y", ""});
  EXPECT_EQ(Print(loader.finish().kinds()), Lines{"2147483000 2147483 0 0 0 x the last kind"});
}

TEST(KelmoFaceUnitsLoader, ReadsFilesOfAllFormats) {
  const ScratchFolder folder;
  folder.Write(L"\u043C\u043E\u0438 units.txt", kUnits);
  folder.Write(L"four.txt", "10009\t0.5\tft\tfoot\n");
  folder.Write(L"de-val.txt", kGermanNames);
  const auto file = folder.Path() / PortablePath(L"\u043C\u043E\u0438 units.txt");
  kelmo::Problems problems;
  kelmo::UnitsLoader loader;
  EXPECT_TRUE(loader.add_file(file, problems));
  EXPECT_TRUE(
      loader.add_file(folder.Path() / "four.txt", problems, kelmo::UnitsFormat::four_fields));
  loader.add_file((folder.Path() / "de-val.txt").u8string(), kelmo::UnitsFormat::names);
  loader.add_file(file);  // again: the later units count
  const kelmo::Units units = loader.finish(problems);
  EXPECT_EQ(TextsOf(problems), Lines());
  EXPECT_EQ(Print(*units.find(kMetre, ViewOf("de"))), "10001 10 0 1 0 m Meter");
  EXPECT_EQ(Print(*units.find(10009)), "10009 10 0 0.5 0 ft foot");
}

TEST(KelmoFaceUnitsLoader, ThrowsOrTellsWhatCannotBeRead) {
  kelmo::UnitsLoader loader;
  kelmo::Problems problems;
  const Caught<kelmo::Error> caught = Catch<kelmo::Error>([&] { loader.add_file("no such file"); });
  EXPECT_EQ(caught.status, KELMO_CANNOT_READ);
  EXPECT_FALSE(loader.add_file("no such file", problems));
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_EQ(problems.at(0).code, KELMO_PROBLEM_CANNOT_READ_UNITS);
  EXPECT_EQ(problems.at(0).file, "no such file");
  EXPECT_EQ(problems.at(0).text, caught.what);
  EXPECT_EQ(caught.what.substr(0, 21), "no such file: error: ");
  for (const std::string_view path : {"\xFF", "units\xC3.txt"}) {
    ExpectThrow<kelmo::Error>([&] { loader.add_file(path, problems); }, KELMO_INVALID_UTF8,
                              "kelmo: a text, path, name or id is not UTF-8");
  }
  ExpectThrow<kelmo::Error>([&] { loader.add_memory(kUnits, "\xFF"); }, KELMO_INVALID_UTF8,
                            "kelmo: a text, path, name or id is not UTF-8");
}

TEST(KelmoFaceUnitsLoader, KeepsTheRightLinesOfAFile) {
  constexpr std::string_view kLines = "10001\t1\t\tm\tmetre\n10002\tx\t\tin\tinch\n10003\n";
  const std::string first = "own.txt:2:7: error: A unit is dropped (\"x\" is not a number)";
  kelmo::UnitsLoader throwing;
  kelmo::UnitsLoader telling;
  kelmo::Problems problems;
  const Caught<kelmo::Error> caught =
      Catch<kelmo::Error>([&] { throwing.add_memory(kLines, "own.txt"); });
  telling.add_memory(kLines, "own.txt", problems);
  EXPECT_EQ(caught.status, KELMO_INVALID_ARGUMENT);
  ASSERT_EQ(problems.size(), 2U);
  EXPECT_EQ(caught.what, problems.at(0).text);
  EXPECT_EQ(problems.at(0).code, KELMO_PROBLEM_UNIT);
  EXPECT_EQ(problems.at(0).line, 2U);
  EXPECT_EQ(problems.at(0).file, "own.txt");
  EXPECT_EQ(problems.at(1).line, 3U);
  EXPECT_EQ(Print(throwing.finish().of_kind(0)), Lines{"10001 10 0 1 0 m metre"});
  EXPECT_EQ(Print(telling.finish().of_kind(0)), Lines{"10001 10 0 1 0 m metre"});
}

TEST(KelmoFaceUnitsLoader, DropsPointsWhoseDifferencesDoNotFit) {
  constexpr std::string_view kPoints = "18002\t1\t273.15\t\u00B0C\tdegree Celsius\t19002\n";
  kelmo::UnitsLoader loader;
  loader.add_memory(kPoints, "points.txt");
  const Caught<kelmo::Error> caught = Catch<kelmo::Error>([&] { loader.finish(); });
  EXPECT_EQ(caught.status, KELMO_INVALID_ARGUMENT);
  loader.add_memory(kPoints, "points.txt");
  kelmo::Problems problems;
  EXPECT_FALSE(loader.finish(problems).find(kCelsius));
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_EQ(problems.at(0).code, KELMO_PROBLEM_UNIT_DIFFERENCE);
  EXPECT_EQ(problems.at(0).text, caught.what);
}

TEST(KelmoFaceUnitsLoader, FinishesWithNamesOfNoUnit) {
  kelmo::UnitsLoader loader;
  loader.add_memory("de\n10001\tm\tMeter\n", "de-val.txt", kelmo::UnitsFormat::names);
  kelmo::Problems problems;
  EXPECT_TRUE(loader.finish(problems).kinds().empty());
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_EQ(problems.at(0).code, KELMO_PROBLEM_NAME_OF_NO_UNIT);
  loader.add_memory("de\n10001\tm\tMeter\n", "de-val.txt", kelmo::UnitsFormat::names);
  EXPECT_NO_THROW(loader.finish());
}

TEST(KelmoFaceUnitsLoader, IsEmptyOnceItIsFinished) {
  kelmo::UnitsLoader loader(kelmo::UnitsStart::built_in);
  EXPECT_FALSE(loader.finish().kinds().empty());
  EXPECT_TRUE(loader.finish().kinds().empty());
  loader.add({kMetre, 1, "m", ""});
  EXPECT_EQ(loader.finish().of_kind(0).size(), 1U);
}

TEST(KelmoFaceUnitsLoader, RefusesToServeOnceItWasMovedFrom) {
  kelmo::UnitsLoader loader;
  kelmo::UnitsLoader target = std::move(loader);
  kelmo::Problems problems;
  const std::string what = "kelmo: KELMO_INVALID_ARGUMENT";
  const std::vector<std::function<void()>> calls = {
      // NOLINTBEGIN(bugprone-use-after-move): it is allowed
      [&] {
        loader.add({kMetre, 1, "m", ""});
      },
      [&] {
        loader.add({kMetre, 1, "m", ""}, problems);
      },
      [&] { loader.add_kind(10, "L", "length"); },
      [&] { loader.add_file("units.txt"); },
      [&] { loader.add_file("units.txt", problems); },
      [&] { loader.add_memory(kUnits, "units.txt"); },
      [&] { loader.add_memory(kUnits, "units.txt", problems); },
      [&] { loader.finish(); },
      [&] { loader.finish(problems); },
      // NOLINTEND(bugprone-use-after-move)
  };
  for (const auto& call : calls) {
    ExpectThrow<kelmo::Error>(call, KELMO_INVALID_ARGUMENT, what);
  }
  EXPECT_TRUE(problems.empty());
  EXPECT_TRUE(target.finish().kinds().empty());
}

// ---- Reading

TEST(KelmoFaceReading, ReadsWhatUsersType) {
  const kelmo::Units units = Load();
  const kelmo::Quantity typed = units.read("12,5 bar", ViewOf("de"));
  EXPECT_EQ(typed.number(), 12.5);
  EXPECT_EQ(typed.code(), kBar);
  EXPECT_EQ(typed.absolute_tolerance(), 0.1);
  EXPECT_EQ(typed.relative_tolerance(), 0);
  EXPECT_EQ(typed.units().handle(), units.handle());
  EXPECT_EQ(units.read("12.5 bar").number(), 12.5);
  EXPECT_EQ(units.read("2 Millimeter", ViewOf("de")).code(), kMillimetre);
}

TEST(KelmoFaceReading, TakesOptions) {
  const kelmo::Units units = Load();
  kelmo::ReadOptions options;
  options.kind = 19;
  EXPECT_EQ(units.read("3 \u00B0C", kelmo::View(), options).code(), kCelsiusDifference);
  options.kind = 10;
  options.code = kMillimetre;
  options.absolute_tolerance = 0.25;
  options.relative_tolerance = 0.5;
  options.numbers = kelmo::number_format_of_language("de");
  kelmo::Problems problems;
  const auto typed = units.read("1.234,5", kelmo::View(), problems, options);
  ASSERT_TRUE(typed);
  EXPECT_EQ(typed->number(), 1234.5);
  EXPECT_EQ(typed->code(), kMillimetre);
  EXPECT_EQ(typed->absolute_tolerance(), 0.25);
  EXPECT_EQ(typed->relative_tolerance(), 0.5);
  EXPECT_EQ(TextsOf(problems), Lines());
}

TEST(KelmoFaceReading, TellsColumnAndReason) {
  const kelmo::Units units = Load();
  struct Row {
    const char* name;
    const char* text;
    kelmo_status status;
    std::int32_t code;
    std::uint32_t column;
    const char* what;
  };
  const std::vector<Row> rows = {
      {"no number", "  bar", KELMO_INVALID_TEXT, KELMO_PROBLEM_NO_NUMBER, 3,
       "error: A number is missing: \"bar\""},
      {"another decimal mark", "12.5.1 bar", KELMO_INVALID_TEXT, KELMO_PROBLEM_DECIMAL_MARK, 5,
       "error: The decimal mark is another one: there are two"},
      {"groups of other sizes", "12,5 bar", KELMO_INVALID_TEXT, KELMO_PROBLEM_GROUPS, 3,
       "error: The digits are not grouped in this way: the decimal mark is \".\", and "
       "blanks or \",\" may stand between groups of digits"},
      {"no unit", "12.5", KELMO_INVALID_TEXT, KELMO_PROBLEM_NO_UNIT, 5, "error: A unit is missing"},
      {"an unknown unit", "12.5 furlong", KELMO_UNKNOWN_UNIT, KELMO_PROBLEM_UNKNOWN_UNIT, 6,
       "error: The unit is not known: \"furlong\""},
      {"in characters, not in bytes", "1\u00A0234.5\u00A0furlong", KELMO_UNKNOWN_UNIT,
       KELMO_PROBLEM_UNKNOWN_UNIT, 9, "error: The unit is not known: \"furlong\""},
      {"another quantity", "3 m", KELMO_DIFFERENT_KINDS, KELMO_PROBLEM_OTHER_KIND, 3,
       "error: The unit is one of another quantity: \"m\" is a unit of length, not of "
       "pressure"},
  };
  kelmo::ReadOptions options;
  options.kind = 17;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const std::string what = "column " + std::to_string(row.column) + ": " + row.what;
    kelmo::Problems problems;
    try {
      units.read(row.text, kelmo::View(), options);
      ADD_FAILURE() << "no exception";
    } catch (const kelmo::ReadError& error) {
      EXPECT_EQ(error.status(), row.status);
      EXPECT_EQ(error.what(), what);
      EXPECT_EQ(error.problem().code, row.code);
      EXPECT_EQ(error.problem().column, row.column);
      EXPECT_EQ(error.problem().severity, kelmo::Severity::error);
      EXPECT_EQ(error.problem().text, what);
    }
    EXPECT_FALSE(units.read(row.text, kelmo::View(), problems, options));
    EXPECT_FALSE(units.read(row.text, kelmo::View(), problems, options));
    EXPECT_EQ(TextsOf(problems), (Lines{what, what}));
  }
}

TEST(KelmoFaceReading, ThrowsForOptionsThatDoNotFit) {
  const kelmo::Units units = Load();
  struct Row {
    const char* name;
    std::int32_t kind;
    std::int32_t code;
    double relative;
    kelmo_status status;
    const char* what;
  };
  const std::vector<Row> rows = {
      {"no such unit", 0, kNoUnit, 0, KELMO_UNKNOWN_UNIT, "kelmo: there is no unit 99001"},
      {"a unit of another kind", 17, kMetre, 0, KELMO_DIFFERENT_KINDS,
       "kelmo: m (length) is no unit of the kind 17"},
      {"a point with a relative tolerance", 0, 0, 0.1, KELMO_POINT_UNIT,
       "kelmo: points of a scale have no relative tolerance"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    kelmo::ReadOptions options;
    options.kind = row.kind;
    options.code = row.code;
    options.relative_tolerance = row.relative;
    kelmo::Problems problems;
    ExpectUnitError([&] { units.read("20 \u00B0C", kelmo::View(), options); }, row.status,
                    row.what);
    ExpectUnitError([&] { units.read("20 \u00B0C", kelmo::View(), problems, options); }, row.status,
                    row.what);
    EXPECT_EQ(TextsOf(problems), Lines());
  }
  kelmo::ReadOptions numbers;
  numbers.numbers = kelmo::NumberFormat();
  numbers.numbers->is_grouped = 2;
  ExpectThrow<kelmo::Error>([&] { units.read("1 m", kelmo::View(), numbers); },
                            KELMO_INVALID_ARGUMENT, "kelmo: KELMO_INVALID_ARGUMENT");
  ExpectThrow<kelmo::ReadError>([&] { units.read("1 \xFF"); }, KELMO_INVALID_UTF8,
                                "column 3: error: A number is missing: the text is not UTF-8");
  kelmo::ReadOptions kind;
  kind.kind = 17000;
  ExpectThrow<kelmo::Error>([&] { units.read("1 m", kelmo::View(), kind); }, KELMO_INVALID_ARGUMENT,
                            "kelmo: KELMO_INVALID_ARGUMENT");
}

// ---- Quantities

TEST(KelmoFaceQuantity, HasANumberTolerancesAndAUnit) {
  const kelmo::Units units = Load();
  const kelmo::Quantity head(units, 48, kMetre, 0.5, 0.01);
  EXPECT_EQ(head.number(), 48);
  EXPECT_EQ(head.absolute_tolerance(), 0.5);
  EXPECT_EQ(head.relative_tolerance(), 0.01);
  EXPECT_EQ(head.code(), kMetre);
  EXPECT_EQ(Print(head.unit()), "10001 10 0 1 0 m metre");
  EXPECT_EQ(Print(head.unit(ViewOf("de"))), "10001 10 0 1 0 m Meter");
  const kelmo::Quantity copy(units, head.raw());
  EXPECT_EQ(copy.number(), 48);
  EXPECT_EQ(copy.absolute_tolerance(), 0.5);
  EXPECT_EQ(copy.relative_tolerance(), 0.01);
  EXPECT_EQ(copy.code(), kMetre);
  const kelmo::Quantity plain(units, 1, kMetre);
  EXPECT_EQ(plain.absolute_tolerance(), 0);
  EXPECT_EQ(plain.relative_tolerance(), 0);
  const kelmo::Quantity other = plain.with_tolerance(0.25, 0.125);
  EXPECT_EQ(other.absolute_tolerance(), 0.25);
  EXPECT_EQ(other.relative_tolerance(), 0.125);
  EXPECT_EQ(other.with_tolerance(1).relative_tolerance(), 0);
  ExpectUnitError([&] { kelmo::Quantity(units, 1, kNoUnit); }, KELMO_UNKNOWN_UNIT,
                  "kelmo: there is no unit 99001");
  ExpectUnitError([&] { kelmo::Quantity(units, kelmo_quantity_of(1, 0, 0, kNoUnit)); },
                  KELMO_UNKNOWN_UNIT, "kelmo: there is no unit 99001");
}

TEST(KelmoFaceQuantity, IsConverted) {
  const kelmo::Units units = Load();
  const kelmo::Quantity pressure = kelmo::Quantity(units, 12.5, kBar, 0.1, 0.25).to(kKilopascal);
  EXPECT_EQ(pressure.number(), 1250);
  EXPECT_EQ(pressure.absolute_tolerance(), 10);
  EXPECT_EQ(pressure.relative_tolerance(), 0.25);
  EXPECT_EQ(pressure.code(), kKilopascal);
  EXPECT_EQ(kelmo::Quantity(units, 20, kCelsius).to(kKelvin).number(), 293.15);
  ExpectUnitError([&] { (void)pressure.to(kMetre); }, KELMO_DIFFERENT_KINDS,
                  "kelmo: kPa (pressure) and m (length) are units of different quantities");
  ExpectUnitError([&] { (void)pressure.to(kNoUnit); }, KELMO_UNKNOWN_UNIT,
                  "kelmo: there is no unit 99001");
}

TEST(KelmoFaceQuantity, IsAddedAndSubtractedInTheUnitOfTheLeftOne) {
  const kelmo::Units units = Load();
  const kelmo::Quantity left(units, 1, kBar, 0.1, 0.25);
  const kelmo::Quantity right(units, 50, kKilopascal, 5, 0.5);
  kelmo::Quantity changed = left;
  for (const kelmo::Quantity& sum : {left + right, changed += right}) {
    EXPECT_EQ(sum.number(), 1.5);
    EXPECT_EQ(sum.code(), kBar);
    EXPECT_EQ(sum.absolute_tolerance(), 0.1);
    EXPECT_EQ(sum.relative_tolerance(), 0.25);
  }
  EXPECT_EQ(changed.number(), 1.5);
  EXPECT_EQ((left - right).number(), 0.5);
  EXPECT_EQ((changed -= right).number(), 1);
  changed += changed;
  EXPECT_EQ(changed.number(), 2);
  ExpectUnitError([&] { (void)(left + kelmo::Quantity(units, 1, kMetre)); }, KELMO_DIFFERENT_KINDS,
                  "kelmo: bar (pressure) and m (length) are units of different quantities");
  ExpectUnitError([&] { changed -= kelmo::Quantity(units, 1, kMetre); }, KELMO_DIFFERENT_KINDS,
                  "kelmo: bar (pressure) and m (length) are units of different quantities");
  EXPECT_EQ(changed.number(), 2);
}

TEST(KelmoFaceQuantity, IsMultipliedAndDividedByNumbers) {
  const kelmo::Units units = Load();
  const kelmo::Quantity length(units, 6, kMillimetre, 0.5, 0.25);
  for (const kelmo::Quantity& product : {length * 2, 2 * length, length / 0.5}) {
    EXPECT_EQ(product.number(), 12);
    EXPECT_EQ(product.code(), kMillimetre);
    EXPECT_EQ(product.absolute_tolerance(), 0.5);
    EXPECT_EQ(product.relative_tolerance(), 0.25);
  }
  const double ratio = length / kelmo::Quantity(units, 2, kMetre);
  EXPECT_EQ(ratio, 0.003);
  EXPECT_TRUE(std::isinf((length / 0).number()));
  ExpectUnitError([&] { (void)(length / kelmo::Quantity(units, 1, kBar)); }, KELMO_DIFFERENT_KINDS,
                  "kelmo: mm (length) and bar (pressure) are units of different quantities");
}

TEST(KelmoFaceQuantity, OfAScaleHasPointsAndDifferences) {
  const kelmo::Units units = Load();
  const kelmo::Quantity warm(units, 60, kCelsius, 0.5);
  const kelmo::Quantity cold(units, 20, kCelsius, 0.5);
  const kelmo::Quantity difference = warm - cold;
  EXPECT_EQ(difference.number(), 40);
  EXPECT_EQ(difference.code(), kCelsiusDifference);
  EXPECT_EQ((cold + difference).number(), 60);
  EXPECT_EQ((cold + difference).code(), kCelsius);
  const std::string point = NoPoints("\u00B0C (temperature)");
  ExpectUnitError([&] { (void)(warm + cold); }, KELMO_POINT_UNIT, point);
  ExpectUnitError([&] { (void)(warm * 2); }, KELMO_POINT_UNIT, point);
  ExpectUnitError([&] { (void)(warm / 2); }, KELMO_POINT_UNIT, point);
  ExpectUnitError([&] { (void)(warm / cold); }, KELMO_POINT_UNIT, point);
  ExpectUnitError([&] { (void)(difference + cold); }, KELMO_POINT_UNIT,
                  NoPoints("\u00B0C (temperature difference) and \u00B0C (temperature)"));
  ExpectUnitError([&] { (void)warm.with_tolerance(0, 0.1).rounded(); }, KELMO_POINT_UNIT, point);
  ExpectUnitError([&] { (void)warm.with_tolerance(0, 0.1).str(); }, KELMO_POINT_UNIT, point);
}

TEST(KelmoFaceQuantity, IsComparedInTheBaseUnit) {
  const kelmo::Units units = Load();
  const kelmo::Quantity metre(units, 1, kMetre);
  const kelmo::Quantity same(units, 1000, kMillimetre, 5);
  const kelmo::Quantity more(units, 1001, kMillimetre);
  const kelmo::Quantity nothing(units, std::numeric_limits<double>::quiet_NaN(), kMetre);
  EXPECT_EQ(metre.compare(same), 0);
  EXPECT_EQ(metre.compare(more), -1);
  EXPECT_EQ(more.compare(metre), 1);
  EXPECT_EQ(nothing.compare(more), 1);
  EXPECT_EQ(nothing.compare(nothing), 0);
  struct Row {
    const kelmo::Quantity* left;
    const kelmo::Quantity* right;
    const char* holds;  // of == != < > <= >=
  };
  for (const Row& row : {Row{&metre, &same, "100011"}, Row{&metre, &more, "011010"},
                         Row{&more, &metre, "010101"}, Row{&nothing, &nothing, "100011"}}) {
    const kelmo::Quantity& a = *row.left;
    const kelmo::Quantity& b = *row.right;
    std::string holds;
    for (const bool isTrue : {a == b, a != b, a<b, a> b, a <= b, a >= b}) {
      holds += isTrue ? '1' : '0';
    }
    EXPECT_EQ(holds, row.holds);
  }
  ExpectUnitError([&] { (void)(metre < kelmo::Quantity(units, 1, kBar)); }, KELMO_DIFFERENT_KINDS,
                  "kelmo: m (length) and bar (pressure) are units of different quantities");
}

TEST(KelmoFaceQuantity, IsSorted) {
  const kelmo::Units units = Load();
  std::vector<kelmo::Quantity> lengths;
  lengths.emplace_back(units, std::numeric_limits<double>::quiet_NaN(), kMetre);
  lengths.emplace_back(units, 1.5, kMetre);
  lengths.emplace_back(units, 2, kMillimetre);
  lengths.emplace_back(units, -1, kMetre);
  lengths.emplace_back(units, 1400, kMillimetre);
  std::sort(lengths.begin(), lengths.end());
  Lines sorted;
  for (const kelmo::Quantity& length : lengths) {
    std::ostringstream text;
    text << length;
    sorted.push_back(text.str());
  }
  EXPECT_EQ(sorted, (Lines{"-1\u00A0m", "2\u00A0mm", "1400\u00A0mm", "1.5\u00A0m", "NaN\u00A0m"}));
}

TEST(KelmoFaceQuantity, IsAKeyOfUnorderedContainers) {
  const kelmo::Units units = Load();
  const kelmo::Quantity metre(units, 1, kMetre);
  const kelmo::Quantity same(units, 1000, kMillimetre, 5);
  EXPECT_EQ(std::hash<kelmo::Quantity>()(metre), metre.hash());
  EXPECT_EQ(metre.hash(), same.hash());
  EXPECT_NE(metre.hash(), kelmo::Quantity(units, 2, kMetre).hash());
  std::unordered_set<kelmo::Quantity> lengths = {metre, same, kelmo::Quantity(units, 2, kMetre)};
  EXPECT_EQ(lengths.size(), 2U);
  EXPECT_EQ(lengths.count(kelmo::Quantity(units, 2000, kMillimetre)), 1U);
  EXPECT_EQ(lengths.count(kelmo::Quantity(units, 3, kMetre)), 0U);
}

TEST(KelmoFaceQuantity, HasASum) {
  const kelmo::Units units = Load();
  const std::vector<kelmo::Quantity> pressures = {kelmo::Quantity(units, 1, kBar, 0.1),
                                                  kelmo::Quantity(units, 50, kKilopascal),
                                                  kelmo::Quantity(units, 25000, kPascal)};
  EXPECT_EQ(kelmo::sum(pressures).number(), 1.75);
  EXPECT_EQ(kelmo::sum(pressures).code(), kBar);
  EXPECT_EQ(kelmo::sum(pressures).absolute_tolerance(), 0.1);
  const kelmo::Quantity one[] = {kelmo::Quantity(units, -0.0, kMetre)};
  EXPECT_TRUE(std::signbit(kelmo::sum(one).number()));
  ExpectThrow<kelmo::Error>([&] { (void)kelmo::sum(std::vector<kelmo::Quantity>()); },
                            KELMO_INVALID_ARGUMENT,
                            "kelmo::sum: there is no quantity, and so no unit");
  const std::vector<kelmo::Quantity> mixed = {pressures[0], one[0]};
  ExpectUnitError([&] { (void)kelmo::sum(mixed); }, KELMO_DIFFERENT_KINDS,
                  "kelmo: bar (pressure) and m (length) are units of different quantities");
  const std::vector<kelmo::Quantity> points = {kelmo::Quantity(units, 20, kCelsius)};
  ExpectUnitError([&] { (void)kelmo::sum(points); }, KELMO_POINT_UNIT,
                  NoPoints("\u00B0C (temperature)"));
}

TEST(KelmoFaceQuantity, IsRoundedAsItsToleranceJustifies) {
  const kelmo::Units units = Load();
  const kelmo::Quantity length(units, 1234.5678, kMillimetre, 0.01);
  EXPECT_EQ(length.rounded(), 1234.57);
  ExpectUnitError(
      [&] { (void)length.with_tolerance(0).rounded(); }, KELMO_CANNOT_ROUND,
      "kelmo: the tolerance of a quantity in mm (length) justifies no number of digits: "
      "print all of them, or give another tolerance");
}

TEST(KelmoFaceQuantity, IsPrinted) {
  const kelmo::Units units = Load();
  const kelmo::View german = ViewOf("de");
  const kelmo::Quantity length(units, 1234.5678, kMillimetre, 0.01);
  EXPECT_EQ(length.str(), "1234.57\u00A0mm");
  EXPECT_EQ(length.str(german), "1234,57\u00A0mm");
  EXPECT_EQ(kelmo::Quantity(units, 3, kMetre, 1).str(ViewOf("ru")), "3\u00A0\u043C");
  kelmo::PrintOptions options;
  options.name = true;
  EXPECT_EQ(length.str(german, options), "1234,57\u00A0Millimeter");
  options.number = true;
  EXPECT_EQ(length.str(german, options), "1234,57");
  options.name = false;
  EXPECT_EQ(length.str(german, options), "1234,57");
  options = {};
  options.all_digits = true;
  EXPECT_EQ(length.str(german, options), "1234,57\u00A0mm");
  EXPECT_EQ(length.with_tolerance(0).str(german, options), "1234,5678\u00A0mm");
  options.numbers = kelmo::NumberFormat();
  options.numbers->is_grouped = 1;
  EXPECT_EQ(length.str(german, options), "1,234.57\u00A0mm");
  options.numbers->is_grouped = 2;
  ExpectThrow<kelmo::Error>([&] { (void)length.str(german, options); }, KELMO_INVALID_ARGUMENT,
                            "kelmo: KELMO_INVALID_ARGUMENT");
  EXPECT_EQ(length.with_tolerance(0).str(german), "1234,5678\u00A0mm");
  kelmo::PrintOptions rounded;
  rounded.all_digits = false;
  ExpectUnitError(
      [&] { (void)length.with_tolerance(0).str(german, rounded); }, KELMO_CANNOT_ROUND,
      "kelmo: the tolerance of a quantity in mm (length) justifies no number of digits: "
      "print all of them, or give another tolerance");
}

TEST(KelmoFaceQuantity, IsPrintedFineAfterAConversion) {
  const kelmo::Units units = Load();
  kelmo::PrintOptions fine;
  fine.fine = true;
  const kelmo::Quantity inch(units, 25.4, kMillimetre, 25.4);  // 1 inch, known to 1 inch
  EXPECT_EQ(inch.str(), "0\u00A0mm");
  EXPECT_EQ(inch.str(kelmo::View(), fine), "30\u00A0mm");
}

TEST(KelmoFaceQuantity, IsPrintedWithAllItsBytes) {
  kelmo::UnitsLoader loader;
  const std::string name(255, 'n');
  loader.add({10900, 1, "n", name});
  kelmo::PrintOptions options;
  options.name = true;
  EXPECT_EQ(kelmo::Quantity(loader.finish(), 1e15, 10900, 1).str(kelmo::View(), options),
            "1000000000000000\u00A0" + name);
}

TEST(KelmoFaceQuantity, IsWrittenToStreams) {
  const kelmo::Units units = Load();
  const kelmo::Quantity length(units, 12.5, kMillimetre, 0.1);
  std::ostringstream text;
  text << length << '|' << std::setw(10) << length << '|' << length.with_tolerance(0) << '|';
  static_cast<std::ostream&>(text) << length / 8 << '|' << (length / 8).with_tolerance(0);
  EXPECT_EQ(text.str(), "12.5\u00A0mm|  12.5\u00A0mm|12.5\u00A0mm|1.6\u00A0mm|1.5625\u00A0mm");
}

TEST(KelmoFaceQuantity, FillsPlaceholders) {
  const kelmo::Units units = Load();
  const kelmo::View german = ViewOf("de");
  const kelmo::Quantity head(units, 48.25, kMetre, 0.1);
  EXPECT_EQ(german.tr("head", head), "Head 48,3\u00A0m");
  EXPECT_EQ(german.tr("big", head), "48,25\u00A0m");
  EXPECT_EQ(german.tr("head", head.to(kMillimetre).with_tolerance(0)), "Head 48250\u00A0mm");
  EXPECT_EQ(german.tr("named", kelmo::arg("head", head), head * 2), "48,3\u00A0m and 96,5\u00A0m");
  EXPECT_EQ(ViewOf("ru").tr("head", head), "Head 48,3\u00A0\u043C");
  ExpectThrow<kelmo::Error>([&] { german.tr("head", kelmo::Count(kelmo::Argument(head))); },
                            KELMO_INVALID_ARGUMENT, "kelmo: KELMO_INVALID_ARGUMENT");
  ExpectThrow<kelmo::Error>([&] { (void)kelmo::print(head, kelmo::NumberFormat()); },
                            KELMO_INVALID_ARGUMENT, "kelmo: KELMO_INVALID_ARGUMENT");
}

TEST(KelmoFaceQuantity, OfOtherUnitsIsRefused) {
  const kelmo::Quantity left(Load(), 1, kMetre);
  const kelmo::Quantity right(Load(), 1, kMetre);
  const std::string what = "kelmo: the quantities have different units: use one Units object";
  const std::vector<std::function<void()>> calls = {
      [&] { (void)(left + right); },
      [&] { (void)(left - right); },
      [&] { (void)(left / right); },
      [&] { (void)left.compare(right); },
      [&] { (void)(left == right); },
      [&] {
        (void)kelmo::sum(std::vector<kelmo::Quantity>{left, right});
      },
  };
  for (const auto& call : calls) {
    ExpectUnitError(call, KELMO_INVALID_ARGUMENT, what);
  }
}

TEST(KelmoFaceQuantity, HasNoUnitsOnceItWasMovedFrom) {
  const kelmo::View german = ViewOf("de");
  kelmo::Quantity moved(Load(), 1, kMetre, 0.5);
  kelmo::Quantity target = std::move(moved);
  static_assert(std::is_nothrow_move_constructible_v<kelmo::Quantity>);
  static_assert(std::is_nothrow_move_assignable_v<kelmo::Quantity>);
  EXPECT_EQ(target.str(), "1.0\u00A0m");
  // NOLINTBEGIN(bugprone-use-after-move): it is allowed
  const kelmo::Quantity other = moved;  // cppcheck-suppress accessMoved
  const std::vector<std::function<void()>> calls = {
      [&] { (void)moved.unit(); },
      [&] { (void)moved.to(kBar); },
      [&] { (void)moved.rounded(); },
      [&] { (void)moved.str(); },
      [&] { (void)(moved + other); },
      [&] { (void)(moved - other); },
      [&] { (void)(moved * 2); },
      [&] { (void)(moved / 2); },
      [&] { (void)(moved / other); },
      [&] { (void)moved.compare(other); },
      [&] { (void)moved.hash(); },
      [&] { (void)(moved == target); },
      [&] { (void)german.tr("head", moved); },
  };
  for (const auto& call : calls) {
    EXPECT_THROW(call(), kelmo::Error);
  }
  moved = target;
  EXPECT_EQ(moved, target);
  // NOLINTEND(bugprone-use-after-move)
  std::swap(moved, target += target);
  EXPECT_EQ(moved.number(), 2);
  EXPECT_EQ(target.number(), 1);
}

}  // namespace
