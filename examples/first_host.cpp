#include "kelmo_localizer.h"
#include "print.h"  // prints wide text as UTF-8

int main() {
  Init(L"examples", L"de");  // once, before the first value: it replaces the units
  for (const wchar_t* const file : {L"en.txt", L"de.txt", L"ru.txt"}) {
    if (LoadDictionary(L"examples/LANG", file) < 0) {
      Print({GetError(-1), L"\n"});
      return 1;
    }
  }
  UseLanguage(L"de");  // after the last load: each load selects its own dictionary
  Print(
      {LANG(L"menu.file"), L": ", LANG(L"menu.file.save"), L", ", LANG(L"menu.file.exit"), L"\n"});
}
