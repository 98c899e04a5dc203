// Access to the private members of Double, which the library exports too. An explicit instantiation
// may name a private member; the friend function returns its address.
#pragma once

#include "kelmo_localizer.h"

// An unnamed namespace, because a program may instantiate each template only once.
namespace {  // NOLINT(cert-dcl59-cpp, google-build-namespaces)
namespace private_members {

using KelmoLibs::Localize::Phyval::Double;

template <class Tag, typename Tag::Member member>
struct Exposed {
  friend typename Tag::Member AddressOf(Tag /*which*/) { return member; }
};

struct OfT {
  using Member = double (Double::*)();
  friend Member AddressOf(OfT /*which*/);
};
template struct Exposed<OfT, &Double::T>;

struct OfTs {
  using Member = double (Double::*)(double);
  friend Member AddressOf(OfTs /*which*/);
};
template struct Exposed<OfTs, &Double::Ts>;

struct OfVs {
  using Member = double (Double::*)(double);
  friend Member AddressOf(OfVs /*which*/);
};
template struct Exposed<OfVs, &Double::Vs>;

struct OfCheck {
  using Member = void (Double::*)();
  friend Member AddressOf(OfCheck /*which*/);
};
template struct Exposed<OfCheck, &Double::CheckCorrect>;

struct OfCheckBoth {
  using Member = void (Double::*)(Double);
  friend Member AddressOf(OfCheckBoth /*which*/);
};
template struct Exposed<OfCheckBoth, &Double::CheckCorrect>;

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
