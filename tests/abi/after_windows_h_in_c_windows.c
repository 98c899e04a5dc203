/* A host in C that includes <windows.h> with all its macros first. */
#include <windows.h>
/* The test is that this order compiles. */
#include "kelmo_localizer.h"

int FunctionsAfterWindowsH(void) {
  return Init(L"no such folder", L"ru") == 0 && Init0(L"no such folder") == 0 &&
         ExportPhyVal() == 0 && LoadDictionary(L"no such folder", L"en.txt") == -2 &&
         UseLanguage(L"en") == -1 && LANG(L"menu.file")[0] == L'\0' && GetErrorsCount() == 3 &&
         GetError(0)[0] == L'E' && (ClearErrors(), GetErrorsCount() == 0);
}
