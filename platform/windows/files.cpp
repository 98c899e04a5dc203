#include "platform/files.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

#include "platform/file_descriptor.h"
#include "platform/file_source.h"

namespace KelmoLibs::Localize {
namespace {

int Open(const wchar_t* path, int flags) noexcept {
  int descriptor = -1;
  const errno_t error =
      ::_wsopen_s(&descriptor, path, flags | _O_NOINHERIT, _SH_DENYNO, _S_IREAD | _S_IWRITE);
  return error == 0 ? descriptor : -1;
}

}  // namespace

std::unique_ptr<ByteSource> OpenTextFile(const std::wstring& path) {
  auto file = std::make_unique<FileSource>();
  // _O_TEXT is explicit, so that the default mode of the host has no effect.
  if (!file->Open(Open(path.c_str(), _O_RDONLY | _O_TEXT))) {
    return nullptr;
  }
  return file;
}

// In binary mode: `bytes` has its line ends already.
void WriteWholeFile(const std::wstring& path, std::string_view bytes) {
  const FileDescriptor descriptor(Open(path.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY));
  if (descriptor.IsOpen()) {
    descriptor.WriteAll(bytes.data(), bytes.size());
  }
}

}  // namespace KelmoLibs::Localize
