#include "storage/arena.h"

#include <algorithm>

namespace KelmoLibs::Localize {
namespace {

constexpr std::size_t kMinBlock = 4096;
constexpr std::size_t kMaxBlock = std::size_t{16} * 1024 * 1024;
// A new block has 1/16 of all bytes so far, but at least kMinBlock and at most kMaxBlock. A rest of
// less than 1/16 of a block is abandoned for the next block. If the rest is larger, an allocation
// that does not fit gets a block of its own. So at most an eighth of the memory is wasted, and one
// smallest block.
constexpr std::size_t kWasteDivisor = 16;

constexpr std::size_t RoundUp(std::size_t bytes) noexcept {
  return (bytes + Arena::kAlignment - 1) / Arena::kAlignment * Arena::kAlignment;
}

}  // namespace

std::byte* Arena::Allocate(std::size_t bytes) {
  const std::size_t rounded = RoundUp(bytes);
  if (rounded > remaining_) {
    const std::size_t usualSize = std::clamp(allocated_ / kWasteDivisor, kMinBlock, kMaxBlock);
    if (remaining_ > usualSize / kWasteDivisor) {
      return AddBlock(rounded);
    }
    const std::size_t size = std::max(usualSize, rounded);
    next_ = AddBlock(size);
    remaining_ = size;
  }
  std::byte* const memory = next_;
  next_ += rounded;
  remaining_ -= rounded;
  return memory;
}

void Arena::FreeLast(std::byte* memory, std::size_t bytes) noexcept {
  const std::size_t rounded = RoundUp(bytes);
  if (next_ == memory + rounded) {
    next_ = memory;
    remaining_ += rounded;
  } else {  // it has a block of its own; heap blocks are never adjacent
    blocks_.pop_back();
    allocated_ -= rounded;
  }
}

std::byte* Arena::AddBlock(std::size_t size) {
  // Not make_unique, which would write zeroes first.
  blocks_.push_back(std::unique_ptr<std::byte[]>(new std::byte[size]));
  allocated_ += size;
  std::byte* const block = blocks_.back().get();
  if (onNewBlock_ != nullptr) {
    onNewBlock_(block, size);
  }
  return block;
}

}  // namespace KelmoLibs::Localize
