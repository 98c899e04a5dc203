// The dictionary that several files with one id make together.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "lang/reading/dictionary_file.h"
#include "storage/record_table.h"

namespace KelmoLibs::Lang {

/// An entry of the dictionary and the file that has it.
struct FoundEntry {
  std::uint32_t file = 0;  // index in Workspace::files
  bool isLost = false;     // hosts do not see it: it lies behind a fault
  const Entry* entry = nullptr;

  explicit operator bool() const noexcept { return entry != nullptr; }
};

/// The first entry of each key, as hosts see it. A lost entry counts only if no file has its key
/// otherwise. The files must outlive it.
class MergedDictionary {
 public:
  /// `fileIndex` is the index of `file` in Workspace::files. Also takes the lost entries: keys that
  /// a mended fault brings back are not missing.
  void Merge(std::uint32_t fileIndex, const DictionaryFile& file);

  /// Indices of its files, in the order of loading.
  const std::vector<std::uint32_t>& Files() const noexcept { return files_; }

  /// The entry that hosts see, or a lost one; nothing if there is no such key.
  FoundEntry Find(std::string_view key) const noexcept;

  std::size_t KeyCount() const noexcept { return first_.Count(); }

 private:
  struct Record {
    std::uint64_t hash;
    mutable FoundEntry found;  // changes from a lost entry to one of the same key that hosts see

    std::uint64_t Hash() const noexcept { return hash; }
    friend int Compare(const Record& left, const Record& right) noexcept {
      return left.found.entry->key.compare(right.found.entry->key);
    }
    friend int Compare(const Record& left, std::string_view right) noexcept {
      return left.found.entry->key.compare(right);
    }
  };
  struct Query {
    std::string_view key;
    std::uint64_t hash;

    std::uint64_t Hash() const noexcept { return hash; }
    bool Matches(const Record& record) const noexcept {
      return record.hash == hash && record.found.entry->key == key;
    }
    std::string_view SortKey() const noexcept { return key; }
  };

  static Query QueryOf(std::string_view key) noexcept;
  void Add(const FoundEntry& added);

  std::vector<std::uint32_t> files_;
  Localize::RecordTable<Record> first_{nullptr};
};

}  // namespace KelmoLibs::Lang
