#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <optional>
#include <utility>

#include "platform/file_descriptor.h"
#include "platform/file_source.h"
#include "platform/posix/open_file.h"
#include "text/crlf_source.h"
#include "text/posix_path.h"

namespace KelmoLibs::Localize {
namespace {

// Does not open a pipe: if its reader goes, SIGPIPE would end the host.
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
  if (!file->Open(OpenRegularFile(posixPath->c_str()))) {
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
