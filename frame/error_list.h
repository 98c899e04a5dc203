// The messages that the library keeps for its host. What is listed once is not listed again, and
// the list keeps the order in which its texts came.
#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "frame/block_store.h"
#include "frame/hash_index.h"
#include "frame/messages.h"

namespace KelmoLibs::Localize {

/// The one empty text that stands for "nothing there": GetError on an empty list and LANG without a
/// text both return its address. An empty text of a dictionary has an address of its own.
extern const wchar_t emptyText[1];

class ErrorList {
 public:
  ErrorList() = default;
  ErrorList(const ErrorList&) = delete;  // order_ points into blocks_
  ErrorList& operator=(const ErrorList&) = delete;

  /// Appends `message` unless an equal one is listed. The cost does not depend on the list's length.
  /// A message that is listed takes no memory. When memory fails, the list is as before.
  void Append(const Message& message);

  void Clear() noexcept;

  std::int64_t Count() const noexcept;

  /// Text at `index`, valid until the list changes. Any index outside the list gives the last text,
  /// except the one just past it: that throws std::out_of_range ("invalid vector subscript"). An
  /// empty list gives emptyText for all.
  const wchar_t* At(std::int32_t index) const;

 private:
  // A text in its block, with a zero behind it, behind this.
  struct Listed {
    std::uint64_t hash;
    std::size_t length;
    Message::Kind kind;

    std::wstring_view Text() const noexcept {
      return {reinterpret_cast<const wchar_t*>(this + 1), length};
    }
    bool Is(const Message& message) const noexcept {
      return hash == message.hash && kind == message.kind && IsTextOf(message, Text());
    }
  };

  struct TextOrder {
    using is_transparent = void;

    bool operator()(std::wstring_view left, std::wstring_view right) const noexcept {
      return left < right;
    }
    bool operator()(const Message& left, std::wstring_view right) const noexcept {
      return Compare(left, right) < 0;
    }
    bool operator()(std::wstring_view left, const Message& right) const noexcept {
      return Compare(right, left) > 0;
    }
  };

  using HomelessTexts = std::map<std::wstring_view, const Listed*, TextOrder>;

  void Grow();
  bool Has(const Message& message) const noexcept;
  static const Listed& Put(const Message& message, std::size_t length, std::byte* memory) noexcept;

  BlockStore blocks_;
  std::vector<const Listed*> order_;
  HashIndex<Listed> index_;
  HomelessTexts homeless_;  // without a place in the index
};

}  // namespace KelmoLibs::Localize
