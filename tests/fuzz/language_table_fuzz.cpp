// Loads a language's unit table of any bytes at start-up: through Init, which names the language,
// and through Init0, which uses the fixed file name.
#include <string>

#include "tests/fuzz/fuzz_target.h"
#include "tests/fuzz/working_folder.h"
#include "tests/model/call_sequence.h"

void CheckWith(std::string_view bytes) {
  PrepareWorkingFolder();
  const std::string file(bytes);
  RandomNumbers random(0);
  Disk disk;
  disk.Write(L"LANG\\ru-val.txt", file);
  disk.Write(L"lang-val.text", file);
  CallSequence sequence(random, disk, nullptr);
  sequence.Init(L".", L"ru");
  sequence.Init0(L".");
  sequence.CompareAll();
}
