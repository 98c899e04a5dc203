#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <clocale>
#include <iomanip>
#include <locale>
#include <optional>
#include <sstream>
#include <utility>

#include "platform/user_locale.h"
#include "text/crlf_source.h"
#include "text/posix_path.h"

namespace KelmoLibs::Localize {
namespace {

constexpr mode_t kReadAndWriteForAll = 0666;  // less what the process's mask takes away

int OpenUninterrupted(const char* path, int flags) noexcept {
  int descriptor = -1;
  do {
    descriptor = ::open(path, flags, kReadAndWriteForAll);
  } while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

// O_NONBLOCK keeps the host from waiting, should a pipe have taken the file's place since it was
// looked at. It also refuses a file that another process holds a lease on, which is worth the wait.
int OpenWithoutWaiting(const char* path, int flags) noexcept {
  flags |= O_CLOEXEC | O_NOCTTY;
  const int descriptor = OpenUninterrupted(path, flags | O_NONBLOCK);
  return descriptor < 0 && errno == EWOULDBLOCK ? OpenUninterrupted(path, flags) : descriptor;
}

// A pipe is not opened at all: that would take the reader away that its writer waits for.
int OpenForReading(const char* path) noexcept {
  struct stat status = {};
  if (::stat(path, &status) != 0 || !S_ISREG(status.st_mode)) {
    return -1;
  }
  return OpenWithoutWaiting(path, O_RDONLY);
}

// Nor for writing, and one that has taken the file's place meanwhile is let go: whoever reads it may
// be gone before it is written, which ends the host.
int OpenForWriting(const char* path) noexcept {
  struct stat status = {};
  if (::stat(path, &status) == 0 && S_ISFIFO(status.st_mode)) {
    return -1;
  }
  const int descriptor = OpenWithoutWaiting(path, O_WRONLY | O_CREAT | O_TRUNC);
  if (descriptor >= 0 && (::fstat(descriptor, &status) != 0 || S_ISFIFO(status.st_mode))) {
    ::close(descriptor);
    return -1;
  }
  return descriptor;
}

class FileBytes final : public ByteSource {
 public:
  explicit FileBytes(const char* path) noexcept : descriptor_(OpenForReading(path)) {
    struct stat status = {};
    if (descriptor_ >= 0 && ::fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode)) {
      isRegularFile_ = true;
      size_ = static_cast<std::size_t>(status.st_size);
    }
  }

  ~FileBytes() override {
    if (descriptor_ >= 0) {
      ::close(descriptor_);
    }
  }

  bool IsRegularFile() const noexcept { return isRegularFile_; }

  std::size_t Read(char* buffer, std::size_t size) override {
    ssize_t count = 0;
    do {
      count = ::read(descriptor_, buffer, size);
    } while (count < 0 && errno == EINTR);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
  }

  std::size_t SizeHint() const noexcept override { return size_; }

 private:
  int descriptor_;
  bool isRegularFile_ = false;
  std::size_t size_ = 0;
};

}  // namespace

std::unique_ptr<ByteSource> OpenTextFile(const std::wstring& path) {
  const std::optional<std::string> posixPath = PosixPath(path);
  if (!posixPath) {
    return nullptr;
  }
  auto file = std::make_unique<FileBytes>(posixPath->c_str());
  if (!file->IsRegularFile()) {
    return nullptr;
  }
  return std::make_unique<CrLfSource>(std::move(file));
}

void WriteWholeFile(const std::wstring& path, std::string_view bytes) {
  const std::optional<std::string> posixPath = PosixPath(path);
  const int descriptor = posixPath ? OpenForWriting(posixPath->c_str()) : -1;
  if (descriptor < 0) {
    return;
  }
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
    if (count > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
      break;
    }
  }
  ::close(descriptor);
}

std::wstring FormatUnderUserLocale(double number, int decimals) {
  return FormatUnderUserLocale(std::setlocale, number, decimals);
}

std::optional<std::wstring> FormatUnderGlobalLocale(double number, int decimals) {
  if (std::locale() == std::locale::classic()) {
    return std::nullopt;
  }
  std::wostringstream stream;
  stream.exceptions(std::ios::badbit);  // else a failure of memory would only cut the text short
  stream << std::fixed << std::setprecision(decimals) << number;
  return stream.str();
}

}  // namespace KelmoLibs::Localize
