#include "platform/console.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>

namespace KelmoLibs::Lang {
namespace {

int DescriptorOf(Stream stream) noexcept {
  return stream == Stream::kOutput ? STDOUT_FILENO : STDERR_FILENO;
}

}  // namespace

bool Write(Stream stream, std::string_view utf8) {
  while (!utf8.empty()) {
    const ssize_t written = ::write(DescriptorOf(stream), utf8.data(), utf8.size());
    if (written < 0 && errno == EAGAIN) {  // other programs may have made the pipe non-blocking
      pollfd ready = {DescriptorOf(stream), POLLOUT, 0};
      ::poll(&ready, 1, -1);
    } else if (written < 0 && errno != EINTR) {
      return false;
    }
    utf8.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
  }
  return true;
}

bool IsTerminal(Stream stream) noexcept { return ::isatty(DescriptorOf(stream)) == 1; }

bool EnableColours(Stream stream) noexcept {
  const char* const terminal = std::getenv("TERM");
  return IsTerminal(stream) && terminal != nullptr && std::string_view(terminal) != "dumb";
}

std::optional<unsigned> TerminalWidth(Stream stream) noexcept {
  winsize size = {};
  if (::ioctl(DescriptorOf(stream), TIOCGWINSZ, &size) != 0 || size.ws_col == 0) {
    return std::nullopt;
  }
  return size.ws_col;
}

}  // namespace KelmoLibs::Lang
