// A small host. Texts: it loads the dictionaries of three languages, switches between them, and
// shows the messages of a faulty one. Values: it computes with different units and prints numbers
// as exactly as they are known. The last part shows what may surprise. Run it from the top folder
// of the project.

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

#include "kelmo_localizer.h"
#include "print.h"

using KelmoLibs::Localize::Phyval::Double;

namespace {

std::wstring Padded(std::wstring text, std::size_t width) {
  text.resize(std::max(width, text.size() + 1), L' ');
  return text;
}

// Prints a line with a remark.
void Say(const std::wstring& text, const std::wstring& remark) {
  constexpr std::size_t kRemark = 32;
  Print({L"  ", remark.empty() ? text : Padded(text, kRemark) + remark, L"\n"});
}

// Only a negative result is a failure. Other results are the number of all messages in the list.
bool Load(const wchar_t* fileName) {
  const int result = LoadDictionary(L"examples/LANG", fileName);
  const std::wstring number = std::to_wstring(result);
  Say(std::wstring(L"LoadDictionary ") + fileName + L" -> " + number,
      result < 0 ? L"not read: a failure" : L"read; messages listed: " + number);
  return result >= 0;
}

void ShowMessages() {
  for (int32_t i = 0; i < GetErrorsCount(); ++i) {
    std::wstring message = GetError(i);
    constexpr wchar_t kIndented[] = L"\n      ";
    for (std::size_t at = 0; (at = message.find(L'\n', at)) != std::wstring::npos; ++at) {
      message.replace(at, 1, kIndented);
    }
    Print({L"    ", message, L"\n"});
  }
}

// Prints a row for each key and a column for each language.
void ShowTexts(const std::vector<std::wstring>& ids, const std::vector<std::wstring>& keys) {
  constexpr std::size_t kKey = 22;
  constexpr std::size_t kText = 18;
  std::vector<std::wstring> rows = {Padded(L"", kKey)};
  for (const std::wstring& key : keys) {
    rows.push_back(Padded(key, kKey));
  }
  for (const std::wstring& id : ids) {
    UseLanguage(id.c_str());
    rows[0] += Padded(id, kText);
    for (std::size_t i = 0; i < keys.size(); ++i) {
      rows[i + 1] += Padded(LANG(keys[i].c_str()), kText);
    }
  }
  for (std::wstring& row : rows) {
    row.erase(row.find_last_not_of(L' ') + 1);
    Print({L"  ", row, L"\n"});
  }
}

void ShowAFaultyDictionary() {
  Print({L"\nA translator's file with mistakes\n"});
  Load(L"faulty.txt");
  ShowMessages();
  ClearErrors();
  UseLanguage(L"plugin");
  Say(L"LANG plugin.title", LANG(L"plugin.title") + std::wstring(L" (the first text stays)"));
  Say(L"LANG plugin.note", LANG(L"plugin.note"));
  Say(L"", L"... cut at a byte that is not UTF-8");
  Say(L"LANG plugin.after",
      std::wstring(LANG(L"plugin.after")) + L"(empty: lost behind that byte)");
  ShowMessages();
  ClearErrors();
}

void ShowAMissingLanguage() {
  Print({L"\nA file and a language that are not there\n"});
  Load(L"fr.txt");
  Say(L"UseLanguage fr -> " + std::to_wstring(UseLanguage(L"fr")), L"the one before stays");
  ShowMessages();
  ClearErrors();
}

// The library prints numbers only. The host adds the unit.
std::wstring WithUnit(Double value) { return value.to_string(L'.') + L" " + value.unit->symbol; }

// Units by their codes: 10001 meters, 10002 inches, 40001 degrees, 40002 radians.
void ShowValues() {
  Print({L"\nValues have a unit and a tolerance, which says how many digits are shown\n"});
  Double length(2.5, 0.01, 0, 10001);  // known to 0.01 m
  Double inches(10, 0.1, 0, 10002);
  Double angle(90, 0.5, 0, 40001);
  Say(L"a length", WithUnit(length) + L" = " + WithUnit(length.ConvertTo(0.1, 0, 10002)));
  Say(L"an angle", WithUnit(angle) + L" = " + WithUnit(angle.ConvertTo(0.001, 0, 40002)));
  Say(L"a sum", WithUnit(length) + L" + " + WithUnit(inches) + L" = " + WithUnit(length + inches));
  Say(L"a comparison", WithUnit(inches) + (inches < length ? L" < " : L" >= ") + WithUnit(length));
  for (const double tolerance : {0.01, 1.0, 40.0}) {
    Say(L"3721.0468 known to " + Double(tolerance, 0.01, 0, 10001).to_string(L'.'),
        Double(3721.0468, tolerance, 0, 10001).to_string(L'.'));
  }
  Say(L"your system's separator", Double(0.5, 0.1, 0, 10001).to_string());
  try {
    (void)(length + angle);
  } catch (const std::invalid_argument& refusal) {
    const std::string text = refusal.what();
    Say(L"a length plus an angle", std::wstring(text.begin(), text.end()));
  }
}

// The name of the unit that has this code or symbol now.
template <class CodeOrSymbol>
std::wstring NameOf(CodeOrSymbol unit) {
  const Double value(1, 1, 0, unit);
  return value.unit == nullptr ? L"none" : L"\"" + value.unit->name + L"\"";
}

struct Names {
  std::wstring squareMeter = NameOf(20001);
  std::wstring meter = NameOf(10001);
};

void ShowOddities(const Names& before) {
  const Names after;
  Double inch(1, 0.0001, 0, 10002);
  Print({L"\nWhat may surprise, and stays as it is (docs/compatibility.md)\n"});
  Say(L"an inch", WithUnit(inch.ConvertTo(0.0001, 0, 10001)) + L", not 0.0254");
  Say(L"the unit L\"m\" (Latin letter)", NameOf(L"m"));
  Say(L"the unit L\"\\u043C\" (Cyrillic)", NameOf(L"\u043C"));
  Say(L"square meter, before Init", before.squareMeter);
  Say(L"square meter, after Init", after.squareMeter);
  Say(L"name of the meter, before Init", before.meter);
  Say(L"name of the meter, after Init", after.meter + L", with a blank");
}

}  // namespace

int main() {
  const Names before;        // for the last part; Init invalidates the values made before it
  Init(L"examples", L"ru");  // before the values: it replaces the units

  Print({L"\nThree languages, a file for each\n"});
  if (!Load(L"en.txt") || !Load(L"de.txt") || !Load(L"ru.txt")) {
    ShowMessages();
    return 1;
  }

  Print({L"\nThe program switches while it runs, and asks for texts by their keys\n"});
  ShowTexts({L"en", L"de", L"ru"}, {L"menu.file", L"menu.file.exit", L"dialog.open.title",
                                    L"quantity.plane_angle", L"status.ready", L"status.selected"});
  Print({L"  (%1 is the program's to fill: the library hands texts out as they are.)\n"});

  ShowAFaultyDictionary();
  ShowAMissingLanguage();
  ShowValues();
  ShowOddities(before);
  return 0;
}
