#include "dictionary/dictionary_reader.h"

#include <algorithm>
#include <optional>

#include "dictionary/dictionary_line.h"
#include "frame/line_reader.h"
#include "frame/utf8.h"

namespace KelmoLibs::Localize {

namespace {

// What `before` of the bytes of a source were worth, and as much for each of those that are left; and a
// little more, not to grow for the last ones.
std::size_t Expected(std::size_t worth, std::size_t before, std::size_t sourceBytes) noexcept {
  constexpr double kLittleMore = 1.0625;
  constexpr double kMost = 1e18;  // a source may say of itself what it likes
  const auto left = static_cast<double>(sourceBytes - std::min(before, sourceBytes));
  const double expected = left / static_cast<double>(before) * static_cast<double>(worth);
  return static_cast<std::size_t>(std::min(expected * kLittleMore, kMost));
}

}  // namespace

void ReadDictionary(ByteSource& source, CurrentLanguage& currentLanguage,
                    DictionaryTable& dictionaries, const DuplicateKeyHandler& onDuplicateKey) {
  LineReader lines(source);
  const std::optional<std::string_view> header = lines.Next();
  if (!header) {
    return;
  }
  const std::string_view id = SplitDictionaryLine(*header).key;
  if (CompareWithUtf8(currentLanguage.id, id) != 0) {
    currentLanguage = {DecodeUtf8(id), nullptr};
  }
  Dictionary& dictionary = dictionaries.try_emplace(currentLanguage.id).first->second;
  currentLanguage.dictionary = &dictionary;

  std::wstring declared;
  dictionary.ExpectNothing();
  const std::size_t olderEntries = dictionary.Count();
  const std::size_t olderBytes = dictionary.Bytes();
  std::size_t bytesRead = 0;
  while (const std::optional<std::string_view> line = lines.Next()) {
    bytesRead += line->size() + 1;
    if (line->empty()) {
      continue;
    }
    if (dictionary.IsFull()) {
      const std::size_t entries = dictionary.Count();
      const std::size_t size = source.SizeHint();
      dictionary.Reserve(entries + Expected(entries - olderEntries, bytesRead, size),
                         Expected(dictionary.Bytes() - olderBytes, bytesRead, size));
    }
    const auto [key, text] = SplitDictionaryLine(*line);
    if (!dictionary.Add(key, text)) {
      declared.resize(WideLength(key));
      DecodeUtf8(key, declared.data(), declared.size());
      onDuplicateKey(declared);
    }
  }
}

}  // namespace KelmoLibs::Localize
