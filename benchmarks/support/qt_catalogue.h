// Texts as Qt has them.
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QTranslator>
#include <string>
#include <vector>

#include "benchmarks/support/catalogue.h"
#include "benchmarks/support/gettext_catalogue.h"

namespace benchmarks {

/// The context of all texts.
constexpr char kQtContext[] = "Texts";

/// A translator of QCoreApplication, from a file that lrelease has compiled.
class QtCatalogue {
 public:
  explicit QtCatalogue(const Catalogue& catalogue);

  /// Texts with a number: the forms of a language in the order of its rule.
  QtCatalogue(const std::vector<PluralEntry>& entries, const std::string& language);

  void Install();
  void Remove();

 private:
  void Load(const std::string& messages, const std::string& language);

  QTranslator translator_;
};

/// The text of a key; `number` chooses its form, and stands for %n.
inline QString TranslateByQt(const char* key, int number = -1) {
  return QCoreApplication::translate(kQtContext, key, nullptr, number);
}

}  // namespace benchmarks
