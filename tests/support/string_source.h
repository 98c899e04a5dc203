// A byte source with given bytes, size of chunks and size hint. Fails a test that reads after the
// end.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "text/byte_source.h"

class StringSource final : public KelmoLibs::Localize::ByteSource {
 public:
  explicit StringSource(std::string bytes, std::size_t chunkBytes = SIZE_MAX,
                        std::optional<std::size_t> sizeHint = std::nullopt)
      : bytes_(std::move(bytes)),
        chunkBytes_(chunkBytes),
        sizeHint_(sizeHint.value_or(bytes_.size())) {}

  std::size_t Read(char* buffer, std::size_t size) override {
    EXPECT_FALSE(ended_) << "read again after the end";
    ++readCalls_;
    const std::size_t count = bytes_.copy(buffer, std::min(size, chunkBytes_), position_);
    position_ += count;
    ended_ = count == 0;
    return count;
  }

  std::size_t SizeHint() const noexcept override { return sizeHint_; }

  std::size_t BytesRead() const noexcept { return position_; }
  std::size_t ReadCalls() const noexcept { return readCalls_; }

 private:
  std::string bytes_;
  std::size_t chunkBytes_;
  std::size_t sizeHint_;
  std::size_t position_ = 0;
  std::size_t readCalls_ = 0;
  bool ended_ = false;
};
