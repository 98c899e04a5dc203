#include "dictionary/dictionary_reader.h"

#include <algorithm>
#include <optional>

#include "dictionary/dictionary_line.h"
#include "text/line_reader.h"
#include "text/utf8.h"

namespace KelmoLibs::Localize {

namespace {

// As many entries for each of the bytes that are left of a source as `entries` for those `before`; and a
// little more, not to grow for the last ones.
std::size_t Expected(std::size_t entries, std::size_t before, std::size_t sourceBytes) noexcept {
  constexpr double kLittleMore = 1.0625;
  constexpr double kMost = 1e18;  // a source may say of itself what it likes
  const auto left = static_cast<double>(sourceBytes - std::min(before, sourceBytes));
  const double expected = left / static_cast<double>(before) * static_cast<double>(entries);
  return static_cast<std::size_t>(std::min(expected * kLittleMore, kMost));
}

// The characters of `utf8`, in memory that is used again.
std::wstring_view Decoded(std::string_view utf8, std::wstring& memory) {
  if (memory.size() <= utf8.size()) {
    memory.resize(utf8.size() + 1);
  }
  return {memory.data(), static_cast<std::size_t>(DecodeUtf8(utf8, memory.data()) - memory.data())};
}

// Adds an entry unless the dictionary has its key: false then. A long text is decoded into its place, so that it is never
// held twice; that costs a short one a second look at each byte.
bool Add(std::wstring_view key, std::string_view utf8, std::wstring& memory,
         Dictionary& dictionary) {
  constexpr std::size_t kLongText = 4096;
  const bool isLong = utf8.size() > kLongText;
  const std::wstring_view text = isLong ? std::wstring_view() : Decoded(utf8, memory);
  const std::size_t length = isLong ? WideLength(utf8) : text.size();
  wchar_t* const place = dictionary.Add(key, length);
  if (place == nullptr) {
    return false;
  }
  if (isLong) {
    DecodeUtf8(utf8, place);
  } else {
    std::copy(text.begin(), text.end(), place);
  }
  place[length] = L'\0';
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
  std::wstring keyMemory;
  std::wstring textMemory;
  const std::wstring_view id = Decoded(SplitDictionaryLine(*header).key, keyMemory);
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
      dictionary.Reserve(entries + Expected(entries - olderEntries, bytesRead, source.SizeHint()));
    }
    const DictionaryLine fields = SplitDictionaryLine(*line);
    const std::wstring_view key = Decoded(fields.key, keyMemory);
    if (!Add(key, fields.text, textMemory, dictionary)) {
      onDuplicateKey(key);
    }
  }
}

}  // namespace KelmoLibs::Localize
