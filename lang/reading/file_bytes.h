// Reading and writing whole files.
#pragma once

#include <cstddef>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace KelmoLibs::Lang {

/// The bytes of the regular file at `path`, at most the first `limit` ones; nothing if it cannot be
/// read.
std::optional<std::string> ReadFileBytes(
    const std::filesystem::path& path, std::size_t limit = std::numeric_limits<std::size_t>::max());

/// Why a file cannot be read: the key of a text.
const char* ReadProblem(const std::filesystem::path& path);

/// Writes a file that may be new. An old one is replaced at once: see ReplaceFileBytes. On failure
/// an old file is unchanged, and no new one stays.
std::error_code WriteFileBytes(const std::filesystem::path& path, std::string_view bytes);

}  // namespace KelmoLibs::Lang
