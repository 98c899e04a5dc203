// Collects dictionaries from files, folders and memory.
#pragma once

#include <string>
#include <string_view>

#include "host/dictionary_bytes.h"
#include "host/problem_list.h"
#include "host/text_collection.h"

namespace KelmoLibs::Host {

/// All functions throw only std::bad_alloc; what was collected before stays.
class Loader {
 public:
  /// Reads a file. False, and a problem, if it cannot be read.
  bool AddFile(const std::string& path, const ReadingOptions& options, ProblemList* problems);

  /// Reads the files *.txt of a folder but *-val.txt, in the order of the bytes of their names.
  /// False, and a problem for each, if the folder or a file cannot be read.
  bool AddFolder(const std::string& path, const ReadingOptions& options, ProblemList* problems);

  /// Reads bytes in memory, as a file with that content.
  void AddMemory(std::string_view bytes, std::string_view name, const ReadingOptions& options,
                 ProblemList* problems);

  /// What was collected; the loader is empty then. Tells the overrides that have no effect.
  TextCollection Finish(ProblemList* problems) noexcept;

 private:
  TextCollection texts_;
};

}  // namespace KelmoLibs::Host
