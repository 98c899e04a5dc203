// Memory for many small objects that stay at their addresses until all of them are freed together.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace KelmoLibs::Localize {

class Arena {
 public:
  static constexpr std::size_t kAlignment = 8;

  /// Called with each new block, before the block is written.
  using BlockCallback = void (*)(void* memory, std::size_t bytes);

  /// `onNewBlock` may be null.
  explicit Arena(BlockCallback onNewBlock) noexcept : onNewBlock_(onNewBlock) {}

  /// `bytes` of uninitialised memory, aligned to kAlignment, valid as long as the arena. Throws
  /// std::bad_alloc; the arena is then unchanged.
  std::byte* Allocate(std::size_t bytes);

  /// Frees the latest allocation: `bytes` at `memory`.
  void FreeLast(std::byte* memory, std::size_t bytes) noexcept;

  /// Frees all allocations.
  void Clear() noexcept { *this = Arena(onNewBlock_); }

 private:
  std::byte* AddBlock(std::size_t size);

  BlockCallback onNewBlock_;
  std::byte* next_ = nullptr;  // first free byte of the current block
  std::size_t remaining_ = 0;  // free bytes of the current block
  std::size_t allocated_ = 0;  // bytes in all blocks
  std::vector<std::unique_ptr<std::byte[]>> blocks_;
};

}  // namespace KelmoLibs::Localize
