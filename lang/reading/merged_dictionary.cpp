#include "lang/reading/merged_dictionary.h"

#include <new>

#include "storage/text_hash.h"

namespace KelmoLibs::Lang {

void MergedDictionary::Merge(std::uint32_t fileIndex, const DictionaryFile& file) {
  files_.push_back(fileIndex);
  for (const Entry& entry : file.Entries()) {
    Add(fileIndex, entry);
  }
  for (const Entry& entry : file.LostEntries()) {
    Add(fileIndex, entry);
  }
}

FoundEntry MergedDictionary::Find(std::string_view key) const noexcept {
  const Record* const record = first_.Find(QueryOf(key));
  return record != nullptr ? record->found : FoundEntry{};
}

MergedDictionary::Query MergedDictionary::QueryOf(std::string_view key) noexcept {
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(key.data());
  return {key, Localize::AnyLength::Hash(bytes, key.size())};
}

void MergedDictionary::Add(std::uint32_t fileIndex, const Entry& entry) {
  const Query query = QueryOf(entry.key);
  if (first_.Find(query) == nullptr) {
    const Record record{query.hash, {fileIndex, &entry}};
    first_.Add(query.hash, sizeof(Record), [&record](std::byte* memory) {
      return new (memory) Record(record);  // NOLINT(cppcoreguidelines-owning-memory): the arena's
    });
  }
}

}  // namespace KelmoLibs::Lang
