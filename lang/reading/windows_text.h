// The bytes of a file in memory, as the Windows library reads them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "text/byte_source.h"
#include "text/line_reader.h"

namespace KelmoLibs::Lang {

/// Why the library stops reading before the end of a file.
enum class Stop : std::uint8_t {
  kEndOfFile,  // it does not stop before
  kNotUtf8,    // at the first byte that is not UTF-8
  kControlZ,   // at a byte 0x1A: on Windows only
};

/// Where the library stops reading a file, and why.
struct ReadEnd {
  Stop stop = Stop::kEndOfFile;
  std::size_t at = 0;  // offset of the byte at which it stops; or the size of the file
};

/// Where the library on Windows stops reading `bytes`.
ReadEnd EndOfReading(std::string_view bytes) noexcept;

/// Text mode of the Windows runtime: 0x1A ends the file, CR LF is read as LF.
class WindowsText final : public Localize::ByteSource {
 public:
  /// `bytes` outlive the source.
  explicit WindowsText(std::string_view bytes) noexcept
      : bytes_(bytes.substr(0, bytes.find('\x1A'))) {}

  std::size_t Read(char* buffer, std::size_t size) override;
  std::size_t SizeHint() const noexcept override { return bytes_.size(); }

 private:
  std::string_view bytes_;
  std::size_t position_ = 0;
};

/// The lines that the library on Windows reads, by its own reader of lines.
class WindowsLines {
 public:
  /// `bytes` outlive the lines.
  explicit WindowsLines(std::string_view bytes) : bytes_(bytes), text_(bytes), lines_(text_) {}
  WindowsLines(const WindowsLines&) = delete;
  WindowsLines& operator=(const WindowsLines&) = delete;

  /// The next line, a view into the bytes without LF or CR LF at its end. Nothing at the end.
  std::optional<std::string_view> Next();

 private:
  std::string_view bytes_;
  std::size_t next_ = 0;  // the start of the next line in bytes_
  WindowsText text_;
  Localize::LineReader lines_;
};

}  // namespace KelmoLibs::Lang
