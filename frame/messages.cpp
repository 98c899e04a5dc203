#include "frame/messages.h"

#include <algorithm>
#include <array>

#include "frame/hash.h"

namespace KelmoLibs::Localize {
namespace {

using Kind = Message::Kind;

struct Wording {
  std::wstring_view front;   // the sentence, and the label of the first detail
  std::wstring_view middle;  // the label of the second, if any
};

constexpr Wording kWordings[] = {
    // by kind
    {L"EL101. Key already declared.\nKey: ", L"\nDictionary: "},
    {L"EL111. Dictionary file not found\nDictionary: ", {}},
    {L"EL111. Dictionary loading error\nDictionary: ", {}},
    {L"EV101. Error parse string.\nString: ", L"\nDictionary: "},
    {L"EV111. Dictionary file not found or corrupted\nDictionary: ", {}},
    {L"EL112. Dictionary not found\nDictionary id: ", {}},
    {L"EL121. Dictionary not found\nDictionary id: ", {}},
    {L"EL121. Key not found in dictionary\nKey: ", L"\nDictionary id: "},
};

constexpr const Wording& WordingOf(Kind kind) noexcept {
  return kWordings[static_cast<std::size_t>(kind)];
}

std::array<std::wstring_view, 4> PiecesOf(const Message& message) noexcept {
  const auto& [front, middle] = WordingOf(message.kind);
  return {front, message.first, middle, message.second};
}

Message MessageOf(Kind kind, std::wstring_view first, std::wstring_view second = {}) noexcept {
  return {kind, first, second, HashText(first) ^ (HashText(second) << 1U)};
}

}  // namespace

Message KeyAlreadyDeclaredMessage(std::wstring_view key, std::wstring_view path) noexcept {
  return MessageOf(Kind::kKeyAlreadyDeclared, key, path);
}

Message DictionaryFileNotFoundMessage(std::wstring_view path) noexcept {
  return MessageOf(Kind::kDictionaryFileNotFound, path);
}

Message DictionaryLoadingErrorMessage(std::wstring_view path) noexcept {
  return MessageOf(Kind::kDictionaryLoadingError, path);
}

Message UnitLineMessage(std::wstring_view line, std::wstring_view path) noexcept {
  return MessageOf(Kind::kUnitLine, line, path);
}

Message UnitTableNotFoundMessage(std::wstring_view path) noexcept {
  return MessageOf(Kind::kUnitTableNotFound, path);
}

Message UnknownDictionaryMessage(std::wstring_view id) noexcept {
  return MessageOf(Kind::kUnknownDictionary, id);
}

Message NoCurrentDictionaryMessage(std::wstring_view id) noexcept {
  return MessageOf(Kind::kNoCurrentDictionary, id);
}

// The detail labelled as the dictionary's id is the key again. That is part of the interface;
// messages_test.cpp pins it.
Message KeyNotFoundMessage(std::wstring_view key, std::uint64_t keyHash) noexcept {
  return {Kind::kKeyNotFound, key, key, keyHash};
}

std::size_t LengthOf(const Message& message) noexcept {
  const auto& [front, middle] = WordingOf(message.kind);
  return front.size() + message.first.size() + middle.size() + message.second.size();
}

void Write(const Message& message, wchar_t* text) noexcept {
  for (const std::wstring_view piece : PiecesOf(message)) {
    text = std::copy(piece.begin(), piece.end(), text);
  }
}

int Compare(const Message& message, std::wstring_view text) noexcept {
  for (const std::wstring_view piece : PiecesOf(message)) {
    const int order = piece.compare(text.substr(0, piece.size()));
    if (order != 0) {
      return order;
    }
    text.remove_prefix(piece.size());
  }
  return text.empty() ? 0 : -1;
}

bool IsTextOf(const Message& message, std::wstring_view text) noexcept {
  const auto& [front, middle] = WordingOf(message.kind);
  const std::size_t firstEnd = front.size() + message.first.size();
  if (text.size() != LengthOf(message) ||
      text.substr(front.size(), message.first.size()) != message.first) {
    return false;
  }
  if (message.kind == Kind::kKeyNotFound) {
    return true;  // its second detail is the first one again
  }
  text.remove_prefix(firstEnd);
  return text.substr(0, middle.size()) == middle && text.substr(middle.size()) == message.second;
}

}  // namespace KelmoLibs::Localize
