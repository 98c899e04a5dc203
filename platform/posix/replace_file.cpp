#include "platform/replace_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

#include "platform/file_descriptor.h"

namespace KelmoLibs::Lang {
namespace {

using Localize::FileDescriptor;

constexpr mode_t kPermissions = 07777;

std::error_code LastError() noexcept { return {errno, std::system_category()}; }

std::error_code WriteToDisk(const FileDescriptor& file, std::string_view bytes) noexcept {
  while (!bytes.empty()) {
    const std::size_t count = file.Write(bytes.data(), bytes.size());
    if (count == 0) {
      return LastError();
    }
    bytes.remove_prefix(count);
  }
  return ::fsync(file.Get()) == 0 ? std::error_code() : LastError();
}

// The owner first: a change of the owner can remove permissions. Only root can give files away; all
// others keep the new file for themselves, as editors do, and give it to a group that they belong to.
std::error_code CopyPermissions(const FileDescriptor& from, const FileDescriptor& to) noexcept {
  struct stat status = {};
  if (::fstat(from.Get(), &status) != 0) {
    return LastError();
  }
  constexpr auto kSameOwner = static_cast<uid_t>(-1);
  const bool isOwnerCopied = ::fchown(to.Get(), status.st_uid, status.st_gid) == 0;
  const bool isGroupCopied = isOwnerCopied || ::fchown(to.Get(), kSameOwner, status.st_gid) == 0;
  mode_t mode = status.st_mode & kPermissions;
  if (!isOwnerCopied) {
    mode &= 0777U;  // the bits that run a program as its owner must not stay
  }
  if (!isGroupCopied) {
    mode &= ~070U | (mode & 07U) << 3U;  // another group may do what everybody may
  }
  return ::fchmod(to.Get(), mode) == 0 ? std::error_code() : LastError();
}

// Signals that end the program wait, so that no new file stays beside the old one. A file that gets
// larger than the system allows is a failure of its call only.
class HeldSignals {
 public:
  HeldSignals() noexcept {
    sigset_t held;
    ::sigemptyset(&held);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
      ::sigaddset(&held, signal);
    }
    ::pthread_sigmask(SIG_BLOCK, &held, &mask_);
    struct sigaction ignoring = {};
    ignoring.sa_handler = SIG_IGN;  // NOLINT(cppcoreguidelines-pro-type-union-access)
    ::sigaction(SIGXFSZ, &ignoring, &tooLarge_);
  }
  HeldSignals(const HeldSignals&) = delete;
  HeldSignals& operator=(const HeldSignals&) = delete;
  ~HeldSignals() {
    ::sigaction(SIGXFSZ, &tooLarge_, nullptr);
    ::pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
  }

 private:
  sigset_t mask_ = {};
  struct sigaction tooLarge_ = {};
};

// Removes the file with this name, unless the name is empty.
struct NewFile {
  explicit NewFile(std::string path) : name(std::move(path)) {}
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    if (!name.empty()) {
      ::unlink(name.c_str());
    }
  }

  std::string name;
};

}  // namespace

std::error_code ReplaceFileBytes(const std::filesystem::path& path, std::string_view bytes,
                                 const std::function<bool()>& isStillWanted) {
  std::error_code error;
  const std::filesystem::path target = std::filesystem::canonical(path, error);
  if (error) {
    return error;
  }
  // Renaming needs no permission for the file itself; opening it for writing does.
  const FileDescriptor old(::open(target.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
  if (!old.IsOpen()) {
    return LastError();
  }
  if (!old.RegularFileSize()) {
    return std::make_error_code(std::errc::invalid_argument);
  }
  const HeldSignals signals;
  NewFile temporary{(target.parent_path() / ".kelmo-lang-XXXXXX").native()};
  {
    const FileDescriptor file(::mkostemp(temporary.name.data(), O_CLOEXEC));
    if (!file.IsOpen()) {
      error = LastError();
      temporary.name.clear();
      return error;
    }
    error = WriteToDisk(file, bytes);
    if (!error) {
      error = CopyPermissions(old, file);
    }
  }
  if (!error && isStillWanted && !isStillWanted()) {
    error = std::make_error_code(std::errc::operation_canceled);
  }
  if (!error && std::rename(temporary.name.c_str(), target.c_str()) != 0) {
    error = LastError();
  }
  if (!error) {
    temporary.name.clear();
  }
  return error;
}

}  // namespace KelmoLibs::Lang
