// How much memory a loaded dictionary holds, and how much memory a load needs. The results are the
// counters, not the times.
//
//   held_ratio  memory of the loaded dictionary, divided by the size of its keys and texts as
//               zero-terminated wide characters
//   peak_ratio  maximum during the load, divided by 1.25 times that size plus twice the file's size

#include <malloc.h>

#include <algorithm>

#include "benchmarks/support/catalogue.h"
#include "benchmarks/support/library_instance.h"
#include "benchmarks/support/random_letters.h"
#include "benchmarks/support/run_benchmarks.h"
#include "benchmarks/support/scratch_folder.h"

namespace {

std::size_t liveBytes = 0;
std::size_t peakBytes = 0;

void* Count(void* block) {
  liveBytes += ::malloc_usable_size(block);
  peakBytes = std::max(peakBytes, liveBytes);
  return block;
}

void Uncount(void* block) { liveBytes -= ::malloc_usable_size(block); }

}  // namespace

// These functions replace those of the C runtime. They count the heap of the whole process: also
// that of the loaded library and its operator new.
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming): the C runtime's own
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

void* malloc(std::size_t size) { return Count(__libc_malloc(size)); }
void* calloc(std::size_t nmemb, std::size_t size) { return Count(__libc_calloc(nmemb, size)); }
void* realloc(void* ptr, std::size_t size) {
  Uncount(ptr);
  return Count(__libc_realloc(ptr, size));
}
void* memalign(std::size_t alignment, std::size_t size) {
  return Count(__libc_memalign(alignment, size));
}
void* aligned_alloc(std::size_t alignment, std::size_t size) { return memalign(alignment, size); }
void free(void* ptr) {
  Uncount(ptr);
  __libc_free(ptr);
}
}

namespace benchmarks {
namespace {

constexpr std::size_t kSizes[] = {1'000, 10'000, 100'000, 1'000'000};
constexpr std::size_t kRandomTextSizes[] = {1'000, 100'000};

void MeasureMemory(benchmark::State& state, Catalogue (*makeCatalogue)(std::size_t size),
                   std::size_t size) {
  const std::filesystem::path file = ScratchFolder() / "dictionary.txt";
  std::size_t wideBytes = 0;
  {
    const Catalogue catalogue = makeCatalogue(size);
    WriteDictionary(file, "id", catalogue);
    for (const Entry& entry : catalogue) {
      wideBytes += (entry.key.size() + 1 + entry.text.size() + 1) * sizeof(wchar_t);
    }
  }
  const auto wide = static_cast<double>(wideBytes);
  const auto fileBytes = static_cast<double>(std::filesystem::file_size(file));
  for ([[maybe_unused]] const auto iteration : state) {
    const LibraryInstance library;
    const std::size_t before = liveBytes;
    peakBytes = before;
    library.Load(file, 0);
    const auto held = static_cast<double>(liveBytes - before);
    const auto peak = static_cast<double>(peakBytes - before);
    state.counters["held_bytes"] = held;
    state.counters["peak_bytes"] = peak;
    state.counters["held_ratio"] = held / wide;
    state.counters["peak_ratio"] = peak / (1.25 * wide + 2 * fileBytes);
  }
}

template <Language kLanguage>
Catalogue MakeWords(std::size_t size) {
  return MakeCatalogue(kLanguage, size);
}

template <const Alphabet& kAlphabet>
Catalogue MakeLetters(std::size_t size) {
  return MakeCatalogueInLetters(kAlphabet, {20, 30}, size);
}

void Register(const std::string& row, Catalogue (*makeCatalogue)(std::size_t size),
              std::size_t size) {
  benchmark::RegisterBenchmark(NameWithSize("memory/" + row + "/kelmo", size).c_str(),
                               MeasureMemory, makeCatalogue, size)
      ->Iterations(1)
      ->Repetitions(1);
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  for (const std::size_t size : kSizes) {
    Register("english", MakeWords<Language::kEnglish>, size);
    Register("german", MakeWords<Language::kGerman>, size);
    Register("russian", MakeWords<Language::kRussian>, size);
  }
  for (const std::size_t size : kRandomTextSizes) {
    Register("script_chinese", MakeLetters<kChineseLetters>, size);
    Register("script_emoji", MakeLetters<kEmoji>, size);
  }
  return RunBenchmarks(argc, argv);
}
