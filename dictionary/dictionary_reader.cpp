#include "dictionary/dictionary_reader.h"

#include <optional>

#include "dictionary/dictionary_line.h"
#include "frame/line_reader.h"
#include "frame/utf8.h"

namespace KelmoLibs::Localize {

void ReadDictionary(ByteSource& source, std::wstring& currentLanguage,
                    DictionaryTable& dictionaries, const DuplicateKeyHandler& onDuplicateKey) {
  LineReader lines(source);
  const std::optional<std::string_view> header = lines.Next();
  if (!header) {
    return;
  }
  const std::string_view id = SplitDictionaryLine(*header).key;
  if (CompareWithUtf8(currentLanguage, id) != 0) {
    currentLanguage = DecodeUtf8(id);
  }
  Dictionary& dictionary = dictionaries.try_emplace(currentLanguage).first->second;

  while (const std::optional<std::string_view> line = lines.Next()) {
    if (line->empty()) {
      continue;
    }
    const auto [key, text] = SplitDictionaryLine(*line);
    const auto place = dictionary.lower_bound(Utf8Key{key});
    if (place != dictionary.end() && CompareWithUtf8(place->first, key) == 0) {
      onDuplicateKey(place->first);
    } else {
      dictionary.emplace_hint(place, DecodeUtf8(key), DecodeUtf8(text));
    }
  }
}

}  // namespace KelmoLibs::Localize
