#include "benchmarks/support/scratch_folder.h"

#include <random>
#include <string>
#include <system_error>

namespace benchmarks {
namespace {

class Folder {
 public:
  Folder() {
    std::random_device random;
    do {
      path =
          std::filesystem::temp_directory_path() / ("kelmo_benchmark_" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path));  // false: it exists already
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }

  std::filesystem::path path;
};

}  // namespace

const std::filesystem::path& ScratchFolder() {
  static const Folder kFolder;
  return kFolder.path;
}

}  // namespace benchmarks
