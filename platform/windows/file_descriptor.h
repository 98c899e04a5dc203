// A file descriptor of the C runtime that is closed when its owner goes.
#pragma once

#include <io.h>

namespace KelmoLibs::Localize {

class FileDescriptor {
 public:
  /// Takes ownership of `value`; a negative one is no descriptor.
  explicit FileDescriptor(int value) noexcept : value_(value) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (IsOpen()) {
      ::_close(value_);
    }
  }

  bool IsOpen() const noexcept { return value_ >= 0; }
  int Get() const noexcept { return value_; }

 private:
  int value_;
};

}  // namespace KelmoLibs::Localize
