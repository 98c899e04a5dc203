#include "platform/file_descriptor.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace KelmoLibs::Localize {
namespace {

// The bytes that a system call has read or written; 0 on failure. Repeats a call that a signal has
// interrupted.
template <class Call>
std::size_t CountUninterrupted(Call call) noexcept {
  ssize_t count = 0;
  do {
    count = call();
  } while (count < 0 && errno == EINTR);
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

}  // namespace

FileDescriptor::~FileDescriptor() {
  if (IsOpen()) {
    ::close(value_);
  }
}

std::optional<std::size_t> FileDescriptor::RegularFileSize() const noexcept {
  struct stat status = {};
  if (!IsOpen() || ::fstat(value_, &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(status.st_size);
}

std::size_t FileDescriptor::Read(char* buffer, std::size_t size) const noexcept {
  return CountUninterrupted([=] { return ::read(value_, buffer, size); });
}

std::size_t FileDescriptor::Write(const char* bytes, std::size_t size) const noexcept {
  return CountUninterrupted([=] { return ::write(value_, bytes, size); });
}

}  // namespace KelmoLibs::Localize
