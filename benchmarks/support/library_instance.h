// Copies of the library that a benchmark loads and unloads.
#pragma once

#include <cstdint>
#include <filesystem>

#include "kelmo_localizer.h"

namespace benchmarks {

/// A fresh instance of the library. Dictionaries stay in an instance until it is unloaded.
/// Instances share nothing, because each is loaded from its own copy of the library's file.
class LibraryInstance {
 public:
  LibraryInstance();
  LibraryInstance(const LibraryInstance&) = delete;
  LibraryInstance& operator=(const LibraryInstance&) = delete;

  /// Unloads the library. Ends the program if the library stays in the process.
  ~LibraryInstance();

  /// Loads `file`. Ends the program unless the result is `messages`.
  void Load(const std::filesystem::path& file, std::int64_t messages) const;

 private:
  std::filesystem::path file_;
  void* handle_;

 public:
  const decltype(&LoadDictionary) loadDictionary;
  const decltype(&LANG) lang;
  const decltype(&GetErrorsCount) getErrorsCount;
  const decltype(&GetError) getError;
  const decltype(&ClearErrors) clearErrors;
};

}  // namespace benchmarks
