// Lookups of existing keys. All subjects get the same zero-terminated keys, wide or narrow as their
// interface requires, and return a pointer to the text.

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <fstream>
#include <functional>
#include <map>
#include <numeric>
#include <unordered_map>

#include "benchmarks/support/catalogue.h"
#include "benchmarks/support/hostile_catalogue.h"
#include "benchmarks/support/peer_maps.h"
#include "benchmarks/support/random_letters.h"
#include "benchmarks/support/run_benchmarks.h"
#include "benchmarks/support/scratch_folder.h"
#include "kelmo_localizer.h"
#include "tests/support/encode_utf8.h"

#ifdef KELMO_HAS_GETTEXT
#include <libintl.h>

#include <clocale>
#include <cstdlib>

#include "benchmarks/support/gettext_catalogue.h"
#endif
#ifdef KELMO_HAS_ICU
#include <unicode/ures.h>
#endif

namespace benchmarks {
namespace {

constexpr std::size_t kSizes[] = {1'000, 10'000, 100'000, 1'000'000};
constexpr std::size_t kHotDictionarySize = 100'000;
constexpr std::size_t kHotKeys = 100;
constexpr std::size_t kHotRepetitions = 100;
// Keys of small dictionaries are repeated and shuffled: a processor learns a short sequence.
constexpr std::size_t kMinLookups = 10'000;

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

// ---- Dictionaries and keys

struct Dictionary {
  std::string name;
  Catalogue entries;
  std::size_t repetitions;  // lookups of each key in one iteration
};

/// How to make a dictionary.
struct Plan {
  std::string name;
  std::function<Catalogue()> make;
  std::size_t repetitions = 1;
};

std::string WithNumber(const std::string& name, std::size_t number) {
  return name + "_" + std::to_string(number);
}

Plan OrdinaryPlan(std::size_t size) {
  return {WithNumber("de", size), [size] { return MakeCatalogue(Language::kGerman, size); }};
}

Plan HostilePlan(std::size_t size) {
  return {WithNumber("hostile", size), [size] { return MakeHostileCatalogue(size); }};
}

Plan RandomKeysPlan(const std::string& name, Alphabet alphabet, Lengths lengths, std::size_t size) {
  const std::size_t entries = lengths.longest == 1 ? kAsciiKeysOfOneLetter : size;
  return {name, [=] { return MakeCatalogueOfKeys(MakeRandomKeys(alphabet, lengths, entries)); },
          std::max<std::size_t>(kMinLookups / entries, 1)};
}

/// Makes the dictionary at the first call, and returns the same object each time.
const Dictionary& DictionaryOf(const Plan& plan) {
  static std::map<std::string, Dictionary> dictionaries;
  const auto [position, added] = dictionaries.try_emplace(plan.name);
  if (added) {
    position->second = {plan.name, plan.make(), plan.repetitions};
  }
  return position->second;
}

std::vector<std::wstring> ShuffledKeys(const Dictionary& dictionary) {
  std::vector<std::wstring> keys;
  for (const Entry& entry : dictionary.entries) {
    keys.push_back(entry.key);
  }
  std::mt19937_64 random = MakeRandomNumbers();
  std::shuffle(keys.begin(), keys.end(), random);
  return keys;
}

template <class Character>
const std::vector<const Character*>& AllKeys(const Dictionary& dictionary) {
  static std::map<std::string, HostKeys<Character>> keys;
  static std::map<std::string, std::vector<const Character*>> pointers;
  auto position = pointers.find(dictionary.name);
  if (position == pointers.end()) {
    const auto& held = keys.try_emplace(dictionary.name, ShuffledKeys(dictionary)).first->second;
    position = pointers
                   .emplace(dictionary.name, dictionary.repetitions == 1
                                                 ? held.Pointers()
                                                 : held.Repeated(dictionary.repetitions))
                   .first;
  }
  return position->second;
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

// ---- The subjects. Each has the type Character of its keys, a constructor from a dictionary,
// Prepare for the calls before a round, Find, and Finds: whether Find gives the text of an entry.

class Kelmo {
 public:
  using Character = wchar_t;

  explicit Kelmo(const Dictionary& dictionary)
      : id_(dictionary.name.begin(), dictionary.name.end()) {
    WriteDictionary(ScratchFolder() / dictionary.name, dictionary.name, dictionary.entries);
    const std::wstring folder = ScratchFolder().wstring();
    Require(LoadDictionary(folder.c_str(), id_.c_str()) == 0, "a dictionary was not loaded");
  }

  void Prepare() const { Require(UseLanguage(id_.c_str()) == 0, "a dictionary is missing"); }
  static const wchar_t* Find(const wchar_t* key) { return LANG(key); }
  static bool Finds(const Entry& entry) { return Find(entry.key.c_str()) == entry.text; }

 private:
  std::wstring id_;
};

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

#ifdef KELMO_HAS_GETTEXT
class Gettext {
 public:
  using Character = char;

  explicit Gettext(const Dictionary& dictionary) : domain_(dictionary.name) {
    WriteGettextCatalogue(ScratchFolder(), domain_, dictionary.entries);
    // Under any locale but C, gettext takes the language from this variable.
    ::setenv("LANGUAGE", "de", 1);
    Require(std::setlocale(LC_MESSAGES, "C.UTF-8") != nullptr, "the locale C.UTF-8 is missing");
    ::bindtextdomain(domain_.c_str(), ScratchFolder().c_str());
    ::bind_textdomain_codeset(domain_.c_str(), "UTF-8");
  }

  void Prepare() const {}
  const char* Find(const char* key) const { return ::dgettext(domain_.c_str(), key); }
  bool Finds(const Entry& entry) const {
    return Find(EncodeUtf8(entry.key).c_str()) == EncodeUtf8(entry.text);
  }

 private:
  std::string domain_;
};
#endif

#ifdef KELMO_HAS_ICU
class Icu {
 public:
  using Character = char;

  explicit Icu(const Dictionary& dictionary) {
    const std::string& name = dictionary.name;
    const std::string folder = ScratchFolder().string();
    const std::string source = folder + "/" + name + ".txt";
    std::ofstream stream(source);
    stream << name << ":table(nofallback) {\n";
    // In descending order: genrb searches a sorted list from the front to insert each key.
    Catalogue sorted = dictionary.entries;
    std::sort(sorted.begin(), sorted.end(),
              [](const Entry& left, const Entry& right) { return left.key > right.key; });
    for (const Entry& entry : sorted) {
      stream << EncodeUtf8(entry.key) << " { \"" << EncodeUtf8(entry.text) << "\" }\n";
    }
    stream << "}\n";
    stream.close();
    RunCommand({"genrb", "--quiet", "--encoding", "UTF-8", "--destdir", folder, source});
    UErrorCode status = U_ZERO_ERROR;
    bundle_ = ::ures_openDirect(folder.c_str(), name.c_str(), &status);
    Require(U_SUCCESS(status) != 0, "a resource bundle cannot be opened");
  }
  Icu(const Icu&) = delete;
  Icu& operator=(const Icu&) = delete;
  ~Icu() { ::ures_close(bundle_); }

  void Prepare() const {}
  const UChar* Find(const char* key) const {
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length = 0;
    return ::ures_getStringByKey(bundle_, key, &length, &status);
  }
  bool Finds(const Entry& entry) const {
    const UChar* const text = Find(EncodeUtf8(entry.key).c_str());
    return text != nullptr && text == std::u16string(entry.text.begin(), entry.text.end());
  }

 private:
  UResourceBundle* bundle_ = nullptr;
};
#endif

// ---- Timing

/// Makes the subject at the first call and keeps it, because rounds come in any order.
template <class Subject>
const Subject& SubjectOf(const Dictionary& dictionary) {
  static std::map<std::string, Subject> subjects;
  const auto [position, added] = subjects.try_emplace(dictionary.name, dictionary);
  const Subject& subject = position->second;
  subject.Prepare();
  if (added) {
    Require(std::all_of(dictionary.entries.begin(), dictionary.entries.end(),
                        [&](const Entry& entry) { return subject.Finds(entry); }),
            "a lookup gave a wrong text");
  }
  return subject;
}

template <class Subject>
void TimeLookups(benchmark::State& state, const Subject& subject,
                 const std::vector<const typename Subject::Character*>& keys) {
  for ([[maybe_unused]] const auto iteration : state) {
    for (const auto* const key : keys) {
      benchmark::DoNotOptimize(subject.Find(key));
    }
  }
  SetOperations(state, keys.size());
}

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
