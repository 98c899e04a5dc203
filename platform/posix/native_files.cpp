#include "platform/native_files.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "platform/file_descriptor.h"
#include "platform/posix/open_file.h"
#include "platform/read_to_end.h"

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

bool IsNothingThere(const std::string& path, SystemError error) {
  if (error.number != ENOTDIR) {
    return error.number == ENOENT;
  }
  struct stat status = {};
  const std::string withoutSlash = path.substr(0, path.find_last_not_of('/') + 1);
  return ::stat(withoutSlash.c_str(), &status) != 0;
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
  const auto read = [&file](char* memory, std::size_t room, std::size_t& count) {
    const ssize_t taken = ReadUninterrupted(file.Get(), memory, room);
    count = static_cast<std::size_t>(std::max<ssize_t>(taken, 0));
    return SystemError{taken < 0 ? errno : 0};
  };
  return ReadToEnd(size != 0 ? size : kUnknownSize, read, result);
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
