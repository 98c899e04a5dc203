#include "frame/messages.h"

#include <algorithm>

#include "storage/text_block.h"

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

// The detail labelled as the dictionary's id is the key again. That is part of the interface;
// messages_test.cpp pins it.
std::wstring_view SecondDetail(const Message& message) noexcept {
  return message.kind == Kind::kKeyNotFound ? message.first : message.second;
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

Message KeyNotFoundMessage(std::wstring_view key, std::uint64_t keyHash) noexcept {
  return {Kind::kKeyNotFound, key, {}, keyHash};
}

int Compare(const Message& left, const Message& right) noexcept {
  if (left.kind != right.kind) {
    return left.kind < right.kind ? -1 : 1;
  }
  const int order = left.first.compare(right.first);
  return order != 0 ? order : left.second.compare(right.second);
}

std::size_t LengthOf(const Message& message) noexcept {
  const auto& [front, middle] = WordingOf(message.kind);
  return front.size() + message.first.size() + middle.size() + SecondDetail(message).size();
}

Message Write(const Message& message, wchar_t* text) noexcept {
  const auto& [front, middle] = WordingOf(message.kind);
  const wchar_t* const first = text + front.size();
  const wchar_t* const second = first + message.first.size() + middle.size();
  for (const std::wstring_view piece : {front, message.first, middle, SecondDetail(message)}) {
    text = std::copy(piece.begin(), piece.end(), text);
  }
  return {
      message.kind, {first, message.first.size()}, {second, message.second.size()}, message.hash};
}

}  // namespace KelmoLibs::Localize
