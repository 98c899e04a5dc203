#include "frame/messages.h"

#include <algorithm>

#include "storage/text_hash.h"

namespace KelmoLibs::Localize {
namespace {

using Kind = Message::Kind;

struct MessageTemplate {
  std::wstring_view prefix;  // the sentence, and the label of the first detail
  std::wstring_view infix;   // the label of the second detail, if any
};

constexpr MessageTemplate kTemplates[] = {
    // in the order of Kind
    {L"EL101. Key already declared.\nKey: ", L"\nDictionary: "},
    {L"EL111. Dictionary file not found\nDictionary: ", {}},
    {L"EL111. Dictionary loading error\nDictionary: ", {}},
    {L"EV101. Error parse string.\nString: ", L"\nDictionary: "},
    {L"EV111. Dictionary file not found or corrupted\nDictionary: ", {}},
    {L"EL112. Dictionary not found\nDictionary id: ", {}},
    {L"EL121. Dictionary not found\nDictionary id: ", {}},
    {L"EL121. Key not found in dictionary\nKey: ", L"\nDictionary id: "},
};

constexpr const MessageTemplate& TemplateOf(Kind kind) noexcept {
  return kTemplates[static_cast<std::size_t>(kind)];
}

// For a missing key, the detail with the label "Dictionary id" is the key again. This oddity is
// part of the interface and must stay (messages_test.cpp).
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

std::size_t TextLength(const Message& message) noexcept {
  const auto& [prefix, infix] = TemplateOf(message.kind);
  return prefix.size() + message.first.size() + infix.size() + SecondDetail(message).size();
}

Message FormatTo(wchar_t* text, const Message& message) noexcept {
  const auto& [prefix, infix] = TemplateOf(message.kind);
  const wchar_t* const first = text + prefix.size();
  const wchar_t* const second = first + message.first.size() + infix.size();
  for (const std::wstring_view part : {prefix, message.first, infix, SecondDetail(message)}) {
    text = std::copy(part.begin(), part.end(), text);
  }
  return {
      message.kind, {first, message.first.size()}, {second, message.second.size()}, message.hash};
}

}  // namespace KelmoLibs::Localize
