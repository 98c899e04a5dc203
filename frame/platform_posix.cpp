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

#include "frame/crlf_source.h"
#include "frame/platform.h"
#include "frame/posix_path.h"
#include "frame/user_locale.h"

namespace KelmoLibs::Localize {
namespace {

int OpenUninterrupted(const char* path, int flags) noexcept {
  int descriptor = -1;
  do {
    descriptor = ::open(path, flags);
  } while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

// A pipe is not opened at all: that would take the reader away that its writer waits for. Should
// one take the file's place in between, O_NONBLOCK keeps the host from waiting. It also refuses a
// file that another process holds a lease on, which is worth the wait.
int OpenForReading(const char* path) noexcept {
  struct stat status = {};
  if (::stat(path, &status) != 0 || !S_ISREG(status.st_mode)) {
    return -1;
  }
  constexpr int kFlags = O_RDONLY | O_CLOEXEC | O_NOCTTY;
  const int descriptor = OpenUninterrupted(path, kFlags | O_NONBLOCK);
  return descriptor < 0 && errno == EWOULDBLOCK ? OpenUninterrupted(path, kFlags) : descriptor;
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
