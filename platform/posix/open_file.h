// Opens files without waiting for pipes.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace KelmoLibs::Localize {

inline int OpenUninterrupted(const char* path, int flags) noexcept {
  constexpr mode_t kReadAndWriteForAll = 0666;  // the process's mask removes some of it
  int descriptor = -1;
  do {
    descriptor = ::open(path, flags, kReadAndWriteForAll);
  } while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

/// O_NONBLOCK keeps the host from waiting if a pipe has replaced the file since its status was
/// read. With that flag the system also refuses a file on which another process holds a lease: then
/// the call waits for the lease.
inline int OpenWithoutWaitingForPipe(const char* path, int flags) noexcept {
  flags |= O_CLOEXEC | O_NOCTTY;
  const int descriptor = OpenUninterrupted(path, flags | O_NONBLOCK);
  return descriptor < 0 && errno == EWOULDBLOCK ? OpenUninterrupted(path, flags) : descriptor;
}

/// A descriptor of the regular file at `path`, or a negative number; errno then has the reason.
/// Does not open a pipe: that would take away the reader for which the writer of the pipe waits.
inline int OpenRegularFile(const char* path) noexcept {
  struct stat status = {};
  if (::stat(path, &status) != 0) {
    return -1;
  }
  if (!S_ISREG(status.st_mode)) {
    errno = S_ISDIR(status.st_mode) ? EISDIR : ENOTSUP;
    return -1;
  }
  return OpenWithoutWaitingForPipe(path, O_RDONLY);
}

}  // namespace KelmoLibs::Localize
