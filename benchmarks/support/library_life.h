// The library from its loading into the process to its unloading.
#pragma once

#include <cstdint>
#include <filesystem>

#include "kelmo_localizer.h"

namespace benchmarks {

/// What is loaded stays in the library for as long as that is loaded: what is to be measured in a
/// fresh library gets a life of its own. Lives do not share anything, because each is of a copy of
/// the library's file.
class LibraryLife {
 public:
  LibraryLife();
  LibraryLife(const LibraryLife&) = delete;
  LibraryLife& operator=(const LibraryLife&) = delete;

  /// Unloads the library; ends the program if that stays in it.
  ~LibraryLife();

  /// Loads `file`, which must give `messages` messages in all.
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
