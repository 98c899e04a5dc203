#include "dictionary/dictionary_table.h"

#include "frame/messages.h"

namespace KelmoLibs::Localize {

std::int32_t SelectDictionary(std::wstring_view id, std::wstring& currentLanguage,
                              const DictionaryTable& dictionaries, ErrorList& errors) {
  if (dictionaries.find(id) == dictionaries.end()) {
    errors.Append(UnknownDictionaryMessage(id));
    return -1;
  }
  currentLanguage = id;
  return 0;
}

const wchar_t* FindText(std::wstring_view key, const std::wstring& currentLanguage,
                        const DictionaryTable& dictionaries, ErrorList& errors) {
  const auto dictionary = dictionaries.find(currentLanguage);
  if (dictionary == dictionaries.end()) {
    errors.Append(NoCurrentDictionaryMessage(currentLanguage));
    return emptyText;
  }
  const auto entry = dictionary->second.find(key);
  if (entry == dictionary->second.end()) {
    errors.Append(KeyNotFoundMessage(key));
    return emptyText;
  }
  return entry->second.c_str();
}

}  // namespace KelmoLibs::Localize
