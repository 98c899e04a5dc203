// Replaces the global C++ locale during a test.
#pragma once

#include <locale>
#include <string>

class GlobalLocale {
 public:
  explicit GlobalLocale(const std::locale& locale) : previous_(std::locale::global(locale)) {}
  GlobalLocale(const GlobalLocale&) = delete;
  GlobalLocale& operator=(const GlobalLocale&) = delete;
  ~GlobalLocale() { std::locale::global(previous_); }

 private:
  std::locale previous_;
};

/// Prints 1234567.89 as 1.234.567!89.
class GroupedByPoints : public std::numpunct<wchar_t> {
  wchar_t do_decimal_point() const override { return L'!'; }
  wchar_t do_thousands_sep() const override { return L'.'; }
  std::string do_grouping() const override { return "\3"; }
};

inline std::locale LocaleGroupedByPoints() {
  return {std::locale::classic(), new GroupedByPoints};  // the locale deletes it
}
