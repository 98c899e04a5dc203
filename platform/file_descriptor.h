// A file descriptor of the C runtime, closed by its owner.
#pragma once

#include <cstddef>
#include <optional>

namespace KelmoLibs::Localize {

class FileDescriptor {
 public:
  /// Takes ownership of `value`. A negative value is no descriptor.
  explicit FileDescriptor(int value) noexcept : value_(value) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor();

  bool IsOpen() const noexcept { return value_ >= 0; }
  int Get() const noexcept { return value_; }

  /// Size in bytes. Nothing unless the descriptor is open and refers to a regular file.
  std::optional<std::size_t> RegularFileSize() const noexcept;

  /// Reads or writes at most `size` bytes (not 0). Returns their number, or 0 at the end of a
  /// file, and on failure. Precondition: the descriptor is open.
  std::size_t Read(char* buffer, std::size_t size) const noexcept;
  std::size_t Write(const char* bytes, std::size_t size) const noexcept;

  /// Writes all `size` bytes, or as many as the system accepts.
  void WriteAll(const char* bytes, std::size_t size) const noexcept {
    while (size > 0) {
      const std::size_t count = Write(bytes, size);
      if (count == 0) {
        return;
      }
      bytes += count;
      size -= count;
    }
  }

 private:
  int value_;
};

}  // namespace KelmoLibs::Localize
