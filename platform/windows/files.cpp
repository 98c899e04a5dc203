#include "platform/files.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include <algorithm>
#include <climits>

#include "platform/user_locale.h"

namespace KelmoLibs::Localize {
namespace {

// Text mode is named, so that a host's own default mode has no say.
int OpenForReading(const wchar_t* path) noexcept {
  int descriptor = -1;
  const errno_t error =
      ::_wsopen_s(&descriptor, path, _O_RDONLY | _O_TEXT | _O_NOINHERIT, _SH_DENYNO, 0);
  return error == 0 ? descriptor : -1;
}

HANDLE HandleOf(int descriptor) noexcept {
  // The runtime gives its handles as integers. NOLINTNEXTLINE(performance-no-int-to-ptr)
  return reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor));
}

class TextFileBytes final : public ByteSource {
 public:
  explicit TextFileBytes(const wchar_t* path) noexcept : descriptor_(OpenForReading(path)) {
    if (descriptor_ < 0) {
      return;
    }
    isRegularFile_ = ::GetFileType(HandleOf(descriptor_)) == FILE_TYPE_DISK;
    const __int64 length = ::_filelengthi64(descriptor_);
    size_ = length > 0 ? static_cast<std::size_t>(length) : 0;
  }

  ~TextFileBytes() override {
    if (descriptor_ >= 0) {
      ::_close(descriptor_);
    }
  }

  bool IsRegularFile() const noexcept { return isRegularFile_; }

  std::size_t Read(char* buffer, std::size_t size) override {
    const auto most = static_cast<unsigned>(std::min<std::size_t>(size, INT_MAX));
    const int count = ::_read(descriptor_, buffer, most);
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
  auto file = std::make_unique<TextFileBytes>(path.c_str());
  if (!file->IsRegularFile()) {
    return nullptr;
  }
  return file;
}

// In binary: the line ends are in the bytes.
void WriteWholeFile(const std::wstring& path, std::string_view bytes) {
  constexpr int kAnew = _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY | _O_NOINHERIT;
  int descriptor = -1;
  if (::_wsopen_s(&descriptor, path.c_str(), kAnew, _SH_DENYNO, _S_IREAD | _S_IWRITE) != 0) {
    return;
  }
  while (!bytes.empty()) {
    const auto most = static_cast<unsigned>(std::min<std::size_t>(bytes.size(), INT_MAX));
    const int count = ::_write(descriptor, bytes.data(), most);
    if (count <= 0) {
      break;
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  ::_close(descriptor);
}

// By wide names: a narrow one with a letter beyond ASCII, as of "Turkish_T\u00FCrkiye.utf8", would
// be read back in the code page of the user's locale.
std::wstring FormatUnderUserLocale(double number, int decimals) {
  return FormatUnderUserLocale(::_wsetlocale, number, decimals);
}

// Not even a look at it: the static runtime of MinGW-w64 would take a slot of thread-local storage
// for its locales and never give it back, and its streams switch the runtime's locale while they
// print.
std::optional<std::wstring> FormatUnderGlobalLocale(double /*number*/, int /*decimals*/) {
  return std::nullopt;
}

}  // namespace KelmoLibs::Localize
