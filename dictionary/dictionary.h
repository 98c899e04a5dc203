// What is loaded: texts by key, dictionaries by id.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "dictionary/key.h"
#include "storage/record_table.h"

namespace KelmoLibs::Localize {

/// Texts by key. What is added stays as it is and where it is: hosts hold pointers to the texts.
class Dictionary {
 public:
  /// The text of `key`, or null. Takes no memory.
  template <class Texts>
  KELMO_LOCALIZER_ALWAYS_INLINE const wchar_t* Find(const Key<Texts>& key) const noexcept {
    return TextOf(entries_.Find(key));
  }

  /// The same for more than nine keys of ten that are there. Null does not mean that the key is not there: Find tells.
  template <class Texts>
  KELMO_LOCALIZER_ALWAYS_INLINE const wchar_t* FindFirstCandidate(
      const Key<Texts>& key) const noexcept {
    return TextOf(entries_.FindFirstCandidate(key));
  }

  /// Adds an entry and returns the place of its text, which the caller writes: `length` characters and a zero. Null
  /// if the dictionary has the key. When memory fails, the dictionary has what it had.
  wchar_t* Add(std::wstring_view key, std::size_t length);

  /// The next Add makes room for twice as many. A caller that knows how many are to come calls Reserve before.
  bool IsFull() const noexcept { return entries_.IsFull(); }

  /// Makes room for `entries` in all, within reason.
  void Reserve(std::size_t entries) { entries_.Reserve(entries); }

  std::size_t Count() const noexcept { return entries_.Count(); }

 private:
  // An entry is its key and, behind that, the text with a zero.
  static const wchar_t* TextOf(const StoredKey* key) noexcept {
    return key == nullptr ? nullptr
                          : reinterpret_cast<const wchar_t*>(
                                reinterpret_cast<const std::byte*>(key) + key->Bytes());
  }

  RecordTable<StoredKey> entries_;
};

/// Dictionaries by id. None is ever removed.
using DictionaryTable = std::map<std::wstring, Dictionary, std::less<>>;

/// Which dictionary LANG answers from.
struct CurrentLanguage {
  std::wstring id;
  const Dictionary* dictionary = nullptr;  // null: none has that id
};

}  // namespace KelmoLibs::Localize
