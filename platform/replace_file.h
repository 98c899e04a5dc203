// Writing a file at once: readers see the old bytes or the new ones, never a part of them.
#pragma once

#include <filesystem>
#include <functional>
#include <string_view>
#include <system_error>

namespace KelmoLibs::Lang {

/// Replaces the bytes of the regular file at `path`, or of the file that a symbolic link there leads
/// to. The bytes go to a new file in the same folder, reach the disk, and take the place of the old
/// file by renaming. Permissions stay; another name of the same file (a hard link) keeps the old
/// bytes. On failure the old file is unchanged and the new one is removed.
///
/// `isStillWanted`, if there is one, is asked immediately before the renaming: false ends with
/// std::errc::operation_canceled, as a failure. It may throw.
std::error_code ReplaceFileBytes(const std::filesystem::path& path, std::string_view bytes,
                                 const std::function<bool()>& isStillWanted = {});

}  // namespace KelmoLibs::Lang
