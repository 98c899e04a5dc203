// Where a reader's bytes come from: a file, or in tests whatever a test makes up.
#pragma once

#include <cstddef>

namespace KelmoLibs::Localize {

class ByteSource {
 public:
  ByteSource() = default;
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;
  virtual ~ByteSource() = default;

  /// Puts the next bytes into `buffer`, at most `size` (1 or more), and returns how many. 0 is the
  /// end, also where reading fails: what cannot be read counts as not there. Not called again after
  /// it has returned 0.
  virtual std::size_t Read(char* buffer, std::size_t size) = 0;

  /// How many bytes the source is expected to give in all: sizes buffers, promises nothing.
  virtual std::size_t SizeHint() const noexcept = 0;
};

}  // namespace KelmoLibs::Localize
