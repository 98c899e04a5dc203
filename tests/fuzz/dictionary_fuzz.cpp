// Loads a dictionary file of any bytes twice through the exports, and compares the state afterwards
// and the texts of all of its keys and of missing keys.
#include <string>

#include "tests/fuzz/fuzz_target.h"
#include "tests/model/call_sequence.h"

void CheckWith(std::string_view bytes) {
  const std::wstring file = L"dictionary.txt";
  RandomNumbers random(0);
  Disk disk;
  disk.Write(file, std::string(bytes));
  CallSequence sequence(random, disk, nullptr);
  sequence.Load(L".", file);
  sequence.AskForEveryText();
  sequence.Load(L".", file);
  sequence.CompareAll();
}
