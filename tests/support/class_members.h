// The members of the library's classes as plain functions, so that a test can call them in a
// library that it loads at run time, and construct and destroy objects anywhere. The first argument
// is the address of the object. A Double that the member takes or returns by value is passed by its
// address too; that of the result comes before all other arguments.
#pragma once

#include <cstring>
#include <functional>
#include <string>
#include <utility>

#include "kelmo_localizer.h"
#include "tests/support/loaded_library.h"

/// The memory of a Double, which a host copies byte by byte. `unit` is null after the destruction.
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
  std::function<void(RowMemory*, int code, double factor, const wchar_t* symbol,
                     const wchar_t* name)>
      makeRow;
  std::function<void(RowMemory*, const RowMemory*)> copyRow;
  std::function<void(RowMemory*, RowMemory*)> moveRow;
  std::function<void(RowMemory*)> destroyRow;
  std::function<int(RowMemory*)> sidOf;    // GetSid
  std::function<int(RowMemory*)> stypeOf;  // GetStype

  std::function<void(ValueMemory*, double, double, double, int code)> fromCode;
  std::function<void(ValueMemory*, double, double, double, const wchar_t* text)> fromText;
  std::function<void(ValueMemory*)> destroy;
  std::function<ValueMemory*(ValueMemory*, const ValueMemory*)> assign;
  std::function<void(ValueMemory* result, ValueMemory* left, ValueMemory* right)> plus;
  std::function<void(ValueMemory* result, ValueMemory* left, ValueMemory* right)> minus;
  std::function<void(ValueMemory* result, ValueMemory* left, double k)> times;
  std::function<void(ValueMemory* result, ValueMemory* left, double k)> dividedBy;
  std::function<bool(ValueMemory* left, ValueMemory* right)> isEqual;
  std::function<bool(ValueMemory* left, ValueMemory* right)> isLess;
  std::function<bool(ValueMemory* left, ValueMemory* right)> isGreater;
  std::function<void(ValueMemory* result, ValueMemory* from, double, double, int code)> convertTo;
  std::function<double(ValueMemory*)> rounded;
  std::function<std::wstring(ValueMemory*)> toString;
  std::function<std::wstring(ValueMemory*, wchar_t separator)> toStringWith;
  std::function<double(ValueMemory*)> tolerance;                    // T
  std::function<double(ValueMemory*, double x)> toleranceTimes;     // Ts
  std::function<double(ValueMemory*, double factor)> inUnitOf;      // Vs
  std::function<void(ValueMemory*)> check;                          // CheckCorrect
  std::function<void(ValueMemory*, ValueMemory* other)> checkBoth;  // CheckCorrect
};

/// Finds the members of a library that is loaded at run time. Arguments and results by value follow
/// the calling convention of this program's compiler.
class MembersAt {
 public:
  using AnyFunction = void();

  /// `find` returns the address of an exported name.
  explicit MembersAt(std::function<AnyFunction*(const char* name)> find) : find_(std::move(find)) {}

  ClassMembers All() const {
    ClassMembers all = {};
    Bind(all.makeRow, "9ValueTypeC1EidPKwS4_", "??0ValueType", "QEAA@HNPEB_W0@Z");
    Bind(all.copyRow, "9ValueTypeC1ERKS2_", "??0ValueType", "QEAA@AEBV0123@@Z");
    Bind(all.moveRow, "9ValueTypeC1EOS2_", "??0ValueType", "QEAA@$$QEAV0123@@Z");
    Bind(all.destroyRow, "9ValueTypeD1Ev", "??1ValueType", "QEAA@XZ");
    Bind(all.sidOf, "9ValueType6GetSidEv", "?GetSid@ValueType", "QEAAHXZ");
    Bind(all.stypeOf, "9ValueType8GetStypeEv", "?GetStype@ValueType", "QEAAHXZ");
    Bind(all.fromCode, "6DoubleC1Edddi", "??0Double", "QEAA@NNNH@Z");
    Bind(all.fromText, "6DoubleC1EdddPKw", "??0Double", "QEAA@NNNPEB_W@Z");
    Bind(all.destroy, "6DoubleD1Ev", "??1Double", "QEAA@XZ");
    Bind(all.assign, "6DoubleaSERKS2_", "??4Double", "QEAAAEAV0123@AEBV0123@@Z");
    BindReturningDouble(all.plus, "6DoubleplES2_", "??HDouble", "QEAA?AV0123@V0123@@Z");
    BindReturningDouble(all.minus, "6DoublemiES2_", "??GDouble", "QEAA?AV0123@V0123@@Z");
    BindReturningDouble(all.times, "6DoublemlEd", "??DDouble", "QEAA?AV0123@N@Z");
    BindReturningDouble(all.dividedBy, "6DoubledvEd", "??KDouble", "QEAA?AV0123@N@Z");
    Bind(all.isEqual, "6DoubleeqES2_", "??8Double", "QEAA_NV0123@@Z");
    Bind(all.isLess, "6DoubleltES2_", "??MDouble", "QEAA_NV0123@@Z");
    Bind(all.isGreater, "6DoublegtES2_", "??ODouble", "QEAA_NV0123@@Z");
    BindReturningDouble(all.convertTo, "6Double9ConvertToEddi", "?ConvertTo@Double",
                        "QEAA?AV1234@NNH@Z");
    Bind(all.rounded, "6Double6ReturnEv", "?Return@Double", "QEAANXZ");
    const std::string returnsText =
        "QEAA?AV?$basic_string@_WU?$char_traits@_W@std@@V?$allocator@_W@2@@std@@";
    Bind(all.toString, "6Double9to_stringB5cxx11Ev", "?to_string@Double", returnsText + "XZ");
    Bind(all.toStringWith, "6Double9to_stringB5cxx11Ew", "?to_string@Double", returnsText + "_W@Z");
    Bind(all.tolerance, "6Double1TEv", "?T@Double", "AEAANXZ");
    Bind(all.toleranceTimes, "6Double2TsEd", "?Ts@Double", "AEAANN@Z");
    Bind(all.inUnitOf, "6Double2VsEd", "?Vs@Double", "AEAANN@Z");
    Bind(all.check, "6Double12CheckCorrectEv", "?CheckCorrect@Double", "AEAAXXZ");
    Bind(all.checkBoth, "6Double12CheckCorrectES2_", "?CheckCorrect@Double", "AEAAXV1234@@Z");
    return all;
  }

 private:
  // A Double as a member takes or returns it by value. Its destructor decides how compilers pass
  // it.
  struct Passed {
    ValueMemory memory;

    explicit Passed(const ValueMemory& value) : memory(value) {}
    Passed(const Passed&) = default;
    Passed& operator=(const Passed&) = delete;
    ~Passed() { memory.unit = nullptr; }
  };
  static Passed Pass(ValueMemory* value) { return Passed(*value); }
  template <class Other>
  static Other Pass(Other other) {
    return other;
  }

  template <class Member>
  Member Find(const char* gnu, const char* microsoft, const std::string& type) const {
#if defined(_MSC_VER)
    (void)gnu;
    const std::string name = std::string(microsoft) + "@Phyval@Localize@KelmoLibs@@" + type;
#else
    (void)microsoft;
    (void)type;
    const std::string name = std::string("_ZN9KelmoLibs8Localize6Phyval") + gnu;
#endif
    AnyFunction* const address = find_(name.c_str());
    // The address is the first part of a pointer to a member. The rest, if any, is 0: the object
    // needs no adjustment.
    Member member = nullptr;
    static_assert(sizeof(address) <= sizeof(member));
    std::memcpy(&member, &address, sizeof(address));
    return member;
  }

  template <class Result, class Memory, class... Arguments>
  void Bind(std::function<Result(Memory*, Arguments...)>& call, const char* gnu,
            const char* microsoft, const std::string& type) const {
    using Member = Result (Memory::*)(decltype(Pass(std::declval<Arguments>()))...);
    call = [member = Find<Member>(gnu, microsoft, type)](Memory* object, Arguments... arguments) {
      return (object->*member)(Pass(arguments)...);
    };
  }

  // For a member that returns a Double by value.
  template <class... Arguments>
  void BindReturningDouble(std::function<void(ValueMemory*, ValueMemory*, Arguments...)>& call,
                           const char* gnu, const char* microsoft, const std::string& type) const {
    using Member = Passed (ValueMemory::*)(decltype(Pass(std::declval<Arguments>()))...);
    call = [member = Find<Member>(gnu, microsoft, type)](ValueMemory* result, ValueMemory* object,
                                                         Arguments... arguments) {
      *result = (object->*member)(Pass(arguments)...).memory;
    };
  }

  std::function<AnyFunction*(const char* name)> find_;
};

inline ClassMembers MembersOf(const LoadedLibrary& library) {
  return MembersAt(
             [&library](const char* name) { return library.Export<MembersAt::AnyFunction>(name); })
      .All();
}
