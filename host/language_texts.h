// The texts of one language, in UTF-8 and, if the load asked for it, in UTF-16.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/key_bytes.h"
#include "platform/memory.h"
#include "storage/record_table.h"

namespace KelmoLibs::Host {

/// An entry. Behind it in memory: the bytes of the key, a zero, the bytes of the text, a zero, and,
/// at the next even address, the code units of the text and a zero.
struct TextRecord {
  std::uint64_t hash;  // of the key
  std::size_t keySize;
  std::size_t textSize;
  std::size_t utf16Size;          // kNoUtf16 if there is none
  std::uint32_t file : 29;        // index in the files of the texts
  std::uint32_t isOverride : 1;   // 1: it is meant to stand for those of other files
  std::uint32_t hasPercent : 1;   // 1: %1 to %99 in the text are placeholders
  std::uint32_t isOfProgram : 1;  // 1: a file that overrides no other has the key
  std::uint32_t line;             // from 1

  static constexpr std::size_t kNoUtf16 = ~std::size_t{0};

  const char* KeyData() const noexcept { return reinterpret_cast<const char*>(this + 1); }
  std::string_view Key() const noexcept { return {KeyData(), keySize}; }
  std::string_view Text() const noexcept { return {KeyData() + keySize + 1, textSize}; }

  /// Null if there is no UTF-16.
  const std::uint16_t* Utf16() const noexcept {
    return utf16Size == kNoUtf16
               ? nullptr
               : reinterpret_cast<const std::uint16_t*>(KeyData() + Utf16Offset(keySize, textSize));
  }

  /// Offset of the code units behind the record.
  static constexpr std::size_t Utf16Offset(std::size_t keySize, std::size_t textSize) noexcept {
    const std::size_t bytes = keySize + 1 + textSize + 1;
    return bytes + bytes % sizeof(std::uint16_t);
  }

  std::uint64_t Hash() const noexcept { return hash; }
  friend int Compare(const TextRecord& left, const TextRecord& right) noexcept {
    return left.Key().compare(right.Key());
  }
  friend int Compare(const TextRecord& left, std::string_view right) noexcept {
    return left.Key().compare(right);
  }
};

/// What a dictionary says about a key.
struct NewText {
  std::string_view key;
  std::string_view text;
  std::uint32_t file;
  std::uint32_t line;
  bool hasUtf16;
  bool hasPercent;  // %1 to %99 in the text are placeholders
  bool isOverride;  // the text is meant to stand for those of other files
};

class LanguageTexts {
 public:
  explicit LanguageTexts(std::string_view id) : id_(id) {}

  const std::string& Id() const noexcept { return id_; }

  /// The name of the language, for people.
  const std::string& Name() const noexcept { return name_; }
  void SetName(std::string name) noexcept { name_ = std::move(name); }

  /// Whether a file of the program has the language: one that overrides no other.
  bool IsOfProgram() const noexcept { return isOfProgram_; }

  /// The program has the language. It names it too: the name of an override is dropped.
  void SetOfProgram() noexcept {
    isOfProgram_ = true;
    name_.clear();
  }

  /// Null if there is no text with that key. Takes no memory.
  const TextRecord* Find(const KeyBytes& key) const noexcept { return table_.Find(key); }

  /// See RecordTable::FindFirstCandidate.
  KELMO_LOCALIZER_ALWAYS_INLINE const TextRecord* FindFirstCandidate(
      const KeyBytes& key) const noexcept {
    return table_.FindFirstCandidate(key);
  }

  /// Adds an entry, and returns null; or returns the entry with that key: it stays, and becomes one
  /// of the program if the new one is. Throws std::bad_alloc; nothing has changed then.
  const TextRecord* Add(const NewText& added);

  /// Whether the next Add makes the table grow. A reader that can estimate the final number of
  /// entries calls Grow first. Grow throws std::bad_alloc; nothing has changed then.
  bool IsFull() const noexcept { return table_.IsFull(); }
  void Grow(std::size_t expectedEntries) { table_.Grow(expectedEntries); }

  /// All entries in the order of loading.
  const std::vector<const TextRecord*>& Entries() const noexcept { return entries_; }

 private:
  std::string id_;
  std::string name_;
  bool isOfProgram_ = false;
  Localize::RecordTable<TextRecord> table_{Localize::PrefaultPages};
  std::vector<const TextRecord*> entries_;
};

}  // namespace KelmoLibs::Host
