#include "benchmarks/support/engineering_units.h"

#include "benchmarks/support/require.h"

namespace benchmarks {
namespace {

constexpr const char* kRows = KELMO_UNITS_FOLDER "/engineering.txt";
constexpr const char* kGermanNames = KELMO_UNITS_FOLDER "/LANG/de-val.txt";

kelmo_units* LoadUnits() {
  kelmo_units_loader* loader = nullptr;
  kelmo_units* units = nullptr;
  Require(kelmo_units_loader_create(KELMO_UNITS_NONE, &loader) == KELMO_OK &&
              kelmo_units_loader_add_file(loader, kRows, KELMO_ZERO_TERMINATED, KELMO_UNITS_FILE,
                                          nullptr) == KELMO_OK &&
              kelmo_units_loader_add_file(loader, kGermanNames, KELMO_ZERO_TERMINATED,
                                          KELMO_UNITS_NAMES, nullptr) == KELMO_OK &&
              kelmo_units_loader_finish(loader, &units, nullptr) == KELMO_OK,
          "there are no units");
  kelmo_units_loader_destroy(loader);
  return units;
}

kelmo_view* MakeGermanView(std::uint32_t isGrouped) {
  const kelmo_string language = {"de", 2};
  kelmo_number_format format = {};
  format.size = sizeof format;
  kelmo_view_options options = {};
  options.size = sizeof options;
  options.languages = &language;
  options.language_count = 1;
  options.numbers = &format;
  kelmo_loader* loader = nullptr;
  kelmo_texts* texts = nullptr;
  kelmo_view* view = nullptr;
  Require(kelmo_number_format_of_language("de", KELMO_ZERO_TERMINATED, &format) == KELMO_OK,
          "there is no German format of numbers");
  format.is_grouped = isGrouped;
  Require(kelmo_loader_create(&loader) == KELMO_OK &&
              kelmo_loader_add_memory(loader, "de\nkey Text\n", KELMO_ZERO_TERMINATED, "de",
                                      KELMO_ZERO_TERMINATED, nullptr, nullptr) == KELMO_OK &&
              kelmo_loader_finish(loader, &texts, nullptr) == KELMO_OK &&
              kelmo_view_create(texts, &options, &view, nullptr) == KELMO_OK,
          "there is no view");
  kelmo_texts_release(texts);
  kelmo_loader_destroy(loader);
  return view;
}

}  // namespace

EngineeringUnits::EngineeringUnits()
    : units_(LoadUnits()), german_(MakeGermanView(0)), germanInGroups_(MakeGermanView(1)) {}

EngineeringUnits::~EngineeringUnits() {
  kelmo_view_release(germanInGroups_);
  kelmo_view_release(german_);
  kelmo_units_release(units_);
}

kelmo_unit EngineeringUnits::Find(std::int32_t code) const {
  kelmo_unit unit = {};
  unit.size = sizeof unit;
  Require(kelmo_units_find(units_, german_, code, &unit) == KELMO_OK, "a unit is missing");
  return unit;
}

}  // namespace benchmarks
