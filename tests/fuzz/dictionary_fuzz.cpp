// A dictionary file of any bytes, loaded twice through the exports: what comes of it, and what then is
// answered to all of its keys and to keys that it has not.
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
