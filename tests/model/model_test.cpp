// Compares the library with its model (model/model.h) through random calls in random order.
// --rounds=N runs longer. A failure prints the command that repeats it and the calls. After a
// crash, a file in the scratch folder holds the seed.

#include <gtest/gtest.h>

#include <clocale>
#include <exception>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>

#include "tests/model/call_sequence.h"
#include "tests/support/exported_table.h"
#include "tests/support/random_numbers.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/test_platform.h"
#include "tests/support/users_locale.h"

namespace {

constexpr int kSteps = 40;

// One lifetime of the library. Returns the number of calls.
std::uint64_t RunSequence(std::uint64_t seed, Disk& disk, CallLog* log) {
  RandomNumbers random(seed);
  std::setlocale(LC_ALL, "C");
  disk.Clear();
  CallSequence sequence(random, disk, log);
  sequence.WriteFiles(4);
  sequence.CompareAll();  // the state after the load
  for (int step = 0; step < kSteps; ++step) {
    sequence.Step(true);
  }
  sequence.CompareAll();
  return sequence.Calls();
}

// Repeats `run`, which has failed, and returns its calls as text.
template <class Run>
std::string CallsOf(Run run) {
  CallLog log;
  std::string calls;
  try {
    run(&log);
    calls = "No difference in the second run. Its calls:\n";
  } catch (const std::exception&) {  // the expected difference
    calls =
        "The last calls, ending with the one that differs; lines with - are the host's actions:\n";
  }
  for (const std::string& call : log) {
    calls += call + '\n';
  }
  return calls;
}

class Model : public testing::Test {
 protected:
  void TearDown() override { std::setlocale(LC_ALL, "C"); }

  const ScratchFolder folder_;
  const ExportPlace place_{folder_};
  Disk disk_;
};

TEST_F(Model, AgreesWithTheLibraryInEverySequenceOfCalls) {
  const std::uint64_t sequences = Rounds(5000);
  std::ofstream seedFile("seed of the sequence.txt");  // names the sequence after a crash or hang
  std::uint64_t calls = 0;
  for (std::uint64_t i = 0; i < sequences; ++i) {
    const std::uint64_t seed = randomSeed + i;
    seedFile.seekp(0) << seed << '\n' << std::flush;
    try {
      calls += RunSequence(seed, disk_, nullptr);
    } catch (const std::exception& difference) {
      FAIL() << difference.what() << "\nRepeat it: --gtest_filter=*EverySequence* --seed=" << seed
             << " --rounds=1\n"
             << CallsOf([&](CallLog* log) { RunSequence(seed, disk_, log); });
    }
  }
  std::cout << sequences << " sequences, " << calls << " calls, --seed=" << randomSeed << '\n';
}

// As many calls in one lifetime, with the same few files: soon everything is stored.
class LongLifetime {
 public:
  static constexpr std::uint64_t kMinRounds = 1000;  // half of them suffice to store everything

  LongLifetime(Disk& disk, CallLog* log) : sequence_(random_, disk, log) {
    sequence_.WriteFiles(30);
  }

  void Run() {
    constexpr int kParts = 10;
    const std::uint64_t steps = Rounds(5000) * kSteps / kParts;
    for (int part = 0; part < kParts; ++part) {
      if (part == kParts / 2) {
        sequence_.ReleaseAll();
        before_ = MeasureFootprint();
      }
      for (std::uint64_t step = 0; step < steps; ++step) {
        sequence_.Step(false);
      }
    }
    sequence_.ReleaseAll();
    after_ = MeasureFootprint();
    sequence_.CompareAll();
  }

  void ExpectNoGrowth() const {
    std::cout << sequence_.Calls() << " calls in one lifetime, --seed=" << randomSeed;
    if (before_ && after_) {
      std::cout << "; heap growth in the second half: "
                << static_cast<std::int64_t>(after_->heapBytes - before_->heapBytes) << " bytes";
      if (Rounds(5000) >= kMinRounds) {
        // Both keep their capacity for the longest list of messages, which may come in the second
        // half. At most one call of 32 formats a text under the user's locale.
        EXPECT_LT(after_->heapBytes,
                  before_->heapBytes + 65536 + BytesLeakedByUserLocale() * sequence_.Calls() / 32);
      }
      EXPECT_LT(after_->nextHandle, before_->nextHandle + 100);
      EXPECT_LE(after_->nextThreadSlot, before_->nextThreadSlot);
    }
    std::cout << '\n';
  }

 private:
  RandomNumbers random_{randomSeed};
  CallSequence sequence_;
  std::optional<Footprint> before_;
  std::optional<Footprint> after_;
};

TEST_F(Model, AgreesThroughALongLifetimeWithoutGrowth) {
  try {
    LongLifetime lifetime(disk_, nullptr);
    lifetime.Run();
    lifetime.ExpectNoGrowth();
  } catch (const std::exception& difference) {
    disk_.Clear();
    FAIL() << difference.what()
           << "\nRepeat it: --gtest_filter=*LongLifetime* --seed=" << randomSeed
           << " --rounds=" << Rounds(5000) << '\n'
           << CallsOf([&](CallLog* log) { LongLifetime(disk_, log).Run(); });
  }
}

}  // namespace
