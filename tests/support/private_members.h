// The private members of Double, which the library exports as well. An explicit instantiation may
// name what is private; the friend hands its address on.
#pragma once

#include "kelmo_localizer.h"

// In each file on its own: nothing may be instantiated twice in a program.
namespace {  // NOLINT(cert-dcl59-cpp, google-build-namespaces)
namespace private_members {

using KelmoLibs::Localize::Phyval::Double;

template <class Of, typename Of::Member member>
struct Opened {
  friend typename Of::Member AddressOf(Of /*which*/) { return member; }
};

struct OfT {
  using Member = double (Double::*)();
  friend Member AddressOf(OfT /*which*/);
};
template struct Opened<OfT, &Double::T>;

struct OfTs {
  using Member = double (Double::*)(double);
  friend Member AddressOf(OfTs /*which*/);
};
template struct Opened<OfTs, &Double::Ts>;

struct OfVs {
  using Member = double (Double::*)(double);
  friend Member AddressOf(OfVs /*which*/);
};
template struct Opened<OfVs, &Double::Vs>;

struct OfCheck {
  using Member = void (Double::*)();
  friend Member AddressOf(OfCheck /*which*/);
};
template struct Opened<OfCheck, &Double::CheckCorrect>;

struct OfCheckBoth {
  using Member = void (Double::*)(Double);
  friend Member AddressOf(OfCheckBoth /*which*/);
};
template struct Opened<OfCheckBoth, &Double::CheckCorrect>;

}  // namespace private_members

inline double T(KelmoLibs::Localize::Phyval::Double& of) {
  return (of.*AddressOf(private_members::OfT()))();
}
inline double Ts(KelmoLibs::Localize::Phyval::Double& of, double x) {
  return (of.*AddressOf(private_members::OfTs()))(x);
}
inline double Vs(KelmoLibs::Localize::Phyval::Double& of, double x) {
  return (of.*AddressOf(private_members::OfVs()))(x);
}
inline void CheckCorrect(KelmoLibs::Localize::Phyval::Double& of) {
  (of.*AddressOf(private_members::OfCheck()))();
}
inline void CheckCorrect(KelmoLibs::Localize::Phyval::Double& of,
                         const KelmoLibs::Localize::Phyval::Double& other) {
  (of.*AddressOf(private_members::OfCheckBoth()))(other);
}

}  // namespace
