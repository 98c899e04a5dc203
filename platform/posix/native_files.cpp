#include "platform/native_files.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/file_descriptor.h"
#include "platform/posix/open_file.h"

namespace KelmoLibs::Localize {
namespace {

struct FolderCloser {
  void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

// Whether the entry is a regular file or leads to one. A link that leads nowhere counts: opening it
// gives the reason.
bool IsRegular(int folder, const dirent& entry) noexcept {
  if (entry.d_type == DT_REG) {
    return true;
  }
  struct stat status = {};  // some file systems do not tell, and a link may lead to a file
  return (entry.d_type == DT_UNKNOWN || entry.d_type == DT_LNK) &&
         (::fstatat(folder, entry.d_name, &status, 0) != 0 || S_ISREG(status.st_mode));
}

ssize_t ReadUninterrupted(int file, char* buffer, std::size_t size) noexcept {
  ssize_t count = 0;
  do {
    count = ::read(file, buffer, size);
  } while (count < 0 && errno == EINTR);
  return count;
}

}  // namespace

bool IsNothingThere(SystemError error) noexcept {
  return error.number == ENOENT || error.number == ENOTDIR;
}

std::string DescribeError(SystemError error) {
  const char* const description = ::strerrordesc_np(error.number);  // never translated
  return description != nullptr ? description : "error " + std::to_string(error.number);
}

SystemError ReadFileAt(const std::string& path, FileBytes& result) {
  const FileDescriptor file(OpenRegularFile(path.c_str()));
  if (!file.IsOpen()) {
    return {errno};
  }
  constexpr std::size_t kUnknownSize = 4096;  // some file systems report 0 for every file
  const std::size_t size = file.RegularFileSize().value_or(0);
  std::size_t capacity = (size != 0 ? size : kUnknownSize) + 1;
  FileBytes bytes{std::unique_ptr<char[]>(new char[capacity]), 0};
  for (;;) {
    const ssize_t count =
        ReadUninterrupted(file.Get(), bytes.memory.get() + bytes.size, capacity - bytes.size);
    if (count < 0) {
      return {errno};
    }
    bytes.size += static_cast<std::size_t>(count);
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
  const std::unique_ptr<DIR, FolderCloser> folder(::opendir(path.c_str()));
  if (folder == nullptr) {
    return {errno};
  }
  for (;;) {
    errno = 0;
    const dirent* const entry = ::readdir(folder.get());
    if (entry == nullptr) {
      return {errno};
    }
    if (IsRegular(::dirfd(folder.get()), *entry)) {
      names.emplace_back(entry->d_name);
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
