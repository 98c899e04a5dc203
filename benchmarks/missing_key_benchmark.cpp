// Lookups of missing keys: the first ones, which add messages to the list, and repeated ones.

#include <chrono>
#include <map>
#include <unordered_set>

#include "benchmarks/support/catalogue.h"
#include "benchmarks/support/library_instance.h"
#include "benchmarks/support/peer_maps.h"
#include "benchmarks/support/random_letters.h"
#include "benchmarks/support/run_benchmarks.h"
#include "benchmarks/support/scratch_folder.h"

namespace benchmarks {
namespace {

constexpr std::size_t kListedMessages[] = {100, 10'000, 100'000, 1'000'000};
constexpr std::size_t kFirstMisses[] = {1'000, 10'000, 100'000};
constexpr std::size_t kDictionarySize = 100'000;
constexpr std::size_t kHotKeys = 100;
constexpr std::size_t kHotRepetitions = 100;
constexpr std::size_t kLengths[] = {2, 4, 8, 16, 20, 32, 64, 300};
constexpr std::size_t kKeysPerLength = 1'000;
constexpr std::size_t kRepetitionsPerLength = 10;

const Catalogue& Entries() {
  static const Catalogue kEntries = MakeCatalogue(Language::kGerman, kDictionarySize);
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

// Keys as a host holds them, and pointers to them in the order of the lookups.
class LookupKeys {
 public:
  LookupKeys(const std::vector<std::wstring>& keys, std::size_t repetitions)
      : hostKeys_(keys), repeated_(hostKeys_.Repeated(repetitions)) {}

  const std::vector<const wchar_t*>& Pointers() const { return repeated_; }

 private:
  HostKeys<wchar_t> hostKeys_;
  std::vector<const wchar_t*> repeated_;
};

// No subject has a text for them.
const std::vector<const wchar_t*>& HotKeys() {
  static const LookupKeys kKeys(MakeMissingKeys(kHotKeys), kHotRepetitions);
  return kKeys.Pointers();
}

std::wstring MessageOf(const std::wstring& key) {
  return L"EL121. Key not found in dictionary\nKey: " + key + L"\nDictionary id: " + key;
}

template <class Find>
void TimeLookups(benchmark::State& state, const std::vector<const wchar_t*>& keys, Find find) {
  for ([[maybe_unused]] const auto iteration : state) {
    for (const wchar_t* const key : keys) {
      benchmark::DoNotOptimize(find(key));
    }
  }
  SetOperations(state, keys.size());
}

// ---- Repeated lookups: the messages of the hot keys are in the list already.

/// An instance with a dictionary and `messages` messages in its list.
const LibraryInstance& InstanceWithMessages(std::size_t messages) {
  static std::map<std::size_t, LibraryInstance> instances;
  const auto [position, added] = instances.try_emplace(messages);
  const LibraryInstance& library = position->second;
  if (added) {
    library.Load(DictionaryFile(), 0);
    for (const std::wstring& key : MakeMissingKeys(messages)) {
      Require(*library.lang(key.c_str()) == L'\0', "a missing key was found");
    }
    Require(library.getErrorsCount() == static_cast<std::int64_t>(messages),
            "a missing key was not listed exactly once");
  }
  return library;
}

void RepeatedMisses(benchmark::State& state, std::size_t messages) {
  const LibraryInstance& library = InstanceWithMessages(messages);
  TimeLookups(state, HotKeys(), library.lang);
  Require(library.getErrorsCount() == static_cast<std::int64_t>(messages),
          "a missing key was listed again");
}

template <class Map>
void MapMisses(benchmark::State& state) {
  static const Map kMap = MakeMap<Map>(Entries());
  for (const wchar_t* const key : HotKeys()) {
    Require(FindText(kMap, key) == nullptr, "a missing key was found");
  }
  TimeLookups(state, HotKeys(), [](const wchar_t* key) { return FindText(kMap, key); });
}

// ---- By length: the same keys are looked up where they exist, and where they are missing and
// listed. Both dictionaries have the same number of keys of that length.

class HitsAndMisses {
 public:
  explicit HitsAndMisses(std::size_t length)
      : keys_(RandomKeys(length, kKeysPerLength), kRepetitionsPerLength) {
    std::vector<std::wstring> keys = RandomKeys(length, 2 * kKeysPerLength);
    const std::vector<std::wstring> others(keys.begin() + kKeysPerLength, keys.end());
    keys.resize(kKeysPerLength);
    const Catalogue catalogue = MakeCatalogueOfKeys(keys);
    Load(present_, catalogue);
    Load(missing_, MakeCatalogueOfKeys(others));
    for (const auto& [key, text] : catalogue) {
      Require(present_.lang(key.c_str()) == text, "a lookup gave a wrong text");
      Require(*missing_.lang(key.c_str()) == L'\0', "a missing key was found");
    }
    CheckMessages();
  }

  void TimeHits(benchmark::State& state) const {
    TimeLookups(state, keys_.Pointers(), present_.lang);
    CheckMessages();
  }

  void TimeMisses(benchmark::State& state) const {
    TimeLookups(state, keys_.Pointers(), missing_.lang);
    CheckMessages();
  }

 private:
  // A longer list of keys begins with the shorter one.
  static std::vector<std::wstring> RandomKeys(std::size_t length, std::size_t size) {
    return MakeRandomKeys(kAsciiLettersAndDigits, {length, length}, size);
  }

  static void Load(const LibraryInstance& library, const Catalogue& catalogue) {
    const std::filesystem::path file = ScratchFolder() / "keys.txt";
    WriteDictionary(file, "id", catalogue);
    library.Load(file, 0);
  }

  void CheckMessages() const {
    Require(present_.getErrorsCount() == 0, "an existing key was listed");
    Require(missing_.getErrorsCount() == kKeysPerLength,
            "a missing key was not listed exactly once");
  }

  LookupKeys keys_;
  LibraryInstance present_;
  LibraryInstance missing_;
};

const HitsAndMisses& HitsAndMissesOf(std::size_t length) {
  static std::map<std::size_t, HitsAndMisses> instances;
  return instances.try_emplace(length, length).first->second;
}

// ---- First lookups: a batch of distinct keys. The list is empty, but it was as long before.

using MakeKeys = std::vector<std::wstring> (*)(std::size_t size);

std::vector<std::wstring> MakeLongKeys(std::size_t size) {
  return MakeRandomKeys(kAsciiLettersAndDigits, {80, 120}, size);
}

std::vector<std::wstring> MakeChineseKeys(std::size_t size) {
  return MakeRandomKeys(kChineseLetters, {5, 20}, size);
}

/// Times `batch`, then calls `clear`, which is not timed.
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

void FirstMisses(benchmark::State& state, MakeKeys makeKeys, std::size_t misses) {
  const std::vector<std::wstring> missing = makeKeys(misses);
  const HostKeys<wchar_t> keys(missing);
  static const LibraryInstance& library = InstanceWithMessages(0);
  const auto missAll = [&] {
    for (const wchar_t* const key : keys.Pointers()) {
      benchmark::DoNotOptimize(library.lang(key));
    }
  };
  missAll();
  for (std::size_t i = 0; i < misses; ++i) {
    Require(library.getError(static_cast<std::int32_t>(i)) == MessageOf(missing[i]),
            "a message is wrong");
  }
  library.clearErrors();
  TimeBatches(state, misses, missAll, library.clearErrors);
}

void SetInsertions(benchmark::State& state, MakeKeys makeKeys, std::size_t insertions) {
  std::vector<std::wstring> messages;
  for (const std::wstring& key : makeKeys(insertions)) {
    messages.push_back(MessageOf(key));
  }
  std::unordered_set<std::wstring> set;
  const auto insertAll = [&] {
    for (const std::wstring& message : messages) {
      benchmark::DoNotOptimize(set.insert(message));
    }
  };
  insertAll();
  Require(set.size() == insertions, "two messages are equal");
  set.clear();
  TimeBatches(state, insertions, insertAll, [&] { set.clear(); });
}

void RegisterFirst(const std::string& row, MakeKeys makeKeys, std::size_t misses) {
  const std::string name = "missing/" + row;
  benchmark::RegisterBenchmark(NameWithSize(name + "/kelmo", misses).c_str(), FirstMisses, makeKeys,
                               misses)
      ->UseManualTime();
  benchmark::RegisterBenchmark(NameWithSize(name + "/std_unordered_set", misses).c_str(),
                               SetInsertions, makeKeys, misses)
      ->UseManualTime();
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
    // A map has no messages: its time is the same for each number of them.
#ifdef KELMO_HAS_BOOST
    benchmark::RegisterBenchmark(name("boost_flat_map").c_str(), MapMisses<BoostFlatMap>);
#endif
#ifdef KELMO_HAS_ABSL
    benchmark::RegisterBenchmark(name("absl_flat_hash_map").c_str(), MapMisses<AbslFlatHashMap>);
#endif
  }
  for (const std::size_t misses : kFirstMisses) {
    RegisterFirst("first", MakeMissingKeys, misses);
  }
  for (const std::size_t misses : {kFirstMisses[0], kFirstMisses[2]}) {
    RegisterFirst("first_long", MakeLongKeys, misses);
    RegisterFirst("first_chinese", MakeChineseKeys, misses);
  }
  const std::string byLength = "missing/length_" + std::to_string(kKeysPerLength);
  for (const std::size_t length : kLengths) {
    benchmark::RegisterBenchmark(
        NameWithSize(byLength + "/kelmo", length).c_str(),
        [length](benchmark::State& state) { HitsAndMissesOf(length).TimeMisses(state); });
    benchmark::RegisterBenchmark(
        NameWithSize(byLength + "/kelmo_hit", length).c_str(),
        [length](benchmark::State& state) { HitsAndMissesOf(length).TimeHits(state); });
  }
  return RunBenchmarks(argc, argv);
}
