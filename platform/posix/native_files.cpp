#include "platform/native_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/file_descriptor.h"
#include "text/utf8.h"

namespace KelmoLibs::Localize {
namespace {

struct FolderCloser {
  void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

// 0 for a regular file.
int ErrorOf(const struct stat& status) noexcept {
  if (S_ISREG(status.st_mode)) {
    return 0;
  }
  return S_ISDIR(status.st_mode) ? EISDIR : ENOTSUP;
}

// Opens a regular file only: opening a pipe would take away the reader for which its writer waits.
int OpenRegular(const char* path, int& error) noexcept {
  struct stat status = {};
  error = ::stat(path, &status) != 0 ? errno : ErrorOf(status);
  if (error != 0) {
    return -1;
  }
  int descriptor = -1;
  do {
    descriptor = ::open(path, O_RDONLY | O_CLOEXEC | O_NOCTTY);
  } while (descriptor < 0 && errno == EINTR);
  error = descriptor < 0 ? errno : 0;
  return descriptor;
}

bool IsRegular(int folder, const dirent& entry) noexcept {
  if (entry.d_type == DT_REG) {
    return true;
  }
  struct stat status = {};  // some file systems do not tell, and a link may lead to a file
  return (entry.d_type == DT_UNKNOWN || entry.d_type == DT_LNK) &&
         ::fstatat(folder, entry.d_name, &status, 0) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

std::string DescribeError(SystemError error) {
  const char* const description = ::strerrordesc_np(error.number);  // never translated
  return description != nullptr ? description : "error " + std::to_string(error.number);
}

SystemError ReadFileAt(const std::string& path, FileBytes& result) {
  int error = 0;
  const FileDescriptor file(OpenRegular(path.c_str(), error));
  if (error != 0) {
    return {error};
  }
  constexpr std::size_t kUnknownSize = 4096;  // some file systems report 0 for every file
  const std::size_t size = file.RegularFileSize().value_or(0);
  std::size_t capacity = (size != 0 ? size : kUnknownSize) + 1;
  FileBytes bytes{std::unique_ptr<char[]>(new char[capacity]), 0};
  for (;;) {
    errno = 0;
    const std::size_t count = file.Read(bytes.memory.get() + bytes.size, capacity - bytes.size);
    if (count == 0 && errno != 0) {
      return {errno};
    }
    bytes.size += count;
    if (count == 0) {
      result = std::move(bytes);
      return {};
    }
    if (bytes.size == capacity) {
      std::unique_ptr<char[]> larger(new char[2 * capacity]);
      std::memcpy(larger.get(), bytes.memory.get(), bytes.size);
      bytes.memory = std::move(larger);
      capacity *= 2;
    }
  }
}

SystemError ListFilesAt(const std::string& path, std::vector<std::string>& names) {
  const std::unique_ptr<DIR, FolderCloser> folder(::opendir(path.empty() ? "." : path.c_str()));
  if (folder == nullptr) {
    return {errno};
  }
  for (;;) {
    errno = 0;
    const dirent* const entry = ::readdir(folder.get());
    if (entry == nullptr) {
      return {errno};
    }
    const std::string_view name(entry->d_name);
    if (IsRegular(::dirfd(folder.get()), *entry) && WellFormedUtf8Length(name) == name.size()) {
      names.emplace_back(name);
    }
  }
}

std::string JoinNative(std::string_view path, std::string_view name) {
  std::string joined(path);
  if (!joined.empty() && joined.back() != '/') {
    joined += '/';
  }
  return joined.append(name);
}

bool ControlZEndsText() noexcept { return false; }

}  // namespace KelmoLibs::Localize
