// Finding texts by keys that are there. Every subject is asked by the same zero-terminated keys, wide
// or narrow as its interface wants them, and gives a pointer to the text.

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <fstream>
#include <map>
#include <numeric>
#include <unordered_map>

#include "benchmarks/support/catalogue.h"
#include "benchmarks/support/hostile_catalogue.h"
#include "benchmarks/support/peer_maps.h"
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

// ---- What is asked for

enum class Kind { kUsual, kHostile };

struct Dictionary {
  std::string name;
  Catalogue entries;
};

/// Made when it is first asked for, and kept: the same object each time.
const Dictionary& DictionaryOf(Kind kind, std::size_t size) {
  static std::map<std::string, Dictionary> dictionaries;
  const bool isUsual = kind == Kind::kUsual;
  const std::string name = (isUsual ? "de_" : "hostile_") + std::to_string(size);
  const auto [place, added] = dictionaries.try_emplace(name);
  if (added) {
    place->second = {name,
                     isUsual ? MakeCatalogue(Language::kGerman, size) : MakeHostileCatalogue(size)};
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
  auto place = keys.find(dictionary.name);
  if (place == keys.end()) {
    place = keys.try_emplace(dictionary.name, ShuffledKeys(dictionary)).first;
  }
  return place->second.Pointers();
}

template <class Character>
const std::vector<const Character*>& HotKeys() {
  static const HostKeys<Character> kKeys([] {
    std::vector<std::wstring> keys = ShuffledKeys(DictionaryOf(Kind::kUsual, kHotDictionary));
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

template <class Subject>
void RegisterAllKeys(const std::string& name, Kind kind, std::size_t size) {
  benchmark::RegisterBenchmark(NameWithSize("lookup/" + name, size).c_str(),
                               [kind, size](benchmark::State& state) {
                                 const Dictionary& dictionary = DictionaryOf(kind, size);
                                 TimeLookups(state, SubjectOf<Subject>(dictionary),
                                             AllKeys<typename Subject::Character>(dictionary));
                               });
}

template <class Subject>
void Register(const std::string& name) {
  for (const std::size_t size : kSizes) {
    RegisterAllKeys<Subject>("shuffled/" + name, Kind::kUsual, size);
  }
  benchmark::RegisterBenchmark(
      NameWithSize("lookup/hot/" + name, kHotDictionary).c_str(), [](benchmark::State& state) {
        TimeLookups(state, SubjectOf<Subject>(DictionaryOf(Kind::kUsual, kHotDictionary)),
                    HotKeys<typename Subject::Character>());
      });
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  Register<Kelmo>("kelmo");
#ifdef KELMO_HAS_BOOST
  Register<MapSubject<BoostFlatMap>>("boost_flat_map");
#endif
#ifdef KELMO_HAS_ABSL
  Register<MapSubject<AbslFlatHashMap>>("absl_flat_hash_map");
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
  Register<KeyLength>("key_length");
  for (const std::size_t size : kHostileSizes) {
    RegisterAllKeys<Kelmo>("hostile/kelmo", Kind::kHostile, size);
    RegisterAllKeys<Kelmo>("hostile/kelmo_usual", Kind::kUsual, size);
  }
  return RunBenchmarks(argc, argv);
}
