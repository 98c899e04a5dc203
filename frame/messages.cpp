#include "frame/messages.h"

#include <initializer_list>

namespace KelmoLibs::Localize {
namespace {

constexpr std::wstring_view kDictionaryDetail = L"\nDictionary: ";
constexpr std::wstring_view kDictionaryIdDetail = L"\nDictionary id: ";
constexpr std::wstring_view kKeyDetail = L"\nKey: ";
constexpr std::wstring_view kStringDetail = L"\nString: ";

std::wstring Join(std::initializer_list<std::wstring_view> pieces) {
  std::size_t length = 0;
  for (const std::wstring_view piece : pieces) {
    length += piece.size();
  }
  std::wstring message;
  message.reserve(length);
  for (const std::wstring_view piece : pieces) {
    message += piece;
  }
  return message;
}

}  // namespace

std::wstring KeyAlreadyDeclaredMessage(std::wstring_view key, std::wstring_view path) {
  return Join({L"EL101. Key already declared.", kKeyDetail, key, kDictionaryDetail, path});
}

std::wstring DictionaryFileNotFoundMessage(std::wstring_view path) {
  return Join({L"EL111. Dictionary file not found", kDictionaryDetail, path});
}

std::wstring DictionaryLoadingErrorMessage(std::wstring_view path) {
  return Join({L"EL111. Dictionary loading error", kDictionaryDetail, path});
}

std::wstring UnitLineMessage(std::wstring_view line, std::wstring_view path) {
  return Join({L"EV101. Error parse string.", kStringDetail, line, kDictionaryDetail, path});
}

std::wstring UnitTableNotFoundMessage(std::wstring_view path) {
  return Join({L"EV111. Dictionary file not found or corrupted", kDictionaryDetail, path});
}

std::wstring UnknownDictionaryMessage(std::wstring_view id) {
  return Join({L"EL112. Dictionary not found", kDictionaryIdDetail, id});
}

std::wstring NoCurrentDictionaryMessage(std::wstring_view id) {
  return Join({L"EL121. Dictionary not found", kDictionaryIdDetail, id});
}

// The detail labelled as the dictionary's id is the key again. That is part of the interface;
// messages_test.cpp pins it.
std::wstring KeyNotFoundMessage(std::wstring_view key) {
  return Join({L"EL121. Key not found in dictionary", kKeyDetail, key, kDictionaryIdDetail, key});
}

}  // namespace KelmoLibs::Localize
