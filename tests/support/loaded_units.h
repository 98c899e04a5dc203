// The units of a library that is loaded at run time.
#pragma once

#include <string>

#include "tests/support/class_members.h"

class LoadedUnits {
 public:
  explicit LoadedUnits(const LoadedLibrary& library) : members_(MembersOf(library)) {}

  /// A value that the library constructs; it is destroyed with this object.
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

  /// The row of `code`, or null.
  const KelmoLibs::Localize::Phyval::ValueType* Find(int code) const {
    return Value(*this, 1, 1, code).Unit();
  }

 private:
  ClassMembers members_;
};
