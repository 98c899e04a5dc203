// Every message text of the library is formed here and nowhere else.
//
// Hosts show the texts and may search in them, so they are part of the interface: first a code and a
// sentence, then a line for each detail.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace KelmoLibs::Localize {

/// A message that has not been put together: to find it in a list takes no memory.
struct Message {
  enum class Kind : std::uint8_t {
    kKeyAlreadyDeclared,
    kDictionaryFileNotFound,
    kDictionaryLoadingError,
    kUnitLine,
    kUnitTableNotFound,
    kUnknownDictionary,
    kNoCurrentDictionary,
    kKeyNotFound,
  };

  Kind kind;
  std::wstring_view first;   // detail, not owned; has no LF where another follows
  std::wstring_view second;  // nothing where the kind has but one, or puts the first one twice
  std::uint64_t hash;        // equal for equal messages
};

/// An order of messages: negative, 0 or positive.
int Compare(const Message& left, const Message& right) noexcept;

/// Loading a dictionary; `path` as joined from folder and file name. The last one is that of a unit
/// table, too.
Message KeyAlreadyDeclaredMessage(std::wstring_view key, std::wstring_view path) noexcept;  // EL101
Message DictionaryFileNotFoundMessage(std::wstring_view path) noexcept;                     // EL111
Message DictionaryLoadingErrorMessage(std::wstring_view path) noexcept;                     // EL111

/// Loading the unit table of a language.
Message UnitLineMessage(std::wstring_view line, std::wstring_view path) noexcept;  // EV101
Message UnitTableNotFoundMessage(std::wstring_view path) noexcept;                 // EV111

/// Selecting a dictionary and looking up texts. `keyHash` is HashText of the key.
Message UnknownDictionaryMessage(std::wstring_view id) noexcept;                    // EL112
Message NoCurrentDictionaryMessage(std::wstring_view id) noexcept;                  // EL121
Message KeyNotFoundMessage(std::wstring_view key, std::uint64_t keyHash) noexcept;  // EL121

/// Length of the message's text.
std::size_t LengthOf(const Message& message) noexcept;

/// Writes its text, without a zero behind it. Returns the message with its details in that text.
Message Write(const Message& message, wchar_t* text) noexcept;

}  // namespace KelmoLibs::Localize
