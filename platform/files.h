// Files by wide path, in Windows form on every system.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "text/byte_source.h"

namespace KelmoLibs::Localize {

/// Opens the file at `path` for reading in text mode: CR LF is read as LF, every other CR stays.
/// Other programs may read and write the file meanwhile.
///
/// On Windows, text mode also ends the file at a 0x1A byte. On Linux, that byte is like any other,
/// a backslash in `path` is a slash, and the system gets the path as UTF-8 in every locale.
///
/// Null if the file does not exist, cannot be read or is not a regular file (a folder, a pipe, a
/// device), or if the system cannot express the path. Throws only std::bad_alloc.
std::unique_ptr<ByteSource> OpenTextFile(const std::wstring& path);

/// Replaces the content of the file at `path` by `bytes`, or creates the file. Does not report a
/// file that cannot be opened, or that cannot be written completely. Other programs may read and
/// write the file meanwhile. Throws only std::bad_alloc, before the file is opened.
///
/// On Linux, the path is treated as above. A device is written to; a pipe is not. If another
/// program holds a lease on the file, the call waits. If the file exceeds the size limit of the
/// process, the host gets SIGXFSZ.
void WriteWholeFile(const std::wstring& path, std::string_view bytes);

}  // namespace KelmoLibs::Localize
