// The C functions for units. kelmo.h has the contracts.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "host/c_arguments.h"
#include "host/c_objects.h"
#include "host/quantity.h"
#include "host/typed_quantity.h"
#include "host/unit_loader.h"
#include "host/unit_set.h"
#include "kelmo/kelmo.h"
#include "text/utf8_characters.h"

using KelmoLibs::Host::Destroy;
using KelmoLibs::Host::Give;
using KelmoLibs::Host::Guard;
using KelmoLibs::Host::IsKnownKind;
using KelmoLibs::Host::IsLargeEnough;
using KelmoLibs::Host::IsString;
using KelmoLibs::Host::LanguagesOf;
using KelmoLibs::Host::ListOf;
using KelmoLibs::Host::Make;
using KelmoLibs::Host::Release;
using KelmoLibs::Host::Retain;
using KelmoLibs::Host::StringOf;
using KelmoLibs::Host::UnitFileFormat;
using KelmoLibs::Host::UnitLabel;
using KelmoLibs::Host::UnitRow;
using KelmoLibs::Host::UnitSet;
using KelmoLibs::Host::UnitStart;
using KelmoLibs::Localize::IsUtf8;

namespace {

void GiveUnit(const UnitRow& row, const UnitLabel& label, kelmo_unit* result) noexcept {
  kelmo_unit given = {};
  given.code = row.code;
  given.kind = KelmoLibs::Host::KindOf(row.code);
  given.difference = row.difference;
  given.factor = row.factor.high;
  given.offset = row.offset.high;
  given.symbol = Give(label.symbol);
  given.name = Give(label.name);
  Give(given, result);
}

// Checks the arguments of the loading functions and calls `load` with them.
template <class Load>
kelmo_status LoadWith(kelmo_units_loader* loader, const char* name, std::size_t nameSize,
                      std::int32_t format, Load load) noexcept {
  if (loader == nullptr || !IsString(name, nameSize) || format < KELMO_UNITS_FILE ||
      format > KELMO_UNITS_NAMES) {
    return KELMO_INVALID_ARGUMENT;
  }
  const std::string_view text = StringOf(name, nameSize);
  if (!IsUtf8(text)) {
    return KELMO_INVALID_UTF8;
  }
  return Guard([&] {
    return load(text, static_cast<UnitFileFormat>(format)) ? KELMO_OK : KELMO_CANNOT_READ;
  });
}

}  // namespace

extern "C" {
// NOLINTBEGIN(readability-identifier-naming): the names of kelmo.h

kelmo_status kelmo_units_loader_create(int32_t start, kelmo_units_loader** result) {
  if (start < KELMO_UNITS_NONE || start > KELMO_UNITS_AFTER_INIT || result == nullptr) {
    return KELMO_INVALID_ARGUMENT;
  }
  return Guard([=]() -> kelmo_status {
    auto made = std::make_unique<kelmo_units_loader>();
    // not covered, true of `!made->loader.Start(static_cast<UnitStart>(start))`: each file has units
    if (!made->loader.Start(static_cast<UnitStart>(start))) {
      // not covered: the same
      return KELMO_CANNOT_READ;
    }
    *result = made.release();
    return KELMO_OK;
  });
}

void kelmo_units_loader_destroy(kelmo_units_loader* loader) { Destroy(loader); }

kelmo_status kelmo_units_loader_add(kelmo_units_loader* loader, const kelmo_unit* unit,
                                    kelmo_problems* problems) {
  if (loader == nullptr || !IsLargeEnough(unit) ||
      !IsString(unit->symbol.data, unit->symbol.size) ||
      !IsString(unit->name.data, unit->name.size)) {
    return KELMO_INVALID_ARGUMENT;
  }
  return Guard([=] {
    UnitRow row;
    row.code = unit->code;
    row.difference = unit->difference;
    row.factor.high = unit->factor;
    row.offset.high = unit->offset;
    row.symbol = StringOf(unit->symbol.data, unit->symbol.size);
    row.name = StringOf(unit->name.data, unit->name.size);
    return loader->loader.Add(std::move(row), ListOf(problems)) ? KELMO_OK : KELMO_INVALID_ARGUMENT;
  });
}

kelmo_status kelmo_units_loader_add_file(kelmo_units_loader* loader, const char* path,
                                         size_t path_size, int32_t format,
                                         kelmo_problems* problems) {
  return LoadWith(loader, path, path_size, format, [=](std::string_view name, auto taken) {
    return loader->loader.AddFile(std::string(name), taken, ListOf(problems));
  });
}

kelmo_status kelmo_units_loader_add_memory(kelmo_units_loader* loader, const void* bytes,
                                           size_t size, const char* name, size_t name_size,
                                           int32_t format, kelmo_problems* problems) {
  const char* const data = static_cast<const char*>(bytes);
  if (!IsString(data, size)) {
    return KELMO_INVALID_ARGUMENT;
  }
  const std::string_view content = StringOf(data, size);
  return LoadWith(loader, name, name_size, format, [=](std::string_view text, auto taken) {
    loader->loader.AddMemory(content, text, taken, ListOf(problems));
    return true;
  });
}

kelmo_status kelmo_units_loader_finish(kelmo_units_loader* loader, kelmo_units** result,
                                       kelmo_problems* problems) {
  if (loader == nullptr) {
    return KELMO_INVALID_ARGUMENT;
  }
  return Make(result, [=] {
    auto sealed = std::make_unique<kelmo_units>(loader->loader.Collected(), ListOf(problems));
    loader->loader.Clear();
    return sealed;
  });
}

kelmo_units* kelmo_units_retain(kelmo_units* units) { return Retain(units); }

void kelmo_units_release(kelmo_units* units) { Release(units); }

size_t kelmo_units_kind_count(const kelmo_units* units) {
  return units != nullptr ? units->set.Kinds().size() : 0;
}

kelmo_status kelmo_units_kind(const kelmo_units* units, const kelmo_view* view, size_t index,
                              kelmo_unit* result) {
  if (index >= kelmo_units_kind_count(units) || !IsLargeEnough(result)) {
    return KELMO_INVALID_ARGUMENT;
  }
  const UnitSet::Kind& kind = units->set.Kinds()[index];
  GiveUnit(*kind.row, units->set.LabelOf(*kind.row, LanguagesOf(view)), result);
  return KELMO_OK;
}

size_t kelmo_units_count(const kelmo_units* units, int32_t kind) {
  if (units == nullptr) {
    return 0;
  }
  return units->set.UnitsOf(kind).size();
}

kelmo_status kelmo_units_at(const kelmo_units* units, const kelmo_view* view, int32_t kind,
                            size_t index, kelmo_unit* result) {
  if (index >= kelmo_units_count(units, kind) || !IsLargeEnough(result)) {
    return KELMO_INVALID_ARGUMENT;
  }
  const UnitRow& row = *units->set.UnitsOf(kind)[index];
  GiveUnit(row, units->set.LabelOf(row, LanguagesOf(view)), result);
  return KELMO_OK;
}

kelmo_status kelmo_units_find(const kelmo_units* units, const kelmo_view* view, int32_t code,
                              kelmo_unit* result) {
  if (units == nullptr || !IsLargeEnough(result)) {
    return KELMO_INVALID_ARGUMENT;
  }
  const UnitRow* const row = units->set.Find(code);
  if (row == nullptr) {
    return KELMO_UNKNOWN_UNIT;
  }
  GiveUnit(*row, units->set.LabelOf(*row, LanguagesOf(view)), result);
  return KELMO_OK;
}

kelmo_status kelmo_units_find_text(const kelmo_units* units, const kelmo_view* view, int32_t kind,
                                   const char* text, size_t text_size, kelmo_unit* result,
                                   kelmo_problems* problems) {
  if (units == nullptr || !IsString(text, text_size) || !IsLargeEnough(result) ||
      !IsKnownKind(units->set, kind)) {
    return KELMO_INVALID_ARGUMENT;
  }
  const std::string_view wanted = StringOf(text, text_size);
  if (!IsUtf8(wanted)) {
    return KELMO_INVALID_UTF8;
  }
  const UnitRow* row = nullptr;
  const kelmo_status status = KelmoLibs::Host::FindUnitByText(units->set, LanguagesOf(view), kind,
                                                              wanted, 0, row, ListOf(problems));
  if (status == KELMO_OK) {
    GiveUnit(*row, units->set.LabelOf(*row, LanguagesOf(view)), result);
  }
  return status;
}

kelmo_status kelmo_units_convert(const kelmo_units* units, int32_t from, int32_t to,
                                 const double* numbers, size_t count, double* results) {
  if (units == nullptr || (count != 0 && (numbers == nullptr || results == nullptr))) {
    return KELMO_INVALID_ARGUMENT;
  }
  return KelmoLibs::Host::ConvertNumbers(units->set, from, to, numbers, count, results);
}

// NOLINTEND(readability-identifier-naming)
}  // extern "C"
