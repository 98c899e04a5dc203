#include "frame/error_list.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace KelmoLibs::Localize {
const wchar_t emptyText[1] = {L'\0'};

void ErrorList::Append(const Message& message) {
  if (table_.Find(MessageQuery{message}) != nullptr) {
    return;
  }
  // First, so that push_back cannot throw after table_.Add.
  if (order_.size() == order_.capacity()) {
    order_.reserve(std::max<std::size_t>(2 * order_.size(), 1));
  }
  const std::size_t length = TextLength(message);
  const std::size_t bytes = sizeof(MessageRecord) + (length + 1) * sizeof(wchar_t);
  order_.push_back(table_.Add(message.hash, bytes, [&message, length](std::byte* memory) {
    auto* const text = reinterpret_cast<wchar_t*>(memory + sizeof(MessageRecord));
    text[length] = L'\0';
    // The arena of the table owns it. NOLINTNEXTLINE(cppcoreguidelines-owning-memory)
    return new (memory) MessageRecord{FormatTo(text, message)};
  }));
}

void ErrorList::Clear() noexcept {
  order_ = std::vector<const MessageRecord*>();
  table_.Clear();
}

std::int64_t ErrorList::Count() const noexcept { return static_cast<std::int64_t>(order_.size()); }

// Which index throws and which does not is part of the interface and must stay
// (error_list_test.cpp).
const wchar_t* ErrorList::At(std::int32_t index) const {
  const std::uint64_t count = order_.size();
  if (count == 0) {
    return emptyText;
  }
  // A negative index becomes larger than every count.
  const auto position = static_cast<std::uint64_t>(static_cast<std::int64_t>(index));
  if (position > count) {
    return order_.back()->Text();
  }
  if (position == count) {
    // Not vector::at, whose text differs between standard libraries.
    throw std::out_of_range("invalid vector subscript");
  }
  return order_[position]->Text();
}

}  // namespace KelmoLibs::Localize
