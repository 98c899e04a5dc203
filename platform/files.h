// The few questions that the library asks of the operating system. platform_windows.cpp and
// platform_posix.cpp answer them; those for the embedded table and for characters have files of
// their own, so that a test can answer one kind and leave the others. The build picks. No other
// question about the system is asked outside the files that are named after one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "text/byte_source.h"

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

/// Makes the file at `path` hold these bytes and nothing else, or a new one, as far as the system
/// lets it: nothing is said of what cannot be opened, or not be written to the end. Others may read
/// and write the file meanwhile. On Linux the path is taken as above, a device is written, and a pipe
/// is left alone; a lease that another program holds on the file is waited for, and the signal for
/// a file beyond the limit of its size (SIGXFSZ) is the host's. Throws std::bad_alloc only, before
/// anything is written.
void WriteWholeFile(const std::wstring& path, std::string_view bytes);

/// Tells the system that all of `bytes` at `memory` are going to be written now: it may give them at once, and
/// in large pages, which are there sooner and found faster. A hint, which stays with the memory.
void PrepareMemory(void* memory, std::size_t bytes) noexcept;

/// The unit table that lies inside the library's own file: UTF-16LE.
struct EmbeddedTable {
  enum class Status : std::int32_t { kFound = 0, kUnreadable = -1, kMissing = -2 };

  Status status;
  std::string_view bytes;  // nothing unless found; there as long as the library is loaded
};

/// On Windows it is looked for in the module of the name "kelmo_Mestrel_Localizer.dll", which each
/// call loads once more and never frees, and in the host's own file where there is no such module.
/// On Linux it is always found, without opening a file.
EmbeddedTable FindEmbeddedUnitTable() noexcept;

/// Whether a character shows something (iswgraph), whether it is a blank of any kind (iswblank). On
/// Windows the runtime says so, of each half of a surrogate pair on its own: neither. On Linux the
/// system's tables of Unicode do, whatever the locale of the host.
bool IsGraphic(wchar_t character) noexcept;
bool IsBlank(wchar_t character) noexcept;

/// Numbers are printed in fixed notation with 0 to so many decimals. The longest has a sign, all
/// digits of the largest double, the separator and the decimals.
constexpr int kMostDecimals = 9;
constexpr std::size_t kLongestNumber =
    1 + (std::numeric_limits<double>::max_exponent10 + 1) + 1 + kMostDecimals;

/// `number` in fixed notation with `decimals`, with the decimal separator that the user has chosen in
/// the system. For that the runtime's locale is the user's while the call lasts, in the
/// whole process; where the user's is not installed, the number is formatted under the current one.
/// Afterwards the locale is the one that it was, also when the call throws (std::bad_alloc only);
/// unless the runtime itself finds no memory to restore it, twice.
std::wstring FormatUnderUserLocale(double number, int decimals);

/// `number` in fixed notation with `decimals`, as a new wide stream prints it under the
/// global C++ locale of the host. Nothing, where that is the classic one; so it is on Windows,
/// where the runtime inside the library has a global locale of its own that no host can reach.
/// Throws std::bad_alloc, and what a facet of the host makes the stream throw.
std::optional<std::wstring> FormatUnderGlobalLocale(double number, int decimals);

}  // namespace KelmoLibs::Localize
