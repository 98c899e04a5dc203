// Files and folders by UTF-8 path, in the form of the system.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace KelmoLibs::Localize {

/// The bytes of a file.
struct FileBytes {
  std::unique_ptr<char[]> memory;
  std::size_t size = 0;

  std::string_view View() const noexcept { return {memory.get(), size}; }
};

/// Why the system refused a call: its number of the error, 0 for none.
struct SystemError {
  int number = 0;

  bool IsNone() const noexcept { return number == 0; }
};

/// Whether a function for `path` failed because there is nothing, and not because a file is in the
/// place of a folder. Throws only std::bad_alloc.
bool IsNothingThere(const std::string& path, SystemError error);

/// What the system says about the error, in UTF-8 and in one line. Throws only std::bad_alloc.
std::string DescribeError(SystemError error);

/// Reads the regular file at `path` as it is. Other programs may read and write the file meanwhile.
/// A file of another kind (a folder, a pipe, a device) is an error. Throws only std::bad_alloc.
SystemError ReadFileAt(const std::string& path, FileBytes& result);

/// The names of the regular files in the folder at `path`, in any order, and of links that lead
/// nowhere. On Linux a name may be any bytes. Throws only std::bad_alloc.
SystemError ListFilesAt(const std::string& path, std::vector<std::string>& names);

/// `path` and `name` with a separator between them. On Windows it is that of `path`, or a slash.
std::string JoinNative(std::string_view path, std::string_view name);

/// Whether a byte 0x1A ends a text on this system.
bool ControlZEndsText() noexcept;

}  // namespace KelmoLibs::Localize
