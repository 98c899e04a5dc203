// A dictionary file: what the library reads of it, and what lies behind a fault.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "lang/reading/source_file.h"
#include "lang/reading/windows_text.h"

namespace KelmoLibs::Lang {

/// A key and its text: views into the file, also if they are empty.
struct Entry {
  std::string_view key;
  std::string_view text;
};

class DictionaryFile {
 public:
  DictionaryFile(std::string name, std::filesystem::path path, std::string raw);

  const SourceFile& Source() const noexcept { return source_; }

  /// Whether the library reads a first line. If not, it loads nothing, and all else is empty.
  bool HasHeader() const noexcept { return hasHeader_; }

  /// The id, which may be empty.
  std::string_view Id() const noexcept { return id_; }

  /// The rest of the first line: the name of the language, for people.
  std::string_view DisplayName() const noexcept { return displayName_; }

  /// What the library reads: one entry for each line behind the first one that is not empty, in the
  /// order of the file. Of entries with the same key the first one counts. Views into Raw().
  const std::vector<Entry>& Entries() const noexcept { return entries_; }

  Stop StopsBecause() const noexcept { return end_.stop; }

  /// Offset in Raw() of the byte at which the library stops; the size of the file if it does not.
  std::size_t StopsAt() const noexcept { return end_.at; }

  /// What the library would read behind the fault, if the fault was mended: the rest of the line
  /// where it stops is not among them. Views into Source().Bytes(); they may be not UTF-8. In a
  /// file in UTF-16 or with CRs as line ends these are all entries.
  const std::vector<Entry>& LostEntries() const noexcept { return lostEntries_; }

  /// The id that the library would read if the faults were mended, and that people see.
  std::string_view IntendedId() const noexcept { return intendedId_; }

 private:
  void ReadAsLibrary();
  void ReadLost();

  SourceFile source_;
  bool hasHeader_ = false;
  std::string_view id_;
  std::string_view displayName_;
  std::string_view intendedId_;
  std::vector<Entry> entries_;
  std::vector<Entry> lostEntries_;
  ReadEnd end_;
};

}  // namespace KelmoLibs::Lang
