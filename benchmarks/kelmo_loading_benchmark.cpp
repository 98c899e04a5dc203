// Loading a dictionary in kelmo, beside LoadDictionary of the same file. Each load starts with fresh
// memory, in a program that has loaded another dictionary before.

#include <malloc.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "benchmarks/support/catalogue.h"
#include "benchmarks/support/library_instance.h"
#include "benchmarks/support/run_benchmarks.h"
#include "benchmarks/support/scratch_folder.h"
#include "kelmo/kelmo.hpp"

namespace benchmarks {
namespace {

constexpr std::size_t kSizes[] = {100, 1'000, 10'000, 100'000};

struct NamedLanguage {
  const char* name;
  Language language;
};

constexpr NamedLanguage kLanguages[] = {{"english", Language::kEnglish},
                                        {"german", Language::kGerman},
                                        {"russian", Language::kRussian}};

kelmo::Texts LoadByKelmo(const std::filesystem::path& file, const kelmo::LoadOptions& options) {
  kelmo::Loader loader;
  loader.add_file(file.native(), options);
  return loader.finish();
}

std::filesystem::path Write(const NamedLanguage& language, std::size_t size) {
  const std::string id = std::string(language.name) + "_" + std::to_string(size);
  std::filesystem::path file = ScratchFolder() / (id + ".txt");
  const Catalogue catalogue = MakeCatalogue(language.language, size);
  WriteDictionary(file, id, catalogue);
  const kelmo::View view(LoadByKelmo(file, {}), {id});
  for (const Entry& entry : catalogue) {
    Require(view.tr(EncodeUtf8(entry.key)) == EncodeUtf8(entry.text), "a text was loaded wrongly");
  }
  return file;
}

/// Writes and checks the file at the first call.
const std::filesystem::path& FileOf(const NamedLanguage& language, std::size_t size) {
  static std::map<std::pair<std::string, std::size_t>, std::filesystem::path> files;
  std::filesystem::path& file = files[{language.name, size}];
  if (file.empty()) {
    file = Write(language, size);
  }
  return file;
}

/// A dictionary that is loaded before: it has the code of the libraries in memory.
const std::filesystem::path& EarlierFile() {
  return FileOf({"earlier", Language::kEnglish}, kSizes[0]);
}

/// Sets the time of the iteration: that of `work`, with fresh memory.
template <class Work>
void TimeIteration(benchmark::State& state, Work work) {
  ::malloc_trim(0);
  const auto begin = std::chrono::steady_clock::now();
  work();
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
  state.SetIterationTime(time.count());
}

struct TimeKelmo {
  kelmo::LoadOptions options;

  void operator()(benchmark::State& state, const std::filesystem::path& file) const {
    for ([[maybe_unused]] const auto iteration : state) {
      const kelmo::Texts earlier = LoadByKelmo(EarlierFile(), options);
      std::optional<kelmo::Texts> texts;
      TimeIteration(state, [&] { texts = LoadByKelmo(file, options); });
    }
  }
};

TimeKelmo TimeKelmoWith(bool isLenient, bool hasUtf16) {
  TimeKelmo time;
  time.options.lenient = isLenient;
  time.options.utf16 = hasUtf16;
  return time;
}

void TimeLoadDictionary(benchmark::State& state, const std::filesystem::path& file) {
  for ([[maybe_unused]] const auto iteration : state) {
    const LibraryInstance library;
    library.Load(EarlierFile(), 0);
    TimeIteration(state, [&] { library.Load(file, 0); });
  }
}

template <class Time>
void Register(const NamedLanguage& language, const char* subject, std::size_t size, Time time) {
  const std::string name = std::string("adding/") + language.name + "/" + subject;
  benchmark::RegisterBenchmark(NameWithSize(name, size).c_str(), [=](benchmark::State& state) {
    time(state, FileOf(language, size));
    SetOperations(state, size);
  })->UseManualTime();
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  for (const NamedLanguage& language : kLanguages) {
    for (const std::size_t size : kSizes) {
      Register(language, "kelmo", size, TimeKelmoWith(false, false));
      Register(language, "kelmo_lenient", size, TimeKelmoWith(true, false));
      Register(language, "kelmo_utf16", size, TimeKelmoWith(false, true));
      Register(language, "load_dictionary", size, TimeLoadDictionary);
    }
  }
  return RunBenchmarks(argc, argv);
}
