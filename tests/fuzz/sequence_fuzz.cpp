// Calls all functions and members in any order, with files of any content.
#include <clocale>

#include "tests/fuzz/fuzz_target.h"
#include "tests/fuzz/working_folder.h"
#include "tests/model/call_sequence.h"

void CheckWith(std::string_view bytes) {
  PrepareWorkingFolder();
  std::setlocale(LC_ALL, "C");
  RandomNumbers random(bytes);
  Disk disk;
  CallSequence sequence(random, disk, nullptr);
  while (random.HasChoices()) {
    sequence.Step(true);
  }
  sequence.CompareAll();
}
