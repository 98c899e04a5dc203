// The units of the library that is loaded at run time, by its classes: members under the names that
// GCC and Clang give them, called as functions that take the object first. Microsoft's compiler does
// neither.
#pragma once

#include <string>

#include "kelmo_localizer.h"
#include "tests/support/loaded_library.h"

class LoadedUnits {
 public:
  explicit LoadedUnits(const LoadedLibrary& library) : library_(library) {}

  /// A value made by the library while this object lives; `unit` is what it found.
  class Value {
   public:
    Value(const LoadedLibrary& library, double value, double tolerance, int code)
        : library_(library) {
      Member<void(void*, double, double, double, int)>("C1Edddi")(memory_, value, tolerance, 0,
                                                                  code);
    }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;
    ~Value() { Member<void(void*)>("D1Ev")(memory_); }

    const KelmoLibs::Localize::Phyval::ValueType* Unit() const {
      return reinterpret_cast<const Double*>(memory_)->unit;
    }
    void Check() { Member<void(void*)>("12CheckCorrectEv")(memory_); }
    std::wstring Text() { return Member<std::wstring(void*)>("9to_stringB5cxx11Ev")(memory_); }
    std::wstring Text(wchar_t separator) {
      return Member<std::wstring(void*, wchar_t)>("9to_stringB5cxx11Ew")(memory_, separator);
    }

   private:
    using Double = KelmoLibs::Localize::Phyval::Double;

    template <class Function>
    Function* Member(const std::string& name) const {
      return library_.Export<Function>(("_ZN9KelmoLibs8Localize6Phyval6Double" + name).c_str());
    }

    const LoadedLibrary& library_;
    alignas(Double) unsigned char memory_[sizeof(Double)];
  };

  /// The row of `code`, null where there is none.
  const KelmoLibs::Localize::Phyval::ValueType* Find(int code) const {
    return Value(library_, 1, 1, code).Unit();
  }

 private:
  const LoadedLibrary& library_;
};
