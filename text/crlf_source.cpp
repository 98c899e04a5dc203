#include "text/crlf_source.h"

#include <cstring>
#include <utility>

namespace KelmoLibs::Localize {

namespace {

// Removes each CR that an LF follows, and returns the number of bytes left. Most files have no such
// pair, or one in each line.
std::size_t CollapseCrLf(char* buffer, std::size_t size) noexcept {
  std::size_t kept = 0;
  std::size_t begin = 0;  // of the bytes that have not been moved
  const auto moveUpTo = [&](std::size_t end) {
    if (kept != begin) {
      std::memmove(buffer + kept, buffer + begin, end - begin);
    }
    kept += end - begin;
  };
  for (std::size_t from = 0; from < size;) {
    const void* const found = std::memchr(buffer + from, '\r', size - from);
    if (found == nullptr) {
      break;
    }
    from = static_cast<std::size_t>(static_cast<const char*>(found) - buffer) + 1;
    if (from < size && buffer[from] == '\n') {
      moveUpTo(from - 1);
      begin = from;
    }
  }
  moveUpTo(size);
  return kept;
}

}  // namespace

CrLfSource::CrLfSource(std::unique_ptr<ByteSource> bytes) noexcept : bytes_(std::move(bytes)) {}

std::size_t CrLfSource::SizeHint() const noexcept { return bytes_->SizeHint(); }

// Returns at least one byte until the end of the source. A CR at the end of the chunk is compared
// with the byte behind it, which may be the LF of its pair.
std::size_t CrLfSource::Read(char* buffer, std::size_t size) {
  std::size_t filled = 0;
  if (pendingByte_) {
    buffer[filled++] = *pendingByte_;
    pendingByte_.reset();
  }
  if (filled < size) {
    filled += ReadBytes(buffer + filled, size - filled);
  }
  const std::size_t kept = CollapseCrLf(buffer, filled);
  if (kept > 0 && buffer[kept - 1] == '\r') {
    char next = '\0';
    if (ReadBytes(&next, 1) == 1) {
      if (next == '\n') {
        buffer[kept - 1] = '\n';
      } else {
        pendingByte_ = next;
      }
    }
  }
  return kept;
}

std::size_t CrLfSource::ReadBytes(char* buffer, std::size_t size) {
  if (ended_) {
    return 0;
  }
  const std::size_t count = bytes_->Read(buffer, size);
  ended_ = count == 0;
  return count;
}

}  // namespace KelmoLibs::Localize
