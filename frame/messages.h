// The messages of the library as data, and their texts. All message texts are formed here.
//
// Hosts show the texts and may search in them, so the texts are part of the interface. A text has a
// code and a sentence, and then a line for each detail.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace KelmoLibs::Localize {

/// A message as data: it can be found in a list without forming its text.
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

  // The details are not owned. In the kinds with two different details the first one has no LF, so
  // that different messages have different texts. `second` is empty in the other kinds.
  Kind kind;
  std::wstring_view first;
  std::wstring_view second;
  std::uint64_t hash;  // equal messages have equal hashes
};

/// A total order of messages. Negative, 0 or positive.
int Compare(const Message& left, const Message& right) noexcept;

/// Messages about loading a dictionary. `path` is the result of JoinPath.
Message KeyAlreadyDeclaredMessage(std::wstring_view key, std::wstring_view path) noexcept;  // EL101
Message DictionaryFileNotFoundMessage(std::wstring_view path) noexcept;                     // EL111
Message DictionaryLoadingErrorMessage(std::wstring_view path) noexcept;                     // EL111

/// Messages about loading the unit table of a language.
Message UnitLineMessage(std::wstring_view line, std::wstring_view path) noexcept;  // EV101
Message UnitTableNotFoundMessage(std::wstring_view path) noexcept;                 // EV111

/// Messages about selecting a dictionary and looking up a text. Precondition: `keyHash` is
/// HashText(key).
Message UnknownDictionaryMessage(std::wstring_view id) noexcept;                    // EL112
Message NoCurrentDictionaryMessage(std::wstring_view id) noexcept;                  // EL121
Message KeyNotFoundMessage(std::wstring_view key, std::uint64_t keyHash) noexcept;  // EL121

/// Length of the text of `message`, without a terminating zero.
std::size_t TextLength(const Message& message) noexcept;

/// Writes the text of `message` to `text`: TextLength() characters, no terminating zero. Returns an
/// equal message whose details are views into that text.
Message FormatTo(wchar_t* text, const Message& message) noexcept;

}  // namespace KelmoLibs::Localize
