#pragma once

#include <filesystem>

namespace benchmarks {

/// A folder for the files of this process. It is made at the first call and removed at exit.
const std::filesystem::path& ScratchFolder();

}  // namespace benchmarks
