// Asking for keys that are not there: the first time, when the message is listed, and again and again.

#include <chrono>
#include <map>
#include <unordered_set>

#include "benchmarks/support/catalogue.h"
#include "benchmarks/support/library_life.h"
#include "benchmarks/support/peer_maps.h"
#include "benchmarks/support/run_benchmarks.h"
#include "benchmarks/support/scratch_folder.h"

namespace benchmarks {
namespace {

constexpr std::size_t kListedMessages[] = {100, 10'000, 100'000, 1'000'000};
constexpr std::size_t kFirstMisses[] = {1'000, 10'000, 100'000};
constexpr std::size_t kDictionary = 100'000;
constexpr std::size_t kHotKeys = 100;
constexpr std::size_t kHotRepetitions = 100;

const Catalogue& Entries() {
  static const Catalogue kEntries = MakeCatalogue(Language::kGerman, kDictionary);
  return kEntries;
}

const std::filesystem::path& DictionaryFile() {
  static const std::filesystem::path kFile = [] {
    std::filesystem::path file = ScratchFolder() / "german.txt";
    WriteDictionary(file, "de", Entries());
    return file;
  }();
  return kFile;
}

// Every subject gives null or the empty text for them.
const std::vector<const wchar_t*>& HotKeys() {
  static const HostKeys<wchar_t> kKeys(MakeMissingKeys(kHotKeys));
  static const std::vector<const wchar_t*> kRepeated = kKeys.Repeated(kHotRepetitions);
  return kRepeated;
}

std::wstring MessageOf(const std::wstring& key) {
  return L"EL121. Key not found in dictionary\nKey: " + key + L"\nDictionary id: " + key;
}

template <class Find>
void TimeMisses(benchmark::State& state, Find find) {
  for ([[maybe_unused]] const auto iteration : state) {
    for (const wchar_t* const key : HotKeys()) {
      benchmark::DoNotOptimize(find(key));
    }
  }
  SetOperations(state, HotKeys().size());
}

// ---- Again: the hot keys are among the messages listed already.

/// A life with a dictionary and that many listed messages.
const LibraryLife& LifeWithMessages(std::size_t messages) {
  static std::map<std::size_t, LibraryLife> lives;
  const auto [place, added] = lives.try_emplace(messages);
  const LibraryLife& life = place->second;
  if (added) {
    life.Load(DictionaryFile(), 0);
    for (const std::wstring& key : MakeMissingKeys(messages)) {
      Require(*life.lang(key.c_str()) == L'\0', "a key is there that should not be");
    }
    Require(life.getErrorsCount() == static_cast<std::int64_t>(messages),
            "a missing key was not listed once");
  }
  return life;
}

void RepeatedMisses(benchmark::State& state, std::size_t messages) {
  const LibraryLife& life = LifeWithMessages(messages);
  TimeMisses(state, life.lang);
  Require(life.getErrorsCount() == static_cast<std::int64_t>(messages), "a key was listed again");
}

template <class Map>
void MapMisses(benchmark::State& state) {
  static const Map kMap = MakeMap<Map>(Entries());
  for (const wchar_t* const key : HotKeys()) {
    Require(FindText(kMap, key) == nullptr, "a key is there that should not be");
  }
  TimeMisses(state, [](const wchar_t* key) { return FindText(kMap, key); });
}

// ---- For the first time: a batch of distinct keys on an empty list, which has been as long before.

/// Calls `batch` and then, outside the time, `clear`.
template <class Batch, class Clear>
void TimeBatches(benchmark::State& state, std::size_t operations, Batch batch, Clear clear) {
  for ([[maybe_unused]] const auto iteration : state) {
    const auto begin = std::chrono::steady_clock::now();
    batch();
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    state.SetIterationTime(time.count());
    clear();
  }
  SetOperations(state, operations);
}

void FirstMisses(benchmark::State& state, std::size_t misses) {
  const std::vector<std::wstring> missing = MakeMissingKeys(misses);
  const HostKeys<wchar_t> keys(missing);
  static const LibraryLife& life = LifeWithMessages(0);
  const auto missAll = [&] {
    for (const wchar_t* const key : keys.Pointers()) {
      benchmark::DoNotOptimize(life.lang(key));
    }
  };
  missAll();
  for (std::size_t i = 0; i < misses; ++i) {
    Require(life.getError(static_cast<std::int32_t>(i)) == MessageOf(missing[i]),
            "a message is not the right one");
  }
  life.clearErrors();
  TimeBatches(state, misses, missAll, life.clearErrors);
}

void SetInsertions(benchmark::State& state, std::size_t insertions) {
  std::vector<std::wstring> messages;
  for (const std::wstring& key : MakeMissingKeys(insertions)) {
    messages.push_back(MessageOf(key));
  }
  std::unordered_set<std::wstring> set;
  const auto insertAll = [&] {
    for (const std::wstring& message : messages) {
      benchmark::DoNotOptimize(set.insert(message));
    }
  };
  insertAll();
  Require(set.size() == insertions, "a message is there twice");
  set.clear();
  TimeBatches(state, insertions, insertAll, [&] { set.clear(); });
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  for (const std::size_t messages : kListedMessages) {
    const auto name = [&](const char* subject) {
      return NameWithSize(std::string("missing/repeated/") + subject, messages);
    };
    benchmark::RegisterBenchmark(name("kelmo").c_str(), RepeatedMisses, messages);
    // A map keeps no messages: the same for all.
#ifdef KELMO_HAS_BOOST
    benchmark::RegisterBenchmark(name("boost_flat_map").c_str(), MapMisses<BoostFlatMap>);
#endif
#ifdef KELMO_HAS_ABSL
    benchmark::RegisterBenchmark(name("absl_flat_hash_map").c_str(), MapMisses<AbslFlatHashMap>);
#endif
  }
  for (const std::size_t misses : kFirstMisses) {
    benchmark::RegisterBenchmark(NameWithSize("missing/first/kelmo", misses).c_str(), FirstMisses,
                                 misses)
        ->UseManualTime();
    benchmark::RegisterBenchmark(NameWithSize("missing/first/std_unordered_set", misses).c_str(),
                                 SetInsertions, misses)
        ->UseManualTime();
  }
  return RunBenchmarks(argc, argv);
}
