/* A host in plain C that uses the library from its load to its end: the header compiles, all names
 * are exported, the functions keep their contracts. Run it from the top folder of the project with
 * the library's file as its argument. */

#include "tests/abi/c_host.h"

#include <stdio.h>
#include <wchar.h>

static int failures = 0;

static void Expect(int holds, const char* what) {
  if (!holds) {
    printf("failed: %s\n", what);
    ++failures;
  }
}

static int Same(const wchar_t* text, const wchar_t* expected) {
  return wcscmp(text, expected) == 0;
}

int main(int count, char** arguments) {
  struct Functions host;
  const wchar_t* file = NULL;
  if (count != 2 || !TakeFunctions(&host, arguments[1])) {
    printf("failed: cannot load the library\n");
    return 1;
  }
  Expect(host.GetErrorsCount() == 0, "the list is empty at first");
  Expect(Same(host.GetError(0), L""), "GetError of an empty list gives the empty text");

  Expect(host.Init(L"examples", L"ru") == 0, "Init gives 0");
  Expect(host.Init(L"examples", L"no such language") == 0, "Init gives 0 without a file");
  Expect(host.GetErrorsCount() == 0, "starting lists nothing");

  Expect(host.LoadDictionary(L"examples/LANG", L"en.txt") == 0, "the first dictionary loads");
  Expect(host.LoadDictionary(L"examples/LANG", L"de.txt") == 0, "the second dictionary loads");
  Expect(host.LoadDictionary(L"no such folder", L"en.txt") == -2, "a missing file gives -2");
  Expect(host.GetErrorsCount() == 1, "one message is listed");
  Expect(Same(host.GetError(0),
              L"EL111. Dictionary file not found\nDictionary: no such folder\\en.txt"),
         "the message names the path");
  Expect(host.UseLanguage(L"en") == 0, "UseLanguage selects");
  file = host.LANG(L"menu.file");
  Expect(Same(file, L"File"), "LANG gives the text");
  Expect(host.UseLanguage(L"de") == 0, "UseLanguage selects another");
  Expect(Same(host.LANG(L"menu.file"), L"Datei"), "LANG gives the text of the selected one");
  Expect(host.UseLanguage(L"fr") == -1, "UseLanguage of an unknown id gives -1");
  Expect(Same(host.LANG(NULL), L""), "null counts as the empty text");
  Expect(host.GetErrorsCount() == 3, "three messages are listed");
  Expect(Same(host.GetError(2), L"EL121. Key not found in dictionary\nKey: \nDictionary id: "),
         "the message names the key twice");
  host.ClearErrors();
  Expect(host.GetErrorsCount() == 0, "ClearErrors empties the list");

  Expect(host.Init0(L"examples") == 0, "Init0 gives 0");
  Expect(host.ExportPhyVal() == 0, "ExportPhyVal gives 0");
  Expect(host.UseLanguage(L"en") == 0, "a start keeps the dictionaries");
  Expect(host.LANG(L"menu.file") == file, "a start keeps the texts");
  Expect(ReleaseLibrary(4), "the library is unloaded");
  if (failures == 0) {
    printf("plain C host: all calls succeed\n");
  }
  return failures;
}
