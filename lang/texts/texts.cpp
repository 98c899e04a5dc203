#include "lang/texts/texts.h"

#include <algorithm>
#include <cstddef>

#include "dictionary/dictionary_reader.h"
#include "lang/reading/windows_text.h"
#include "lang/texts/embedded_texts.h"
#include "lang/unicode/utf8_from_wide.h"
#include "text/utf8.h"

namespace KelmoLibs::Lang {
namespace {

using Localize::AnyLength;
using Localize::CurrentLanguage;
using Localize::Dictionary;
using Localize::KeyQuery;

// The plural forms of the languages that the tool speaks.
std::string_view PluralForm(std::string_view language, const std::string& number) {
  if (language == "ru" && !number.empty()) {
    constexpr std::size_t kTeens = 2;
    const char last = number.back();
    const bool isTeen = number.size() >= kTeens && number[number.size() - kTeens] == '1';
    if (isTeen || last == '0' || last > '4') {
      return "many";
    }
    return last == '1' ? "one" : "few";
  }
  return number == "1" ? "one" : "other";
}

}  // namespace

std::vector<std::string_view> TextLanguages() {
  std::vector<std::string_view> languages;
  for (const EmbeddedText& text : EmbeddedTexts()) {
    languages.push_back(text.language);
  }
  return languages;
}

Texts::Texts(std::string_view language) : language_("en") {
  const auto read = [this](const EmbeddedText& text) {
    CurrentLanguage current;
    WindowsText source(text.bytes);
    ReadDictionary(source, current, dictionaries_, [](std::wstring_view) {});
    chain_.push_back(current.dictionary);
  };
  for (const EmbeddedText& text : EmbeddedTexts()) {
    if (text.language == language && language != "en") {
      read(text);
      language_ = language;
    }
  }
  for (const EmbeddedText& text : EmbeddedTexts()) {
    if (text.language == "en") {
      read(text);
    }
  }
}

std::string Texts::Find(std::string_view key) const {
  const std::wstring wide = Localize::DecodeUtf8(key);
  for (const Dictionary* const dictionary : chain_) {
    if (const wchar_t* const text = dictionary->Find(KeyQuery<AnyLength>(wide))) {
      return Utf8FromWide(text);
    }
  }
  return std::string(key);
}

std::string Texts::Say(const Sentence& sentence) const {
  std::string key = sentence.key;
  if (!key.empty() && key.back() == '#') {
    key.pop_back();
    key += sentence.arguments.empty() ? "other" : PluralForm(language_, sentence.arguments.front());
  }
  const std::string text = Find(key);
  std::string said;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::size_t digit = i + 1;
    if (text[i] == '%' && digit < text.size() && text[digit] >= '1' && text[digit] <= '9') {
      const auto index = static_cast<std::size_t>(text[digit] - '1');
      if (index < sentence.arguments.size()) {
        said += sentence.arguments[index];
        ++i;
        continue;
      }
    }
    said += text[i];
  }
  return said;
}

}  // namespace KelmoLibs::Lang
