// Eight threads use the built file at the same time.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "kelmo/kelmo.h"
#include "tests/host/owned.h"
#include "tests/support/test_platform.h"

namespace {

constexpr std::size_t kThreads = 8;
constexpr int kKeys = 300;
// Adds 1 if what should hold does not.
void Expect(bool holds, std::size_t& faults) { faults += holds ? 0U : 1U; }

constexpr std::size_t kZero = KELMO_ZERO_TERMINATED;

Owned<kelmo_texts> LoadTexts() {
  std::string german = "de\n";
  std::string english = "en\n";
  for (int i = 0; i < kKeys; ++i) {
    const std::string number = std::to_string(i);
    (i % 2 == 0 ? german : english) += "key." + number + " text " + number + " {0}\n";
  }
  kelmo_loader* loader = nullptr;
  kelmo_texts* texts = nullptr;
  EXPECT_EQ(kelmo_loader_create(&loader), KELMO_OK);
  const Owned<kelmo_loader> owner(loader);
  for (const std::string* const bytes : {&german, &english}) {
    EXPECT_EQ(kelmo_loader_add_memory(loader, bytes->data(), bytes->size(), "file", kZero, nullptr,
                                      nullptr),
              KELMO_OK);
  }
  EXPECT_EQ(kelmo_loader_finish(loader, &texts, nullptr), KELMO_OK);
  return Owned<kelmo_texts>(texts);
}

kelmo_status MakeView(kelmo_texts* texts, std::size_t languageCount, std::uint32_t limit,
                      kelmo_view** view) {
  static const kelmo_string languages[] = {{"de", kZero}, {"en", kZero}};
  auto options = Sized<kelmo_view_options>();
  options.languages = languages;
  options.language_count = languageCount;
  options.missing = KELMO_MISSING_MARKED;
  options.problem_limit = limit;
  return kelmo_view_create(texts, &options, view, nullptr);
}

// Runs `work(number)` in eight threads, which begin at the same time. Its result is the number of
// faults that it has seen.
template <class Work>
void ExpectNoFaultIn(Work work) {
  std::atomic<std::size_t> waiting{kThreads};
  std::atomic<std::size_t> faults{0};
  std::vector<std::thread> threads;
  for (std::size_t number = 0; number < kThreads; ++number) {
    threads.emplace_back([&, number] {
      --waiting;
      while (waiting != 0) {
        std::this_thread::yield();
      }
      faults += work(number);
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(faults, 0U);
}

TEST(KelmoThreads, ReadOneView) {
  const Owned<kelmo_texts> texts = LoadTexts();
  kelmo_view* view = nullptr;
  ASSERT_EQ(MakeView(texts.get(), 2, 0, &view), KELMO_OK);
  const Owned<kelmo_view> owner(view);
  ExpectNoFaultIn([view](std::size_t number) {
    std::size_t faults = 0;
    auto text = Sized<kelmo_text>();
    std::array<char, 100> buffer = {};
    for (int i = 0; i < 20 * kKeys; ++i) {
      const std::string index = std::to_string((i + static_cast<int>(number) * 37) % kKeys);
      const std::string key = "key." + index;
      const kelmo_argument argument = kelmo_integer_argument(i);
      const std::string expected = "text " + index;
      Expect(kelmo_view_find(view, key.data(), key.size(), nullptr, &text) == KELMO_OK &&
                 expected + " {0}" == text.utf8,
             faults);
      Expect(kelmo_view_format(view, key.data(), key.size(), &argument, 1, buffer.data(),
                               buffer.size(), nullptr, nullptr) == KELMO_OK &&
                 expected + ' ' + std::to_string(i) == buffer.data(),
             faults);
      Expect("[[none." + index + "]]" ==
                 std::string(kelmo_view_text(view, ("none." + index).c_str(), kZero, nullptr)),
             faults);
    }
    return faults;
  });
}

// A key is recorded at its first miss, or never, if there is no room.
TEST(KelmoThreads, RecordMissingKeysOfOneView) {
  constexpr std::size_t kMissing = 40;
  constexpr std::size_t kRepetitions = 20;
  const Owned<kelmo_texts> texts = LoadTexts();
  for (const std::size_t limit : {std::size_t{10}, kMissing, 2 * kMissing}) {
    kelmo_view* view = nullptr;
    ASSERT_EQ(MakeView(texts.get(), 2, static_cast<std::uint32_t>(limit), &view), KELMO_OK);
    const Owned<kelmo_view> owner(view);
    ExpectNoFaultIn([view](std::size_t number) {
      std::size_t faults = 0;
      auto text = Sized<kelmo_text>();
      for (std::size_t i = 0; i < kRepetitions * kMissing; ++i) {
        const std::string key = "none." + std::to_string((i + number * 7) % kMissing);
        Expect(kelmo_view_find(view, key.data(), key.size(), nullptr, &text) == KELMO_NOT_FOUND,
               faults);
      }
      return faults;
    });
    kelmo_problems* problems = nullptr;
    ASSERT_EQ(kelmo_problems_create(&problems), KELMO_OK);
    const Owned<kelmo_problems> list(problems);
    std::size_t lost = 0;
    EXPECT_EQ(kelmo_view_take_problems(view, problems, &lost), KELMO_OK);
    const std::size_t recorded = std::min(limit, kMissing);
    EXPECT_EQ(kelmo_problems_count(problems), recorded);
    EXPECT_EQ(lost, kThreads * kRepetitions * (kMissing - recorded));
  }
}

// Inside the library something is thrown and caught in each second call.
TEST(KelmoThreads, ThrowAndCatchInsideTheLibrary) {
  const Owned<kelmo_texts> texts = LoadTexts();
  // Too many for a vector; and, beyond every address space, too many for the system. Sanitizers end
  // the process at the latter.
  std::vector<std::size_t> counts = {SIZE_MAX / 2};
  if (!instrumented) {
    counts.push_back(SIZE_MAX / 64);
  }
  ExpectNoFaultIn([&](std::size_t number) {
    std::size_t faults = 0;
    for (std::size_t i = 0; i < 500; ++i) {
      kelmo_view* view = nullptr;
      const std::size_t count = counts[(i + number) % counts.size()];
      Expect(MakeView(texts.get(), count, 0, &view) == KELMO_OUT_OF_MEMORY && view == nullptr,
             faults);
      Expect(MakeView(texts.get(), 2, 0, &view) == KELMO_OK, faults);
      auto text = Sized<kelmo_text>();
      Expect(kelmo_view_find(view, "key.7", kZero, nullptr, &text) == KELMO_OK, faults);
      kelmo_view_release(view);
    }
    return faults;
  });
}

TEST(KelmoThreads, ShareOwners) {
  kelmo_texts* const texts = LoadTexts().release();
  kelmo_view* view = nullptr;
  ASSERT_EQ(MakeView(texts, 2, 0, &view), KELMO_OK);
  for (std::size_t i = 1; i < kThreads; ++i) {
    kelmo_texts_retain(texts);
    kelmo_view_retain(view);
  }
  ExpectNoFaultIn([&](std::size_t number) {  // each has one of both, and gives it up
    std::size_t faults = 0;
    auto text = Sized<kelmo_text>();
    for (int i = 0; i < 2000; ++i) {
      kelmo_view_retain(view);
      kelmo_texts_retain(texts);
      Expect(kelmo_view_find(view, "key.8", kZero, nullptr, &text) == KELMO_OK, faults);
      kelmo_texts_release(texts);
      kelmo_view_release(view);
    }
    if (number % 2 == 0) {
      kelmo_texts_release(texts);
      Expect(kelmo_view_find(view, "key.8", kZero, nullptr, &text) == KELMO_OK, faults);
      kelmo_view_release(view);
    } else {
      kelmo_view_release(view);
      Expect(kelmo_texts_language_count(texts) == 2, faults);
      kelmo_texts_release(texts);
    }
    return faults;
  });
}

}  // namespace
