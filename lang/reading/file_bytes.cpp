#include "lang/reading/file_bytes.h"

#include <algorithm>
#include <cstdint>
#include <fstream>

#include "platform/replace_file.h"

namespace KelmoLibs::Lang {

namespace fs = std::filesystem;

std::optional<std::string> ReadFileBytes(const fs::path& path, std::size_t limit) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) {
    return std::nullopt;
  }
  std::ifstream file(path, std::ios::binary);
  const std::uintmax_t size = fs::file_size(path, error);
  if (!file || error) {
    return std::nullopt;
  }
  constexpr std::size_t kLeastGrowth = 4096;
  std::string bytes;
  std::size_t filled = 0;
  do {  // one byte more than the size shows the end of the file, which may have grown
    const std::size_t known = filled == 0 ? static_cast<std::size_t>(size) + 1
                                          : filled + std::max(filled / 2, kLeastGrowth);
    bytes.resize(std::min(known, limit));
    file.read(bytes.data() + filled, static_cast<std::streamsize>(bytes.size() - filled));
    filled += static_cast<std::size_t>(file.gcount());
  } while (file && filled < limit);
  if (file.bad()) {
    return std::nullopt;
  }
  bytes.resize(filled);
  return bytes;
}

const char* ReadProblem(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) {
    return "problem.not_found";
  }
  return fs::exists(status) && !fs::is_regular_file(status) ? "problem.not_a_file"
                                                            : "problem.unreadable";
}

std::error_code WriteFileBytes(const fs::path& path, std::string_view bytes) {
  std::error_code ignored;
  fs::path created;
  if (!fs::exists(path, ignored)) {
    const std::ofstream file(path, std::ios::binary);  // empty, with the permissions of new files
    created = fs::canonical(path, ignored);            // a link to it stays
  }
  const std::error_code error = ReplaceFileBytes(path, bytes);
  if (error && !created.empty()) {
    fs::remove(created, ignored);
  }
  return error;
}

}  // namespace KelmoLibs::Lang
