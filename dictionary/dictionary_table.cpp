#include "dictionary/dictionary_table.h"

#include "frame/messages.h"

namespace KelmoLibs::Localize {

std::int32_t SelectDictionary(std::wstring_view id, CurrentLanguage& currentLanguage,
                              const DictionaryTable& dictionaries, ErrorList& errors) {
  const auto dictionary = dictionaries.find(id);
  if (dictionary == dictionaries.end()) {
    errors.Append(UnknownDictionaryMessage(id));
    return -1;
  }
  currentLanguage.id = id;
  currentLanguage.dictionary = &dictionary->second;
  return 0;
}

const wchar_t* FindText(std::wstring_view key, const CurrentLanguage& currentLanguage,
                        ErrorList& errors) {
  if (currentLanguage.dictionary == nullptr) {
    errors.Append(NoCurrentDictionaryMessage(currentLanguage.id));
    return emptyText;
  }
  const auto [text, keyHash] = currentLanguage.dictionary->Find(key);
  if (text == nullptr) {
    errors.Append(KeyNotFoundMessage(key, keyHash));
    return emptyText;
  }
  return text;
}

}  // namespace KelmoLibs::Localize
