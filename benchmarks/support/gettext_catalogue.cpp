#include "benchmarks/support/gettext_catalogue.h"

#include <libintl.h>

#include <clocale>
#include <cstdlib>
#include <fstream>

#include "benchmarks/support/run_benchmarks.h"
#include "tests/support/encode_utf8.h"

namespace benchmarks {
namespace {

// The folder in which gettext looks for the catalogues of a language.
std::filesystem::path FolderOf(const std::filesystem::path& folder, const std::string& language) {
  std::filesystem::path catalogues = folder / language / "LC_MESSAGES";
  std::filesystem::create_directories(catalogues);
  return catalogues;
}

void Compile(const std::filesystem::path& source) {
  std::filesystem::path compiled = source;
  compiled.replace_extension(".mo");
  RunCommand({"msgfmt", "-o", compiled, source});
}

}  // namespace

void WriteGettextCatalogue(const std::filesystem::path& folder, const std::string& domain,
                           const Catalogue& catalogue, const std::string& language) {
  const std::filesystem::path source = FolderOf(folder, language) / (domain + ".po");
  std::ofstream stream(source);
  stream << "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n";
  for (const Entry& entry : catalogue) {
    stream << "\nmsgid \"" << EncodeUtf8(entry.key) << "\"\nmsgstr \"" << EncodeUtf8(entry.text)
           << "\"\n";
  }
  stream.close();
  Compile(source);
}

void WriteGettextPlurals(const std::filesystem::path& folder, const std::string& domain,
                         const std::vector<PluralEntry>& entries, const std::string& language,
                         const std::string& pluralForms) {
  const std::filesystem::path source = FolderOf(folder, language) / (domain + ".po");
  std::ofstream stream(source);
  stream << "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n\"Plural-Forms: "
         << pluralForms << "\\n\"\n";
  for (const PluralEntry& entry : entries) {
    stream << "\nmsgid \"" << entry.key << "\"\nmsgid_plural \"" << entry.key << "\"\n";
    for (std::size_t form = 0; form < entry.forms.size(); ++form) {
      stream << "msgstr[" << form << "] \"" << entry.forms[form] << "\"\n";
    }
  }
  stream.close();
  Compile(source);
}

void BindGettextDomain(const std::filesystem::path& folder, const std::string& domain) {
  // Under any locale but C, gettext takes the languages from this variable.
  ::setenv("LANGUAGE", "de:en:fr", 1);
  Require(std::setlocale(LC_MESSAGES, "C.UTF-8") != nullptr, "the locale C.UTF-8 is missing");
  ::bindtextdomain(domain.c_str(), folder.c_str());
  ::bind_textdomain_codeset(domain.c_str(), "UTF-8");
}

}  // namespace benchmarks
