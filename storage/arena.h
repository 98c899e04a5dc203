// Memory for many small things that stay where they are until all of them go.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace KelmoLibs::Localize {

class BlockStore {
 public:
  static constexpr std::size_t kAlignment = 8;

  /// `bytes`, uninitialised and aligned to kAlignment, as long as the store. When memory fails, the
  /// store is as before.
  std::byte* Take(std::size_t bytes);

  /// Gives back what was taken last.
  void GiveBack(std::byte* taken, std::size_t bytes) noexcept;

 private:
  std::byte* AddBlock(std::size_t size);

  std::byte* next_ = nullptr;
  std::size_t left_ = 0;
  std::size_t held_ = 0;  // bytes in all blocks
  std::vector<std::unique_ptr<std::byte[]>> blocks_;
};

}  // namespace KelmoLibs::Localize
