#include "dictionary/lookup.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "frame/messages.h"
#include "storage/inlining.h"

namespace KelmoLibs::Localize {
namespace {

// On the way to a text that is there all calls are tail calls, which are jumps, but for the one that finds the end of a
// key of more than eight characters: a lookup of a short key is a third faster so. Functions on that way have four
// arguments, because Windows passes no more in registers.

KELMO_LOCALIZER_NEVER_INLINE const wchar_t* MissDictionary(const std::wstring& id,
                                                           ErrorList& errors) {
  errors.Append(NoCurrentDictionaryMessage(id));
  return emptyText;
}

KELMO_LOCALIZER_NEVER_INLINE const wchar_t* MissKey(const wchar_t* key, std::size_t length,
                                                    std::uint64_t hash, ErrorList& errors) {
  errors.Append(KeyNotFoundMessage({key, length}, hash));
  return emptyText;
}

template <class Texts>
KELMO_LOCALIZER_NEVER_INLINE const wchar_t* FindOtherKey(const wchar_t* key, std::size_t length,
                                                         std::uint64_t hash,
                                                         const Dictionary& dictionary,
                                                         ErrorList& errors) {
  const wchar_t* const text = dictionary.Find(Key<Texts>({key, length}, hash));
  return text != nullptr                                  ? text
         : errors.HasMissingKey<Texts>(key, length, hash) ? emptyText
                                                          : MissKey(key, length, hash, errors);
}

template <class Texts>
KELMO_LOCALIZER_NEVER_INLINE const wchar_t* FindKey(const wchar_t* key, std::size_t length,
                                                    const Dictionary& dictionary,
                                                    ErrorList& errors) {
  const Key<Texts> wanted(std::wstring_view(key, length));
  const wchar_t* const text = dictionary.FindFirstCandidate(wanted);
  return text != nullptr ? text
                         : FindOtherKey<Texts>(key, length, wanted.Hash(), dictionary, errors);
}

// Of a key that has more than eight characters.
KELMO_LOCALIZER_NEVER_INLINE const wchar_t* FindLongerKey(const wchar_t* key,
                                                          const Dictionary& dictionary,
                                                          ErrorList& errors) {
  constexpr std::size_t kSeen = ShortTexts::kLongest;
  const std::size_t length = kSeen + std::char_traits<wchar_t>::length(key + kSeen);
  return length <= MediumTexts::kLongest ? FindKey<MediumTexts>(key, length, dictionary, errors)
         : length <= LongTexts::kLongest ? FindKey<LongTexts>(key, length, dictionary, errors)
                                         : FindKey<TextsInSteps>(key, length, dictionary, errors);
}

}  // namespace

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

const wchar_t* FindText(const wchar_t* key, const CurrentLanguage& currentLanguage,
                        ErrorList& errors) {
  if (currentLanguage.dictionary == nullptr) {
    return MissDictionary(currentLanguage.id, errors);
  }
  const Dictionary& dictionary = *currentLanguage.dictionary;
  if (key == nullptr) {
    key = emptyText;
  }
  // The end of a short key is found here: a call would take longer than the rest.
  std::size_t length = 0;
  while (length <= ShortTexts::kLongest && key[length] != L'\0') {
    ++length;
  }
  return length <= TinyTexts::kLongest    ? FindKey<TinyTexts>(key, length, dictionary, errors)
         : length <= ShortTexts::kLongest ? FindKey<ShortTexts>(key, length, dictionary, errors)
                                          : FindLongerKey(key, dictionary, errors);
}

}  // namespace KelmoLibs::Localize
