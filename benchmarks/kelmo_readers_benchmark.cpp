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

/// A thread that copies a view all the time, so that its number of owners changes; null: no thread.
class Copier {
 public:
  explicit Copier(kelmo_view* view) {
    if (view != nullptr) {
      thread_ = std::thread([this, view] {
        while (!isDone_) {
          ::kelmo_view_release(::kelmo_view_retain(view));
        }
      });
    }
  }
  Copier(const Copier&) = delete;
  Copier& operator=(const Copier&) = delete;
  ~Copier() {
    isDone_ = true;
    if (thread_.joinable()) {
      thread_.join();
    }
  }

 private:
  std::atomic<bool> isDone_ = false;
  std::thread thread_;
};

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

enum class Views { kShared, kOwn };         // one view for all threads, or one for each
enum class Copied { kNone, kFirst, kNew };  // what another thread copies meanwhile

void Register(const char* name, Views kind, Ask ask, Copied copied = Copied::kNone) {
  for (const std::size_t threads : kThreads) {
    benchmark::RegisterBenchmark(
        NameWithSize(std::string("readers/") + name, threads).c_str(),
        [=](benchmark::State& state) {
          std::vector<kelmo::View> views(threads);
          for (kelmo::View& view : views) {
            view = kind == Views::kShared && &view != views.data() ? views.front() : MakeView();
          }
          const kelmo::View other = MakeView();
          const Copier copier(copied == Copied::kNone    ? nullptr
                              : copied == Copied::kFirst ? views.front().handle()
                                                         : other.handle());
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
  Register("hit/kelmo", Views::kShared, FindText);
  Register("hit/kelmo_own", Views::kOwn, FindText);
  Register("hit/kelmo_retaining", Views::kShared, RetainAndFindText);
  Register("hit_beside_copies/kelmo", Views::kShared, FindText, Copied::kFirst);
  Register("hit_beside_copies/kelmo_own", Views::kOwn, FindText, Copied::kNew);
  return RunBenchmarks(argc, argv);
}
