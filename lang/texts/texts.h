// The texts of the tool in the language of its user. They are dictionaries of this library.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dictionary/dictionary.h"
#include "lang/texts/sentence.h"

namespace KelmoLibs::Lang {

/// The languages that have texts: "en", "de", "ru".
std::vector<std::string_view> TextLanguages();

class Texts {
 public:
  /// Reads the texts of `language`, and the English ones for keys that it lacks. An unknown
  /// language gives the English texts.
  explicit Texts(std::string_view language);

  /// The code of the language: "en".
  const std::string& Language() const noexcept { return language_; }

  /// The text of `key`; the key itself if there is none.
  std::string Find(std::string_view key) const;

  /// The text of the sentence: %1 and so on are replaced by its arguments, each once, without
  /// looking into them again. A key that ends with ".#" has several texts: the number in the first
  /// argument selects the plural form that takes the place of "#" ("one", "few", "many", "other").
  std::string Say(const Sentence& sentence) const;

 private:
  Localize::DictionaryTable dictionaries_;
  std::vector<const Localize::Dictionary*> chain_;
  std::string language_;
};

}  // namespace KelmoLibs::Lang
