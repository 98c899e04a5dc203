#include "dictionary/dictionary.h"

namespace KelmoLibs::Localize {

wchar_t* Dictionary::Add(std::wstring_view key, std::size_t length) {
  const KeyQuery<AnyLength> query(key);
  if (Find(query) != nullptr) {
    return nullptr;
  }
  const StoredKey head(key);
  const std::size_t bytes = head.Bytes() + (length + 1) * sizeof(wchar_t);
  wchar_t* text = nullptr;
  entries_.Add(query.Hash(), bytes, [&head, &text, key](std::byte* memory) {
    text = reinterpret_cast<wchar_t*>(memory + head.Bytes());
    return head.ConstructAt(memory, key);
  });
  return text;
}

}  // namespace KelmoLibs::Localize
