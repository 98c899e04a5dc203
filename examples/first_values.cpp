#include <cstdio>
#include <stdexcept>

#include "kelmo_localizer.h"
#include "print.h"

using KelmoLibs::Localize::Phyval::Double;

int main() {
  Init(L"examples", L"en");              // once, before the first value
  Double side(1.5, 0.01, 0, 10001);      // 1.5 m, known to 0.01 m
  const Double edge(10, 0.1, 0, L"in");  // 10 inches, known to 0.1; an inch is 0.0273 m here
  Double sum = side + edge;              // 1.773 m, known to 0.01 m, like the left operand
  Print({sum.to_string(L'.'), L" m\n"});
  Print({sum.ConvertTo(0.1, 0, 10002).to_string(L'.'), L" in\n"});
  try {
    sum = sum + Double(90, 1, 0, 40001);  // degrees
  } catch (const std::invalid_argument& refusal) {
    std::printf("%s\n", refusal.what());
  }
}
