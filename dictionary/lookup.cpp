#include "dictionary/lookup.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "frame/messages.h"
#include "storage/inlining.h"

namespace KelmoLibs::Localize {
namespace {

// On the common path (the first candidate has the key, and the key has up to 32 characters) all
// calls are tail calls, which compile to jumps, but for the one that finds the end of a key of more
// than eight characters. This makes the lookup of a short key a third faster. The functions on this
// path have at most four arguments, because Windows passes no more than four in registers.

KELMO_LOCALIZER_NEVER_INLINE const wchar_t* ReportMissingDictionary(const std::wstring& id,
                                                                    ErrorList& errors) {
  errors.Append(NoCurrentDictionaryMessage(id));
  return emptyText;
}

KELMO_LOCALIZER_NEVER_INLINE const wchar_t* ReportMissingKey(const wchar_t* key, std::size_t length,
                                                             std::uint64_t hash,
                                                             ErrorList& errors) {
  errors.Append(KeyNotFoundMessage({key, length}, hash));
  return emptyText;
}

template <class LengthClass>
KELMO_LOCALIZER_NEVER_INLINE const wchar_t* FindAmongAllCandidates(const wchar_t* key,
                                                                   std::size_t length,
                                                                   std::uint64_t hash,
                                                                   const Dictionary& dictionary,
                                                                   ErrorList& errors) {
  const wchar_t* const text = dictionary.Find(KeyQuery<LengthClass>({key, length}, hash));
  return text != nullptr ? text
         : errors.HasMissingKey<LengthClass>(key, length, hash)
             ? emptyText
             : ReportMissingKey(key, length, hash, errors);
}

template <class LengthClass>
KELMO_LOCALIZER_NEVER_INLINE const wchar_t* FindKey(const wchar_t* key, std::size_t length,
                                                    const Dictionary& dictionary,
                                                    ErrorList& errors) {
  const KeyQuery<LengthClass> query(std::wstring_view(key, length));
  const wchar_t* const text = dictionary.FindFirstCandidate(query);
  return text != nullptr
             ? text
             : FindAmongAllCandidates<LengthClass>(key, length, query.Hash(), dictionary, errors);
}

// For keys of more than eight characters.
KELMO_LOCALIZER_NEVER_INLINE const wchar_t* FindLongerKey(const wchar_t* key,
                                                          const Dictionary& dictionary,
                                                          ErrorList& errors) {
  constexpr std::size_t kKnown = From4To8::kMaxLength;  // these characters are not zero
  const std::size_t length = kKnown + std::char_traits<wchar_t>::length(key + kKnown);
  return length <= From9To16::kMaxLength    ? FindKey<From9To16>(key, length, dictionary, errors)
         : length <= From17To32::kMaxLength ? FindKey<From17To32>(key, length, dictionary, errors)
                                            : FindKey<AtLeast16>(key, length, dictionary, errors);
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
    return ReportMissingDictionary(currentLanguage.id, errors);
  }
  const Dictionary& dictionary = *currentLanguage.dictionary;
  if (key == nullptr) {
    key = emptyText;
  }
  // Not by a function of the runtime: for a short key, the call would take longer than everything
  // else.
  std::size_t length = 0;
  while (length <= From4To8::kMaxLength && key[length] != L'\0') {
    ++length;
  }
  return length <= UpTo3::kMaxLength      ? FindKey<UpTo3>(key, length, dictionary, errors)
         : length <= From4To8::kMaxLength ? FindKey<From4To8>(key, length, dictionary, errors)
                                          : FindLongerKey(key, dictionary, errors);
}

}  // namespace KelmoLibs::Localize
