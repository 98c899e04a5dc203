// A host program in small, in the order of every host. It starts the library, which replaces the units
// that it is built with. Texts: it loads the dictionaries of its languages, switches between them,
// shows texts, and reads back what the library found wrong. Values: it computes across units, and
// shows numbers as exactly as they are known.
// Run it from the top folder of the project. It prints UTF-8: a Windows console shows that after
// "chcp 65001".

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "kelmo_localizer.h"

using KelmoLibs::Localize::Phyval::Double;
using KelmoLibs::Localize::Phyval::ValueType;

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

// What the catalogue holds under a code, at this moment.
std::wstring UnitOf(int code) {
  const ValueType* const unit = Double(1, 1, 0, code).unit;
  return unit == nullptr ? L"none" : unit->symbol + L", \"" + unit->name + L"\"";
}

// Before the first value is made: those made earlier are out of date afterwards.
void Start(const wchar_t* language) {
  const int codes[] = {10001, 10002, 20001, 30001, 40001, 40002};
  std::wstring before[std::size(codes)];
  std::transform(std::begin(codes), std::end(codes), std::begin(before), UnitOf);
  const int result = Init(L"examples", language);  // reads examples/LANG/ru-val.txt
  Print(std::wstring(L"  Init ") + language + L" -> " + std::to_wstring(result) + L"\n");
  Print(L"  The unit of   before               after\n");
  for (std::size_t i = 0; i < std::size(codes); ++i) {
    Print(L"    " + Padded(std::to_wstring(codes[i]), 12) + Padded(before[i], 21) +
          UnitOf(codes[i]) + L"\n");
  }
}

// Only a negative result is a failure: the others count every message in the list, older ones too.
bool Load(const wchar_t* fileName) {
  const int result = LoadDictionary(L"examples/LANG", fileName);
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

// The library prints numbers; their unit is the host's to add.
std::wstring WithUnit(Double value) { return value.to_string(L'.') + L" " + value.unit->symbol; }

// Units by their codes: 10001 meters, 10002 inches, 40001 degrees, 40002 radians.
void ShowValues() {
  Double length(2.5, 0.01, 0, 10001);  // known to 0.01 m
  Double inches(10, 0.1, 0, 10002);
  Double angle(90, 0.5, 0, 40001);
  Print(L"  A length:      " + WithUnit(length) + L" = " +
        WithUnit(length.ConvertTo(0.1, 0, 10002)) + L" (an inch of " +
        Double(inches.unit->factor, 0.0001, 0, 10001).to_string(L'.') + L" m)\n");
  Print(L"  An angle:      " + WithUnit(angle) + L" = " +
        WithUnit(angle.ConvertTo(0.001, 0, 40002)) + L"\n");
  Print(L"  A sum:         " + WithUnit(length) + L" + " + WithUnit(inches) + L" = " +
        WithUnit(length + inches) + L"\n");
  Print(L"  A comparison:  " + WithUnit(inches) + (inches < length ? L" < " : L" >= ") +
        WithUnit(length) + L"\n");
  for (const double tolerance : {0.01, 1.0, 150.0}) {
    Print(L"  1234.5678 known to " + Padded(Double(tolerance, 0.01, 0, 10001).to_string(L'.'), 8) +
          Double(1234.5678, tolerance, 0, 10001).to_string(L'.') + L"\n");
  }
  Print(L"  With the separator of your region:  " + Double(0.5, 0.1, 0, 10001).to_string() + L"\n");
  try {
    (void)(length + angle);
  } catch (const std::invalid_argument& refusal) {
    std::cout << "  A length plus an angle:  " << refusal.what() << '\n';
  }
}

}  // namespace

int main() {
  Heading(
      L"Starting the library: the table that it carries replaces the units that it is built with");
  Start(L"ru");

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

  Heading(L"Physical values: units, and how exactly a number is known");
  ShowValues();
  return 0;
}
