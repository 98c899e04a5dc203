// The cardinal plural rules of CLDR 41. Written by tools/make_plural_table.py; do not edit.
// The first category whose condition is true counts. `n` of CLDR is `i` of a number whose `t` is 0.
#pragma once

#include <cstdint>

#include "cldr/plural_rules.h"

namespace KelmoLibs::Cldr {

constexpr bool IsIn(std::uint64_t number, std::uint64_t first, std::uint64_t last) noexcept {
  return first <= number && number <= last;
}

// clang-format off
inline PluralCategory PluralRule0(const PluralOperands& /*x*/) noexcept {
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule1(const PluralOperands& x) noexcept {
  if (x.i == 0 || (x.t == 0 && x.i == 1)) {
    return PluralCategory::kOne;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule2(const PluralOperands& x) noexcept {
  if ((x.i == 0 || x.i == 1)) {
    return PluralCategory::kOne;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule3(const PluralOperands& x) noexcept {
  if (x.i == 1 && x.v == 0) {
    return PluralCategory::kOne;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule4(const PluralOperands& x) noexcept {
  if ((x.t == 0 && (x.i == 0 || x.i == 1)) || (x.i == 0 && x.f == 1)) {
    return PluralCategory::kOne;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule5(const PluralOperands& x) noexcept {
  if (x.t == 0 && IsIn(x.i, 0, 1)) {
    return PluralCategory::kOne;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule6(const PluralOperands& x) noexcept {
  if ((x.t == 0 && IsIn(x.i, 0, 1)) || (x.t == 0 && IsIn(x.i, 11, 99))) {
    return PluralCategory::kOne;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule7(const PluralOperands& x) noexcept {
  if (x.t == 0 && x.i == 1) {
    return PluralCategory::kOne;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule8(const PluralOperands& x) noexcept {
  if ((x.t == 0 && x.i == 1) || (x.t != 0 && (x.i == 0 || x.i == 1))) {
    return PluralCategory::kOne;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule9(const PluralOperands& x) noexcept {
  if ((x.t == 0 && x.i % 10 == 1 && x.i % 100 != 11) || x.t != 0) {
    return PluralCategory::kOne;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule10(const PluralOperands& x) noexcept {
  if ((x.v == 0 && x.i % 10 == 1 && x.i % 100 != 11) || (x.f % 10 == 1 && x.f % 100 != 11)) {
    return PluralCategory::kOne;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule11(const PluralOperands& x) noexcept {
  if ((x.v == 0 && (x.i == 1 || x.i == 2 || x.i == 3)) || (x.v == 0 && !(x.i % 10 == 4 || x.i % 10 == 6 || x.i % 10 == 9)) || (x.v != 0 && !(x.f % 10 == 4 || x.f % 10 == 6 || x.f % 10 == 9))) {
    return PluralCategory::kOne;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule12(const PluralOperands& x) noexcept {
  if ((x.t == 0 && x.i % 10 == 0) || (x.t == 0 && IsIn(x.i % 100, 11, 19)) || (x.v == 2 && IsIn(x.f % 100, 11, 19))) {
    return PluralCategory::kZero;
  }
  if ((x.t == 0 && x.i % 10 == 1 && !(x.t == 0 && x.i % 100 == 11)) || (x.v == 2 && x.f % 10 == 1 && x.f % 100 != 11) || (x.v != 2 && x.f % 10 == 1)) {
    return PluralCategory::kOne;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule13(const PluralOperands& x) noexcept {
  if (x.t == 0 && x.i == 0) {
    return PluralCategory::kZero;
  }
  if ((x.i == 0 || x.i == 1) && !(x.t == 0 && x.i == 0)) {
    return PluralCategory::kOne;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule14(const PluralOperands& x) noexcept {
  if (x.t == 0 && x.i == 0) {
    return PluralCategory::kZero;
  }
  if (x.t == 0 && x.i == 1) {
    return PluralCategory::kOne;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule15(const PluralOperands& x) noexcept {
  if (x.t == 0 && x.i == 1) {
    return PluralCategory::kOne;
  }
  if (x.t == 0 && x.i == 2) {
    return PluralCategory::kTwo;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule16(const PluralOperands& x) noexcept {
  if (x.i == 0 || (x.t == 0 && x.i == 1)) {
    return PluralCategory::kOne;
  }
  if (x.t == 0 && IsIn(x.i, 2, 10)) {
    return PluralCategory::kFew;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule17(const PluralOperands& x) noexcept {
  if (x.i == 1 && x.v == 0) {
    return PluralCategory::kOne;
  }
  if (x.v != 0 || (x.t == 0 && x.i == 0) || (x.t == 0 && IsIn(x.i % 100, 2, 19))) {
    return PluralCategory::kFew;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule18(const PluralOperands& x) noexcept {
  if ((x.v == 0 && x.i % 10 == 1 && x.i % 100 != 11) || (x.f % 10 == 1 && x.f % 100 != 11)) {
    return PluralCategory::kOne;
  }
  if ((x.v == 0 && IsIn(x.i % 10, 2, 4) && !IsIn(x.i % 100, 12, 14)) || (IsIn(x.f % 10, 2, 4) && !IsIn(x.f % 100, 12, 14))) {
    return PluralCategory::kFew;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule19(const PluralOperands& x) noexcept {
  if ((x.i == 0 || x.i == 1)) {
    return PluralCategory::kOne;
  }
  if ((x.e == 0 && x.i != 0 && x.i % 1000000 == 0 && x.v == 0) || !IsIn(x.e, 0, 5)) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule20(const PluralOperands& x) noexcept {
  if (IsIn(x.i, 0, 1)) {
    return PluralCategory::kOne;
  }
  if ((x.e == 0 && x.i != 0 && x.i % 1000000 == 0 && x.v == 0) || !IsIn(x.e, 0, 5)) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule21(const PluralOperands& x) noexcept {
  if (x.i == 1 && x.v == 0) {
    return PluralCategory::kOne;
  }
  if ((x.e == 0 && x.i != 0 && x.i % 1000000 == 0 && x.v == 0) || !IsIn(x.e, 0, 5)) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule22(const PluralOperands& x) noexcept {
  if (x.t == 0 && x.i == 1) {
    return PluralCategory::kOne;
  }
  if ((x.e == 0 && x.i != 0 && x.i % 1000000 == 0 && x.v == 0) || !IsIn(x.e, 0, 5)) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule23(const PluralOperands& x) noexcept {
  if (x.t == 0 && (x.i == 1 || x.i == 11)) {
    return PluralCategory::kOne;
  }
  if (x.t == 0 && (x.i == 2 || x.i == 12)) {
    return PluralCategory::kTwo;
  }
  if (x.t == 0 && (IsIn(x.i, 3, 10) || IsIn(x.i, 13, 19))) {
    return PluralCategory::kFew;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule24(const PluralOperands& x) noexcept {
  if (x.v == 0 && x.i % 100 == 1) {
    return PluralCategory::kOne;
  }
  if (x.v == 0 && x.i % 100 == 2) {
    return PluralCategory::kTwo;
  }
  if ((x.v == 0 && IsIn(x.i % 100, 3, 4)) || x.v != 0) {
    return PluralCategory::kFew;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule25(const PluralOperands& x) noexcept {
  if ((x.v == 0 && x.i % 100 == 1) || x.f % 100 == 1) {
    return PluralCategory::kOne;
  }
  if ((x.v == 0 && x.i % 100 == 2) || x.f % 100 == 2) {
    return PluralCategory::kTwo;
  }
  if ((x.v == 0 && IsIn(x.i % 100, 3, 4)) || IsIn(x.f % 100, 3, 4)) {
    return PluralCategory::kFew;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule26(const PluralOperands& x) noexcept {
  if (x.i == 1 && x.v == 0) {
    return PluralCategory::kOne;
  }
  if (x.i == 2 && x.v == 0) {
    return PluralCategory::kTwo;
  }
  if (x.v == 0 && !(x.t == 0 && IsIn(x.i, 0, 10)) && x.t == 0 && x.i % 10 == 0) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule27(const PluralOperands& x) noexcept {
  if (x.i == 1 && x.v == 0) {
    return PluralCategory::kOne;
  }
  if (IsIn(x.i, 2, 4) && x.v == 0) {
    return PluralCategory::kFew;
  }
  if (x.v != 0) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule28(const PluralOperands& x) noexcept {
  if (x.i == 1 && x.v == 0) {
    return PluralCategory::kOne;
  }
  if (x.v == 0 && IsIn(x.i % 10, 2, 4) && !IsIn(x.i % 100, 12, 14)) {
    return PluralCategory::kFew;
  }
  if ((x.v == 0 && x.i != 1 && IsIn(x.i % 10, 0, 1)) || (x.v == 0 && IsIn(x.i % 10, 5, 9)) || (x.v == 0 && IsIn(x.i % 100, 12, 14))) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule29(const PluralOperands& x) noexcept {
  if (x.t == 0 && x.i % 10 == 1 && !(x.t == 0 && x.i % 100 == 11)) {
    return PluralCategory::kOne;
  }
  if (x.t == 0 && IsIn(x.i % 10, 2, 4) && !(x.t == 0 && IsIn(x.i % 100, 12, 14))) {
    return PluralCategory::kFew;
  }
  if ((x.t == 0 && x.i % 10 == 0) || (x.t == 0 && IsIn(x.i % 10, 5, 9)) || (x.t == 0 && IsIn(x.i % 100, 11, 14))) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule30(const PluralOperands& x) noexcept {
  if (x.t == 0 && x.i % 10 == 1 && !(x.t == 0 && IsIn(x.i % 100, 11, 19))) {
    return PluralCategory::kOne;
  }
  if (x.t == 0 && IsIn(x.i % 10, 2, 9) && !(x.t == 0 && IsIn(x.i % 100, 11, 19))) {
    return PluralCategory::kFew;
  }
  if (x.f != 0) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule31(const PluralOperands& x) noexcept {
  if (x.t == 0 && x.i == 1) {
    return PluralCategory::kOne;
  }
  if ((x.t == 0 && x.i == 0) || (x.t == 0 && IsIn(x.i % 100, 2, 10))) {
    return PluralCategory::kFew;
  }
  if (x.t == 0 && IsIn(x.i % 100, 11, 19)) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule32(const PluralOperands& x) noexcept {
  if (x.v == 0 && x.i % 10 == 1 && x.i % 100 != 11) {
    return PluralCategory::kOne;
  }
  if (x.v == 0 && IsIn(x.i % 10, 2, 4) && !IsIn(x.i % 100, 12, 14)) {
    return PluralCategory::kFew;
  }
  if ((x.v == 0 && x.i % 10 == 0) || (x.v == 0 && IsIn(x.i % 10, 5, 9)) || (x.v == 0 && IsIn(x.i % 100, 11, 14))) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule33(const PluralOperands& x) noexcept {
  if (x.t == 0 && x.i % 10 == 1 && !(x.t == 0 && (x.i % 100 == 11 || x.i % 100 == 71 || x.i % 100 == 91))) {
    return PluralCategory::kOne;
  }
  if (x.t == 0 && x.i % 10 == 2 && !(x.t == 0 && (x.i % 100 == 12 || x.i % 100 == 72 || x.i % 100 == 92))) {
    return PluralCategory::kTwo;
  }
  if (x.t == 0 && (IsIn(x.i % 10, 3, 4) || x.i % 10 == 9) && !(x.t == 0 && (IsIn(x.i % 100, 10, 19) || IsIn(x.i % 100, 70, 79) || IsIn(x.i % 100, 90, 99)))) {
    return PluralCategory::kFew;
  }
  if (!(x.t == 0 && x.i == 0) && x.t == 0 && x.i % 1000000 == 0) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule34(const PluralOperands& x) noexcept {
  if (x.t == 0 && x.i == 1) {
    return PluralCategory::kOne;
  }
  if (x.t == 0 && x.i == 2) {
    return PluralCategory::kTwo;
  }
  if (x.t == 0 && IsIn(x.i, 3, 6)) {
    return PluralCategory::kFew;
  }
  if (x.t == 0 && IsIn(x.i, 7, 10)) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule35(const PluralOperands& x) noexcept {
  if (x.v == 0 && x.i % 10 == 1) {
    return PluralCategory::kOne;
  }
  if (x.v == 0 && x.i % 10 == 2) {
    return PluralCategory::kTwo;
  }
  if (x.v == 0 && (x.i % 100 == 0 || x.i % 100 == 20 || x.i % 100 == 40 || x.i % 100 == 60 || x.i % 100 == 80)) {
    return PluralCategory::kFew;
  }
  if (x.v != 0) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule36(const PluralOperands& x) noexcept {
  if (x.t == 0 && x.i == 0) {
    return PluralCategory::kZero;
  }
  if (x.t == 0 && x.i == 1) {
    return PluralCategory::kOne;
  }
  if ((x.t == 0 && (x.i % 100 == 2 || x.i % 100 == 22 || x.i % 100 == 42 || x.i % 100 == 62 || x.i % 100 == 82)) || (x.t == 0 && x.i % 1000 == 0 && (IsIn(x.i % 100000, 1000, 20000) || x.i % 100000 == 40000 || x.i % 100000 == 60000 || x.i % 100000 == 80000)) || (!(x.t == 0 && x.i == 0) && x.t == 0 && x.i % 1000000 == 100000)) {
    return PluralCategory::kTwo;
  }
  if (x.t == 0 && (x.i % 100 == 3 || x.i % 100 == 23 || x.i % 100 == 43 || x.i % 100 == 63 || x.i % 100 == 83)) {
    return PluralCategory::kFew;
  }
  if (!(x.t == 0 && x.i == 1) && x.t == 0 && (x.i % 100 == 1 || x.i % 100 == 21 || x.i % 100 == 41 || x.i % 100 == 61 || x.i % 100 == 81)) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule37(const PluralOperands& x) noexcept {
  if (x.t == 0 && x.i == 0) {
    return PluralCategory::kZero;
  }
  if (x.t == 0 && x.i == 1) {
    return PluralCategory::kOne;
  }
  if (x.t == 0 && x.i == 2) {
    return PluralCategory::kTwo;
  }
  if (x.t == 0 && IsIn(x.i % 100, 3, 10)) {
    return PluralCategory::kFew;
  }
  if (x.t == 0 && IsIn(x.i % 100, 11, 99)) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline PluralCategory PluralRule38(const PluralOperands& x) noexcept {
  if (x.t == 0 && x.i == 0) {
    return PluralCategory::kZero;
  }
  if (x.t == 0 && x.i == 1) {
    return PluralCategory::kOne;
  }
  if (x.t == 0 && x.i == 2) {
    return PluralCategory::kTwo;
  }
  if (x.t == 0 && x.i == 3) {
    return PluralCategory::kFew;
  }
  if (x.t == 0 && x.i == 6) {
    return PluralCategory::kMany;
  }
  return PluralCategory::kOther;
}

inline constexpr PluralRules kPluralTable[] = {
    {" bm bo dz hnj id ig ii in ja jbo jv jw kde kea km ko lkt lo ms my nqo osa root sah ses sg su th to tpi vi wo yo yue zh ", 0, PluralRule0},
    {" am as bn doi fa gu hi kn pcm zu ", 2, PluralRule1},
    {" ff hy kab ", 2, PluralRule2},
    {" ast ca de en et fi fy gl ia io ji lij nl sc scn sv sw ur yi ", 2, PluralRule3},
    {" si ", 2, PluralRule4},
    {" ak bho guw ln mg nso pa ti wa ", 2, PluralRule5},
    {" tzm ", 2, PluralRule6},
    {" af an asa az bal bem bez bg brx ce cgg chr ckb dv ee el eo eu fo fur gsw ha haw hu jgo jmc ka kaj kcg kk kkj kl ks ksb ku ky lb lg mas mgo ml mn mr nah nb nd ne nn nnh no nr ny nyn om or os pap ps rm rof rwk saq sd sdh seh sn so sq ss ssy st syr ta te teo tig tk tn tr ts ug uz ve vo vun wae xh xog ", 2, PluralRule7},
    {" da ", 2, PluralRule8},
    {" is ", 2, PluralRule9},
    {" mk ", 2, PluralRule10},
    {" ceb fil tl ", 2, PluralRule11},
    {" lv prg ", 3, PluralRule12},
    {" lag ", 3, PluralRule13},
    {" ksh ", 3, PluralRule14},
    {" iu naq sat se sma smi smj smn sms ", 6, PluralRule15},
    {" shi ", 10, PluralRule16},
    {" mo ro ", 10, PluralRule17},
    {" bs hr sh sr ", 10, PluralRule18},
    {" fr ", 18, PluralRule19},
    {" pt ", 18, PluralRule20},
    {" it pt_PT ", 18, PluralRule21},
    {" es ", 18, PluralRule22},
    {" gd ", 14, PluralRule23},
    {" sl ", 14, PluralRule24},
    {" dsb hsb ", 14, PluralRule25},
    {" he iw ", 22, PluralRule26},
    {" cs sk ", 26, PluralRule27},
    {" pl ", 26, PluralRule28},
    {" be ", 26, PluralRule29},
    {" lt ", 26, PluralRule30},
    {" mt ", 26, PluralRule31},
    {" ru uk ", 26, PluralRule32},
    {" br ", 30, PluralRule33},
    {" ga ", 30, PluralRule34},
    {" gv ", 30, PluralRule35},
    {" kw ", 31, PluralRule36},
    {" ar ars ", 31, PluralRule37},
    {" cy ", 31, PluralRule38},
};
// clang-format on

}  // namespace KelmoLibs::Cldr
