// Loaded dictionaries: texts by key, and dictionaries by id.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "dictionary/key.h"
#include "platform/memory.h"
#include "storage/record_table.h"

namespace KelmoLibs::Localize {

/// Texts by key. An entry never changes and never moves: hosts hold pointers to the texts.
class Dictionary {
 public:
  /// The text of the key, or null. Allocates nothing.
  template <class LengthClass>
  KELMO_LOCALIZER_ALWAYS_INLINE const wchar_t* Find(
      const KeyQuery<LengthClass>& query) const noexcept {
    return TextOf(entries_.Find(query));
  }

  /// Like Find, but faster, and finds only more than nine of ten existing keys. If the result is
  /// null, call Find.
  template <class LengthClass>
  KELMO_LOCALIZER_ALWAYS_INLINE const wchar_t* FindFirstCandidate(
      const KeyQuery<LengthClass>& query) const noexcept {
    return TextOf(entries_.FindFirstCandidate(query));
  }

  /// Adds an entry for `key` and returns the memory for its text: the caller writes `length`
  /// characters and a terminating zero. Null if the dictionary has the key already. Throws
  /// std::bad_alloc; the dictionary then has the entries that it had.
  wchar_t* Add(std::wstring_view key, std::size_t length);

  /// Whether the next Add makes the table grow. A caller that can estimate the final count calls
  /// Grow first.
  bool IsFull() const noexcept { return entries_.IsFull(); }

  /// Increases the capacity to about `expectedEntries`, within the limits of RecordTable::Grow.
  void Grow(std::size_t expectedEntries) { entries_.Grow(expectedEntries); }

  std::size_t Count() const noexcept { return entries_.Count(); }

 private:
  // An entry is a stored key and, behind it, the zero-terminated text.
  static const wchar_t* TextOf(const StoredKey* key) noexcept {
    return key == nullptr ? nullptr
                          : reinterpret_cast<const wchar_t*>(
                                reinterpret_cast<const std::byte*>(key) + key->Bytes());
  }

  RecordTable<StoredKey> entries_{PrefaultPages};
};

/// Dictionaries by id. No dictionary is ever removed.
using DictionaryTable = std::map<std::wstring, Dictionary, std::less<>>;

/// The dictionary in which LANG looks up keys.
struct CurrentLanguage {
  std::wstring id;
  const Dictionary* dictionary = nullptr;  // null if no dictionary has that id
};

}  // namespace KelmoLibs::Localize
