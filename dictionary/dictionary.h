// What is loaded: texts by key, dictionaries by id.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "frame/block_store.h"
#include "frame/hash_index.h"
#include "frame/utf8.h"

namespace KelmoLibs::Localize {

/// Texts by key. What is added stays as it is and where it is: hosts hold pointers to the texts.
class Dictionary {
 public:
  struct Found {
    const wchar_t* text;    // null: no such key
    std::uint64_t keyHash;  // a hash of the key, the same whenever it is asked for
  };

  /// Takes no memory.
  Found Find(std::wstring_view key) const noexcept;

  /// Adds a text, both as UTF-8, unless the dictionary has its key: false then. When memory fails, the
  /// dictionary is as before.
  bool Add(std::string_view key, std::string_view text);

  /// To be grown by the next Add: who knows better what is to come calls Reserve.
  bool IsFull() const noexcept { return index_.IsFull(); }

  /// Makes room for `entries` in all, within reason: for twice to eight times as many as there are. Their
  /// texts and keys are going to take `bytes` more, as far as is known.
  void Reserve(std::size_t entries, std::size_t bytes);

  /// Nothing is known of what is to come: another file.
  void ExpectNothing() noexcept { blocks_.Expect(0); }

  std::size_t Count() const noexcept { return count_; }

  /// Bytes that keys and texts take.
  std::size_t Bytes() const noexcept { return blocks_.Taken(); }

 private:
  // An entry in its block: this, the bytes of the key, and, where wide characters may begin, those of
  // the text with a zero behind them.
  struct Entry {
    std::size_t keyBytes;

    std::string_view Key() const noexcept {
      return {reinterpret_cast<const char*>(this + 1), keyBytes};
    }
    const wchar_t* Text() const noexcept {
      return reinterpret_cast<const wchar_t*>(reinterpret_cast<const char*>(this) +
                                              TextPlace(keyBytes));
    }
    static constexpr std::size_t TextPlace(std::size_t keyBytes) noexcept {
      return sizeof(Entry) + (keyBytes + sizeof(wchar_t) - 1) / sizeof(wchar_t) * sizeof(wchar_t);
    }
  };

  struct KeyOrder {
    using is_transparent = void;

    bool operator()(std::string_view left, std::string_view right) const noexcept {
      return left < right;
    }
    bool operator()(std::string_view left, std::wstring_view right) const noexcept {
      return CompareWithUtf8(right, left) > 0;
    }
    bool operator()(std::wstring_view left, std::string_view right) const noexcept {
      return CompareWithUtf8(left, right) < 0;
    }
  };

  Found FindAny(std::wstring_view key) const noexcept;
  template <class AnyText>
  const Entry* FindHomeless(AnyText key) const noexcept;
  bool Has(std::string_view key, std::uint64_t hash) const noexcept;
  static const Entry& Write(std::string_view key, std::string_view text, std::size_t textLength,
                            std::byte* memory) noexcept;

  std::size_t count_ = 0;
  BlockStore blocks_;
  HashIndex<Entry> index_;
  // Keys that are not hashed, and those that found no place in the index, of which only somebody who
  // means harm makes many.
  std::map<std::string_view, const Entry*, KeyOrder> homeless_;
};

/// Dictionaries by id. None is ever removed.
using DictionaryTable = std::map<std::wstring, Dictionary, std::less<>>;

/// Which dictionary LANG answers from.
struct CurrentLanguage {
  std::wstring id;
  const Dictionary* dictionary = nullptr;  // null: none has that id
};

}  // namespace KelmoLibs::Localize
