// The units of the library that is loaded at run time, by its classes.
#pragma once

#include <string>

#include "tests/support/class_members.h"

class LoadedUnits {
 public:
  explicit LoadedUnits(const LoadedLibrary& library) : members_(MembersOf(library)) {}

  /// A value made by the library while this object lives; `unit` is what it found.
  class Value {
   public:
    Value(const LoadedUnits& units, double value, double tolerance, int code)
        : members_(units.members_) {
      members_.fromCode(&memory_, value, tolerance, 0, code);
    }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;
    ~Value() { members_.destroy(&memory_); }

    const KelmoLibs::Localize::Phyval::ValueType* Unit() const { return memory_.unit; }
    void Check() { members_.check(&memory_); }
    std::wstring Text() { return members_.toString(&memory_); }
    std::wstring Text(wchar_t separator) { return members_.toStringWith(&memory_, separator); }

   private:
    const ClassMembers& members_;
    ValueMemory memory_ = {};
  };

  /// The row of `code`, null where there is none.
  const KelmoLibs::Localize::Phyval::ValueType* Find(int code) const {
    return Value(*this, 1, 1, code).Unit();
  }

 private:
  ClassMembers members_;
};
