// Finding texts by keys that are there. Every subject is asked by the same zero-terminated keys, wide
// or narrow as its interface wants them, and gives a pointer to the text.

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
constexpr std::size_t kHotDictionary = 100'000;
constexpr std::size_t kHotKeys = 100;
constexpr std::size_t kHotRepetitions = 100;
// A short dictionary is asked for its keys in several disorders: a processor can learn one by heart.
constexpr std::size_t kLeastLookups = 10'000;

// Around the words of the processor and the sizes of its vectors, and beyond.
constexpr std::size_t kLengthsOfFew[] = {1,  2,  3,  4,  5,  7,  8,  9,   12,  16, 17,
                                         20, 24, 32, 33, 41, 48, 64, 100, 200, 300};
constexpr std::size_t kLengthsOfMany[] = {3, 4, 8, 16, 20, 32, 64, 200};
constexpr std::size_t kLengthsInAlphabetsOfFew[] = {4, 8, 16, 24, 32, 64};
constexpr std::size_t kLengthsInAlphabetsOfMany[] = {8, 16, 32, 64};
constexpr std::size_t kFew = 1'000;
constexpr std::size_t kMany = 100'000;
constexpr Lengths kMixedLengths = {5, 60};

struct NamedAlphabet {
  const char* name;
  Alphabet letters;
};

constexpr NamedAlphabet kAlphabets[] = {
    {"cyrillic", kRussianLetters}, {"chinese", kChineseLetters}, {"mixed", kMixedLetters}};

// ---- What is asked for

struct Dictionary {
  std::string name;
  Catalogue entries;
  std::size_t repetitions;  // how often each key is asked for in an iteration
};

/// A dictionary that is not made yet.
struct Plan {
  std::string name;
  std::function<Catalogue()> make;
  std::size_t repetitions = 1;
};

std::string Numbered(const std::string& name, std::size_t number) {
  return name + "_" + std::to_string(number);
}

Plan Usual(std::size_t size) {
  return {Numbered("de", size), [size] { return MakeCatalogue(Language::kGerman, size); }};
}

Plan Hostile(std::size_t size) {
  return {Numbered("hostile", size), [size] { return MakeHostileCatalogue(size); }};
}

Plan OfRandomKeys(const std::string& name, Alphabet alphabet, Lengths lengths, std::size_t size) {
  const std::size_t entries = lengths.longest == 1 ? kAsciiKeysOfOneLetter : size;
  return {name, [=] { return MakeCatalogueOfKeys(MakeRandomKeys(alphabet, lengths, entries)); },
          std::max<std::size_t>(kLeastLookups / entries, 1)};
}

/// Made when it is first asked for, and kept: the same object each time.
const Dictionary& DictionaryOf(const Plan& plan) {
  static std::map<std::string, Dictionary> dictionaries;
  const auto [place, added] = dictionaries.try_emplace(plan.name);
  if (added) {
    place->second = {plan.name, plan.make(), plan.repetitions};
  }
  return place->second;
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
  auto place = pointers.find(dictionary.name);
  if (place == pointers.end()) {
    const auto& held = keys.try_emplace(dictionary.name, ShuffledKeys(dictionary)).first->second;
    place = pointers
                .emplace(dictionary.name, dictionary.repetitions == 1
                                              ? held.Pointers()
                                              : held.Repeated(dictionary.repetitions))
                .first;
  }
  return place->second;
}

template <class Character>
const std::vector<const Character*>& HotKeys() {
  static const HostKeys<Character> kKeys([] {
    std::vector<std::wstring> keys = ShuffledKeys(DictionaryOf(Usual(kHotDictionary)));
    keys.resize(kHotKeys);
    return keys;
  }());
  static const std::vector<const Character*> kRepeated = kKeys.Repeated(kHotRepetitions);
  return kRepeated;
}

// ---- Who is asked. Each subject has its characters, the dictionary, Find, and Finds, which says whether
// an entry is found as it should be.

class Kelmo {
 public:
  using Character = wchar_t;

  explicit Kelmo(const Dictionary& dictionary)
      : id_(dictionary.name.begin(), dictionary.name.end()) {
    WriteDictionary(ScratchFolder() / dictionary.name, dictionary.name, dictionary.entries);
    const std::wstring folder = ScratchFolder().wstring();
    Require(LoadDictionary(folder.c_str(), id_.c_str()) == 0, "a dictionary was not loaded");
  }

  void Prepare() const { Require(UseLanguage(id_.c_str()) == 0, "a dictionary is not there"); }
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

// The least that a lookup by a zero-terminated key can cost: to see where that ends.
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
    // Any locale but C: the language is that of the variable then.
    ::setenv("LANGUAGE", "de", 1);
    Require(std::setlocale(LC_MESSAGES, "C.UTF-8") != nullptr, "there is no locale C.UTF-8");
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
    // From the last to the first: genrb sorts by a search from the front for each.
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

// ---- How they are timed

/// Rounds come in any order: a subject is made when it is first asked, and kept.
template <class Subject>
const Subject& SubjectOf(const Dictionary& dictionary) {
  static std::map<std::string, Subject> subjects;
  const auto [place, added] = subjects.try_emplace(dictionary.name, dictionary);
  const Subject& subject = place->second;
  subject.Prepare();
  if (added) {
    Require(std::all_of(dictionary.entries.begin(), dictionary.entries.end(),
                        [&](const Entry& entry) { return subject.Finds(entry); }),
            "a text that was found is not the right one");
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

/// `size`: that of the dictionary, or in rows that are named after it the length of the keys.
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
    RegisterAllKeys<Subject>("shuffled/" + name, size, Usual(size));
  }
  benchmark::RegisterBenchmark(
      NameWithSize("lookup/hot/" + name, kHotDictionary).c_str(), [](benchmark::State& state) {
        TimeLookups(state, SubjectOf<Subject>(DictionaryOf(Usual(kHotDictionary))),
                    HotKeys<typename Subject::Character>());
      });
}

template <class Subject, std::size_t kCount>
void RegisterLengths(const std::string& name, const std::string& row, Alphabet alphabet,
                     std::size_t entries, const std::size_t (&lengths)[kCount]) {
  const std::string rowOfEntries = Numbered(row, entries);
  const std::string subject = rowOfEntries + "/" + name;
  for (const std::size_t length : lengths) {
    RegisterAllKeys<Subject>(
        subject, length,
        OfRandomKeys(Numbered(rowOfEntries, length), alphabet, {length, length}, entries));
  }
}

template <class Subject>
void RegisterKeysOfAllKinds(const std::string& name) {
  RegisterLengths<Subject>(name, "length", kAsciiLettersAndDigits, kFew, kLengthsOfFew);
  RegisterLengths<Subject>(name, "length", kAsciiLettersAndDigits, kMany, kLengthsOfMany);
  for (const NamedAlphabet& alphabet : kAlphabets) {
    const std::string row = std::string("alphabet_") + alphabet.name;
    RegisterLengths<Subject>(name, row, alphabet.letters, kFew, kLengthsInAlphabetsOfFew);
    RegisterLengths<Subject>(name, row, alphabet.letters, kMany, kLengthsInAlphabetsOfMany);
  }
  for (const std::size_t entries : {kFew, kMany}) {
    RegisterAllKeys<Subject>("mixed_lengths/" + name, entries,
                             OfRandomKeys(Numbered("mixed_lengths", entries),
                                          kAsciiLettersAndDigits, kMixedLengths, entries));
  }
}

// The subjects that a lookup is judged by.
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
  // In C++17 that of strings would need a new string for each lookup.
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
    RegisterAllKeys<Kelmo>("hostile/kelmo", size, Hostile(size));
    RegisterAllKeys<Kelmo>("hostile/kelmo_usual", size, Usual(size));
  }
  return RunBenchmarks(argc, argv);
}
