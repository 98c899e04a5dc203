#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <optional>
#include <utility>

#include "platform/file_descriptor.h"
#include "platform/file_source.h"
#include "text/crlf_source.h"
#include "text/posix_path.h"

namespace KelmoLibs::Localize {
namespace {

constexpr mode_t kReadAndWriteForAll = 0666;  // the process's mask removes some of it

int OpenUninterrupted(const char* path, int flags) noexcept {
  int descriptor = -1;
  do {
    descriptor = ::open(path, flags, kReadAndWriteForAll);
  } while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

// O_NONBLOCK keeps the host from waiting if a pipe has replaced the file since its status was read.
// With that flag the system also refuses a file on which another process holds a lease: then the
// call waits for the lease.
int OpenWithoutWaitingForPipe(const char* path, int flags) noexcept {
  flags |= O_CLOEXEC | O_NOCTTY;
  const int descriptor = OpenUninterrupted(path, flags | O_NONBLOCK);
  return descriptor < 0 && errno == EWOULDBLOCK ? OpenUninterrupted(path, flags) : descriptor;
}

// Does not open a pipe: that would take away the reader for which the writer of the pipe waits.
int OpenForReading(const char* path) noexcept {
  struct stat status = {};
  if (::stat(path, &status) != 0 || !S_ISREG(status.st_mode)) {
    return -1;
  }
  return OpenWithoutWaitingForPipe(path, O_RDONLY);
}

// Does not open a pipe either: if its reader goes, SIGPIPE would end the host.
int OpenForWriting(const char* path) noexcept {
  struct stat status = {};
  if (::stat(path, &status) == 0 && S_ISFIFO(status.st_mode)) {
    return -1;
  }
  return OpenWithoutWaitingForPipe(path, O_WRONLY | O_CREAT | O_TRUNC);
}

// A pipe may have replaced the file since OpenForWriting read its status.
bool MayBePipe(const FileDescriptor& descriptor) noexcept {
  struct stat status = {};
  return ::fstat(descriptor.Get(), &status) != 0 || S_ISFIFO(status.st_mode);
}

}  // namespace

std::unique_ptr<ByteSource> OpenTextFile(const std::wstring& path) {
  const std::optional<std::string> posixPath = PosixPath(path);
  if (!posixPath) {
    return nullptr;
  }
  auto file = std::make_unique<FileSource>();
  if (!file->Open(OpenForReading(posixPath->c_str()))) {
    return nullptr;
  }
  return std::make_unique<CrLfSource>(std::move(file));
}

void WriteWholeFile(const std::wstring& path, std::string_view bytes) {
  const std::optional<std::string> posixPath = PosixPath(path);
  if (!posixPath) {
    return;
  }
  const FileDescriptor descriptor(OpenForWriting(posixPath->c_str()));
  if (descriptor.IsOpen() && !MayBePipe(descriptor)) {
    descriptor.WriteAll(bytes.data(), bytes.size());
  }
}

}  // namespace KelmoLibs::Localize
