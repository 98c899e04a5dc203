#include "tests/model/model.h"

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cwchar>
#include <limits>
#include <locale>
#include <new>
#include <stdexcept>

#include "tests/support/encode_utf8.h"
#include "tests/support/exact_decimal.h"
#include "tests/support/test_platform.h"

namespace model {
namespace {

constexpr std::size_t kNone = std::wstring::npos;

// ---- Text files

std::wstring WideCharacter(char32_t c) {
  if (sizeof(wchar_t) == 2 && c > 0xFFFF) {
    return {static_cast<wchar_t>(0xD800 + (c - 0x10000) / 0x400),
            static_cast<wchar_t>(0xDC00 + (c - 0x10000) % 0x400)};
  }
  return {static_cast<wchar_t>(c)};
}

// The character that `bytes` encode; empty unless they are its one valid encoding.
std::optional<char32_t> CharacterOf(const std::string& bytes) {
  const std::size_t length = bytes.size();
  char32_t c = static_cast<unsigned char>(bytes[0]);
  if (length > 1) {
    c %= 1U << (7 - length);
  }
  for (std::size_t i = 1; i < length; ++i) {
    c = c * 64 + static_cast<unsigned char>(bytes[i]) % 64;
  }
  const bool isCharacter = c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
  if (!isCharacter || EncodeUtf8(c) != bytes) {
    return std::nullopt;
  }
  return c;
}

// The bytes as a read in text mode returns them.
std::string InTextMode(std::string bytes) {
  if (textModeEndsAtControlZ) {
    bytes.resize(std::min(bytes.find('\x1A'), bytes.size()));
  }
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes.compare(i, 2, "\r\n") != 0) {
      text += bytes[i];
    }
  }
  return text;
}

}  // namespace

std::vector<std::wstring> LinesOf(const std::string& bytes) {
  std::vector<std::wstring> lines;
  std::wstring line;
  for (const wchar_t c : Decode(InTextMode(bytes))) {
    if (c == L'\n') {
      lines.push_back(line);
      line.clear();
    } else {
      line += c;
    }
  }
  if (!line.empty()) {
    lines.push_back(line);
  }
  return lines;
}

std::pair<std::wstring, std::wstring> SplitDictionaryLine(const std::wstring& line) {
  const std::size_t separator = line.find_first_of(L" \t");
  if (separator == kNone) {
    return {line, L""};
  }
  const std::size_t start = line.find_first_not_of(L" \t", separator);
  std::wstring text = start != kNone ? line.substr(start) : line.substr(separator + 1);
  const std::size_t last = text.find_last_not_of(L" \t\n\r");
  if (last != kNone) {
    text.erase(last + 1);
  }
  return {line.substr(0, separator), text};
}

std::vector<std::wstring> SplitUnitLine(std::wstring line, std::size_t count) {
  for (wchar_t& c : line) {
    if (!SystemSaysGraphicOrBlank(c)) {
      c = L' ';
    }
  }
  line.resize(std::min(line.find(L"//"), line.size()));
  std::vector<std::wstring> fields;
  std::size_t start = line.find_first_not_of(L" \t");
  while (start != kNone) {
    const std::size_t end = line.find_first_of(L" \t", start);
    if (fields.size() + 1 >= count || end == kNone) {
      fields.push_back(line.substr(start));
    } else {
      fields.push_back(line.substr(start, end - start));
    }
    start = end != kNone ? line.find_first_not_of(L" \t", end) : kNone;
  }
  if (fields.size() < count) {
    fields.clear();
  }
  return fields;
}

std::int32_t IntegerOf(const std::wstring& field) {
  using Limits = std::numeric_limits<std::int32_t>;
  const std::int64_t number = std::wcstol(field.c_str(), nullptr, 10);
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(std::max<std::int64_t>(number, Limits::min()), Limits::max()));
}

namespace {

// ---- Values

bool NamesAUnit(int code) { return code >= 100 && code % 1000 != 0; }

double NearestInteger(double x) {
  const double below = std::floor(std::abs(x));
  return std::copysign(std::abs(x) - below >= 0.5 ? below + 1 : below, x);
}

std::wstring TextOf(const Rounded& rounded) {
  if (std::isnan(rounded.number)) {
    return L"nan";
  }
  if (std::isinf(rounded.number)) {
    return rounded.number < 0 ? L"-inf" : L"inf";
  }
  return ExactDecimal(rounded.number, rounded.decimals);
}

// A stream formats `text` by the global C++ locale, if the library shares it.
std::wstring InTheGlobalLocale(std::wstring text) {
  if (!librarySharesTheGlobalLocale) {
    return text;
  }
  const auto& numbers = std::use_facet<std::numpunct<wchar_t>>(std::locale());
  const std::size_t point = std::min(text.find(L'.'), text.size());
  const std::size_t firstDigit = std::min(text.find_first_of(L"0123456789"), text.size());
  std::replace(text.begin(), text.end(), L'.', numbers.decimal_point());
  if (numbers.grouping() == "\3") {
    for (std::size_t at = point; at > firstDigit + 3;) {
      at -= 3;
      text.insert(at, 1, numbers.thousands_sep());
    }
  }
  return text;
}

const char* const kNoDimension = "The physical dimension of the number is not defined.";
const char* const kOtherQuantity = "Codes of physical quantities do not match.";

}  // namespace

const std::string* FindFile(const Files& files, const std::wstring& path) {
  std::wstring place;
  std::wstring folder;
  const auto add = [&] {
    if (!folder.empty() && folder != L".") {
      place += place.empty() ? folder : L"\\" + folder;
    }
    folder.clear();
  };
  for (const wchar_t c : path) {
    if (c == L'\\' || c == L'/') {
      add();
    } else {
      folder += c;
    }
  }
  if (folder.empty() || path[0] == L'\\' || path[0] == L'/') {
    return nullptr;
  }
  add();
  const auto file = files.find(place);
  return file != files.end() ? &file->second : nullptr;
}

std::wstring Decode(const std::string& bytes) {
  std::wstring text;
  std::size_t at = 0;
  while (at < bytes.size()) {
    std::optional<char32_t> character;
    std::size_t length = 0;
    while (!character && ++length <= 4 && at + length <= bytes.size()) {
      character = CharacterOf(bytes.substr(at, length));
    }
    if (!character) {
      break;
    }
    text += WideCharacter(*character);
    at += length;
  }
  return text;
}

int StypeOf(int code) { return code < 100 ? code : code / 1000; }

int SidOf(int code) { return code < 100 ? 0 : code - code / 1000 * 1000; }

double ToleranceOf(const Value& value) {
  return value.relTolerance * value.value + value.absTolerance;
}

bool RoundingEnds(double tolerance) {
  return std::isnan(tolerance) ||
         (tolerance > 0 && tolerance < std::numeric_limits<double>::infinity());
}

Rounded Round(double value, double tolerance) {
  std::uint32_t up = 1;
  while (1.0 > tolerance) {
    tolerance = tolerance * 10.0;
    up = up * 10;
  }
  std::uint32_t down = 1;
  while (tolerance > 1.0) {
    tolerance = tolerance / 10.0;
    down = down * 10;
  }
  const auto signedUp = static_cast<std::int32_t>(up);
  const auto signedDown = static_cast<std::int32_t>(down);
  if (signedUp <= 0) {
    return {value, 9};
  }
  const double scaled = signedUp * value / signedDown;
  return {NearestInteger(scaled) * signedDown / signedUp,
          static_cast<int>(std::to_string(signedUp).size()) - 1};
}

// ---- When memory runs out

void Library::FailAt(std::size_t n, bool fromThenOn) {
  untilFailure_ = n;
  failsFromThenOn_ = fromThenOn;
  failed_ = false;
}

void Library::TakeMemory() {
  if (untilFailure_ == 0 || --untilFailure_ > 0) {
    return;
  }
  if (failsFromThenOn_) {
    untilFailure_ = 1;
  }
  failed_ = true;
  throw std::bad_alloc();
}

template <class Exception>
void Library::Refuse(const char* text) {
  if (exceptionsTakeMemory) {
    TakeMemory();
  }
  throw Exception(text);
}

// ---- Messages

void Library::Append(std::vector<std::wstring>& messages, const std::wstring& message) {
  for (const std::wstring& listed : messages) {
    if (listed == message) {
      return;
    }
  }
  TakeMemory();
  messages.push_back(message);
}

const std::wstring* Library::GetError(std::int32_t index) {
  const std::int64_t count = GetErrorsCount();
  if (count == 0) {
    return nullptr;
  }
  if (index < 0 || index > count) {
    return &errors.back();
  }
  if (index == count) {
    Refuse<std::out_of_range>("invalid vector subscript");
  }
  return &errors[static_cast<std::size_t>(index)];
}

// ---- Dictionaries

std::int32_t Library::LoadDictionary(const std::wstring& folder, const std::wstring& fileName) {
  TakeMemory();  // for the path; without it no message can be listed
  const std::wstring path = folder + L"\\" + fileName;
  try {
    TakeMemory();
    const std::string* const file = FindFile(*files_, path);
    if (file == nullptr) {
      Append(errors, L"EL111. Dictionary file not found\nDictionary: " + path);
      return -2;
    }
    const std::vector<std::wstring> lines = LinesOf(*file);
    if (lines.empty()) {
      return static_cast<std::int32_t>(errors.size());
    }
    TakeMemory();
    currentLanguage = SplitDictionaryLine(lines[0]).first;
    TakeMemory();
    Dictionary& dictionary = dictionaries[currentLanguage];
    for (std::size_t i = 1; i < lines.size(); ++i) {
      if (lines[i].empty()) {
        continue;
      }
      TakeMemory();
      const auto [key, text] = SplitDictionaryLine(lines[i]);
      if (dictionary.find(key) == dictionary.end()) {
        dictionary[key] = text;
      } else {
        Append(errors, L"EL101. Key already declared.\nKey: " + key + L"\nDictionary: " + path);
      }
    }
    return static_cast<std::int32_t>(errors.size());
  } catch (const std::bad_alloc&) {
    Append(errors, L"EL111. Dictionary loading error\nDictionary: " + path);
    return -1;
  }
}

std::int32_t Library::UseLanguage(const std::wstring& id) {
  if (dictionaries.find(id) == dictionaries.end()) {
    Append(errors, L"EL112. Dictionary not found\nDictionary id: " + id);
    return -1;
  }
  TakeMemory();
  currentLanguage = id;
  return 0;
}

const std::wstring* Library::LANG(const std::wstring& key) {
  const auto dictionary = dictionaries.find(currentLanguage);
  if (dictionary == dictionaries.end()) {
    Append(errors, L"EL121. Dictionary not found\nDictionary id: " + currentLanguage);
    return nullptr;
  }
  const auto entry = dictionary->second.find(key);
  if (entry == dictionary->second.end()) {
    Append(errors, L"EL121. Key not found in dictionary\nKey: " + key + L"\nDictionary id: " + key);
    return nullptr;
  }
  return &entry->second;
}

// ---- Starting

void Library::RebuildCatalogue(bool exportsIt) {
  catalogue.clear();
  TakeMemory();
  hasExported = hasExported || exportsIt;
  // The host's locale applies to factors: with a decimal comma a number ends at its point.
  const bool numbersEndAtThePoint = std::string(std::localeconv()->decimal_point) == ",";
  for (UnitRow row : kDefaultUnits) {
    TakeMemory();
    if (numbersEndAtThePoint) {
      row.factor = std::floor(row.factor);
    }
    catalogue.push_back(row);
  }
}

std::int32_t Library::Init(const std::wstring& folder, const std::wstring& language) {
  RebuildCatalogue(false);
  TakeMemory();
  LoadLanguageTable(folder + L"\\LANG/" + language + L"-val.txt");
  return 0;
}

std::int32_t Library::Init0(const std::wstring& folder) {
  RebuildCatalogue(false);
  TakeMemory();
  LoadLanguageTable(folder + L"\\lang-val.text");
  return 0;
}

std::int32_t Library::ExportPhyVal() {
  RebuildCatalogue(true);
  return 0;
}

bool Library::ReadHeader(const std::wstring& path, std::vector<std::wstring>& lines,
                         std::wstring& language) {
  const std::string* const file = FindFile(*files_, path);
  if (file == nullptr) {
    return false;
  }
  lines = LinesOf(*file);
  if (lines.empty()) {
    return false;
  }
  const std::vector<std::wstring> header = SplitUnitLine(lines[0], 2);
  if (header.size() != 2) {
    return false;
  }
  language = header[0];
  return true;
}

// False if the line is no unit or fails for any other reason. The caller lists it.
bool Library::AddUnit(const std::wstring& line, const std::wstring& language) {
  try {
    TakeMemory();
    const std::vector<std::wstring> fields = SplitUnitLine(line, 3);
    localizedUnits.at(language).insert({IntegerOf(fields.at(0)), {fields.at(1), fields.at(2)}});
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

std::int32_t Library::LoadLanguageTable(const std::wstring& path) {
  std::vector<std::wstring> lines;
  std::wstring language;
  bool headerIsRead = false;
  try {
    TakeMemory();
    headerIsRead = ReadHeader(path, lines, language);
  } catch (const std::bad_alloc&) {
    headerIsRead = false;  // counts as a missing file
  }
  if (!headerIsRead) {
    Append(loadMessages, L"EV111. Dictionary file not found or corrupted\nDictionary: " + path);
    return -2;
  }
  try {
    TakeMemory();
    localizedUnits[language];
    for (std::size_t i = 1; i < lines.size(); ++i) {
      if (!lines[i].empty() && !AddUnit(lines[i], language)) {
        TakeMemory();  // for the line in the message
        Append(loadMessages,
               L"EV101. Error parse string.\nString: " + lines[i] + L"\nDictionary: " + path);
      }
    }
    return 0;
  } catch (const std::bad_alloc&) {
    Append(loadMessages, L"EL111. Dictionary loading error\nDictionary: " + path);
    return -1;
  }
}

// ---- Values

Value Library::FromCode(double value, double absTolerance, double relTolerance, int code) const {
  for (std::size_t i = 0; i < catalogue.size(); ++i) {
    if (catalogue[i].code == code && NamesAUnit(code)) {
      return {value, absTolerance, relTolerance, i};
    }
  }
  return {value, absTolerance, relTolerance, std::nullopt};
}

Value Library::FromText(double value, double absTolerance, double relTolerance,
                        const std::wstring& text) const {
  for (std::size_t i = 0; i < catalogue.size(); ++i) {
    const UnitRow& row = catalogue[i];
    if (NamesAUnit(row.code) && (row.name == text || row.symbol == text)) {
      return {value, absTolerance, relTolerance, i};
    }
  }
  return {value, absTolerance, relTolerance, std::nullopt};
}

void Library::CheckCorrect(const Value& value) {
  if (!value.unit) {
    Refuse<std::invalid_argument>(kNoDimension);
  }
}

void Library::CheckCorrect(const Value& value, const Value& other) {
  CheckCorrect(value);
  CheckCorrect(other);
  if (StypeOf(catalogue[*value.unit].code) != StypeOf(catalogue[*other.unit].code)) {
    Refuse<std::invalid_argument>(kOtherQuantity);
  }
}

double Library::Vs(const Value& value, double x) const {
  return catalogue[*value.unit].factor * value.value / x;
}

double Library::Converted(const Value& value, const Value& to) const {
  return Vs(value, catalogue[*to.unit].factor);
}

Value Library::Plus(const Value& left, const Value& right) {
  CheckCorrect(left, right);
  return FromCode(Converted(right, left) + left.value, left.absTolerance, left.relTolerance,
                  catalogue[*left.unit].code);
}

Value Library::Minus(const Value& left, const Value& right) {
  CheckCorrect(left, right);
  return FromCode(left.value - Converted(right, left), left.absTolerance, left.relTolerance,
                  catalogue[*left.unit].code);
}

Value Library::Times(const Value& left, double k) {
  CheckCorrect(left);
  return FromCode(k * left.value, left.absTolerance, left.relTolerance, catalogue[*left.unit].code);
}

Value Library::DividedBy(const Value& left, double k) {
  CheckCorrect(left);
  return FromCode(left.value / k, left.absTolerance, left.relTolerance, catalogue[*left.unit].code);
}

bool Library::IsEqual(const Value& left, const Value& right) {
  CheckCorrect(left, right);
  return left.value == Converted(right, left);
}

bool Library::IsLess(const Value& left, const Value& right) {
  CheckCorrect(left, right);
  return left.value < Converted(right, left);
}

bool Library::IsGreater(const Value& left, const Value& right) {
  CheckCorrect(left, right);
  return left.value > Converted(right, left);
}

Value Library::ConvertTo(const Value& value, double absTolerance, double relTolerance, int code) {
  if (catalogue[*value.unit].code == code) {
    return value;
  }
  return Plus(FromCode(0.0, absTolerance, relTolerance, code), value);
}

std::wstring Library::ToString(const Value& value) {
  TakeMemory();
  std::wstring text = TextOf(Round(value.value, ToleranceOf(value)));
  std::replace(text.begin(), text.end(), L'.', usersPoint_);
  return text;
}

std::wstring Library::ToString(const Value& value, wchar_t separator) {
  TakeMemory();
  std::wstring text = InTheGlobalLocale(TextOf(Round(value.value, ToleranceOf(value))));
  std::replace(text.begin(), text.end(), L'.', separator);
  return text;
}

}  // namespace model
