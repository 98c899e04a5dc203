#include "frame/crlf_source.h"

#include <utility>

namespace KelmoLibs::Localize {

CrLfSource::CrLfSource(std::unique_ptr<ByteSource> bytes) noexcept : bytes_(std::move(bytes)) {}

std::size_t CrLfSource::SizeHint() const noexcept { return bytes_->SizeHint(); }

// Hands out at least one byte until the end: a pair that the end of a piece cuts in two is
// completed here.
std::size_t CrLfSource::Read(char* buffer, std::size_t size) {
  std::size_t filled = 0;
  if (ahead_) {
    buffer[filled++] = *ahead_;
    ahead_.reset();
  }
  if (filled < size) {
    filled += ReadBytes(buffer + filled, size - filled);
  }
  std::size_t kept = 0;
  for (std::size_t i = 0; i < filled; ++i) {
    const bool pair = buffer[i] == '\r' && i + 1 < filled && buffer[i + 1] == '\n';
    if (!pair) {
      buffer[kept++] = buffer[i];
    }
  }
  if (kept > 0 && buffer[kept - 1] == '\r') {
    char next = '\0';
    if (ReadBytes(&next, 1) == 1) {
      if (next == '\n') {
        buffer[kept - 1] = '\n';
      } else {
        ahead_ = next;
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
