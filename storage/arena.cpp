#include "storage/arena.h"

#include <algorithm>

#include "platform/files.h"

namespace KelmoLibs::Localize {
namespace {

constexpr std::size_t kSmallestBlock = 4096;
constexpr std::size_t kLargestBlock = std::size_t{16} * 1024 * 1024;
// A block is that part of what is held, and what is left of one is let go when it is that part of it: at
// most an eighth of what is held is held in vain.
constexpr std::size_t kPart = 16;

constexpr std::size_t RoundUp(std::size_t bytes) noexcept {
  constexpr std::size_t kUnit = BlockStore::kAlignment;
  return (bytes + kUnit - 1) / kUnit * kUnit;
}

}  // namespace

std::byte* BlockStore::Take(std::size_t bytes) {
  const std::size_t rounded = RoundUp(bytes);
  if (rounded > left_) {
    const std::size_t usual = std::clamp(held_ / kPart, kSmallestBlock, kLargestBlock);
    if (left_ > usual / kPart) {
      return AddBlock(rounded);
    }
    const std::size_t size = std::max(usual, rounded);
    next_ = AddBlock(size);
    left_ = size;
  }
  std::byte* const taken = next_;
  next_ += rounded;
  left_ -= rounded;
  return taken;
}

void BlockStore::GiveBack(std::byte* taken, std::size_t bytes) noexcept {
  const std::size_t rounded = RoundUp(bytes);
  if (next_ == taken + rounded) {
    next_ = taken;
    left_ += rounded;
  } else {  // it has a block of its own
    blocks_.pop_back();
    held_ -= rounded;
  }
}

std::byte* BlockStore::AddBlock(std::size_t size) {
  // Not make_unique: it would fill with zeroes what is written anyway.
  blocks_.push_back(std::unique_ptr<std::byte[]>(new std::byte[size]));
  held_ += size;
  std::byte* const block = blocks_.back().get();
  PrepareMemory(block, size);
  return block;
}

}  // namespace KelmoLibs::Localize
