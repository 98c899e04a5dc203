// Lookups in kelmo, beside LANG and other libraries of texts. All subjects get the same keys, wide
// or narrow as their interface requires. The texts of kelmo, LANG, gettext and ICU are pointers into
// the catalogue; Qt and Boost.Locale return a string that the caller owns.

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "benchmarks/support/lookups.h"
#include "kelmo/kelmo.hpp"

#ifdef KELMO_HAS_BOOST_LOCALE
#include <boost/locale.hpp>
#endif
#ifdef KELMO_HAS_QT
#include "benchmarks/support/qt_catalogue.h"
#endif

namespace benchmarks {
namespace {

constexpr std::size_t kSizes[] = {10, 100, 1'000, 10'000, 100'000};
constexpr std::size_t kSmall = 1'000;
constexpr std::size_t kLarge = 100'000;
// Around the sizes of words and vectors. A Cyrillic letter has two bytes.
constexpr std::size_t kLengthsInSmall[] = {1, 2, 3, 4, 6, 8, 9, 12, 16, 17, 24, 32, 33, 48, 60};
constexpr std::size_t kLengthsInLarge[] = {4, 16, 32, 60};
constexpr std::size_t kCyrillicLengths[] = {2, 4, 8, 16, 30, 60};
constexpr std::size_t kLanguages = 3;

Plan RepeatedPlan(std::size_t size) {
  Plan plan = OrdinaryPlan(size);
  plan.name = WithNumber("repeated", size);
  plan.repetitions = std::max<std::size_t>(kMinLookups / size, 1);
  return plan;
}

// ---- Texts in several languages: the last of them has the keys, and the others have other keys.

/// The languages of gettext's chain (BindGettextDomain).
constexpr const char* kChain[kLanguages] = {"de", "en", "fr"};

/// The catalogues of the first `languages` languages.
std::vector<Catalogue> CataloguesOf(const Dictionary& dictionary, std::size_t languages) {
  Catalogue others;
  for (std::wstring& key : MakeMissingKeys(dictionary.entries.size())) {
    others.push_back({std::move(key), L"not this text"});
  }
  std::vector<Catalogue> catalogues(languages - 1, others);
  catalogues.push_back(dictionary.entries);
  return catalogues;
}

// ---- The subjects

/// The texts of a dictionary as the language at `kPosition`, from 1, of a chain.
template <std::size_t kPosition>
class KelmoTexts {
 public:
  explicit KelmoTexts(const Dictionary& dictionary) {
    kelmo::Loader loader;
    std::vector<std::string> ids;
    for (const Catalogue& catalogue : CataloguesOf(dictionary, kPosition)) {
      ids.push_back(WithNumber("language", ids.size()));
      const std::filesystem::path file = ScratchFolder() / (ids.back() + ".txt");
      WriteDictionary(file, ids.back(), catalogue);
      loader.add_file(file.string());
    }
    view_ = kelmo::View(loader.finish(), ids);
  }

  void Prepare() const {}
  const kelmo_view* Handle() const { return view_.handle(); }

 private:
  kelmo::View view_;
};

/// kelmo_view_text of a zero-terminated key: what LANG does.
template <std::size_t kPosition>
class KelmoText : public KelmoTexts<kPosition> {
 public:
  using Character = char;
  using KelmoTexts<kPosition>::KelmoTexts;

  const char* Find(const char* key) const {
    return ::kelmo_view_text(this->Handle(), key, KELMO_ZERO_TERMINATED, nullptr);
  }
  bool Finds(const Entry& entry) const {
    return Find(EncodeUtf8(entry.key).c_str()) == EncodeUtf8(entry.text);
  }
};

/// kelmo_view_text of a key with its size, with the size of the text.
class KelmoSizedText : public KelmoTexts<1> {
 public:
  using Character = char;
  using KelmoTexts::KelmoTexts;

  std::string_view Find(std::string_view key) const {
    std::size_t size = 0;
    const char* const text = ::kelmo_view_text(Handle(), key.data(), key.size(), &size);
    return {text, size};
  }
  bool Finds(const Entry& entry) const {
    return Find(EncodeUtf8(entry.key)) == EncodeUtf8(entry.text);
  }
};

/// kelmo_view_find: the text with its origin.
class KelmoFind : public KelmoTexts<1> {
 public:
  using Character = char;
  using KelmoTexts::KelmoTexts;

  kelmo_text Find(std::string_view key) const { return Find(key.data(), key.size()); }
  kelmo_text Find(const char* key) const { return Find(key, KELMO_ZERO_TERMINATED); }
  bool Finds(const Entry& entry) const {
    const std::string key = EncodeUtf8(entry.key);
    const kelmo_text text = Find(key.c_str());
    return EncodeUtf8(entry.text) == std::string_view(text.utf8, text.utf8_size);
  }

 private:
  kelmo_text Find(const char* key, std::size_t size) const {
    kelmo_text text;
    text.size = sizeof text;
    Require(::kelmo_view_find(Handle(), key, size, nullptr, &text) == KELMO_OK, "a key is missing");
    return text;
  }
};

#ifdef KELMO_HAS_GETTEXT
template <std::size_t kPosition>
class GettextChain {
 public:
  using Character = char;

  explicit GettextChain(const Dictionary& dictionary)
      : domain_(WithNumber(dictionary.name + "_chain", kPosition)) {
    std::size_t language = 0;
    for (const Catalogue& catalogue : CataloguesOf(dictionary, kPosition)) {
      WriteGettextCatalogue(ScratchFolder(), domain_, catalogue, kChain[language++]);
    }
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

#ifdef KELMO_HAS_BOOST_LOCALE
class BoostLocale {
 public:
  using Character = char;

  explicit BoostLocale(const Dictionary& dictionary) {
    const std::string domain = dictionary.name + "_boost";
    WriteGettextCatalogue(ScratchFolder(), domain, dictionary.entries);
    boost::locale::generator generator;
    generator.categories(boost::locale::category_t::message);
    generator.add_messages_path(ScratchFolder().string());
    generator.add_messages_domain(domain);
    locale_ = generator("de_DE.UTF-8");
  }

  void Prepare() const {}
  std::string Find(const char* key) const { return boost::locale::gettext(key, locale_); }
  bool Finds(const Entry& entry) const {
    return Find(EncodeUtf8(entry.key).c_str()) == EncodeUtf8(entry.text);
  }

 private:
  std::locale locale_;
};
#endif

#ifdef KELMO_HAS_QT
/// QCoreApplication::translate, which asks the installed translators, the latest first.
template <std::size_t kPosition>
class QtTexts {
 public:
  using Character = char;

  explicit QtTexts(const Dictionary& dictionary) {
    for (const Catalogue& catalogue : CataloguesOf(dictionary, kPosition)) {
      catalogues_.push_back(std::make_unique<QtCatalogue>(catalogue));
    }
  }

  void Prepare() const {
    static std::vector<QtCatalogue*> installed;
    for (QtCatalogue* const catalogue : installed) {
      catalogue->Remove();
    }
    installed.clear();
    for (std::size_t i = catalogues_.size(); i-- > 0;) {
      catalogues_[i]->Install();
      installed.push_back(catalogues_[i].get());
    }
  }
  static QString Find(const char* key) { return TranslateByQt(key); }
  static bool Finds(const Entry& entry) {
    return Find(EncodeUtf8(entry.key).c_str()).toStdWString() == entry.text;
  }

 private:
  std::vector<std::unique_ptr<QtCatalogue>> catalogues_;
};
#endif

// ---- Rows

/// The keys with their sizes.
const std::vector<std::string_view>& SizedKeys(const Dictionary& dictionary) {
  static std::map<std::string, std::vector<std::string_view>> keys;
  const auto [position, added] = keys.try_emplace(dictionary.name);
  if (added) {
    const auto& pointers = AllKeys<char>(dictionary);
    position->second.assign(pointers.begin(), pointers.end());
  }
  return position->second;
}

/// `size`: the number of entries. If the name of the row has that number, the length of the keys.
template <class Subject, bool kIsSized = false>
void RegisterHits(const std::string& row, const std::string& subject, std::size_t size,
                  const Plan& plan) {
  benchmark::RegisterBenchmark(
      NameWithSize("view/" + row + "/" + subject, size).c_str(), [plan](benchmark::State& state) {
        const Dictionary& dictionary = DictionaryOf(plan);
        const auto& asked = SubjectOf<Subject>(dictionary);
        if constexpr (kIsSized) {
          TimeLookups(state, asked, SizedKeys(dictionary));
        } else {
          TimeLookups(state, asked, AllKeys<typename Subject::Character>(dictionary));
        }
      });
}

struct Row {
  std::string name;
  std::size_t size;
  Plan plan;
};

std::vector<Row> RowsOfHits() {
  std::vector<Row> rows;
  for (const std::size_t size : kSizes) {
    rows.push_back({"shuffled", size, RepeatedPlan(size)});
  }
  const auto add = [&rows](const char* name, std::size_t entries, std::size_t length,
                           Alphabet letters) {
    const std::string row = WithNumber(name, entries);
    rows.push_back(
        {row, length,
         RandomKeysPlan(WithNumber("view_" + row, length), letters, {length, length}, entries)});
  };
  for (const std::size_t length : kLengthsInSmall) {
    add("length", kSmall, length, kAsciiLettersAndDigits);
  }
  for (const std::size_t length : kLengthsInLarge) {
    add("length", kLarge, length, kAsciiLettersAndDigits);
  }
  for (const std::size_t length : kCyrillicLengths) {
    add("alphabet_cyrillic", kSmall, length, kRussianLetters);
  }
  return rows;
}

void RegisterHits() {
  for (const Row& row : RowsOfHits()) {
    RegisterHits<KelmoText<1>>(row.name, "kelmo", row.size, row.plan);
    RegisterHits<KelmoSizedText, true>(row.name, "kelmo_sized", row.size, row.plan);
    RegisterHits<KelmoFind>(row.name, "kelmo_find", row.size, row.plan);
    RegisterHits<KelmoFind, true>(row.name, "kelmo_find_sized", row.size, row.plan);
    RegisterHits<Kelmo>(row.name, "lang", row.size, row.plan);
#ifdef KELMO_HAS_GETTEXT
    RegisterHits<Gettext>(row.name, "gettext", row.size, row.plan);
#endif
#ifdef KELMO_HAS_BOOST_LOCALE
    RegisterHits<BoostLocale>(row.name, "boost_locale", row.size, row.plan);
#endif
#ifdef KELMO_HAS_QT
    RegisterHits<QtTexts<1>>(row.name, "qt", row.size, row.plan);
#endif
#ifdef KELMO_HAS_ICU
    if (row.name.find("cyrillic") == std::string::npos) {  // its keys are ASCII
      RegisterHits<Icu>(row.name, "icu", row.size, row.plan);
    }
#endif
  }
}

/// The keys are in the language at kPosition of the chain.
template <std::size_t kPosition>
void RegisterChain() {
  for (const std::size_t entries : {kSmall, kLarge}) {
    const std::string row = WithNumber("chain", entries);
    const Plan plan = RepeatedPlan(entries);
    RegisterHits<KelmoText<kPosition>>(row, "kelmo", kPosition, plan);
#ifdef KELMO_HAS_GETTEXT
    RegisterHits<GettextChain<kPosition>>(row, "gettext", kPosition, plan);
#endif
#ifdef KELMO_HAS_QT
    RegisterHits<QtTexts<kPosition>>(row, "qt", kPosition, plan);
#endif
  }
}

const std::vector<const char*>& MissingKeys() {
  static const HostKeys<char> kKeys(MakeMissingKeys(kMinLookups));
  return kKeys.Pointers();
}

template <class Subject>
void RegisterMisses(const std::string& subject) {
  for (const std::size_t size : kSizes) {
    benchmark::RegisterBenchmark(
        NameWithSize("view/missing/" + subject, size).c_str(), [size](benchmark::State& state) {
          TimeLookups(state, SubjectOf<Subject>(DictionaryOf(RepeatedPlan(size))), MissingKeys());
        });
  }
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  RegisterHits();
  RegisterChain<1>();
  RegisterChain<2>();
  RegisterChain<3>();
  RegisterMisses<KelmoText<1>>("kelmo");
#ifdef KELMO_HAS_GETTEXT
  RegisterMisses<Gettext>("gettext");
#endif
#ifdef KELMO_HAS_BOOST_LOCALE
  RegisterMisses<BoostLocale>("boost_locale");
#endif
#ifdef KELMO_HAS_QT
  RegisterMisses<QtTexts<1>>("qt");
#endif
#ifdef KELMO_HAS_ICU
  RegisterMisses<Icu>("icu");
#endif
  return RunBenchmarks(argc, argv);
}
