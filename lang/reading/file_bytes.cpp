#include "lang/reading/file_bytes.h"

#include <fstream>
#include <iterator>

#include "platform/replace_file.h"

namespace KelmoLibs::Lang {

namespace fs = std::filesystem;

std::optional<std::string> ReadFileBytes(const fs::path& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) {
    return std::nullopt;
  }
  std::ifstream file(path, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  return file.is_open() && !file.bad() ? std::optional(std::move(bytes)) : std::nullopt;
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
