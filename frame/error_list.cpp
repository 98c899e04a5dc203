#include "frame/error_list.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

namespace KelmoLibs::Localize {
namespace {

constexpr std::size_t kFewMessages = 16;

}  // namespace

const wchar_t emptyText[1] = {L'\0'};

void ErrorList::Append(const Message& message) {
  if (Has(message)) {
    return;
  }
  if (index_.IsFull()) {
    Grow();
  }
  if (order_.size() == order_.capacity()) {
    order_.reserve(std::max<std::size_t>(2 * order_.size(), 1));
  }
  const std::size_t length = LengthOf(message);
  const std::size_t bytes = sizeof(Listed) + (length + 1) * sizeof(wchar_t);
  std::byte* const memory = blocks_.Take(bytes);
  const Listed& listed = Put(message, length, memory);
  if (!index_.Insert(message.hash, &listed)) {
    try {
      homeless_.emplace(listed.Text(), &listed);
    } catch (...) {
      blocks_.GiveBack(memory, bytes);
      throw;
    }
  }
  order_.push_back(&listed);
}

// In the order of the list, which is that of their memory.
void ErrorList::Grow() {
  HashIndex<Listed> index(std::max(2 * index_.Count(), kFewMessages));
  HomelessTexts homeless;
  for (const Listed* const listed : order_) {
    if (!index.Insert(listed->hash, listed)) {
      homeless.emplace(listed->Text(), listed);
    }
  }
  index_ = std::move(index);
  homeless_ = std::move(homeless);
}

bool ErrorList::Has(const Message& message) const noexcept {
  const Listed* const listed = index_.Find(
      message.hash, [&message](const Listed& candidate) { return candidate.Is(message); },
      [this, &message] {
        const auto place = homeless_.find(message);
        return place != homeless_.end() ? place->second : nullptr;
      });
  return listed != nullptr;
}

const ErrorList::Listed& ErrorList::Put(const Message& message, std::size_t length,
                                        std::byte* memory) noexcept {
  // The block owns it. NOLINTNEXTLINE(cppcoreguidelines-owning-memory)
  auto* const listed = new (memory) Listed{message.hash, length, message.kind};
  auto* const text = reinterpret_cast<wchar_t*>(listed + 1);
  Write(message, text);
  text[length] = L'\0';
  return *listed;
}

void ErrorList::Clear() noexcept {
  order_ = std::vector<const Listed*>();
  index_ = HashIndex<Listed>();
  homeless_.clear();
  blocks_ = BlockStore();
}

std::int64_t ErrorList::Count() const noexcept { return static_cast<std::int64_t>(order_.size()); }

// That one index throws and the others do not is part of the interface; error_list_test.cpp pins
// each.
const wchar_t* ErrorList::At(std::int32_t index) const {
  const std::uint64_t count = order_.size();
  if (count == 0) {
    return emptyText;
  }
  // Every negative index becomes larger than any count.
  const auto position = static_cast<std::uint64_t>(static_cast<std::int64_t>(index));
  if (position > count) {
    return order_.back()->Text().data();
  }
  if (position == count) {
    // Not by vector::at: its text differs between libraries.
    throw std::out_of_range("invalid vector subscript");
  }
  return order_[position]->Text().data();
}

}  // namespace KelmoLibs::Localize
