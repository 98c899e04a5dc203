#include "lang/reading/merged_dictionary.h"

#include <new>

#include "storage/text_hash.h"

namespace KelmoLibs::Lang {

void MergedDictionary::Merge(std::uint32_t fileIndex, const DictionaryFile& file) {
  files_.push_back(fileIndex);
  std::size_t left = file.Entries().size() + file.LostEntries().size();
  const auto add = [&](const std::vector<Entry>& entries, bool areLost) {
    for (const Entry& entry : entries) {
      if (first_.IsFull()) {
        first_.Grow(first_.Count() + left);
      }
      --left;
      Add({fileIndex, areLost, &entry});
    }
  };
  add(file.Entries(), false);
  add(file.LostEntries(), true);
}

FoundEntry MergedDictionary::Find(std::string_view key) const noexcept {
  const Record* const record = first_.Find(QueryOf(key));
  return record != nullptr ? record->found : FoundEntry{};
}

MergedDictionary::Query MergedDictionary::QueryOf(std::string_view key) noexcept {
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(key.data());
  return {key, Localize::AnyLength::Hash(bytes, key.size())};
}

void MergedDictionary::Add(const FoundEntry& added) {
  const Query query = QueryOf(added.entry->key);
  const Record* const known = first_.Find(query);
  if (known == nullptr) {
    const Record record{query.hash, added};
    first_.Add(query.hash, sizeof(Record), [&record](std::byte* memory) {
      return new (memory) Record(record);  // NOLINT(cppcoreguidelines-owning-memory): the arena's
    });
  } else if (known->found.isLost && !added.isLost) {
    known->found = added;
  }
}

}  // namespace KelmoLibs::Lang
