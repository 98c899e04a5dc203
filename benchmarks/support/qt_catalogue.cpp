#include "benchmarks/support/qt_catalogue.h"

#include <fstream>

#include "benchmarks/support/run_benchmarks.h"
#include "benchmarks/support/scratch_folder.h"
#include "tests/support/encode_utf8.h"

namespace benchmarks {
namespace {

// Translators need an application.
void MakeApplication() {
  static int argc = 1;
  static char name[] = "benchmark";
  static char* argv[] = {name, nullptr};
  static const QCoreApplication kApplication(argc, argv);
}

}  // namespace

QtCatalogue::QtCatalogue(const Catalogue& catalogue) {
  std::string messages;
  for (const Entry& entry : catalogue) {
    messages.append("<message><source>").append(EncodeUtf8(entry.key));
    messages.append("</source><translation>").append(EncodeUtf8(entry.text));
    messages.append("</translation></message>\n");
  }
  Load(messages, "de");
}

QtCatalogue::QtCatalogue(const std::vector<PluralEntry>& entries, const std::string& language) {
  std::string messages;
  for (const PluralEntry& entry : entries) {
    messages.append("<message numerus=\"yes\"><source>").append(entry.key);
    messages.append("</source><translation>");
    for (const std::string& form : entry.forms) {
      messages.append("<numerusform>").append(form).append("</numerusform>");
    }
    messages.append("</translation></message>\n");
  }
  Load(messages, language);
}

void QtCatalogue::Install() {
  Require(QCoreApplication::installTranslator(&translator_), "a translator was not installed");
}

void QtCatalogue::Remove() {
  Require(QCoreApplication::removeTranslator(&translator_), "a translator was not removed");
}

void QtCatalogue::Load(const std::string& messages, const std::string& language) {
  MakeApplication();
  static int number = 0;  // Qt maps the file as long as the translator lives
  const std::string name = "qt_" + std::to_string(number++);
  const std::string source = ScratchFolder() / (name + ".ts");
  const std::string compiled = ScratchFolder() / (name + ".qm");
  std::ofstream stream(source);
  stream << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n<TS version=\"2.1\" "
            "language=\""
         << language << "\">\n<context><name>" << kQtContext << "</name>\n"
         << messages << "</context>\n</TS>\n";
  stream.close();
  RunCommand({KELMO_LRELEASE, "-silent", source, "-qm", compiled});
  Require(translator_.load(QString::fromStdString(compiled)), "a translator was not loaded");
}

}  // namespace benchmarks
