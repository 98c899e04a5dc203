#include "frame/error_list.h"

#include <stdexcept>
#include <utility>

namespace KelmoLibs::Localize {

const wchar_t emptyText[1] = {L'\0'};

void ErrorList::Append(std::wstring text) {
  const auto [entry, added] = texts_.insert(std::move(text));
  if (!added) {
    return;
  }
  try {
    order_.push_back(&*entry);
  } catch (...) {
    texts_.erase(entry);
    throw;
  }
}

void ErrorList::Clear() noexcept {
  if (order_.empty()) {
    return;  // clearing the set takes as long as its longest list did, also when it is empty
  }
  order_.clear();
  texts_.clear();
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
    return order_.back()->c_str();
  }
  if (position == count) {
    // Not by vector::at: its text differs between libraries.
    throw std::out_of_range("invalid vector subscript");
  }
  return order_[position]->c_str();
}

}  // namespace KelmoLibs::Localize
