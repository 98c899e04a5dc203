#include "platform/replace_file.h"

#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

namespace KelmoLibs::Lang {
namespace {

std::error_code LastError() noexcept {
  return {static_cast<int>(::GetLastError()), std::system_category()};
}

class Handle {
 public:
  explicit Handle(HANDLE value) noexcept : value_(value) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (IsOpen()) {
      ::CloseHandle(value_);
    }
  }

  // NOLINTNEXTLINE(performance-no-int-to-ptr,cppcoreguidelines-pro-type-cstyle-cast): the macro's
  bool IsOpen() const noexcept { return value_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const noexcept { return value_; }

 private:
  HANDLE value_;
};

// Removes the file with this name, unless the name is empty.
struct NewFile {
  NewFile() = default;
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    if (!name.empty()) {
      ::DeleteFileW(name.c_str());
    }
  }

  std::wstring name;
};

// The path of the file behind links, or an empty one. Opening the file shows that the user may write
// it; it must be closed before it can be replaced.
std::wstring TargetOf(const std::filesystem::path& path) {
  const Handle file(::CreateFileW(path.c_str(), GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) {
    return {};
  }
  // Some file systems let an administrator write a file that is marked as read-only.
  BY_HANDLE_FILE_INFORMATION information = {};
  if (::GetFileInformationByHandle(file.Get(), &information) == 0) {
    return {};
  }
  if ((information.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0) {
    ::SetLastError(ERROR_ACCESS_DENIED);
    return {};
  }
  const DWORD length = ::GetFinalPathNameByHandleW(file.Get(), nullptr, 0, FILE_NAME_NORMALIZED);
  std::wstring target(length, L'\0');
  const DWORD written =
      ::GetFinalPathNameByHandleW(file.Get(), target.data(), length, FILE_NAME_NORMALIZED);
  target.resize(written < length ? written : 0);
  return target;
}

// A file with a name that no other file has.
std::wstring TemporaryName(const std::wstring& target, unsigned attempt) {
  const std::wstring folder = target.substr(0, target.find_last_of(L'\\') + 1);
  return folder + L".kelmo-lang-" + std::to_wstring(::GetCurrentProcessId()) + L'-' +
         std::to_wstring(::GetTickCount64()) + L'-' + std::to_wstring(attempt);
}

std::error_code WriteToDisk(HANDLE file, std::string_view bytes) noexcept {
  constexpr std::size_t kChunk = 1U << 30U;  // the system counts the bytes of one call in 32 bits
  while (!bytes.empty()) {
    DWORD count = 0;
    const auto size = static_cast<DWORD>(std::min(bytes.size(), kChunk));
    if (::WriteFile(file, bytes.data(), size, &count, nullptr) == 0 || count == 0) {
      return LastError();
    }
    bytes.remove_prefix(count);
  }
  return ::FlushFileBuffers(file) != 0 ? std::error_code() : LastError();
}

// Without the rights of the old file, the new one has those of the folder. File systems without
// rights refuse; that is no failure.
void CopyPermissions(const std::wstring& from, const std::wstring& to) {
  DWORD size = 0;
  ::GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<unsigned char> rights(size);
  if (size > 0 && ::GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size,
                                     &size) != 0) {
    ::SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION, rights.data());
  }
  const DWORD attributes = ::GetFileAttributesW(from.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) {
    ::SetFileAttributesW(to.c_str(), attributes & (FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN |
                                                   FILE_ATTRIBUTE_SYSTEM));
  }
}

}  // namespace

std::error_code ReplaceFileBytes(const std::filesystem::path& path, std::string_view bytes,
                                 const std::function<bool()>& isStillWanted) {
  constexpr unsigned kAttempts = 100;
  const std::wstring target = TargetOf(path);
  if (target.empty()) {
    return LastError();
  }
  NewFile temporary;
  std::error_code error;
  for (unsigned attempt = 0;; ++attempt) {
    const std::wstring name = TemporaryName(target, attempt);
    const Handle file(::CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file.IsOpen()) {
      temporary.name = name;
      error = WriteToDisk(file.Get(), bytes);
      break;
    }
    if (::GetLastError() != ERROR_FILE_EXISTS || attempt == kAttempts) {
      return LastError();
    }
  }
  if (!error && isStillWanted && !isStillWanted()) {
    error = std::make_error_code(std::errc::operation_canceled);
  }
  if (!error) {
    CopyPermissions(target, temporary.name);
    if (::MoveFileExW(temporary.name.c_str(), target.c_str(),
                      MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0) {
      error = LastError();
    }
  }
  if (!error) {
    temporary.name.clear();
  }
  return error;
}

}  // namespace KelmoLibs::Lang
