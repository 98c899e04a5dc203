#include "dictionary/dictionary.h"

#include <algorithm>
#include <iterator>
#include <new>

#include "dictionary/key.h"
#include "frame/hash.h"

namespace KelmoLibs::Localize {
namespace {

constexpr std::size_t kFewEntries = 64;
constexpr std::size_t kMostGrowth = 8;  // at a time: an expectation may be far from the truth

bool IsHashed(std::string_view key) noexcept { return key.size() <= AnyKey::kMostBytes; }

}  // namespace

template <class AnyText>
const Dictionary::Entry* Dictionary::FindHomeless(AnyText key) const noexcept {
  const auto place = homeless_.find(key);
  return place != homeless_.end() ? place->second : nullptr;
}

Dictionary::Found Dictionary::Find(std::wstring_view key) const noexcept {
  if (ShortAsciiKey::MayBe(key)) {
    const ShortAsciiKey ascii(key);
    if (ascii.IsAscii()) {
      const std::uint64_t hash = ascii.Hash();
      const Entry* const entry = index_.Find(
          hash, [&ascii](const Entry& candidate) { return ascii.Is(candidate.Key()); },
          [this, key] { return FindHomeless(key); });
      return {entry != nullptr ? entry->Text() : nullptr, hash};
    }
  }
  return FindAny(key);
}

void Dictionary::Reserve(std::size_t entries, std::size_t bytes) {
  const std::size_t least = std::max(2 * count_, kFewEntries);
  const std::size_t most = std::max(kMostGrowth * count_, kFewEntries);
  blocks_.Expect(bytes);
  index_.Grow(
      std::clamp(entries, least, most), [](const Entry& entry) { return HashBytes(entry.Key()); },
      [this](const Entry& entry) { homeless_.emplace(entry.Key(), &entry); });
  for (auto place = homeless_.begin(); place != homeless_.end();) {
    const auto& [key, entry] = *place;
    const bool isHome = IsHashed(key) && index_.Insert(HashBytes(key), entry);
    place = isHome ? homeless_.erase(place) : std::next(place);
  }
}

bool Dictionary::Add(std::string_view key, std::string_view text) {
  const bool isHashed = IsHashed(key);
  const std::uint64_t hash = isHashed ? HashBytes(key) : 0;
  if (Has(key, hash)) {
    return false;
  }
  if (IsFull()) {
    Reserve(0, 0);
  }
  const std::size_t textLength = WideLength(text);
  const std::size_t bytes = Entry::TextPlace(key.size()) + (textLength + 1) * sizeof(wchar_t);
  std::byte* const memory = blocks_.Take(bytes);
  const Entry& entry = Write(key, text, textLength, memory);
  if (!isHashed || !index_.Insert(hash, &entry)) {
    try {
      homeless_.emplace(entry.Key(), &entry);
    } catch (...) {
      blocks_.GiveBack(memory, bytes);
      throw;
    }
  }
  ++count_;
  return true;
}

bool Dictionary::Has(std::string_view key, std::uint64_t hash) const noexcept {
  const auto amongHomeless = [this, key] { return FindHomeless(key); };
  const Entry* const entry =
      IsHashed(key) ? index_.Find(
                          hash, [key](const Entry& candidate) { return candidate.Key() == key; },
                          amongHomeless)
                    : amongHomeless();
  return entry != nullptr;
}

const Dictionary::Entry& Dictionary::Write(std::string_view key, std::string_view text,
                                           std::size_t textLength, std::byte* memory) noexcept {
  // The block owns it. NOLINTNEXTLINE(cppcoreguidelines-owning-memory)
  auto* const entry = new (memory) Entry{key.size()};
  std::copy(key.begin(), key.end(), reinterpret_cast<char*>(entry + 1));
  auto* const wide = reinterpret_cast<wchar_t*>(memory + Entry::TextPlace(key.size()));
  DecodeUtf8(text, wide, textLength);
  wide[textLength] = L'\0';
  return *entry;
}

Dictionary::Found Dictionary::FindAny(std::wstring_view key) const noexcept {
  const AnyKey any(key);
  const Entry* const entry =
      any.IsHashed()
          ? index_.Find(
                any.Hash(), [&any](const Entry& candidate) { return any.Is(candidate.Key()); },
                [this, key] { return FindHomeless(key); })
          : FindHomeless(key);
  return {entry != nullptr ? entry->Text() : nullptr, any.Hash()};
}

}  // namespace KelmoLibs::Localize
