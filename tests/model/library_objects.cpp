#include <memory>
#include <new>

#include "frame/library_state.h"
#include "tests/model/library_under_test.h"
#include "tests/support/private_members.h"
#include "tests/support/read_all.h"

using namespace KelmoLibs::Localize;
using Phyval::Double;
using Phyval::ValueType;

namespace {

Double* At(ValueMemory* memory) { return reinterpret_cast<Double*>(memory); }
ValueType* At(RowMemory* memory) { return reinterpret_cast<ValueType*>(memory); }

const ClassMembers kMembers = {
    [](RowMemory* row, int code, double factor, const wchar_t* symbol, const wchar_t* name) {
      new (row) ValueType(code, factor, symbol, name);
    },
    [](RowMemory* row, const RowMemory* from) { new (row) ValueType(from->Row()); },
    [](RowMemory* row, RowMemory* from) { new (row) ValueType(std::move(*At(from))); },
    [](RowMemory* row) { At(row)->~ValueType(); },
    [](RowMemory* row) { return At(row)->GetSid(); },
    [](RowMemory* row) { return At(row)->GetStype(); },

    [](ValueMemory* made, double value, double absolute, double relative, int code) {
      new (made) Double(value, absolute, relative, code);
    },
    [](ValueMemory* made, double value, double absolute, double relative, const wchar_t* text) {
      new (made) Double(value, absolute, relative, text);
    },
    [](ValueMemory* value) { At(value)->~Double(); },
    [](ValueMemory* to, const ValueMemory* from) {
      return reinterpret_cast<ValueMemory*>(&(*At(to) = *reinterpret_cast<const Double*>(from)));
    },
    [](ValueMemory* result, ValueMemory* left, ValueMemory* right) {
      new (result) Double(*At(left) + *At(right));
    },
    [](ValueMemory* result, ValueMemory* left, ValueMemory* right) {
      new (result) Double(*At(left) - *At(right));
    },
    [](ValueMemory* result, ValueMemory* left, double k) { new (result) Double(*At(left) * k); },
    [](ValueMemory* result, ValueMemory* left, double k) { new (result) Double(*At(left) / k); },
    [](ValueMemory* left, ValueMemory* right) { return *At(left) == *At(right); },
    [](ValueMemory* left, ValueMemory* right) { return *At(left) < *At(right); },
    [](ValueMemory* left, ValueMemory* right) { return *At(left) > *At(right); },
    [](ValueMemory* result, ValueMemory* from, double absolute, double relative, int code) {
      new (result) Double(At(from)->ConvertTo(absolute, relative, code));
    },
    [](ValueMemory* value) { return At(value)->Return(); },
    [](ValueMemory* value) { return At(value)->to_string(); },
    [](ValueMemory* value, wchar_t separator) { return At(value)->to_string(separator); },
    [](ValueMemory* value) { return T(*At(value)); },
    [](ValueMemory* value, double x) { return Ts(*At(value), x); },
    [](ValueMemory* value, double x) { return Vs(*At(value), x); },
    [](ValueMemory* value) { CheckCorrect(*At(value)); },
    [](ValueMemory* value, ValueMemory* other) { CheckCorrect(*At(value), *At(other)); },
};

// Restores the state after the load, without the object's old memory.
template <class Object>
void Recreate(Object& object) {
  std::destroy_at(&object);
  new (&object) Object();
}

void Reset() {
  Recreate(Phyval::unitCatalogue);
  Recreate(localizedUnitTable);
  Recreate(loadMessages);
  Recreate(currentLanguage);
  Recreate(dictionaries);
  Recreate(errorList);
}

}  // namespace

LibraryUnderTest::LibraryUnderTest()
    : exports_{&Init, &Init0,       &ExportPhyVal,   &LoadDictionary, &UseLanguage,
               &LANG, &ClearErrors, &GetErrorsCount, &GetError},
      members_(kMembers) {
  Reset();
  Phyval::unitCatalogue = Phyval::BuiltInUnits();
}

LibraryUnderTest::~LibraryUnderTest() { Reset(); }

std::optional<LibraryUnderTest::Inside> LibraryUnderTest::LookInside() const {
  Inside inside;
  inside.catalogue = RowsOf(Phyval::unitCatalogue);
  for (const auto& [language, units] : localizedUnitTable) {
    auto& seen = inside.units[language];
    for (const auto& [code, unit] : units) {
      seen[code] = {unit.symbol, unit.name};
    }
  }
  inside.loadMessages = ReadAll(loadMessages);
  inside.currentLanguage = currentLanguage.id;
  return inside;
}
