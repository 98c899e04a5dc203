// Reads any text as a quantity, in a format of numbers that the first bytes choose. What is read is printed,
// and that is read again: as the same number of the same unit.
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "cldr/number_table.h"
#include "host/quantity_text.h"
#include "host/typed_quantity.h"
#include "host/unit_files.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/model/disagreement.h"
#include "tests/support/random_numbers.h"
#include "text/utf8_characters.h"

namespace {

using namespace KelmoLibs::Host;
using KelmoLibs::Cldr::kNumberTable;
using KelmoLibs::Cldr::NumberFormat;
using KelmoLibs::Localize::IsUtf8;

constexpr std::size_t kChoices = 4;

void Require(bool holds, const char* what) {
  if (!holds) {
    throw Disagreement(what);
  }
}

const UnitSet& Units() {
  static const UnitSet units(
      [] {
        UnitCollection collection;
        ReadUnitFile(
            "10\t\t\tL\tlength\n10001\t1\t\tm\tmetre\n10002\t0.0254\t\tin\tinch\n"
            "11001\t1\t\tm\u00B3\tcubic metre\n11011\t0.003785\t\tUS gal\tUS gallon\n"
            "18001\t1\t\tK\tkelvin\t19001\n18002\t1\t273.15\t\u00B0C\tdegree Celsius\t19002\n"
            "19001\t1\t\tK\tkelvin\n19002\t1\t\t\u00B0C\tdegree Celsius\n"
            "12005\t60\t\tmin\tminute\n40001\t1\t\t\u00B0\tdegree\n40004\t1/60\t\t\u2032\tminute\n",
            "units", collection, nullptr);
        return collection;
      }(),
      nullptr);
  return units;
}

// The number as the format writes it, and the symbol. Empty if the quantity cannot be rounded.
std::string Printed(const kelmo_quantity& quantity, const NumberFormat& format) {
  std::array<char, 4000> buffer = {};
  TextSink sink(buffer.data(), buffer.size());
  const kelmo_status status = WriteQuantity(Units(), {}, quantity, {}, format, sink);
  Require(status == KELMO_OK || status == KELMO_CANNOT_ROUND, "the status of a text");
  const std::size_t size = sink.Finish();
  Require(size < buffer.size(), "the size of a text");
  return {buffer.data(), size};
}

void CheckRefusal(kelmo_status status, std::string_view text, const ProblemList& problems) {
  Require(problems.All().size() == 1, "one problem for a refusal");
  const Problem& problem = problems.All().front();
  const std::size_t characters = KelmoLibs::Localize::CountWellFormed(text);
  Require(problem.column >= 1 && problem.column <= characters + 1, "a column of the text");
  Require(IsUtf8(Print(problem)), "a problem in UTF-8");
  const bool isOfNumber =
      problem.code >= ProblemCode::kNoNumber && problem.code <= ProblemCode::kNoUnit;
  Require((status == KELMO_INVALID_TEXT) == isOfNumber, "the status of a refusal");
}

}  // namespace

void CheckWith(std::string_view bytes) {
  RandomNumbers random(bytes.substr(0, kChoices));
  NumberFormat format = AnyOf(random, kNumberTable).format;
  format.isGrouped = random.Below(2) == 0;
  TypedQuantityOptions options;
  constexpr std::array<std::int32_t, 4> kKinds = {0, 10, 18, 19};
  options.kind = AnyOf(random, kKinds);
  options.unit = random.Below(3) == 0 ? Units().Find(10002) : nullptr;
  const std::string_view text = bytes.substr(bytes.size() < kChoices ? bytes.size() : kChoices);
  if (!IsUtf8(text)) {
    return;
  }
  kelmo_quantity read = kelmo_quantity_of(-1, -2, -3, -4);
  ProblemList problems;
  const kelmo_status status = ReadQuantity(Units(), {}, text, options, format, read, &problems);
  if (status != KELMO_OK) {
    Require(read.number == -1 && read.code == -4, "a refusal changes nothing");
    CheckRefusal(status, text, problems);
    return;
  }
  Require(problems.All().empty(), "success tells nothing");
  Require(std::isfinite(read.number) && read.absolute_tolerance > 0, "a number with a tolerance");
  const std::string printed = Printed(read, format);
  if (printed.empty()) {
    return;
  }
  kelmo_quantity again = {};
  options.kind = KindOf(read.code);
  Require(ReadQuantity(Units(), {}, printed, options, format, again, &problems) == KELMO_OK,
          "a printed text is read");
  double rounded = 0;
  Require(RoundQuantity(Units(), read, rounded) == KELMO_OK, "a printed number is rounded");
  Require(again.code == read.code && again.number == rounded, "the printed number");
  // The step of the last typed digit is at most the tolerance, but for the digits that a double lacks.
  Require(std::abs(rounded - read.number) <=
              read.absolute_tolerance / 2 +
                  std::abs(read.number) * 4 * std::numeric_limits<double>::epsilon(),
          "a rounded number");
}
