// Creates, converts, computes, compares and prints values of any numbers in any order.
#include "tests/fuzz/fuzz_target.h"
#include "tests/fuzz/working_folder.h"
#include "tests/model/call_sequence.h"

void CheckWith(std::string_view bytes) {
  PrepareWorkingFolder();
  RandomNumbers random(bytes);
  Disk disk;
  CallSequence sequence(random, disk, nullptr);
  while (random.HasChoices()) {
    sequence.StepWithValues();
  }
  sequence.CompareAll();
}
