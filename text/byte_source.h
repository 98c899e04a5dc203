// The source of the bytes that a reader reads: a file, or bytes that a test makes up.
#pragma once

#include <cstddef>

namespace KelmoLibs::Localize {

class ByteSource {
 public:
  ByteSource() = default;
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;
  virtual ~ByteSource() = default;

  /// Reads the next bytes into `buffer`, at most `size`, and returns their number. 0 is the end of
  /// the source: a failed read counts as the end. Preconditions: `size` is not 0, and no call has
  /// returned 0 before.
  virtual std::size_t Read(char* buffer, std::size_t size) = 0;

  /// Estimate of all bytes of the source, for the sizes of buffers. It may be wrong.
  virtual std::size_t SizeHint() const noexcept = 0;
};

}  // namespace KelmoLibs::Localize
