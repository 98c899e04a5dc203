#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <utility>

#include "platform/posix/file_descriptor.h"
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
int OpenWithoutWaiting(const char* path, int flags) noexcept {
  flags |= O_CLOEXEC | O_NOCTTY;
  const int descriptor = OpenUninterrupted(path, flags | O_NONBLOCK);
  return descriptor < 0 && errno == EWOULDBLOCK ? OpenUninterrupted(path, flags) : descriptor;
}

// Does not open a pipe: that would take away the reader for which the pipe's writer waits.
int OpenForReading(const char* path) noexcept {
  struct stat status = {};
  if (::stat(path, &status) != 0 || !S_ISREG(status.st_mode)) {
    return -1;
  }
  return OpenWithoutWaiting(path, O_RDONLY);
}

// Does not open a pipe either: if its reader goes, SIGPIPE would end the host.
int OpenForWriting(const char* path) noexcept {
  struct stat status = {};
  if (::stat(path, &status) == 0 && S_ISFIFO(status.st_mode)) {
    return -1;
  }
  return OpenWithoutWaiting(path, O_WRONLY | O_CREAT | O_TRUNC);
}

// A pipe may have replaced the file since OpenForWriting read its status.
bool IsPipe(const FileDescriptor& descriptor) noexcept {
  struct stat status = {};
  return ::fstat(descriptor.Get(), &status) != 0 || S_ISFIFO(status.st_mode);
}

class FileSource final : public ByteSource {
 public:
  explicit FileSource(const char* path) noexcept : descriptor_(OpenForReading(path)) {
    struct stat status = {};
    if (descriptor_.IsOpen() && ::fstat(descriptor_.Get(), &status) == 0 &&
        S_ISREG(status.st_mode)) {
      isRegularFile_ = true;
      size_ = static_cast<std::size_t>(status.st_size);
    }
  }

  bool IsRegularFile() const noexcept { return isRegularFile_; }

  std::size_t Read(char* buffer, std::size_t size) override {
    ssize_t count = 0;
    do {
      count = ::read(descriptor_.Get(), buffer, size);
    } while (count < 0 && errno == EINTR);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
  }

  std::size_t SizeHint() const noexcept override { return size_; }

 private:
  FileDescriptor descriptor_;
  bool isRegularFile_ = false;
  std::size_t size_ = 0;
};

}  // namespace

std::unique_ptr<ByteSource> OpenTextFile(const std::wstring& path) {
  const std::optional<std::string> posixPath = PosixPath(path);
  if (!posixPath) {
    return nullptr;
  }
  auto file = std::make_unique<FileSource>(posixPath->c_str());
  if (!file->IsRegularFile()) {
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
  if (!descriptor.IsOpen() || IsPipe(descriptor)) {
    return;
  }
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor.Get(), bytes.data(), bytes.size());
    if (count > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
      break;
    }
  }
}

}  // namespace KelmoLibs::Localize
