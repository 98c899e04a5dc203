// A folder of a test's own, below the working directory of the test program, empty at first and
// removed at the end.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// `name` with backslashes between its folders, as the test program opens it.
std::filesystem::path PortablePath(std::wstring_view name);

/// Writes a file of exactly these bytes; its folders are made. Throws where it cannot be written.
void WriteFile(const std::filesystem::path& file, std::string_view bytes);

class ScratchFolder {
 public:
  /// Named after the running test.
  ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder();

  const std::filesystem::path& Path() const noexcept { return path_; }

  /// The path as a host passes it: relative, with backslashes.
  std::wstring HostPath() const;

  /// Writes a file of exactly these bytes; `name` may hold folders, with backslashes; they are
  /// made.
  void Write(std::wstring_view name, std::string_view bytes) const;

 private:
  std::filesystem::path path_;
};
