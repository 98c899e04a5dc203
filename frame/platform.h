// The few questions that the library asks of the operating system. platform_windows.cpp and
// platform_posix.cpp answer them; the build picks one. No other question about the
// system is asked outside the files that are named after one.
#pragma once

#include <memory>
#include <string>

#include "frame/byte_source.h"

namespace KelmoLibs::Localize {

/// Opens the file at `path` for reading in text mode: CR LF comes out as LF, any other CR stays.
/// Others may read and write the file meanwhile. On Windows the runtime's text mode also ends the
/// file at a 0x1A byte, which on Linux is a byte like any other. On Linux each backslash of `path`
/// is taken as a slash and the path is handed over as UTF-8, whatever the locale.
///
/// Null when there is no such file, when it may not be read, when it is not a regular file (a
/// folder, a pipe, a device), or when the path cannot be expressed on the system. Throws
/// std::bad_alloc only.
std::unique_ptr<ByteSource> OpenTextFile(const std::wstring& path);

}  // namespace KelmoLibs::Localize
