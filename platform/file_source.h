// The bytes of a regular file.
#pragma once

#include <optional>

#include "platform/file_descriptor.h"
#include "text/byte_source.h"

namespace KelmoLibs::Localize {

class FileSource final : public ByteSource {
 public:
  /// Takes ownership of `descriptor`. False unless it is open and refers to a regular file.
  /// Not a constructor, so that the memory of the object is allocated before the file is opened: a
  /// failure to allocate would leak the descriptor.
  bool Open(int descriptor) noexcept {
    size_ = descriptor_.emplace(descriptor).RegularFileSize();
    return size_.has_value();
  }

  /// Precondition: Open has returned true.
  std::size_t Read(char* buffer, std::size_t size) override {
    return descriptor_->Read(buffer, size);
  }
  std::size_t SizeHint() const noexcept override { return *size_; }

 private:
  std::optional<FileDescriptor> descriptor_;
  std::optional<std::size_t> size_;
};

}  // namespace KelmoLibs::Localize
