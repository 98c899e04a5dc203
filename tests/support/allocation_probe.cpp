#include "tests/support/allocation_probe.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace allocation_probe {
namespace {

std::size_t count = 0;
std::size_t liveBytes = 0;
std::size_t peakBytes = 0;

std::size_t untilFailure = 0;  // 0: nothing fails
bool failingFromThenOn = false;
bool failureHappened = false;
std::size_t maxBytes = SIZE_MAX;

// In front of every block.
struct alignas(16) BlockHeader {
  std::size_t size;
  std::size_t unused;
};

bool MustFail() noexcept {
  if (untilFailure == 0) {
    return false;
  }
  if (untilFailure > 1) {
    --untilFailure;
    return false;
  }
  if (!failingFromThenOn) {
    untilFailure = 0;
  }
  failureHappened = true;
  return true;
}

void* Allocate(std::size_t size) {
  ++count;
  if (MustFail() || liveBytes + size > maxBytes) {
    throw std::bad_alloc();
  }
  auto* const header = static_cast<BlockHeader*>(std::malloc(sizeof(BlockHeader) + size));
  if (header == nullptr) {
    throw std::bad_alloc();
  }
  header->size = size;
  liveBytes += size;
  peakBytes = std::max(peakBytes, liveBytes);
  return header + 1;
}

void Free(void* block) noexcept {
  if (block != nullptr) {
    BlockHeader* const header = static_cast<BlockHeader*>(block) - 1;
    liveBytes -= header->size;
    std::free(header);
  }
}

}  // namespace

std::size_t Count() noexcept { return count; }
std::size_t LiveBytes() noexcept { return liveBytes; }
std::size_t PeakBytes() noexcept { return peakBytes; }
void ResetPeak() noexcept { peakBytes = liveBytes; }

FailAllocation::FailAllocation(std::size_t n, Failing failing) noexcept {
  untilFailure = n;
  failingFromThenOn = failing == Failing::kFromThenOn;
  failureHappened = false;
}

FailAllocation::~FailAllocation() { untilFailure = 0; }

bool FailAllocation::Happened() const noexcept { return failureHappened; }

LimitBytes::LimitBytes(std::size_t more) noexcept { maxBytes = liveBytes + more; }
LimitBytes::~LimitBytes() { maxBytes = SIZE_MAX; }

}  // namespace allocation_probe

void* operator new(std::size_t size) { return allocation_probe::Allocate(size); }
void* operator new[](std::size_t size) { return allocation_probe::Allocate(size); }
// As in the standard library. Without it, a sanitizer's version would allocate uncounted memory.
void* operator new(std::size_t size, const std::nothrow_t& /*mode*/) noexcept {
  try {
    return allocation_probe::Allocate(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void operator delete(void* block) noexcept { allocation_probe::Free(block); }
void operator delete[](void* block) noexcept { allocation_probe::Free(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { allocation_probe::Free(block); }
void operator delete[](void* block, std::size_t /*size*/) noexcept {
  allocation_probe::Free(block);
}
