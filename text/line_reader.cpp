#include "text/line_reader.h"

#include <cstring>
#include <utility>

#include "text/utf8.h"

namespace KelmoLibs::Localize {
namespace {

constexpr std::size_t kChunkBytes = std::size_t{32} * 1024;
constexpr std::size_t kUnknownSizeBytes = 4096;  // some file systems report 0 for every file
constexpr std::size_t kLongestCharacter = 4;

// A buffer for the whole source has one byte more than the source, so that the end of the source is
// seen without growing the buffer. All other buffers are smaller than the source. So, if SizeHint
// is right, an old and a new buffer together never take more than twice the bytes of the source.
constexpr std::size_t FirstCapacity(std::size_t sourceBytes) noexcept {
  if (sourceBytes == 0) {
    return kUnknownSizeBytes;
  }
  return sourceBytes < 2 * kChunkBytes ? sourceBytes + 1 : kChunkBytes;
}

constexpr std::size_t NextCapacity(std::size_t capacity, std::size_t sourceBytes) noexcept {
  const bool sourceIsLarger = capacity > sourceBytes;  // than SizeHint said
  return sourceIsLarger || 2 * capacity < sourceBytes ? 2 * capacity : sourceBytes + 1;
}

}  // namespace

// Not make_unique, which would write zeroes first.
LineReader::LineReader(ByteSource& source)
    : source_(source), capacity_(FirstCapacity(source.SizeHint())), buffer_(new char[capacity_]) {}

std::optional<std::string_view> LineReader::Next() {
  for (;;) {
    const char* const from = buffer_.get() + scanned_;
    if (const void* const found = std::memchr(from, '\n', valid_ - scanned_)) {
      const auto length =
          static_cast<std::size_t>(static_cast<const char*>(found) - (buffer_.get() + begin_));
      const std::string_view line(buffer_.get() + begin_, length);
      begin_ += length + 1;
      scanned_ = begin_;
      return line;
    }
    scanned_ = valid_;
    if (!Fill()) {
      break;
    }
  }
  if (begin_ == valid_) {
    return std::nullopt;
  }
  const std::string_view lastLine(buffer_.get() + begin_, valid_ - begin_);
  begin_ = valid_;
  return lastLine;
}

// Reads one more chunk. False at the end of the text: the end of the source, or bytes that are not
// UTF-8.
bool LineReader::Fill() {
  if (ended_) {
    return false;
  }
  if (end_ == capacity_) {
    CompactOrGrow();
  }
  const std::size_t count = source_.Read(buffer_.get() + end_, capacity_ - end_);
  if (count == 0) {
    ended_ = true;
    return false;
  }
  end_ += count;
  valid_ += WellFormedUtf8Length({buffer_.get() + valid_, end_ - valid_});
  // Fewer bytes may be the start of a character, which the next chunk completes.
  ended_ = end_ - valid_ >= kLongestCharacter;
  return true;
}

// Moves the unread bytes to the front. If they fill the whole buffer, replaces it by a larger one.
void LineReader::CompactOrGrow() {
  const std::size_t kept = end_ - begin_;
  if (begin_ > 0) {
    std::memmove(buffer_.get(), buffer_.get() + begin_, kept);
  } else {
    const std::size_t grown = NextCapacity(capacity_, source_.SizeHint());
    std::unique_ptr<char[]> larger(new char[grown]);
    std::memcpy(larger.get(), buffer_.get(), kept);
    buffer_ = std::move(larger);
    capacity_ = grown;
  }
  scanned_ -= begin_;
  valid_ -= begin_;
  end_ = kept;
  begin_ = 0;
}

}  // namespace KelmoLibs::Localize
