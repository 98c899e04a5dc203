// Every function as a host's last call, while the process exits: from an atexit handler, and from
// the destructors of static objects constructed before and after the library's first use.
// GoogleTest has ended by then, so this program does not use it.

#include <cstdio>
#include <cstdlib>
#include <cwchar>

#include "kelmo_localizer.h"

using KelmoLibs::Localize::Phyval::Double;

namespace {

void Expect(bool holds, const char* what) {
  if (!holds) {
    std::printf("failed at exit: %s\n", what);
    std::fflush(stdout);
    std::_Exit(1);
  }
}

void CallEverything() {
  Expect(Init(L"no such folder", L"ru") == 0, "Init");
  Expect(Init0(L"no such folder") == 0, "Init0");
  Expect(ExportPhyVal() == 0, "ExportPhyVal");
  Double length(2.5, 0.01, 0, 10001);
  Expect(length.unit != nullptr && length.unit->symbol == L"\u043C", "the meter");
  Expect(length.to_string(L',') == L"2,50", "to_string");
  ClearErrors();
  Expect(LoadDictionary(L"no such folder", L"en.txt") == -2, "LoadDictionary");
  Expect(UseLanguage(L"en") == -1, "UseLanguage");
  Expect(std::wcscmp(LANG(L"key"), L"") == 0, "LANG");
  Expect(GetErrorsCount() == 3, "GetErrorsCount");
  Expect(std::wcscmp(GetError(1), L"EL112. Dictionary not found\nDictionary id: en") == 0,
         "GetError");
}

struct AtTheEnd {
  explicit AtTheEnd(const char* name) : name_(name) {}
  AtTheEnd(const AtTheEnd&) = delete;
  AtTheEnd& operator=(const AtTheEnd&) = delete;
  ~AtTheEnd() {
    CallEverything();
    std::printf("%s: all calls succeed\n", name_);
  }

 private:
  const char* name_;
};

const AtTheEnd madeBeforeMain("a static object made before main");

}  // namespace

int main() {
  (void)std::atexit(CallEverything);
  Init0(L"no such folder");
  static const AtTheEnd madeLate("a static object made after the start");
}
