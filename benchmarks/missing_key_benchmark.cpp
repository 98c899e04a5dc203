// Asking for keys that are not there: the first time, when the message is listed, and again and again.

#include <chrono>
#include <map>
#include <unordered_set>

#include "benchmarks/support/catalogue.h"
#include "benchmarks/support/library_life.h"
#include "benchmarks/support/peer_maps.h"
#include "benchmarks/support/random_letters.h"
#include "benchmarks/support/run_benchmarks.h"
#include "benchmarks/support/scratch_folder.h"

namespace benchmarks {
namespace {

constexpr std::size_t kListedMessages[] = {100, 10'000, 100'000, 1'000'000};
constexpr std::size_t kFirstMisses[] = {1'000, 10'000, 100'000};
constexpr std::size_t kDictionary = 100'000;
constexpr std::size_t kHotKeys = 100;
constexpr std::size_t kHotRepetitions = 100;
constexpr std::size_t kLengths[] = {2, 4, 8, 16, 20, 32, 64, 300};
constexpr std::size_t kKeysOfALength = 1'000;
constexpr std::size_t kRepetitionsOfALength = 10;

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

// Keys as a host holds them, in the disorder in which they are asked for.
class AskedKeys {
 public:
  AskedKeys(const std::vector<std::wstring>& keys, std::size_t repetitions)
      : held_(keys), repeated_(held_.Repeated(repetitions)) {}

  const std::vector<const wchar_t*>& Pointers() const { return repeated_; }

 private:
  HostKeys<wchar_t> held_;
  std::vector<const wchar_t*> repeated_;
};

// Every subject gives null or the empty text for them.
const std::vector<const wchar_t*>& HotKeys() {
  static const AskedKeys kKeys(MakeMissingKeys(kHotKeys), kHotRepetitions);
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
  TimeLookups(state, HotKeys(), life.lang);
  Require(life.getErrorsCount() == static_cast<std::int64_t>(messages), "a key was listed again");
}

template <class Map>
void MapMisses(benchmark::State& state) {
  static const Map kMap = MakeMap<Map>(Entries());
  for (const wchar_t* const key : HotKeys()) {
    Require(FindText(kMap, key) == nullptr, "a key is there that should not be");
  }
  TimeLookups(state, HotKeys(), [](const wchar_t* key) { return FindText(kMap, key); });
}

// ---- By length: the same keys are asked for where they are there, and where they are missing and
// listed. Both dictionaries have as many keys of that length.

class KeysOfALength {
 public:
  explicit KeysOfALength(std::size_t length)
      : asked_(RandomKeys(length, kKeysOfALength), kRepetitionsOfALength) {
    std::vector<std::wstring> keys = RandomKeys(length, 2 * kKeysOfALength);
    const std::vector<std::wstring> others(keys.begin() + kKeysOfALength, keys.end());
    keys.resize(kKeysOfALength);
    const Catalogue catalogue = MakeCatalogueOfKeys(keys);
    Load(there_, catalogue);
    Load(missing_, MakeCatalogueOfKeys(others));
    for (const auto& [key, text] : catalogue) {
      Require(there_.lang(key.c_str()) == text, "a text that was found is not the right one");
      Require(*missing_.lang(key.c_str()) == L'\0', "a key is there that should not be");
    }
    CheckMessages();
  }

  void TimeHits(benchmark::State& state) const {
    TimeLookups(state, asked_.Pointers(), there_.lang);
    CheckMessages();
  }

  void TimeMisses(benchmark::State& state) const {
    TimeLookups(state, asked_.Pointers(), missing_.lang);
    CheckMessages();
  }

 private:
  // More keys begin with the fewer ones.
  static std::vector<std::wstring> RandomKeys(std::size_t length, std::size_t size) {
    return MakeRandomKeys(kAsciiLettersAndDigits, {length, length}, size);
  }

  static void Load(const LibraryLife& life, const Catalogue& catalogue) {
    const std::filesystem::path file = ScratchFolder() / "keys_of_a_length.txt";
    WriteDictionary(file, "id", catalogue);
    life.Load(file, 0);
  }

  void CheckMessages() const {
    Require(there_.getErrorsCount() == 0, "a key that is there was listed");
    Require(missing_.getErrorsCount() == kKeysOfALength, "a missing key was not listed once");
  }

  AskedKeys asked_;
  LibraryLife there_;
  LibraryLife missing_;
};

const KeysOfALength& KeysOf(std::size_t length) {
  static std::map<std::size_t, KeysOfALength> keys;
  return keys.try_emplace(length, length).first->second;
}

// ---- For the first time: a batch of distinct keys on an empty list, which has been as long before.

using MakeKeys = std::vector<std::wstring> (*)(std::size_t size);

std::vector<std::wstring> MakeLongKeys(std::size_t size) {
  return MakeRandomKeys(kAsciiLettersAndDigits, {80, 120}, size);
}

std::vector<std::wstring> MakeChineseKeys(std::size_t size) {
  return MakeRandomKeys(kChineseLetters, {5, 20}, size);
}

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

void FirstMisses(benchmark::State& state, MakeKeys makeKeys, std::size_t misses) {
  const std::vector<std::wstring> missing = makeKeys(misses);
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
  Require(set.size() == insertions, "a message is there twice");
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
    // A map keeps no messages: the same for all.
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
  const std::string byLength = "missing/length_" + std::to_string(kKeysOfALength);
  for (const std::size_t length : kLengths) {
    benchmark::RegisterBenchmark(
        NameWithSize(byLength + "/kelmo", length).c_str(),
        [length](benchmark::State& state) { KeysOf(length).TimeMisses(state); });
    benchmark::RegisterBenchmark(
        NameWithSize(byLength + "/kelmo_hit", length).c_str(),
        [length](benchmark::State& state) { KeysOf(length).TimeHits(state); });
  }
  return RunBenchmarks(argc, argv);
}
