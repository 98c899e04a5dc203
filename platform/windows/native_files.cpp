#include "platform/native_files.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <climits>

#include "platform/read_to_end.h"
#include "platform/windows/wide_text.h"

namespace KelmoLibs::Localize {
namespace {

struct HandleCloser {
  void operator()(HANDLE handle) const noexcept { ::CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

SystemError LastError() noexcept { return {static_cast<int>(::GetLastError())}; }

class FoundFiles {
 public:
  explicit FoundFiles(const std::wstring& pattern) noexcept
      : search_(::FindFirstFileW(pattern.c_str(), &found_)) {}
  FoundFiles(const FoundFiles&) = delete;
  FoundFiles& operator=(const FoundFiles&) = delete;
  ~FoundFiles() {
    if (IsOpen()) {
      ::FindClose(search_);
    }
  }

  bool IsOpen() const noexcept { return search_ != INVALID_HANDLE_VALUE; }
  const WIN32_FIND_DATAW& Current() const noexcept { return found_; }
  bool Next() noexcept { return ::FindNextFileW(search_, &found_) != 0; }

 private:
  WIN32_FIND_DATAW found_ = {};
  HANDLE search_;
};

}  // namespace

bool IsNothingThere(const std::string& /*path*/, SystemError error) {
  return error.number == ERROR_FILE_NOT_FOUND || error.number == ERROR_PATH_NOT_FOUND;
}

std::string DescribeError(SystemError error) {
  constexpr DWORD kFlags =
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
  std::array<wchar_t, 512> text = {};
  DWORD size = ::FormatMessageW(kFlags, nullptr, static_cast<DWORD>(error.number), 0, text.data(),
                                static_cast<DWORD>(text.size()), nullptr);
  while (size > 0 && (text[size - 1] == L' ' || text[size - 1] == L'.')) {
    --size;
  }
  return size > 0 ? Utf8Of({text.data(), size}) : "error " + std::to_string(error.number);
}

SystemError ReadFileAt(const std::string& path, FileBytes& result) {
  auto* const opened = ::CreateFileW(WideOf(path).c_str(), GENERIC_READ,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
  if (opened == INVALID_HANDLE_VALUE) {
    return LastError();
  }
  const Handle file(opened);
  LARGE_INTEGER size = {};
  if (::GetFileType(file.get()) != FILE_TYPE_DISK) {
    return {ERROR_NOT_SUPPORTED};
  }
  if (::GetFileSizeEx(file.get(), &size) == 0) {
    return LastError();
  }
  const auto read = [&file](char* memory, std::size_t room, std::size_t& count) {
    DWORD taken = 0;
    const bool isRead =
        ::ReadFile(file.get(), memory, static_cast<DWORD>(std::min<std::size_t>(room, INT_MAX)),
                   &taken, nullptr) != 0;
    count = taken;
    return isRead ? SystemError{} : LastError();
  };
  return ReadToEnd(static_cast<std::size_t>(size.QuadPart), read, result);
}

SystemError ListFilesAt(const std::string& path, std::vector<std::string>& names) {
  if (path.empty()) {  // the pattern "*" would be that of the working folder
    return {ERROR_PATH_NOT_FOUND};
  }
  FoundFiles files(WideOf(JoinNative(path, "*")));
  if (!files.IsOpen()) {
    const SystemError error = LastError();  // the top folder of a drive may have no entry at all
    return error.number == ERROR_FILE_NOT_FOUND ? SystemError{} : error;
  }
  do {
    if ((files.Current().dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
      names.push_back(Utf8Of(files.Current().cFileName));
    }
  } while (files.Next());
  const SystemError end = LastError();
  return end.number == ERROR_NO_MORE_FILES ? SystemError{} : end;
}

std::string JoinNative(std::string_view path, std::string_view name) {
  std::string joined(path);
  if (!joined.empty() && joined.back() != '\\' && joined.back() != '/' && joined.back() != ':') {
    joined += path.find('\\') != std::string_view::npos ? '\\' : '/';
  }
  return joined.append(name);
}

bool ControlZEndsText() noexcept { return true; }

}  // namespace KelmoLibs::Localize
