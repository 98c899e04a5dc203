// A folder for one test, below the working directory of the test program. It is empty at first and
// removed at the end.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// The path of `name`, which has backslashes between its folders, for this system.
std::filesystem::path PortablePath(std::wstring_view name);

/// Creates the folders of `file` and writes exactly these bytes. Throws std::runtime_error if it
/// cannot.
void WriteFile(const std::filesystem::path& file, std::string_view bytes);

class ScratchFolder {
 public:
  /// Named after the running test.
  ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder();

  const std::filesystem::path& Path() const noexcept { return path_; }

  /// The path for a call of a host: relative, with backslashes.
  std::wstring HostPath() const;

  /// Writes a file of exactly these bytes. `name` may have folders, with backslashes; they are
  /// created.
  void Write(std::wstring_view name, std::string_view bytes) const;

 private:
  std::filesystem::path path_;
};
