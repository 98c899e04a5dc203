#include "host/language_texts.h"

#include <algorithm>
#include <new>

#include "host/utf16_units.h"

namespace KelmoLibs::Host {
namespace {

constexpr std::uint32_t kFileBits = 0x1FFFFFFF;  // a collection never has more files

}  // namespace

const TextRecord* LanguageTexts::Add(const NewText& added) {
  const KeyBytes query(added.key);
  if (const TextRecord* const existing = table_.Find(query)) {
    if (!added.isOverride) {  // the table gives constants, but its memory is none
      const_cast<TextRecord*>(existing)->isOfProgram = 1;
    }
    return existing;
  }
  const std::size_t utf16Size = added.hasUtf16 ? Utf16Length(added.text) : TextRecord::kNoUtf16;
  std::size_t bytes = TextRecord::Utf16Offset(added.key.size(), added.text.size());
  if (added.hasUtf16) {
    bytes += (utf16Size + 1) * sizeof(std::uint16_t);
  }
  if (entries_.size() == entries_.capacity()) {
    entries_.reserve(2 * entries_.size() + 1);  // so that push_back does not throw behind Add
  }
  const TextRecord head{query.Hash(),
                        added.key.size(),
                        added.text.size(),
                        utf16Size,
                        added.file & kFileBits,
                        added.isOverride ? 1U : 0U,
                        added.hasPercent ? 1U : 0U,
                        added.isOverride ? 0U : 1U,
                        added.line};
  entries_.push_back(table_.Add(head.hash, sizeof head + bytes, [&head, &added](std::byte* memory) {
    auto* const record = new (memory) TextRecord(head);  // NOLINT(*-owning-memory): the arena's
    char* end = std::copy(added.key.begin(), added.key.end(),
                          reinterpret_cast<char*>(memory + sizeof head));
    *end++ = '\0';
    end = std::copy(added.text.begin(), added.text.end(), end);
    *end = '\0';
    if (added.hasUtf16) {
      *EncodeUtf16(added.text, const_cast<std::uint16_t*>(record->Utf16())) = 0;
    }
    return record;
  }));
  return nullptr;
}

}  // namespace KelmoLibs::Host
