// Hits of several threads in one view. The time of a hit is the processor time of its thread, so
// that it does not matter how many processors there are, and what else they do. It grows with the
// number of threads only if a hit writes memory that the threads share.

#include <atomic>
#include <cstddef>
#include <ctime>
#include <string>
#include <thread>
#include <vector>

#include "benchmarks/support/lookups.h"
#include "kelmo/kelmo.hpp"

namespace benchmarks {
namespace {

constexpr std::size_t kThreads[] = {1, 2, 4, 8};
constexpr std::size_t kEntries = 100;  // the caches of a processor have them all
constexpr std::size_t kRounds = 20;

const Dictionary& Texts() {
  return DictionaryOf({"readers", [] { return MakeCatalogue(Language::kGerman, kEntries); },
                       kMinLookups / kEntries});
}

double ProcessorTimeOfThread() {
  std::timespec time = {};
  Require(::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time) == 0, "the system tells no time");
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

kelmo::View MakeView() {
  static const std::filesystem::path kFile = ScratchFolder() / "readers.txt";
  WriteDictionary(kFile, "readers", Texts().entries);
  kelmo::Loader loader;
  loader.add_file(kFile.native());
  return {loader.finish(), {"readers"}};
}

/// What a thread does with a key.
using Ask = void (*)(const kelmo_view* view, const char* key);

void FindText(const kelmo_view* view, const char* key) {
  benchmark::DoNotOptimize(::kelmo_view_text(view, key, KELMO_ZERO_TERMINATED, nullptr));
}

// Shows what the benchmark sees if each hit writes to the view.
void RetainAndFindText(const kelmo_view* view, const char* key) {
  kelmo_view* const owned = ::kelmo_view_retain(const_cast<kelmo_view*>(view));
  FindText(owned, key);
  ::kelmo_view_release(owned);
}

/// The processor time of a thread that asks for all keys kRounds times, as a mean of the threads.
/// They start together.
double TimeOf(const std::vector<kelmo::View>& views, Ask ask) {
  const std::vector<const char*>& keys = AllKeys<char>(Texts());
  std::atomic<std::size_t> waiting = views.size();
  std::vector<double> times(views.size());
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < views.size(); ++i) {
    threads.emplace_back([&, i] {
      const kelmo_view* const view = views[i].handle();
      --waiting;
      while (waiting != 0) {
        std::this_thread::yield();
      }
      const double begin = ProcessorTimeOfThread();
      for (std::size_t round = 0; round < kRounds; ++round) {
        for (const char* const key : keys) {
          ask(view, key);
        }
      }
      times[i] = ProcessorTimeOfThread() - begin;
    });
  }
  double sum = 0;
  for (std::size_t i = 0; i < threads.size(); ++i) {
    threads[i].join();
    sum += times[i];
  }
  return sum / static_cast<double>(views.size());
}

/// `isShared`: all threads have one view; otherwise each has a view, and texts, of its own.
void Register(const char* subject, bool isShared, Ask ask) {
  for (const std::size_t threads : kThreads) {
    benchmark::RegisterBenchmark(
        NameWithSize(std::string("readers/hit/") + subject, threads).c_str(),
        [=](benchmark::State& state) {
          std::vector<kelmo::View> views(threads);
          for (kelmo::View& view : views) {
            view = isShared && &view != views.data() ? views.front() : MakeView();
          }
          for ([[maybe_unused]] const auto iteration : state) {
            state.SetIterationTime(TimeOf(views, ask));
          }
          SetOperations(state, kRounds * AllKeys<char>(Texts()).size());
        })
        ->UseManualTime();
  }
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  Register("kelmo", true, FindText);
  Register("kelmo_own", false, FindText);
  Register("kelmo_retaining", true, RetainAndFindText);
  return RunBenchmarks(argc, argv);
}
