// The members of the library's classes as plain functions. Each takes the address of its object first;
// what the member takes or returns by value, it takes by address as well, the result in front of all.
// So a test can call them in a library that it loads at run time, and make and destroy objects
// wherever it likes.
#pragma once

#include <string>
#include <type_traits>

#include "kelmo_localizer.h"
#include "tests/support/loaded_library.h"

/// The memory of a Double, which a host copies as it stands. `unit` is null once it is destroyed.
struct ValueMemory {
  double value;
  double absTolerance;
  double relTolerance;
  const KelmoLibs::Localize::Phyval::ValueType* unit;
};
static_assert(sizeof(ValueMemory) == sizeof(KelmoLibs::Localize::Phyval::Double));

/// The memory of a ValueType.
struct alignas(KelmoLibs::Localize::Phyval::ValueType) RowMemory {
  unsigned char bytes[sizeof(KelmoLibs::Localize::Phyval::ValueType)];

  const KelmoLibs::Localize::Phyval::ValueType& Row() const {
    return *reinterpret_cast<const KelmoLibs::Localize::Phyval::ValueType*>(bytes);
  }
};

struct ClassMembers {
  void (*makeRow)(RowMemory*, int code, double factor, const wchar_t* symbol, const wchar_t* name);
  void (*copyRow)(RowMemory*, const RowMemory*);
  void (*moveRow)(RowMemory*, RowMemory*);
  void (*destroyRow)(RowMemory*);
  int (*sidOf)(RowMemory*);    // GetSid
  int (*stypeOf)(RowMemory*);  // GetStype

  void (*fromCode)(ValueMemory*, double, double, double, int code);
  void (*fromText)(ValueMemory*, double, double, double, const wchar_t* text);
  void (*destroy)(ValueMemory*);
  ValueMemory* (*assign)(ValueMemory*, const ValueMemory*);
  void (*plus)(ValueMemory* result, ValueMemory* left, ValueMemory* right);
  void (*minus)(ValueMemory* result, ValueMemory* left, ValueMemory* right);
  void (*times)(ValueMemory* result, ValueMemory* left, double k);
  void (*dividedBy)(ValueMemory* result, ValueMemory* left, double k);
  bool (*isEqual)(ValueMemory* left, ValueMemory* right);
  bool (*isLess)(ValueMemory* left, ValueMemory* right);
  bool (*isGreater)(ValueMemory* left, ValueMemory* right);
  void (*convertTo)(ValueMemory* result, ValueMemory* from, double, double, int code);
  double (*rounded)(ValueMemory*);
  std::wstring (*toString)(ValueMemory*);
  std::wstring (*toStringWith)(ValueMemory*, wchar_t separator);
  double (*tolerance)(ValueMemory*);                    // T
  double (*toleranceTimes)(ValueMemory*, double x);     // Ts
  double (*inUnitOf)(ValueMemory*, double factor);      // Vs
  void (*check)(ValueMemory*);                          // CheckCorrect
  void (*checkBoth)(ValueMemory*, ValueMemory* other);  // CheckCorrect
};

/// Those of the loaded library, under the names that GCC and Clang give them. What they return by
/// value, and what they take so, has a destructor: both go by address, the result's first. Microsoft's
/// compiler does neither.
inline ClassMembers MembersOf(const LoadedLibrary& library) {
  ClassMembers members = {};
  const auto find = [&library](auto& member, const std::string& name) {
    using Function = std::remove_pointer_t<std::remove_reference_t<decltype(member)>>;
    member = library.Export<Function>(("_ZN9KelmoLibs8Localize6Phyval" + name).c_str());
  };
  find(members.makeRow, "9ValueTypeC1EidPKwS4_");
  find(members.copyRow, "9ValueTypeC1ERKS2_");
  find(members.moveRow, "9ValueTypeC1EOS2_");
  find(members.destroyRow, "9ValueTypeD1Ev");
  find(members.sidOf, "9ValueType6GetSidEv");
  find(members.stypeOf, "9ValueType8GetStypeEv");
  find(members.fromCode, "6DoubleC1Edddi");
  find(members.fromText, "6DoubleC1EdddPKw");
  find(members.destroy, "6DoubleD1Ev");
  find(members.assign, "6DoubleaSERKS2_");
  find(members.plus, "6DoubleplES2_");
  find(members.minus, "6DoublemiES2_");
  find(members.times, "6DoublemlEd");
  find(members.dividedBy, "6DoubledvEd");
  find(members.isEqual, "6DoubleeqES2_");
  find(members.isLess, "6DoubleltES2_");
  find(members.isGreater, "6DoublegtES2_");
  find(members.convertTo, "6Double9ConvertToEddi");
  find(members.rounded, "6Double6ReturnEv");
  find(members.toString, "6Double9to_stringB5cxx11Ev");
  find(members.toStringWith, "6Double9to_stringB5cxx11Ew");
  find(members.tolerance, "6Double1TEv");
  find(members.toleranceTimes, "6Double2TsEd");
  find(members.inUnitOf, "6Double2VsEd");
  find(members.check, "6Double12CheckCorrectEv");
  find(members.checkBoth, "6Double12CheckCorrectES2_");
  return members;
}
