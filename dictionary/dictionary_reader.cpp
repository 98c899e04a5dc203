#include "dictionary/dictionary_reader.h"

#include <algorithm>
#include <optional>

#include "dictionary/dictionary_line.h"
#include "dictionary/entry_estimate.h"
#include "text/line_reader.h"
#include "text/utf8.h"

namespace KelmoLibs::Localize {

namespace {

// Decodes `utf8` into `buffer`, which callers use again. The result is valid until then.
std::wstring_view Decode(std::string_view utf8, std::wstring& buffer) {
  if (buffer.size() <= utf8.size()) {
    buffer.resize(utf8.size() + 1);
  }
  return {buffer.data(), static_cast<std::size_t>(DecodeUtf8(utf8, buffer.data()) - buffer.data())};
}

// Adds an entry. False if the dictionary has the key already. A long text is decoded directly into
// the dictionary, so that memory never holds it twice. For a short text that would be slower: its
// length has to be counted before.
bool Add(std::wstring_view key, std::string_view utf8, std::wstring& buffer,
         Dictionary& dictionary) {
  constexpr std::size_t kLongText = 4096;
  const bool isLong = utf8.size() > kLongText;
  const std::wstring_view text = isLong ? std::wstring_view() : Decode(utf8, buffer);
  const std::size_t length = isLong ? WideLength(utf8) : text.size();
  wchar_t* const stored = dictionary.Add(key, length);
  if (stored == nullptr) {
    return false;
  }
  if (isLong) {
    DecodeUtf8(utf8, stored);
  } else {
    std::copy(text.begin(), text.end(), stored);
  }
  stored[length] = L'\0';
  return true;
}

}  // namespace

void ReadDictionary(ByteSource& source, CurrentLanguage& currentLanguage,
                    DictionaryTable& dictionaries, const DuplicateKeyHandler& onDuplicateKey) {
  LineReader lines(source);
  const std::optional<std::string_view> header = lines.Next();
  if (!header) {
    return;
  }
  std::wstring keyBuffer;
  std::wstring textBuffer;
  const std::wstring_view id = Decode(SplitDictionaryLine(*header).key, keyBuffer);
  if (id != currentLanguage.id) {
    currentLanguage = {std::wstring(id), nullptr};
  }
  Dictionary& dictionary = dictionaries.try_emplace(currentLanguage.id).first->second;
  currentLanguage.dictionary = &dictionary;

  const std::size_t olderEntries = dictionary.Count();
  std::size_t bytesRead = 0;
  while (const std::optional<std::string_view> line = lines.Next()) {
    bytesRead += line->size() + 1;
    if (line->empty()) {
      continue;
    }
    if (dictionary.IsFull()) {
      const std::size_t entries = dictionary.Count();
      dictionary.Grow(entries +
                      ExtrapolateCount(entries - olderEntries, bytesRead, source.SizeHint()));
    }
    const DictionaryLine fields = SplitDictionaryLine(*line);
    const std::wstring_view key = Decode(fields.key, keyBuffer);
    if (!Add(key, fields.text, textBuffer, dictionary)) {
      onDuplicateKey(key);
    }
  }
}

}  // namespace KelmoLibs::Localize
