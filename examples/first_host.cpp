#include <cstdio>

#include "kelmo_localizer.h"

int main() {
  Init(L"examples", L"de");  // once, before the first value: it replaces the units
  const wchar_t* const folder = L"examples/LANG";
  if (LoadDictionary(folder, L"en.txt") < 0 || LoadDictionary(folder, L"de.txt") < 0) {
    std::printf("%ls\n", GetError(-1));
    return 1;
  }
  UseLanguage(L"de");  // after the last load, which has made its own dictionary the current one
  std::printf("%ls: %ls, %ls\n", LANG(L"menu.file"), LANG(L"menu.file.save"),
              LANG(L"menu.file.exit"));
}
