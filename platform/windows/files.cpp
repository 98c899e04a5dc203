#include "platform/files.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include <algorithm>
#include <climits>

#include "platform/windows/file_descriptor.h"

namespace KelmoLibs::Localize {
namespace {

int Open(const wchar_t* path, int flags) noexcept {
  int descriptor = -1;
  const errno_t error =
      ::_wsopen_s(&descriptor, path, flags | _O_NOINHERIT, _SH_DENYNO, _S_IREAD | _S_IWRITE);
  return error == 0 ? descriptor : -1;
}

unsigned ToChunkSize(std::size_t bytes) noexcept {
  return static_cast<unsigned>(std::min<std::size_t>(bytes, INT_MAX));
}

class TextFileSource final : public ByteSource {
 public:
  // _O_TEXT is explicit, so that the default mode of the host has no effect.
  explicit TextFileSource(const wchar_t* path) noexcept
      : descriptor_(Open(path, _O_RDONLY | _O_TEXT)) {
    if (!descriptor_.IsOpen()) {
      return;
    }
    // The runtime returns its handles as integers. NOLINTNEXTLINE(performance-no-int-to-ptr)
    auto* const handle = reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor_.Get()));
    isRegularFile_ = ::GetFileType(handle) == FILE_TYPE_DISK;
    const __int64 length = ::_filelengthi64(descriptor_.Get());
    size_ = length > 0 ? static_cast<std::size_t>(length) : 0;
  }

  bool IsRegularFile() const noexcept { return isRegularFile_; }

  std::size_t Read(char* buffer, std::size_t size) override {
    const int count = ::_read(descriptor_.Get(), buffer, ToChunkSize(size));
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
  auto file = std::make_unique<TextFileSource>(path.c_str());
  if (!file->IsRegularFile()) {
    return nullptr;
  }
  return file;
}

// In binary mode: `bytes` has its line ends already.
void WriteWholeFile(const std::wstring& path, std::string_view bytes) {
  const FileDescriptor descriptor(Open(path.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY));
  if (!descriptor.IsOpen()) {
    return;
  }
  while (!bytes.empty()) {
    const int count = ::_write(descriptor.Get(), bytes.data(), ToChunkSize(bytes.size()));
    if (count <= 0) {
      break;
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace KelmoLibs::Localize
