#include "benchmarks/support/gettext_catalogue.h"

#include <fstream>

#include "benchmarks/support/run_benchmarks.h"
#include "tests/support/encode_utf8.h"

namespace benchmarks {

void WriteGettextCatalogue(const std::filesystem::path& folder, const std::string& domain,
                           const Catalogue& catalogue) {
  const std::filesystem::path catalogues = folder / "de" / "LC_MESSAGES";
  std::filesystem::create_directories(catalogues);
  const std::string source = (catalogues / (domain + ".po")).string();
  std::ofstream stream(source);
  stream << "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n";
  for (const Entry& entry : catalogue) {
    stream << "\nmsgid \"" << EncodeUtf8(entry.key) << "\"\nmsgstr \"" << EncodeUtf8(entry.text)
           << "\"\n";
  }
  stream.close();
  RunCommand({"msgfmt", "-o", catalogues / (domain + ".mo"), source});
}

}  // namespace benchmarks
