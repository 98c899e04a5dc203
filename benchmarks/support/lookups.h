// What the benchmarks of lookups share: dictionaries, keys, and those subjects that more than one
// program measures.
#pragma once

#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "benchmarks/support/catalogue.h"
#include "benchmarks/support/random_letters.h"
#include "benchmarks/support/run_benchmarks.h"
#include "benchmarks/support/scratch_folder.h"
#include "kelmo_localizer.h"
#include "tests/support/encode_utf8.h"

#ifdef KELMO_HAS_GETTEXT
#include <libintl.h>

#include "benchmarks/support/gettext_catalogue.h"
#endif
#ifdef KELMO_HAS_ICU
#include <unicode/ures.h>
#endif

namespace benchmarks {

// Keys of small dictionaries are repeated and shuffled: a processor learns a short sequence.
constexpr std::size_t kMinLookups = 10'000;

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

inline std::string WithNumber(const std::string& name, std::size_t number) {
  return name + "_" + std::to_string(number);
}

inline Plan OrdinaryPlan(std::size_t size) {
  return {WithNumber("de", size), [size] { return MakeCatalogue(Language::kGerman, size); }};
}

inline Plan RandomKeysPlan(const std::string& name, Alphabet alphabet, Lengths lengths,
                           std::size_t size) {
  const std::size_t entries = lengths.longest == 1 ? kAsciiKeysOfOneLetter : size;
  return {name, [=] { return MakeCatalogueOfKeys(MakeRandomKeys(alphabet, lengths, entries)); },
          std::max<std::size_t>(kMinLookups / entries, 1)};
}

/// Makes the dictionary at the first call, and returns the same object each time.
inline const Dictionary& DictionaryOf(const Plan& plan) {
  static std::map<std::string, Dictionary> dictionaries;
  const auto [position, added] = dictionaries.try_emplace(plan.name);
  if (added) {
    position->second = {plan.name, plan.make(), plan.repetitions};
  }
  return position->second;
}

inline std::vector<std::wstring> ShuffledKeys(const Dictionary& dictionary) {
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

#ifdef KELMO_HAS_GETTEXT
class Gettext {
 public:
  using Character = char;

  explicit Gettext(const Dictionary& dictionary) : domain_(dictionary.name) {
    WriteGettextCatalogue(ScratchFolder(), domain_, dictionary.entries);
    BindGettextDomain(ScratchFolder(), domain_);
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

template <class Subject, class Key>
void TimeLookups(benchmark::State& state, const Subject& subject, const std::vector<Key>& keys) {
  for ([[maybe_unused]] const auto iteration : state) {
    for (const Key& key : keys) {
      benchmark::DoNotOptimize(subject.Find(key));
    }
  }
  SetOperations(state, keys.size());
}

}  // namespace benchmarks
