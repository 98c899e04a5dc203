#include "lang/reading/windows_text.h"

#include <algorithm>

#include "text/utf8.h"

namespace KelmoLibs::Lang {

ReadEnd EndOfReading(std::string_view bytes) noexcept {
  const std::size_t controlZ = std::min(bytes.find('\x1A'), bytes.size());
  const std::size_t wellFormed = Localize::WellFormedUtf8Length(bytes.substr(0, controlZ));
  if (wellFormed < controlZ) {
    return {Stop::kNotUtf8, wellFormed};
  }
  return {controlZ < bytes.size() ? Stop::kControlZ : Stop::kEndOfFile, controlZ};
}

std::size_t WindowsText::Read(char* buffer, std::size_t size) {
  std::size_t filled = 0;
  while (filled < size && position_ < bytes_.size()) {
    const std::string_view rest = bytes_.substr(position_, size - filled);
    const std::size_t count = std::min(rest.find('\r'), rest.size());
    std::copy_n(rest.data(), count, buffer + filled);
    filled += count;
    position_ += count;
    if (count < rest.size()) {  // at a CR
      if (bytes_.substr(position_, 2) != "\r\n") {
        buffer[filled++] = '\r';
      }
      ++position_;
    }
  }
  return filled;
}

// A line of the reader is the line of the bytes, but for the CR in front of its LF. So only its length
// is asked for.
std::optional<std::string_view> WindowsLines::Next() {
  const std::optional<std::string_view> read = lines_.Next();
  if (!read) {
    return std::nullopt;
  }
  const std::string_view line = bytes_.substr(next_, read->size());
  next_ = std::min(bytes_.find('\n', next_ + line.size()), bytes_.size() - 1) + 1;
  return line;
}

}  // namespace KelmoLibs::Lang
