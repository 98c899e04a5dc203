// The messages that the library keeps for its host. What is listed once is not listed again, and
// the list keeps the order in which its texts came.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "frame/messages.h"
#include "storage/inlining.h"
#include "storage/record_table.h"

namespace KelmoLibs::Localize {

/// The one empty text that stands for "nothing there": GetError on an empty list and LANG without a
/// text both return its address. An empty text of a dictionary has an address of its own.
extern const wchar_t emptyText[1];

class ErrorList {
 public:
  ErrorList() = default;
  ErrorList(const ErrorList&) = delete;  // order_ points into table_
  ErrorList& operator=(const ErrorList&) = delete;

  /// Appends `message` unless an equal one is listed. Amortised constant cost, O(log n) under hash flooding.
  /// A message that is listed takes no memory. When memory fails, the list is as before.
  void Append(const Message& message);

  /// Whether the message is listed that `key`, which is one of Texts, is not there; `hash` is HashText of it.
  template <class Texts>
  KELMO_LOCALIZER_ALWAYS_INLINE bool HasMissingKey(const wchar_t* key, std::size_t length,
                                                   std::uint64_t hash) const noexcept {
    return table_.Find(MissingKey<Texts>{key, length, hash}) != nullptr;
  }

  void Clear() noexcept;

  std::int64_t Count() const noexcept;

  /// Text at `index`, valid until the list changes. Any index outside the list gives the last text,
  /// except the one just past it: that throws std::out_of_range ("invalid vector subscript"). An
  /// empty list gives emptyText for all.
  const wchar_t* At(std::int32_t index) const;

 private:
  // A message that is listed: this, and behind it its text with a zero. The details stand in the text.
  struct Listed {
    Message message;

    const wchar_t* Text() const noexcept { return reinterpret_cast<const wchar_t*>(this + 1); }
    std::uint64_t Hash() const noexcept { return message.hash; }

    friend int Compare(const Listed& left, const Listed& right) noexcept {
      return Localize::Compare(left.message, right.message);
    }
    friend int Compare(const Listed& left, const Message& right) noexcept {
      return Localize::Compare(left.message, right);
    }
  };

  // What may be listed: any message, or the one that a key is not there.
  struct AnyMessage {
    const Message& message;

    std::uint64_t Hash() const noexcept { return message.hash; }
    bool Is(const Listed& listed) const noexcept {
      return listed.Hash() == message.hash && Compare(listed, message) == 0;
    }
    const Message& Ordered() const noexcept { return message; }
  };
  template <class Texts>
  struct MissingKey {
    const wchar_t* key;
    std::size_t length;
    std::uint64_t hash;

    std::uint64_t Hash() const noexcept { return hash; }
    KELMO_LOCALIZER_ALWAYS_INLINE bool Is(const Listed& listed) const noexcept {
      const auto& [kind, first, second, listedHash] = listed.message;
      return listedHash == hash && kind == Message::Kind::kKeyNotFound && first.size() == length &&
             Texts::AreEqual(key, first.data(), length);
    }
    Message Ordered() const noexcept { return KeyNotFoundMessage({key, length}, hash); }
  };

  RecordTable<Listed> table_;
  std::vector<const Listed*> order_;
};

}  // namespace KelmoLibs::Localize
