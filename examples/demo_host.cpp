// A host program in small: loads the dictionaries of its languages, switches between them, shows
// texts, and reads back what the library found wrong.
// Run it from the top folder of the project. It prints UTF-8: a Windows console shows that after
// "chcp 65001".

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <string>

#include "kelmo_localizer.h"

namespace {

// Wide text as UTF-8, for a terminal: surrogate pairs where wchar_t has 16 bits.
std::string Utf8(const std::wstring& text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    auto c = static_cast<char32_t>(text[i]);
    if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size()) {
      c = 0x10000 + ((c - 0xD800) << 10U) + (static_cast<char32_t>(text[++i]) - 0xDC00);
    }
    const auto add = [&bytes](char32_t byte) { bytes += static_cast<char>(byte); };
    if (c < 0x80) {
      add(c);
    } else if (c < 0x800) {
      add(0xC0U | (c >> 6U));
      add(0x80U | (c & 0x3FU));
    } else if (c < 0x10000) {
      add(0xE0U | (c >> 12U));
      add(0x80U | ((c >> 6U) & 0x3FU));
      add(0x80U | (c & 0x3FU));
    } else {
      add(0xF0U | (c >> 18U));
      add(0x80U | ((c >> 12U) & 0x3FU));
      add(0x80U | ((c >> 6U) & 0x3FU));
      add(0x80U | (c & 0x3FU));
    }
  }
  return bytes;
}

void Print(const std::wstring& text) { std::cout << Utf8(text); }

std::wstring Padded(std::wstring text, std::size_t width) {
  text.resize(std::max(width, text.size() + 1), L' ');
  return text;
}

void Heading(const wchar_t* text) { Print(std::wstring(L"\n") + text + L"\n"); }

// Only a negative result is a failure: the others count every message in the list, older ones too.
bool Load(const wchar_t* fileName) {
  const int result = LoadDictionary(L"examples/lang", fileName);
  Print(Padded(std::wstring(L"  LoadDictionary ") + fileName, 30) + L"-> " +
        std::to_wstring(result) + L"\n");
  return result >= 0;
}

void ShowTexts(const wchar_t* id, const wchar_t* const* keys, std::size_t count) {
  const int result = UseLanguage(id);
  Print(std::wstring(L"\n  UseLanguage ") + id + L" -> " + std::to_wstring(result) + L"\n");
  for (std::size_t i = 0; i < count; ++i) {
    Print(L"    " + Padded(keys[i], 24) + LANG(keys[i]) + L"\n");
  }
}

void ShowMessages() {
  const int64_t count = GetErrorsCount();
  Print(L"\n  The library's messages, " + std::to_wstring(count) + L":\n");
  for (int32_t i = 0; i < count; ++i) {
    std::wstring message = GetError(i);
    for (std::size_t at = 0; (at = message.find(L'\n', at)) != std::wstring::npos; at += 9) {
      message.replace(at, 1, L"\n        ");
    }
    Print(L"    " + std::to_wstring(i) + L"   " + message + L"\n");
  }
}

}  // namespace

int main() {
  Heading(L"Loading the dictionaries of three languages");
  if (!Load(L"en.txt") || !Load(L"de.txt") || !Load(L"ru.txt")) {
    ShowMessages();
    return 1;
  }

  Heading(L"The same keys in each language");
  const wchar_t* const keys[] = {
      L"menu.file",    L"menu.file.exit", L"dialog.open.title", L"quantity.plane_angle",
      L"status.ready", L"warn.unsaved",
  };
  for (const wchar_t* const id : {L"en", L"de", L"ru"}) {
    ShowTexts(id, keys, std::size(keys));
  }
  if (GetErrorsCount() != 0) {
    ShowMessages();
    return 1;
  }

  Heading(L"A faulty dictionary: keys declared twice, then a byte that is not UTF-8");
  if (!Load(L"faulty.txt")) {
    ShowMessages();
    return 1;
  }
  const wchar_t* const faultyKeys[] = {
      L"plugin.title", L"plugin.stop", L"plugin.no_text", L"plugin.note", L"plugin.after",
  };
  ShowTexts(L"plugin", faultyKeys, std::size(faultyKeys));
  Print(L"  The damaged byte ends the file: plugin.note is cut, plugin.after is missing.\n");

  Heading(L"A file and a language that are not there");
  Load(L"fr.txt");
  Print(L"  UseLanguage fr -> " + std::to_wstring(UseLanguage(L"fr")) + L"\n");
  ShowMessages();

  ClearErrors();
  Print(L"\n  After ClearErrors: " + std::to_wstring(GetErrorsCount()) + L" messages.\n");
  return 0;
}
