// A text in the form that a number needs, with the number in it, beside other libraries. Every
// language has kTexts keys; they are asked for in disorder, each time with another number.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "benchmarks/support/gettext_catalogue.h"
#include "benchmarks/support/run_benchmarks.h"
#include "benchmarks/support/scratch_folder.h"
#include "kelmo/kelmo.hpp"
#include "tests/support/random_numbers.h"

#ifdef KELMO_HAS_BOOST_LOCALE
#include <boost/locale.hpp>
#endif
#ifdef KELMO_HAS_GETTEXT
#include <libintl.h>
#endif
#ifdef KELMO_HAS_ICU_MESSAGES
#include <unicode/msgfmt.h>
#endif
#ifdef KELMO_HAS_QT
#include "benchmarks/support/qt_catalogue.h"
#endif

namespace benchmarks {
namespace {

constexpr std::size_t kTexts = 100;
constexpr std::size_t kCalls = 2048;  // a processor learns to predict a few hundred
constexpr int kLargestCount = 999;    // ICU writes larger numbers with marks between the digits
constexpr std::size_t kCapacity = 512;

using Buffer = std::array<char, kCapacity>;

struct Form {
  const char* category;  // as CLDR names it
  const char* text;      // behind the number
};

/// A language. The forms are in the order of the rules of gettext and Qt.
struct Language {
  const char* id;
  const char* pluralForms;  // of gettext
  std::vector<Form> forms;
};

const std::vector<Language>& Languages() {
  static const std::vector<Language> kLanguages = {
      {"en",
       "nplurals=2; plural=n != 1;",
       {{"one", "file was found"}, {"other", "files were found"}}},
      {"ru",
       "nplurals=3; plural=n%10==1 && n%100!=11 ? 0 : n%10>=2 && n%10<=4 && (n%100<10 || n%100>=20)"
       " ? 1 : 2;",
       {{"one", "файл найден"}, {"few", "файла найдено"}, {"many", "файлов найдено"}}},
      {"pl",
       "nplurals=3; plural=n==1 ? 0 : n%10>=2 && n%10<=4 && (n%100<10 || n%100>=20) ? 1 : 2;",
       {{"one", "plik znaleziono"}, {"few", "pliki znaleziono"}, {"many", "plików znaleziono"}}},
      {"ar",
       "nplurals=6; plural=n==0 ? 0 : n==1 ? 1 : n==2 ? 2 : n%100>=3 && n%100<=10 ? 3 : n%100>=11 "
       "? "
       "4 : 5;",
       {{"zero", "ملفات معدومة"},
        {"one", "ملف واحد"},
        {"two", "ملفان"},
        {"few", "ملفات"},
        {"many", "ملفًا"},
        {"other", "ملف"}}},
  };
  return kLanguages;
}

std::string KeyOf(std::size_t text) { return "search.files_found_" + std::to_string(text); }

// ---- The calls

struct Call {
  std::size_t text;
  std::string key;
  int count;
  unsigned long number;  // NOLINT(google-runtime-int): the count as gettext wants it
};

const std::vector<Call>& Calls() {
  static const std::vector<Call> kMade = [] {
    RandomNumbers random(1);
    std::vector<Call> calls(kCalls);
    for (Call& call : calls) {
      call.text = static_cast<std::size_t>(random.Below(kTexts));
      call.key = KeyOf(call.text);
      // Half of the numbers are small, as in programs.
      call.count = static_cast<int>(random.Below(2) == 0 ? random.Below(6)
                                                         : random.Below(kLargestCount + 1));
      call.number = static_cast<decltype(call.number)>(call.count);
    }
    return calls;
  }();
  return kMade;
}

/// The entries of a language, with `number` and a blank in front of each form.
std::vector<PluralEntry> EntriesOf(const Language& language, const std::string& number) {
  std::vector<PluralEntry> entries(kTexts);
  for (std::size_t i = 0; i < kTexts; ++i) {
    entries[i].key = KeyOf(i);
    for (const Form& form : language.forms) {
      entries[i].forms.push_back(number + " " + form.text);
    }
  }
  return entries;
}

// ---- The subjects: each has a constructor from a language, Prepare for the calls before a round, and
// Write, which returns a text.

class KelmoView {
 public:
  explicit KelmoView(const Language& language) {
    std::string bytes = std::string(language.id) + "\n";
    for (std::size_t i = 0; i < kTexts; ++i) {
      for (const Form& form : language.forms) {
        bytes.append(KeyOf(i)).append(".").append(form.category);
        bytes.append(" {0} ").append(form.text).append("\n");
      }
      if (language.forms.back().category != std::string_view("other")) {  // for fractions
        bytes.append(KeyOf(i)).append(".other {0} ?\n");
      }
    }
    kelmo::Loader loader;
    loader.add_memory(bytes, "texts.txt");
    kelmo::ViewOptions options;
    options.languages = {language.id};
    options.numbers = kelmo::number_format_of_language("en");  // Arabic has digits of its own
    view_ = kelmo::View(loader.finish(), options);
  }

  void Prepare() const {}

 protected:
  kelmo::View view_;
};

/// kelmo_view_format.
class Kelmo : public KelmoView {
 public:
  using KelmoView::KelmoView;

  std::string_view Write(Buffer& buffer, const Call& call) const {
    const kelmo_argument count = kelmo_count_argument(call.count);
    std::size_t size = 0;
    ::kelmo_view_format(view_.handle(), call.key.c_str(), KELMO_ZERO_TERMINATED, &count, 1,
                        buffer.data(), buffer.size(), &size, nullptr);
    return {buffer.data(), size};
  }
};

/// tr of kelmo.hpp.
class KelmoTr : public KelmoView {
 public:
  using KelmoView::KelmoView;

  std::string Write(Buffer& /*buffer*/, const Call& call) const {
    return view_.tr(call.key, kelmo::count(call.count));
  }
};

#ifdef KELMO_HAS_GETTEXT
/// dngettext and snprintf.
class Gettext {
 public:
  explicit Gettext(const Language& language) : domain_(std::string("plural_") + language.id) {
    WriteGettextPlurals(ScratchFolder(), domain_, EntriesOf(language, "%d"), "de",
                        language.pluralForms);
    BindGettextDomain(ScratchFolder(), domain_);
  }

  void Prepare() const {}

  std::string_view Write(Buffer& buffer, const Call& call) const {
    const char* const key = call.key.c_str();
    const char* const format = ::dngettext(domain_.c_str(), key, key, call.number);
    const int size = std::snprintf(buffer.data(), buffer.size(), format, call.count);
    return {buffer.data(), static_cast<std::size_t>(size)};
  }

 private:
  std::string domain_;
};
#endif

#ifdef KELMO_HAS_BOOST_LOCALE
class BoostLocale {
 public:
  explicit BoostLocale(const Language& language) {
    const std::string domain = std::string("boost_plural_") + language.id;
    WriteGettextPlurals(ScratchFolder(), domain, EntriesOf(language, "{1}"), "de",
                        language.pluralForms);
    boost::locale::generator generator;
    generator.add_messages_path(ScratchFolder().string());
    generator.add_messages_domain(domain);
    locale_ = generator("de_DE.UTF-8");
  }

  void Prepare() const {}

  std::string Write(Buffer& /*buffer*/, const Call& call) const {
    const char* const key = call.key.c_str();
    const boost::locale::message text = boost::locale::translate(key, key, call.count);
    return (boost::locale::format(text) % call.count).str(locale_);
  }

 private:
  std::locale locale_;
};
#endif

#ifdef KELMO_HAS_ICU_MESSAGES
/// MessageFormat. It has no keys: it gets the pattern of the text.
class IcuMessages {
 public:
  explicit IcuMessages(const Language& language)
      : locale_((std::string(language.id) + "@numbers=latn").c_str()) {
    std::string pattern = "{0, plural,";
    for (const Form& form : language.forms) {
      pattern.append(" ").append(form.category).append(" {# ").append(form.text).append("}");
    }
    if (language.forms.back().category != std::string_view("other")) {
      pattern += " other {?}";
    }
    pattern_ = icu::UnicodeString::fromUTF8(pattern + "}");
  }

  void Prepare() const {}

 protected:
  icu::Locale locale_;
  icu::UnicodeString pattern_;

  static std::string_view Write(Buffer& buffer, const icu::MessageFormat& format,
                                const Call& call) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Formattable argument(static_cast<std::int32_t>(call.count));
    icu::FieldPosition ignored(icu::FieldPosition::DONT_CARE);
    icu::UnicodeString text;
    format.format(&argument, 1, text, ignored, status);
    Require(U_SUCCESS(status) != 0, "ICU has not formatted a text");
    icu::CheckedArrayByteSink sink(buffer.data(), static_cast<std::int32_t>(buffer.size()));
    text.toUTF8(sink);
    return {buffer.data(), static_cast<std::size_t>(sink.NumberOfBytesWritten())};
  }

  icu::MessageFormat Parse() const {
    UErrorCode status = U_ZERO_ERROR;
    icu::MessageFormat format(pattern_, locale_, status);
    Require(U_SUCCESS(status) != 0, "ICU has not parsed a pattern");
    return format;
  }
};

class IcuParsedOnce : public IcuMessages {
 public:
  explicit IcuParsedOnce(const Language& language)
      : IcuMessages(language), formats_(kTexts, Parse()) {}

  std::string_view Write(Buffer& buffer, const Call& call) const {
    return IcuMessages::Write(buffer, formats_[call.text], call);
  }

 private:
  std::vector<icu::MessageFormat> formats_;
};

class IcuParsing : public IcuMessages {
 public:
  using IcuMessages::IcuMessages;

  std::string_view Write(Buffer& buffer, const Call& call) const {
    return IcuMessages::Write(buffer, Parse(), call);
  }
};
#endif

#ifdef KELMO_HAS_QT
class QtTexts {
 public:
  explicit QtTexts(const Language& language)
      : catalogue_(std::make_unique<QtCatalogue>(EntriesOf(language, "%n"), language.id)) {}

  void Prepare() {
    static QtCatalogue* installed = nullptr;
    if (installed != nullptr) {
      installed->Remove();
    }
    installed = catalogue_.get();
    installed->Install();
  }
  static QString Write(Buffer& /*buffer*/, const Call& call) {
    return TranslateByQt(call.key.c_str(), call.count);
  }

 private:
  std::unique_ptr<QtCatalogue> catalogue_;
};

std::string BytesOf(const QString& text) { return text.toStdString(); }
#endif
std::string BytesOf(std::string_view text) { return std::string(text); }

// ---- Timing

/// The texts of all calls: each subject must give the same.
template <class Subject>
void Check(const Language& language, Subject& subject) {
  const Kelmo expected(language);
  for (const Call& call : Calls()) {
    Buffer buffer;
    const std::string text(expected.Write(buffer, call));
    Require(text.find('?') == std::string::npos && text.find('{') == std::string::npos,
            "a text has the wrong form");
    Require(BytesOf(subject.Write(buffer, call)) == text, "a subject gives another text");
  }
}

template <class Subject>
void Register(const std::string& name) {
  for (const Language& language : Languages()) {
    benchmark::RegisterBenchmark(
        ("plural/" + std::string(language.id) + "/" + name).c_str(),
        [&language, subject = std::shared_ptr<Subject>()](benchmark::State& state) mutable {
          const bool isNew = subject == nullptr;
          if (isNew) {
            subject = std::make_shared<Subject>(language);
          }
          subject->Prepare();
          if (isNew) {
            Check(language, *subject);
          }
          Buffer buffer;
          for ([[maybe_unused]] const auto iteration : state) {
            for (const Call& call : Calls()) {
              benchmark::DoNotOptimize(subject->Write(buffer, call));
            }
          }
          SetOperations(state, kCalls);
        });
  }
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  Register<Kelmo>("kelmo");
  Register<KelmoTr>("kelmo_tr");
#ifdef KELMO_HAS_GETTEXT
  Register<Gettext>("gettext");
#endif
#ifdef KELMO_HAS_BOOST_LOCALE
  Register<BoostLocale>("boost_locale");
#endif
#ifdef KELMO_HAS_ICU_MESSAGES
  Register<IcuParsedOnce>("icu");
  Register<IcuParsing>("icu_parsing");
#endif
#ifdef KELMO_HAS_QT
  Register<QtTexts>("qt");
#endif
  return RunBenchmarks(argc, argv);
}
