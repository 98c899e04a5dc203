// The standard output streams and the terminal behind them, for programs that print UTF-8.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace KelmoLibs::Lang {

enum class Stream : std::uint8_t { kOutput, kError };

/// Writes `utf8` at once, without a buffer. A terminal shows the characters; a file or a pipe gets
/// these bytes, also on Windows, where line ends stay LF. False if the system did not take all.
bool Write(Stream stream, std::string_view utf8);

bool IsTerminal(Stream stream) noexcept;

/// Makes the terminal obey the sequences that begin with ESC [ and set colours. False if the stream
/// is no terminal, or one that cannot do it.
bool EnableColours(Stream stream) noexcept;

/// Columns of the terminal; nothing if the stream is none, or it does not tell.
std::optional<unsigned> TerminalWidth(Stream stream) noexcept;

}  // namespace KelmoLibs::Lang
