// Every message text of the library is formed here and nowhere else.
//
// Hosts show the texts and may search in them, so they are part of the interface: first a code and a
// sentence, then a line for each detail.
#pragma once

#include <string>
#include <string_view>

namespace KelmoLibs::Localize {

// Loading a dictionary; `path` as joined from folder and file name. The last one is that of a unit
// table, too.
std::wstring KeyAlreadyDeclaredMessage(std::wstring_view key, std::wstring_view path);  // EL101
std::wstring DictionaryFileNotFoundMessage(std::wstring_view path);                     // EL111
std::wstring DictionaryLoadingErrorMessage(std::wstring_view path);                     // EL111

// Loading the unit table of a language.
std::wstring UnitLineMessage(std::wstring_view line, std::wstring_view path);  // EV101
std::wstring UnitTableNotFoundMessage(std::wstring_view path);                 // EV111

// Selecting a dictionary and looking up texts.
std::wstring UnknownDictionaryMessage(std::wstring_view id);    // EL112
std::wstring NoCurrentDictionaryMessage(std::wstring_view id);  // EL121
std::wstring KeyNotFoundMessage(std::wstring_view key);         // EL121

}  // namespace KelmoLibs::Localize
