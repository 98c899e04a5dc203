#include "platform/file_descriptor.h"

#include <io.h>
#include <windows.h>

#include <algorithm>
#include <climits>

namespace KelmoLibs::Localize {
namespace {

// The runtime counts the bytes of one call in an int.
unsigned ToChunkSize(std::size_t bytes) noexcept {
  return static_cast<unsigned>(std::min<std::size_t>(bytes, INT_MAX));
}

std::size_t ToCount(int result) noexcept {
  return result > 0 ? static_cast<std::size_t>(result) : 0;
}

}  // namespace

FileDescriptor::~FileDescriptor() {
  if (IsOpen()) {
    ::_close(value_);
  }
}

std::optional<std::size_t> FileDescriptor::RegularFileSize() const noexcept {
  if (!IsOpen()) {
    return std::nullopt;
  }
  // The runtime returns its handles as integers. NOLINTNEXTLINE(performance-no-int-to-ptr)
  auto* const handle = reinterpret_cast<HANDLE>(::_get_osfhandle(value_));
  if (::GetFileType(handle) != FILE_TYPE_DISK) {
    return std::nullopt;
  }
  const __int64 length = ::_filelengthi64(value_);
  return length > 0 ? static_cast<std::size_t>(length) : 0;
}

std::size_t FileDescriptor::Read(char* buffer, std::size_t size) const noexcept {
  return ToCount(::_read(value_, buffer, ToChunkSize(size)));
}

std::size_t FileDescriptor::Write(const char* bytes, std::size_t size) const noexcept {
  return ToCount(::_write(value_, bytes, ToChunkSize(size)));
}

}  // namespace KelmoLibs::Localize
