/* A host in plain C: the header compiles, the names link, the types hold what they promise. */

#include <stdio.h>
#include <wchar.h>

#include "kelmo_localizer.h"

static int failures = 0;

static void Expect(int holds, const char* what) {
  if (!holds) {
    printf("failed: %s\n", what);
    ++failures;
  }
}

int main(void) {
  const int32_t missing = LoadDictionary(L"no such folder", L"en.txt");
  const int64_t count = GetErrorsCount();
  Expect(missing == -2, "LoadDictionary of a missing file gives -2");
  Expect(count == 1, "one message is listed");
  Expect(wcscmp(GetError(0),
                L"EL111. Dictionary file not found\nDictionary: no such folder\\en.txt") == 0,
         "the message names the path");
  Expect(UseLanguage(L"en") == -1, "UseLanguage of an unknown id gives -1");
  Expect(wcscmp(LANG(L"menu.file"), L"") == 0, "LANG without a dictionary gives the empty text");
  Expect(GetErrorsCount() == 3, "each of the three is listed");
  ClearErrors();
  Expect(GetErrorsCount() == 0, "ClearErrors empties the list");
  Expect(wcscmp(LANG(NULL), L"") == 0, "null counts as the empty text");
  if (failures == 0) {
    printf("plain C host: all as promised\n");
  }
  return failures;
}
