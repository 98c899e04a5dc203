// The library beside its model (model/model.h): whatever a host calls, in whatever order, both must
// answer alike. Run longer: --rounds=N. A difference names what repeats it, and tells the calls; a
// crash leaves the seed in a file of the scratch folder.

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

// Of the library from its load to its unload. Returns how many calls it took.
std::uint64_t PlaySequence(std::uint64_t seed, Disk& disk, ToldCalls* told) {
  RandomNumbers random(seed);
  std::setlocale(LC_ALL, "C");
  disk.Clear();
  CallSequence sequence(random, disk, told);
  sequence.WriteFiles(4);
  sequence.CompareAll();  // as it is right after the load
  for (int step = 0; step < kSteps; ++step) {
    sequence.Step(true);
  }
  sequence.CompareAll();
  return sequence.Calls();
}

// What `play`, which has failed once, tells of its calls when it is played again.
template <class Play>
std::string CallsOf(Play play) {
  ToldCalls told;
  std::string calls;
  try {
    play(&told);
    calls = "No difference when it was played again. Its calls:\n";
  } catch (const std::exception&) {  // as before
    calls = "The last calls, the one that differs at the end; behind -, what the host did:\n";
  }
  for (const std::string& call : told) {
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
  std::ofstream playing("seed of the sequence.txt");  // for when it crashes or hangs
  std::uint64_t calls = 0;
  for (std::uint64_t i = 0; i < sequences; ++i) {
    const std::uint64_t seed = randomSeed + i;
    playing.seekp(0) << seed << '\n' << std::flush;
    try {
      calls += PlaySequence(seed, disk_, nullptr);
    } catch (const std::exception& difference) {
      FAIL() << difference.what() << "\nRepeat it: --gtest_filter=*EverySequence* --seed=" << seed
             << " --rounds=1\n"
             << CallsOf([&](ToldCalls* told) { PlaySequence(seed, disk_, told); });
    }
  }
  std::cout << sequences << " sequences, " << calls << " calls, --seed=" << randomSeed << '\n';
}

// As many calls in one life, of the same few files: what there is to store is stored soon.
class LongLife {
 public:
  static constexpr std::uint64_t kEnough = 1000;  // rounds, to have stored all in half of them

  LongLife(Disk& disk, ToldCalls* told) : life_(random_, disk, told) { life_.WriteFiles(30); }

  void Live() {
    constexpr int kParts = 10;
    const std::uint64_t steps = Rounds(5000) * kSteps / kParts;
    for (int part = 0; part < kParts; ++part) {
      if (part == kParts / 2) {
        life_.GiveUp();
        before_ = MeasureFootprint();
      }
      for (std::uint64_t step = 0; step < steps; ++step) {
        life_.Step(false);
      }
    }
    life_.GiveUp();
    after_ = MeasureFootprint();
    life_.CompareAll();
  }

  void ExpectNoGrowth() const {
    std::cout << life_.Calls() << " calls in one life, --seed=" << randomSeed;
    if (before_ && after_) {
      std::cout << "; since half of them "
                << static_cast<std::int64_t>(after_->heapBytes - before_->heapBytes)
                << " bytes of heap more";
      if (Rounds(5000) >= kEnough) {
        // Room for the longest list of messages is kept by both: it may have come late. One call
        // of 32, at most, prints under the user's locale.
        EXPECT_LT(after_->heapBytes,
                  before_->heapBytes + 65536 + BytesLeakedByUserLocale() * life_.Calls() / 32);
      }
      EXPECT_LT(after_->nextHandle, before_->nextHandle + 100);
      EXPECT_LE(after_->nextThreadSlot, before_->nextThreadSlot);
    }
    std::cout << '\n';
  }

 private:
  RandomNumbers random_{randomSeed};
  CallSequence life_;
  std::optional<Footprint> before_;
  std::optional<Footprint> after_;
};

TEST_F(Model, AgreesThroughALongLifeInWhichNothingGrows) {
  try {
    LongLife life(disk_, nullptr);
    life.Live();
    life.ExpectNoGrowth();
  } catch (const std::exception& difference) {
    disk_.Clear();
    FAIL() << difference.what() << "\nRepeat it: --gtest_filter=*LongLife* --seed=" << randomSeed
           << " --rounds=" << Rounds(5000) << '\n'
           << CallsOf([&](ToldCalls* told) { LongLife(disk_, told).Live(); });
  }
}

}  // namespace
