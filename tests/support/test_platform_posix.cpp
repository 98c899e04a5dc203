#include <locale.h>
#include <malloc.h>
#include <pthread.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#include <wctype.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>

#include "tests/support/free_descriptor.h"
#include "tests/support/test_platform.h"

const bool textModeEndsAtControlZ = false;
const bool librarySharesTheGlobalLocale = true;
#if defined(KELMO_INSTRUMENTED)
const bool instrumented = true;
#else
const bool instrumented = false;
#endif

namespace {

// The number in a file of the system, or `defaultNumber`.
std::uint64_t NumberIn(const char* file, std::uint64_t defaultNumber) {
  std::uint64_t number = 0;
  return std::ifstream(file) >> number ? number : defaultNumber;
}

// Mapped bytes of this program. /proc/self/statm has the sum too, but with an emulator it is the
// sum of the emulator's mappings.
std::optional<std::size_t> MappedBytes() {
  std::ifstream mappings("/proc/self/maps");
  std::size_t bytes = 0;
  std::size_t begin = 0;
  std::size_t end = 0;
  char dash = 0;
  for (std::string rest;
       mappings >> std::hex >> begin >> dash >> end && std::getline(mappings, rest);) {
    // A page of the kernel, which belongs to no process.
    const bool isKernelPage = rest.find("[vsyscall]") != std::string::npos;
    bytes += isKernelPage ? 0 : end - begin;
  }
  return bytes > 0 ? std::optional(bytes) : std::nullopt;
}

}  // namespace

// The minimum of the machine and of the container in which the program may run.
std::uint64_t AvailableMemory() {
  std::uint64_t available = 0;
  std::ifstream memory("/proc/meminfo");
  for (std::string word; memory >> word;) {
    if (word == "MemAvailable:") {
      memory >> available;
      available *= 1024;
      break;
    }
  }
  const std::uint64_t maxBytes = NumberIn("/sys/fs/cgroup/memory.max", UINT64_MAX);
  const std::uint64_t used = NumberIn("/sys/fs/cgroup/memory.current", 0);
  return std::min(available, maxBytes > used ? maxBytes - used : 0);
}

bool SystemSaysGraphicOrBlank(wchar_t character) {
  static const locale_t unicode = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (unicode == nullptr) {
    std::abort();
  }
  const wint_t c = std::char_traits<wchar_t>::to_int_type(character);
  return ::iswgraph_l(c, unicode) != 0 || ::iswblank_l(c, unicode) != 0;
}

std::uintptr_t NextHandle() { return static_cast<std::uintptr_t>(FreeDescriptor()); }

std::optional<Footprint> MeasureFootprint() {
  if (instrumented) {
    return std::nullopt;
  }
  const std::optional<std::size_t> mappedBytes = MappedBytes();
  if (!mappedBytes) {
    return std::nullopt;
  }
  Footprint footprint = {};
  footprint.mappedBytes = *mappedBytes;
  footprint.nextHandle = NextHandle();

  pthread_key_t key = 0;
  ::pthread_key_create(&key, nullptr);
  ::pthread_key_delete(key);
  footprint.nextThreadSlot = key;

  const struct mallinfo2 heap = ::mallinfo2();
  footprint.heapBytes = heap.uordblks + heap.hblkhd;
  return footprint;
}

bool ReturnsWithin(std::chrono::milliseconds time, const std::function<void()>& work) {
  const auto end = std::chrono::steady_clock::now() + time;
  const pid_t child = ::fork();
  if (child == 0) {
    work();
    ::_exit(0);
  }
  int status = 0;
  pid_t ended = 0;
  while ((ended = ::waitpid(child, &status, WNOHANG)) == 0) {
    if (std::chrono::steady_clock::now() >= end) {
      ::kill(child, SIGKILL);
      ::waitpid(child, &status, 0);
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  if (ended != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    throw std::runtime_error("a call has crashed, or its process could not be created");
  }
  return true;
}

void TurnOffErrorDialogs() {}
