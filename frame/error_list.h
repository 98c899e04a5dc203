// A list of messages. The host reads one, the errorList of library_state.h. Equal messages are in
// the list once, in the order of their first appearance.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "frame/messages.h"
#include "platform/memory.h"
#include "storage/inlining.h"
#include "storage/record_table.h"

namespace KelmoLibs::Localize {

/// The empty text that GetError returns for an empty list, and LANG for a missing text. Hosts may
/// compare its address: the empty text of a dictionary has another one.
extern const wchar_t emptyText[1];

class ErrorList {
 public:
  ErrorList() = default;
  ErrorList(const ErrorList&) = delete;  // order_ points into table_
  ErrorList& operator=(const ErrorList&) = delete;

  /// Appends `message`, unless an equal one is in the list. Amortised constant cost; O(log n) under
  /// hash flooding. Allocates nothing if the message is in the list. Throws std::bad_alloc; the
  /// list is then unchanged.
  void Append(const Message& message);

  /// Whether the list has the message that `key` is missing. Preconditions: `length` is in
  /// LengthClass (storage/text_hash.h); `hash` is HashText of the key.
  template <class LengthClass>
  KELMO_LOCALIZER_ALWAYS_INLINE bool HasMissingKey(const wchar_t* key, std::size_t length,
                                                   std::uint64_t hash) const noexcept {
    return table_.Find(MissingKeyQuery<LengthClass>{key, length, hash}) != nullptr;
  }

  void Clear() noexcept;

  std::int64_t Count() const noexcept;

  /// Text of the message at `index`, valid until Clear() (hosts are promised less). If `index` is
  /// Count(), throws std::out_of_range ("invalid vector subscript"); every other index outside the
  /// list gives the last text. If the list is empty, the result is emptyText for every index.
  const wchar_t* At(std::int32_t index) const;

 private:
  // A message of the list. Its zero-terminated text follows it in memory; the details are views
  // into that text.
  struct MessageRecord {
    Message message;

    const wchar_t* Text() const noexcept { return reinterpret_cast<const wchar_t*>(this + 1); }
    std::uint64_t Hash() const noexcept { return message.hash; }

    friend int Compare(const MessageRecord& left, const MessageRecord& right) noexcept {
      return Localize::Compare(left.message, right.message);
    }
    friend int Compare(const MessageRecord& left, const Message& right) noexcept {
      return Localize::Compare(left.message, right);
    }
  };

  // Queries of RecordTable: for any message, and for the message that a key is missing.
  struct MessageQuery {
    const Message& message;

    std::uint64_t Hash() const noexcept { return message.hash; }
    bool Matches(const MessageRecord& record) const noexcept {
      return record.Hash() == message.hash && Compare(record, message) == 0;
    }
    const Message& SortKey() const noexcept { return message; }
  };
  template <class LengthClass>
  struct MissingKeyQuery {
    const wchar_t* key;
    std::size_t length;
    std::uint64_t hash;

    std::uint64_t Hash() const noexcept { return hash; }
    KELMO_LOCALIZER_ALWAYS_INLINE bool Matches(const MessageRecord& record) const noexcept {
      const auto& [kind, first, second, recordHash] = record.message;
      return recordHash == hash && kind == Message::Kind::kKeyNotFound && first.size() == length &&
             LengthClass::AreEqual(key, first.data(), length);
    }
    Message SortKey() const noexcept { return KeyNotFoundMessage({key, length}, hash); }
  };

  RecordTable<MessageRecord> table_{PrefaultPages};
  std::vector<const MessageRecord*> order_;
};

}  // namespace KelmoLibs::Localize
