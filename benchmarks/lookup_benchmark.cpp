// Lookups of existing keys. All subjects get the same zero-terminated keys, wide or narrow as their
// interface requires, and return a pointer to the text.

#include <cwchar>
#include <map>
#include <unordered_map>

#include "benchmarks/support/hostile_catalogue.h"
#include "benchmarks/support/lookups.h"
#include "benchmarks/support/peer_maps.h"

namespace benchmarks {
namespace {

constexpr std::size_t kSizes[] = {1'000, 10'000, 100'000, 1'000'000};
constexpr std::size_t kHotDictionarySize = 100'000;
constexpr std::size_t kHotKeys = 100;
constexpr std::size_t kHotRepetitions = 100;

// Around the sizes of the processor's words and vectors, and longer.
constexpr std::size_t kLengthsInSmall[] = {1,  2,  3,  4,  5,  7,  8,  9,   12,  16, 17,
                                           20, 24, 32, 33, 41, 48, 64, 100, 200, 300};
constexpr std::size_t kLengthsInLarge[] = {3, 4, 8, 16, 20, 32, 64, 200};
constexpr std::size_t kAlphabetLengthsInSmall[] = {4, 8, 16, 24, 32, 64};
constexpr std::size_t kAlphabetLengthsInLarge[] = {8, 16, 32, 64};
constexpr std::size_t kSmall = 1'000;
constexpr std::size_t kLarge = 100'000;
constexpr Lengths kMixedLengths = {5, 60};

struct NamedAlphabet {
  const char* name;
  Alphabet letters;
};

constexpr NamedAlphabet kAlphabets[] = {
    {"cyrillic", kRussianLetters}, {"chinese", kChineseLetters}, {"mixed", kMixedLetters}};

Plan HostilePlan(std::size_t size) {
  return {WithNumber("hostile", size), [size] { return MakeHostileCatalogue(size); }};
}

template <class Character>
const std::vector<const Character*>& HotKeys() {
  static const HostKeys<Character> kKeys([] {
    std::vector<std::wstring> keys = ShuffledKeys(DictionaryOf(OrdinaryPlan(kHotDictionarySize)));
    keys.resize(kHotKeys);
    return keys;
  }());
  static const std::vector<const Character*> kRepeated = kKeys.Repeated(kHotRepetitions);
  return kRepeated;
}

template <class Map>
class MapSubject {
 public:
  using Character = wchar_t;

  explicit MapSubject(const Dictionary& dictionary) : map_(MakeMap<Map>(dictionary.entries)) {}

  void Prepare() const {}
  const wchar_t* Find(const wchar_t* key) const { return FindText(map_, key); }
  bool Finds(const Entry& entry) const {
    const wchar_t* const text = Find(entry.key.c_str());
    return text != nullptr && text == entry.text;
  }

 private:
  Map map_;
};

// The minimum cost of a lookup by a zero-terminated key: finding the end of the key.
class KeyLength {
 public:
  using Character = wchar_t;

  explicit KeyLength(const Dictionary& /*dictionary*/) {}

  void Prepare() const {}
  static const wchar_t* Find(const wchar_t* key) { return key + std::wcslen(key); }
  static bool Finds(const Entry& entry) {
    return Find(entry.key.c_str()) == entry.key.c_str() + entry.key.size();
  }
};

// ---- Timing

/// `size`: the number of entries. If the name of the row has that number, the length of the keys.
template <class Subject>
void RegisterAllKeys(const std::string& name, std::size_t size, const Plan& plan) {
  benchmark::RegisterBenchmark(NameWithSize("lookup/" + name, size).c_str(),
                               [plan](benchmark::State& state) {
                                 const Dictionary& dictionary = DictionaryOf(plan);
                                 TimeLookups(state, SubjectOf<Subject>(dictionary),
                                             AllKeys<typename Subject::Character>(dictionary));
                               });
}

template <class Subject>
void Register(const std::string& name) {
  for (const std::size_t size : kSizes) {
    RegisterAllKeys<Subject>("shuffled/" + name, size, OrdinaryPlan(size));
  }
  benchmark::RegisterBenchmark(
      NameWithSize("lookup/hot/" + name, kHotDictionarySize).c_str(), [](benchmark::State& state) {
        TimeLookups(state, SubjectOf<Subject>(DictionaryOf(OrdinaryPlan(kHotDictionarySize))),
                    HotKeys<typename Subject::Character>());
      });
}

template <class Subject, std::size_t kCount>
void RegisterLengths(const std::string& name, const std::string& row, Alphabet alphabet,
                     std::size_t entries, const std::size_t (&lengths)[kCount]) {
  const std::string rowWithSize = WithNumber(row, entries);
  const std::string subject = rowWithSize + "/" + name;
  for (const std::size_t length : lengths) {
    RegisterAllKeys<Subject>(
        subject, length,
        RandomKeysPlan(WithNumber(rowWithSize, length), alphabet, {length, length}, entries));
  }
}

template <class Subject>
void RegisterKeysOfAllKinds(const std::string& name) {
  RegisterLengths<Subject>(name, "length", kAsciiLettersAndDigits, kSmall, kLengthsInSmall);
  RegisterLengths<Subject>(name, "length", kAsciiLettersAndDigits, kLarge, kLengthsInLarge);
  for (const NamedAlphabet& alphabet : kAlphabets) {
    const std::string row = std::string("alphabet_") + alphabet.name;
    RegisterLengths<Subject>(name, row, alphabet.letters, kSmall, kAlphabetLengthsInSmall);
    RegisterLengths<Subject>(name, row, alphabet.letters, kLarge, kAlphabetLengthsInLarge);
  }
  for (const std::size_t entries : {kSmall, kLarge}) {
    RegisterAllKeys<Subject>("mixed_lengths/" + name, entries,
                             RandomKeysPlan(WithNumber("mixed_lengths", entries),
                                            kAsciiLettersAndDigits, kMixedLengths, entries));
  }
}

// For the subjects of the targets, and for the lower bound.
template <class Subject>
void RegisterWithAllLengths(const std::string& name) {
  Register<Subject>(name);
  RegisterKeysOfAllKinds<Subject>(name);
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  RegisterWithAllLengths<Kelmo>("kelmo");
#ifdef KELMO_HAS_BOOST
  RegisterWithAllLengths<MapSubject<BoostFlatMap>>("boost_flat_map");
#endif
#ifdef KELMO_HAS_ABSL
  RegisterWithAllLengths<MapSubject<AbslFlatHashMap>>("absl_flat_hash_map");
#endif
  // With views as keys: in C++17 a map of strings would need a new string for each lookup.
  Register<MapSubject<std::unordered_map<std::wstring_view, std::wstring>>>("std_unordered_map");
  Register<MapSubject<std::map<std::wstring, std::wstring, std::less<>>>>("std_map");
#ifdef KELMO_HAS_GETTEXT
  Register<Gettext>("gettext");
#endif
#ifdef KELMO_HAS_ICU
  Register<Icu>("icu");
#endif
  RegisterWithAllLengths<KeyLength>("key_length");
  for (const std::size_t size : kHostileSizes) {
    RegisterAllKeys<Kelmo>("hostile/kelmo", size, HostilePlan(size));
    RegisterAllKeys<Kelmo>("hostile/kelmo_usual", size, OrdinaryPlan(size));
  }
  return RunBenchmarks(argc, argv);
}
