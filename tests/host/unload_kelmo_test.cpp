// Unloading leaves nothing of kelmo in the process, even after more loads than a process has slots
// of thread-local storage.
#define KELMO_RUNTIME_IMPLEMENTATION
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <future>
#include <iostream>
#include <optional>
#include <thread>

#include "kelmo/kelmo_runtime.h"
#include "tests/support/random_numbers.h"
#include "tests/support/test_platform.h"

namespace {

// Inside the library, this throws and catches.
kelmo_status AskForTooMuchMemory(kelmo_texts* texts) {
  static const kelmo_string id = {"en", 2};
  kelmo_view_options options = {};
  options.size = sizeof options;
  options.languages = &id;
  options.language_count = SIZE_MAX / 2;
  kelmo_view* view = nullptr;
  return kelmo_view_create(texts, &options, &view, nullptr);
}

void LoadUseAndUnload() {
  ASSERT_EQ(kelmo_runtime_open(KELMO_FILE, nullptr, 0), KELMO_OK);
  kelmo_loader* loader = nullptr;
  kelmo_texts* texts = nullptr;
  kelmo_view* view = nullptr;
  ASSERT_EQ(kelmo_loader_create(&loader), KELMO_OK);
  ASSERT_EQ(kelmo_loader_add_memory(loader, "en\nk t\n", KELMO_ZERO_TERMINATED, "en",
                                    KELMO_ZERO_TERMINATED, nullptr, nullptr),
            KELMO_OK);
  ASSERT_EQ(kelmo_loader_finish(loader, &texts, nullptr), KELMO_OK);
  ASSERT_EQ(AskForTooMuchMemory(texts), KELMO_OUT_OF_MEMORY);
  kelmo_view_options options = {};
  options.size = sizeof options;
  options.problem_limit = 2;
  ASSERT_EQ(kelmo_view_create(texts, &options, &view, nullptr), KELMO_OK);
  ASSERT_STREQ(kelmo_view_text(view, "none", KELMO_ZERO_TERMINATED, nullptr), "none");
  kelmo_view_release(view);
  kelmo_texts_release(texts);
  kelmo_loader_destroy(loader);
  kelmo_runtime_close();
}

TEST(KelmoUnload, LeaksNothing) {
  constexpr std::uint64_t kSlots = 1088;  // of thread-local storage, in a process on Windows
  LoadUseAndUnload();
  LoadUseAndUnload();
  const std::optional<Footprint> before = MeasureFootprint();
  const std::uint64_t rounds = Rounds(instrumented ? 50 : kSlots + 100);
  for (std::uint64_t i = 0; i < rounds && !HasFatalFailure(); ++i) {
    LoadUseAndUnload();
  }
  const std::optional<Footprint> after = MeasureFootprint();
  if (before && after) {
    std::cout << rounds << " loads; heap growth: "
              << static_cast<std::int64_t>(after->heapBytes - before->heapBytes) << " bytes\n";
    EXPECT_LT(after->heapBytes, before->heapBytes + 65536);
    EXPECT_LE(after->mappedBytes, before->mappedBytes + 1048576);
    EXPECT_LE(after->nextThreadSlot, before->nextThreadSlot);
    EXPECT_LT(after->nextHandle, before->nextHandle + 100);
  }
}

// The thread has a state of its exceptions in the library that is gone when it ends.
TEST(KelmoUnload, DoesNotDisturbAThreadThatEndsLater) {
  for (int i = 0; i < 20; ++i) {
    ASSERT_EQ(kelmo_runtime_open(KELMO_FILE, nullptr, 0), KELMO_OK);
    std::promise<kelmo_status> answer;
    std::promise<void> unloaded;
    std::thread thread([&] {
      kelmo_loader* loader = nullptr;
      kelmo_texts* texts = nullptr;
      kelmo_loader_create(&loader);
      kelmo_loader_finish(loader, &texts, nullptr);
      const kelmo_status status = AskForTooMuchMemory(texts);
      kelmo_texts_release(texts);
      kelmo_loader_destroy(loader);
      answer.set_value(status);
      unloaded.get_future().wait();
    });
    EXPECT_EQ(answer.get_future().get(), KELMO_OUT_OF_MEMORY);
    kelmo_runtime_close();
    unloaded.set_value();
    thread.join();
  }
}

}  // namespace
