#include "tests/model/call_sequence.h"

#include <array>
#include <climits>
#include <clocale>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iomanip>
#include <limits>
#include <locale>
#include <sstream>

#include "tests/model/nasty_files.h"
#include "tests/support/bits.h"
#include "tests/support/exported_table.h"
#include "tests/support/nan_text.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/test_platform.h"

using KelmoLibs::Localize::Phyval::ValueType;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr auto kRareCharacter = static_cast<wchar_t>(0x1F600);  // truncated if wchar_t has 16 bits

const std::wstring kFolders[] = {L".",  L".\\", L".\\\\.", L"LANG", L"./LANG",
                                 L"\\", L"/",   L"",       L"none", {L'n', wchar_t{0xD800}}};
const std::wstring kDictionaryFiles[] = {L"en.txt",
                                         L"de.txt",
                                         L"ru.txt",
                                         L"\u0442\u0435\u043A\u0441\u0442\u044B 1.txt",
                                         L"\u20AC\U00040000.txt",
                                         L"\u0080\u07FF\uFFFD.txt"};
const std::wstring kLanguages[] = {L"ru", L"de", L"a b", L""};
const std::wstring kNeutralTable = L"lang-val.text";
const std::wstring kTableFolder = L"LANG\\";
const std::wstring kTableEnd = L"-val.txt";

bool IsSame(double left, double right) {
  return BitsOf(left) == BitsOf(right) || (std::isnan(left) && std::isnan(right));
}

// The exception of a call as text; empty if the call returns.
template <class Call>
std::string ExceptionOf(Call call) {
  try {
    call();
    return {};
  } catch (const std::invalid_argument& refusal) {
    return std::string("invalid_argument: ") + refusal.what();
  } catch (const std::out_of_range& refusal) {
    return std::string("out_of_range: ") + refusal.what();
  }
}

// ---- Calls as text

std::string Describe(const std::wstring& text) {
  std::ostringstream words;
  words << '"' << std::hex;
  for (const wchar_t c : text) {
    const unsigned code = std::char_traits<wchar_t>::to_int_type(c);
    if (c == L'\\') {
      words << "\\\\";
    } else if (code < 0x20 || code > 0x7E) {
      words << "\\u{" << code << '}';
    } else {
      words << static_cast<char>(c);
    }
  }
  words << '"';
  return words.str();
}

std::string Describe(const std::string& bytes) {
  std::ostringstream words;
  words << '"' << std::hex << std::setfill('0');
  for (const char c : bytes) {
    const unsigned byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      words << "\\n";
    } else if (byte < 0x20 || byte > 0x7E) {
      words << "\\x" << std::setw(2) << byte;
    } else {
      words << c;
    }
  }
  words << '"';
  return words.str();
}

// With enough digits to round-trip.
std::string Describe(double number) {
  std::ostringstream words;
  words.imbue(std::locale::classic());
  words << std::setprecision(17) << number;
  return words.str();
}

std::string Describe(std::int64_t number) { return std::to_string(number); }

std::string Describe(double value, double absolute, double relative) {
  return Describe(value) + " (" + Describe(absolute) + ", " + Describe(relative) + ")";
}

std::string Describe(const char* what, const std::string& real, const std::string& modelled) {
  return std::string(what) + ": the library has " + real + ", the model " + modelled;
}

// A host cannot pass the rest.
std::wstring UpToNul(const std::wstring& text) { return text.substr(0, text.find(L'\0')); }

wchar_t UsersPoint() {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  std::setlocale(LC_ALL, "");
  const char point = *std::localeconv()->decimal_point;
  std::setlocale(LC_ALL, before.c_str());
  return static_cast<wchar_t>(point);
}

}  // namespace

// ---- Files

void Disk::Write(const std::wstring& path, const std::string& bytes) {
  WriteFile(PortablePath(path), bytes);
  files_[path] = bytes;
}

void Disk::Remove(const std::wstring& path) {
  if (files_.erase(path) == 1) {
    std::filesystem::remove(PortablePath(path));
  }
}

void Disk::Clear() {
  while (!files_.empty()) {
    Remove(std::wstring(files_.begin()->first));
  }
}

// ---- One lifetime

CallSequence::CallSequence(RandomNumbers& random, Disk& disk, CallLog* log)
    : random_(random), disk_(disk), log_(log), words_(random), model_(disk.Files(), UsersPoint()) {}

template <class Words>
void CallSequence::LogCall(Words words) {
  ++calls_;
  LogAction(words);
}

template <class Words>
void CallSequence::LogAction(Words words) {
  constexpr std::size_t kMaxCalls = 500;
  if (log_ == nullptr) {
    return;
  }
  log_->push_back(words());
  if (log_->size() > kMaxCalls) {
    log_->pop_front();
  }
}

std::string CallSequence::Describe(const model::Value& value) const {
  return ::Describe(value.value, value.absTolerance, value.relTolerance) + " " +
         (value.unit ? std::to_string(model_.catalogue[*value.unit].code) : "without a unit");
}

void CallSequence::WriteFiles(int changes) {
  for (; changes > 0; --changes) {
    ChangeAFile();
  }
}

void CallSequence::ReleaseAll() {
  ClearMessages();
  model_.errors.shrink_to_fit();  // releases the capacity for the longest list
  DropValues();
  globalLocale_.reset();
  std::setlocale(LC_ALL, "C");
}

// As in hosts, most calls are lookups. Starts are rare, so that values stay valid for a while.
void CallSequence::Step(bool mayWriteFiles) {
  const int chance = random_.Below(100);
  if (chance < 6) {
    if (mayWriteFiles) {
      ChangeAFile();
    }
  } else if (chance < 17) {
    LoadADictionary();
  } else if (chance < 27) {
    SelectADictionary();
  } else if (chance < 50) {
    AskForTexts();
  } else if (chance < 58) {
    ReadMessages();
  } else if (chance < 61) {
    ClearMessages();
  } else if (chance < 65) {
    Start();
  } else if (chance < 73) {
    for (int made = random_.Below(4); made >= 0; --made) {
      MakeAValue();
    }
  } else if (chance < 83) {
    UseAValue();
  } else if (chance < 93) {
    ComputeWithValues();
  } else if (chance < 98) {
    MakeRows();
  } else if (random_.Below(8) != 0) {
    ChangeALocale();
  } else if (random_.Below(4) != 0) {
    ListManyMessages();
  } else {
    LoadManyDictionaries();
  }
}

void CallSequence::StepWithValues() {
  const int chance = random_.Below(16);
  if (chance < 4) {
    MakeAValue();
  } else if (chance < 9) {
    UseAValue();
  } else if (chance < 14) {
    ComputeWithValues();
  } else if (chance < 15) {
    MakeRows();
  } else {
    Start();
  }
}

// ---- Random choices

// Every second empty text is passed as null, which means the same.
const wchar_t* CallSequence::Argument(const std::wstring& text) {
  passesNull_ = !passesNull_;
  return text.empty() && passesNull_ ? nullptr : text.c_str();
}

// Few names per lifetime: the load messages keep the path of each missing file.
std::wstring CallSequence::AnyFolder() {
  return random_.Below(16) == 0 ? words_.FileName() : AnyOf(random_, kFolders);
}

std::wstring CallSequence::AnyLanguage() {
  return random_.Below(5) == 0 ? words_.FileName() : AnyOf(random_, kLanguages);
}

// A key of `texts` or a word of the vocabulary; sometimes with a small change.
template <class Texts>
std::wstring CallSequence::AnyOfTheKeys(const Texts& texts) {
  std::wstring key = random_.Below(4) != 0 && !texts.empty() ? AnyOf(random_, texts).first
                                                             : model::Decode(words_.Word());
  if (random_.Below(6) == 0) {
    key = words_.Changed(key);
  }
  return UpToNul(key);
}

std::wstring CallSequence::AnyId() { return AnyOfTheKeys(model_.dictionaries); }

std::wstring CallSequence::AnyKey() {
  const auto dictionary = model_.dictionaries.find(model_.currentLanguage);
  return dictionary != model_.dictionaries.end() ? AnyOfTheKeys(dictionary->second)
                                                 : AnyOfTheKeys(model::Library::Dictionary());
}

std::wstring CallSequence::AnyUnitText() {
  const UnitRow& row = AnyOf(random_, kDefaultUnits);
  std::wstring text = random_.Below(2) == 0 ? row.symbol : row.name;
  switch (random_.Below(6)) {
    case 0:
      return text.substr(0, text.find(L' '));
    case 1:
      return AnyOf(random_, std::initializer_list<std::wstring>{
                                L"m2", L"square meter", L"%", L"plane angle", L"meter", L"radian",
                                L"m", L"", L" ", L"Inch", L"k", L"in ", L"\u02DA", L"\u00BA",
                                L"\uFEFFin", L"rad\u00B0"});
    case 2:
    case 3:
      return UpToNul(words_.Changed(text));
    default:
      return text;
  }
}

int CallSequence::AnyCode() {
  constexpr int kCodes[] = {10001, 10001, 10001, 10002, 10002,  40001, 40002,   20001,  30001,
                            10,    20,    40,    10000, 99,     100,   101,     999,    1000,
                            1001,  0,     -1,    -5,    -10001, 10003, INT_MAX, INT_MIN};
  return AnyOf(random_, kCodes);
}

double CallSequence::AnyNumber() {
  constexpr double kNumbers[] = {0,
                                 -0.0,
                                 1,
                                 -1,
                                 0.5,
                                 -0.5,
                                 1.5,
                                 2.5,
                                 -2.5,
                                 40.1,
                                 0.0273,
                                 1e15,
                                 1e22,
                                 -1e99,
                                 4503599627370495.5,
                                 0.49999999999999994,
                                 1234.5678,
                                 kInfinity,
                                 -kInfinity,
                                 std::numeric_limits<double>::quiet_NaN(),
                                 std::numeric_limits<double>::max(),
                                 std::numeric_limits<double>::lowest()};
  switch (random_.Below(16)) {
    case 0:
      return random_.OfMagnitude(-1000, 1000);
    case 1:
      return NumberOf(random_.Bits());  // any number, also NaN and denormal
    case 2:
      return 5e-324;
    case 3:
    case 4:
    case 5:
    case 6:
      return AnyOf(random_, kNumbers);
    default:
      return random_.OfMagnitude(-30, 40);
  }
}

double CallSequence::AnyAbsoluteTolerance() {
  constexpr double kTolerances[] = {0,     0.001, 0.01, 0.05, 0.1, 0.5,      1,
                                    5,     10,    150,  1e-9, 1e9, 1e-10,    1e-12,
                                    1e-40, 1e10,  2e11, 1e33, -1,  kInfinity};
  switch (random_.Below(8)) {
    case 0:
      return random_.Below(2) == 0 ? random_.OfMagnitude(-1000, 1000) : NumberOf(random_.Bits());
    case 1:
    case 2:
      return std::abs(random_.OfMagnitude(-40, 40));
    default:
      return AnyOf(random_, kTolerances);
  }
}

double CallSequence::AnyRelativeTolerance() {
  constexpr double kTolerances[] = {0, 0, 0, 0.001, 0.01, 1e-6, -0.01, 1};
  return random_.Below(20) == 0 ? AnyNumber() : AnyOf(random_, kTolerances);
}

// ---- Files, dictionaries, messages

void CallSequence::ChangeAFile() {
  const bool isDictionary = random_.Below(3) != 0;
  std::wstring path;
  if (isDictionary) {
    path = random_.Below(6) == 0 ? words_.FileName() + L".txt" : AnyOf(random_, kDictionaryFiles);
    path = random_.Below(3) == 0 ? L"LANG\\" + path : path;
  } else {
    path = random_.Below(3) == 0 ? kNeutralTable : kTableFolder + AnyLanguage() + kTableEnd;
  }
  if (random_.Below(8) == 0) {
    LogAction([&] { return "- remove " + ::Describe(path); });
    disk_.Remove(path);
    return;
  }
  const std::string bytes = isDictionary ? DictionaryBytes(words_) : LanguageTableBytes(words_);
  LogAction([&] { return "- write " + ::Describe(path) + ": " + ::Describe(bytes); });
  disk_.Write(path, bytes);
}

void CallSequence::LoadADictionary() {
  if (random_.Below(4) == 0 || disk_.Files().empty()) {
    const std::wstring fileName = random_.Below(20) == 0 ? L"" : AnyOf(random_, kDictionaryFiles);
    Load(AnyFolder(), fileName);
    return;
  }
  const std::wstring& path = AnyOf(random_, disk_.Files()).first;
  const std::size_t separator = path.find(L'\\');
  if (separator == std::wstring::npos) {
    Load(L".", path);
    return;
  }
  const std::wstring folder = path.substr(0, separator);
  const std::wstring fileName = path.substr(separator + 1);
  if (random_.Below(4) != 0) {
    Load(folder, fileName);
  } else {  // another file, unless the character is a path separator
    Load(L".", UpToNul(folder + words_.WideCharacter() + fileName));
  }
}

void CallSequence::Load(const std::wstring& folder, const std::wstring& fileName) {
  LogCall(
      [&] { return "LoadDictionary(" + ::Describe(folder) + ", " + ::Describe(fileName) + ")"; });
  CompareNumbers("LoadDictionary",
                 library_.Exports().LoadDictionary(Argument(folder), Argument(fileName)),
                 model_.LoadDictionary(folder, fileName));
  CompareListBriefly();
}

void CallSequence::SelectADictionary() { Select(AnyId()); }

void CallSequence::Select(const std::wstring& id) {
  LogCall([&] { return "UseLanguage(" + ::Describe(id) + ")"; });
  CompareNumbers("UseLanguage", library_.Exports().UseLanguage(Argument(id)),
                 model_.UseLanguage(id));
  CompareListBriefly();
}

void CallSequence::AskForTexts() {
  for (int asked = random_.Below(5); asked >= 0; --asked) {
    Ask(AnyKey());
  }
}

void CallSequence::Ask(const std::wstring& key) {
  LogCall([&] { return "LANG(" + ::Describe(key) + ")"; });
  const wchar_t* const real = library_.Exports().LANG(Argument(key));
  const std::wstring* const modelled = model_.LANG(key);
  CompareTexts(real, modelled, "LANG");
  CompareListBriefly();
  if (modelled == nullptr) {
    return;
  }
  if (addresses_.emplace(modelled, real).first->second != real) {
    throw Disagreement("LANG: the text has another address");
  }
  if (keptTexts_.size() < 100) {
    keptTexts_.push_back({real, *modelled});
  }
}

void CallSequence::AskForEveryText() {
  const auto dictionary = model_.dictionaries.find(model_.currentLanguage);
  if (dictionary == model_.dictionaries.end()) {
    return;
  }
  for (const auto& [key, text] : dictionary->second) {
    const std::wstring prefix = UpToNul(key);
    Ask(prefix);
    Ask(prefix + L"\r");
    Ask(prefix.substr(0, prefix.size() / 2));
  }
}

// More messages than in any other step, with duplicates.
void CallSequence::ListManyMessages() {
  for (int count = random_.Below(400); count > 0; --count) {
    const std::wstring word = L"many" + std::to_wstring(random_.Below(300));
    if (random_.Below(2) == 0) {
      Select(word);
    } else {
      Ask(word);
    }
  }
  CompareMessages();
}

// More dictionaries than in any other step.
void CallSequence::LoadManyDictionaries() {
  const std::wstring file = L"many.txt";
  for (int count = random_.Below(30); count > 0; --count) {
    const std::string id = std::to_string(random_.Below(60));
    LogAction([&] { return "- write " + ::Describe(file) + " with the id many" + id; });
    disk_.Write(file, "many" + id + "\nkey text " + id + "\n");
    Load(L".", file);
    Ask(L"key");
  }
  disk_.Remove(file);
}

void CallSequence::ReadMessages() {
  const auto count = static_cast<std::int32_t>(model_.GetErrorsCount());
  const std::int32_t indexes[] = {
      0,         1,       2,       count - 1,   count,
      count + 1, -1,      -2,      -3,          -count,
      65536,     INT_MAX, INT_MIN, INT_MIN + 1, random_.Below(count + 2)};
  for (int asked = random_.Below(3); asked >= 0; --asked) {
    const std::int32_t index = AnyOf(random_, indexes);
    LogCall([&] { return "GetError(" + std::to_string(index) + ")"; });
    const wchar_t* real = nullptr;
    const std::wstring* modelled = nullptr;
    CompareEndings(
        "GetError", [&] { real = library_.Exports().GetError(index); },
        [&] { modelled = model_.GetError(index); });
    if (real != nullptr) {
      CompareTexts(real, modelled, "GetError");
      keptMessage_ = {real, modelled != nullptr ? *modelled : L""};
    }
  }
}

void CallSequence::ClearMessages() {
  LogCall([] { return "ClearErrors()"; });
  library_.Exports().ClearErrors();
  model_.ClearErrors();
  keptMessage_.reset();
  CompareListBriefly();
}

void CallSequence::CompareListBriefly() {
  if (model_.errors.size() != listed_) {
    listed_ = model_.errors.size();
    keptMessage_.reset();
  }
  if (keptMessage_) {
    CompareText(keptMessage_->real, keptMessage_->modelled, "a message that was read before");
  }
  const std::int64_t count = library_.Exports().GetErrorsCount();
  ++calls_;
  CompareNumbers("GetErrorsCount", count, model_.GetErrorsCount());
  if (count > 0) {
    ++calls_;
    CompareText(library_.Exports().GetError(-1), model_.errors.back(), "the newest message");
  }
}

void CallSequence::CompareMessages() {
  CompareListBriefly();
  for (std::size_t i = 0; i < model_.errors.size(); ++i) {
    ++calls_;
    CompareText(library_.Exports().GetError(static_cast<std::int32_t>(i)), model_.errors[i],
                "a message");
  }
}

// ---- Starting

// A start invalidates all values. ExportPhyVal overwrites an older file, if there is one.
template <class Call>
void CallSequence::StartBy(Call call) {
  static const std::string exportedTable = ExportedDefaultTable();
  const std::string older(static_cast<std::size_t>(random_.Below(1000)), 'o');
  const bool hasOlder = random_.Below(2) == 0;
  std::filesystem::remove(ExportPlace::kFile);
  if (hasOlder) {
    std::ofstream(ExportPlace::kFile, std::ios::binary) << older;
  }
  model_.hasExported = false;
  DropValues();
  rows_.clear();
  library_.CountStart();
  call();
  if (ExportPlace::Exists() != (hasOlder || model_.hasExported)) {
    throw Disagreement("whether there is an exported file");
  }
  if (ExportPlace::Exists() &&
      ExportPlace::Bytes() != (model_.hasExported ? exportedTable : older)) {
    throw Disagreement("the exported file");
  }
  CompareListBriefly();
  CompareInside();
}

void CallSequence::Init(const std::wstring& folder, const std::wstring& language) {
  StartBy([&] {
    LogCall([&] { return "Init(" + ::Describe(folder) + ", " + ::Describe(language) + ")"; });
    CompareNumbers("Init", library_.Exports().Init(Argument(folder), Argument(language)),
                   model_.Init(folder, language));
  });
}

void CallSequence::Init0(const std::wstring& folder) {
  StartBy([&] {
    LogCall([&] { return "Init0(" + ::Describe(folder) + ")"; });
    CompareNumbers("Init0", library_.Exports().Init0(Argument(folder)), model_.Init0(folder));
  });
}

void CallSequence::ExportPhyVal() {
  StartBy([&] {
    LogCall([] { return "ExportPhyVal()"; });
    CompareNumbers("ExportPhyVal", library_.Exports().ExportPhyVal(), model_.ExportPhyVal());
  });
}

void CallSequence::Start() {
  const int chance = random_.Below(16);
  if (chance < 11) {
    StartWithATable();
  } else if (chance < 13) {
    const std::wstring language = AnyLanguage();
    Init(AnyFolder(), language);
  } else if (chance < 14) {
    Init0(AnyFolder());
  } else {
    ExportPhyVal();
  }
}

// With an existing table, if there is one.
void CallSequence::StartWithATable() {
  std::vector<std::wstring> paths;
  for (const auto& [path, bytes] : disk_.Files()) {
    if (path == kNeutralTable || path.find(kTableEnd) != std::wstring::npos) {
      paths.push_back(path);
    }
  }
  const std::wstring path = paths.empty() ? kNeutralTable : AnyOf(random_, paths);
  if (path == kNeutralTable) {
    Init0(L".");
  } else {
    Init(L".", path.substr(kTableFolder.size(), path.find(kTableEnd) - kTableFolder.size()));
  }
}

// ---- Values

CallSequence::LivingValue& CallSequence::AnyValue() {
  if (values_.empty()) {
    MakeAValue();
  }
  return values_[static_cast<std::size_t>(random_.Below(static_cast<int>(values_.size())))];
}

void CallSequence::Keep(const LivingValue& made) {
  constexpr std::size_t kMaxValues = 6;
  if (values_.size() < kMaxValues) {
    values_.push_back(made);
    return;
  }
  LivingValue& old = values_[static_cast<std::size_t>(random_.Below(kMaxValues))];
  Destroy(old);
  old = made;
}

void CallSequence::Destroy(LivingValue& value) {
  library_.Members().destroy(&value.real);
  ++calls_;
  if (value.real.unit != nullptr) {
    throw Disagreement("a destroyed value has a unit");
  }
}

void CallSequence::DropValues() {
  for (LivingValue& value : values_) {
    Destroy(value);
  }
  values_.clear();
}

// A value of the same quantity as `left`: equal, a neighbour above or below, or any other.
CallSequence::LivingValue CallSequence::MakeComparable(const LivingValue& left) {
  const int code = model_.catalogue[*left.modelled.unit].code;
  const int other = random_.Below(2) == 0 ? code : code / 1000 * 1000 + 1 + random_.Below(2);
  LivingValue made = {};
  made.modelled = model_.FromCode(0, 0.1, 0, other);
  if (made.modelled.unit) {
    made.modelled.value = model_.Vs(left.modelled, model_.catalogue[*made.modelled.unit].factor);
  }
  switch (random_.Below(4)) {
    case 0:
      made.modelled.value = AnyNumber();
      break;
    case 1:
      made.modelled.value = std::nextafter(made.modelled.value, kInfinity);
      break;
    case 2:
      made.modelled.value = std::nextafter(made.modelled.value, -kInfinity);
      break;
    default:
      break;
  }
  library_.Members().fromCode(&made.real, made.modelled.value, 0.1, 0, other);
  ++calls_;
  return made;
}

void CallSequence::MakeAValue() {
  const double value = AnyNumber();
  const double absolute = AnyAbsoluteTolerance();
  const double relative = AnyRelativeTolerance();
  LivingValue made = {};
  if (random_.Below(2) == 0) {
    const int code = random_.Below(3) == 0 ? AnyCode() : AnyOf(random_, kDefaultUnits).code;
    LogCall([&] {
      return "Double of " + ::Describe(value, absolute, relative) + " in " + std::to_string(code);
    });
    library_.Members().fromCode(&made.real, value, absolute, relative, code);
    made.modelled = model_.FromCode(value, absolute, relative, code);
  } else {
    const std::wstring text = AnyUnitText();
    LogCall([&] {
      return "Double of " + ::Describe(value, absolute, relative) + " in " + ::Describe(text);
    });
    library_.Members().fromText(&made.real, value, absolute, relative, Argument(text));
    made.modelled = model_.FromText(value, absolute, relative, text);
  }
  CompareValues(made, "a new value");
  Keep(made);
}

void CallSequence::UseAValue() {
  LivingValue& value = AnyValue();
  ValueMemory& real = value.real;
  const model::Value& modelled = value.modelled;
  const ClassMembers& members = library_.Members();
  const double x = AnyNumber();
  const wchar_t separator =
      random_.Below(4) == 0
          ? words_.WideCharacter().front()
          : AnyOf(random_, std::initializer_list<wchar_t>{L',', L'.', L'x', L'\u066B', L'\0', L'-',
                                                          L'0', kRareCharacter});
  const double tolerance = model::ToleranceOf(modelled);
  switch (random_.Below(8)) {
    case 0:
      LogCall([&] { return "T, and Ts by " + ::Describe(x) + ", of " + Describe(modelled); });
      ++calls_;
      if (!IsSame(members.tolerance(&real), tolerance) ||
          !IsSame(members.toleranceTimes(&real, x), tolerance * x)) {
        throw Disagreement("T or Ts");
      }
      break;
    case 1:
      LogCall([&] {
        return "CheckCorrect, and Vs by " + ::Describe(x) + ", of " + Describe(modelled);
      });
      CompareEndings(
          "CheckCorrect", [&] { members.check(&real); }, [&] { model_.CheckCorrect(modelled); });
      if (modelled.unit) {
        ++calls_;
        if (!IsSame(members.inUnitOf(&real, x), model_.Vs(modelled, x))) {
          throw Disagreement("Vs");
        }
      }
      break;
    case 2: {
      const LivingValue& from = AnyValue();
      LogCall([&] { return Describe(modelled) + " = " + Describe(from.modelled); });
      ++calls_;
      if (members.assign(&real, &from.real) != &real) {
        throw Disagreement("operator= returns another object");
      }
      value.modelled = from.modelled;
      break;
    }
    default:
      if (!model::RoundingEnds(tolerance)) {
        break;
      }
      LogCall([&] { return "to_string, and Return, of " + Describe(modelled); });
      calls_ += 2;
      const std::string locale = std::setlocale(LC_ALL, nullptr);
      const std::wstring text = NormalizeNaN(members.toString(&real));
      if (text != model_.ToString(modelled)) {
        throw Disagreement(
            ::Describe("to_string()", ::Describe(text), ::Describe(model_.ToString(modelled))));
      }
      if (locale != std::setlocale(LC_ALL, nullptr)) {
        throw Disagreement("to_string() has changed the locale");
      }
      const std::wstring other = NormalizeNaN(members.toStringWith(&real, separator));
      if (other != model_.ToString(modelled, separator)) {
        throw Disagreement(::Describe("to_string(separator)", ::Describe(other),
                                      ::Describe(model_.ToString(modelled, separator))));
      }
      if (!IsSame(members.rounded(&real), model::Round(modelled.value, tolerance).number)) {
        throw Disagreement(::Describe("Return", ::Describe(members.rounded(&real)),
                                      ::Describe(model::Round(modelled.value, tolerance).number)));
      }
      break;
  }
  CompareValues(value, "a value that was used");
}

void CallSequence::ComputeWithValues() {
  // Copies, because the result may replace the values themselves.
  LivingValue left = AnyValue();
  LivingValue right = {};
  if (left.modelled.unit && random_.Below(2) == 0) {
    right = MakeComparable(left);
    Keep(right);
  } else {
    right = AnyValue();
  }
  const ClassMembers& members = library_.Members();
  const double k = AnyNumber();
  const double absolute = AnyAbsoluteTolerance();
  const double relative = AnyRelativeTolerance();
  const int code = AnyCode();
  LivingValue result = {};
  bool realAnswer = false;
  bool modelledAnswer = false;
  bool isValue = true;
  const char* name = "";
  std::string exception;
  const auto compare = [&](const char* operation, auto real, auto modelled) {
    name = operation;
    LogCall([&] {
      return std::string(operation) + " of " + Describe(left.modelled) + " and " +
             Describe(right.modelled) + ", " + ::Describe(k) + ", or " + std::to_string(code) +
             " (" + ::Describe(absolute) + ", " + ::Describe(relative) + ")";
    });
    exception = CompareEndings(operation, real, modelled);
  };
  switch (random_.Below(9)) {
    case 0:
      compare(
          "+", [&] { members.plus(&result.real, &left.real, &right.real); },
          [&] { result.modelled = model_.Plus(left.modelled, right.modelled); });
      break;
    case 1:
      compare(
          "-", [&] { members.minus(&result.real, &left.real, &right.real); },
          [&] { result.modelled = model_.Minus(left.modelled, right.modelled); });
      break;
    case 2:
      compare(
          "*", [&] { members.times(&result.real, &left.real, k); },
          [&] { result.modelled = model_.Times(left.modelled, k); });
      break;
    case 3:
      compare(
          "/", [&] { members.dividedBy(&result.real, &left.real, k); },
          [&] { result.modelled = model_.DividedBy(left.modelled, k); });
      break;
    case 4:
      isValue = false;
      compare(
          "==", [&] { realAnswer = members.isEqual(&left.real, &right.real); },
          [&] { modelledAnswer = model_.IsEqual(left.modelled, right.modelled); });
      break;
    case 5:
      isValue = false;
      compare(
          "<", [&] { realAnswer = members.isLess(&left.real, &right.real); },
          [&] { modelledAnswer = model_.IsLess(left.modelled, right.modelled); });
      break;
    case 6:
      isValue = false;
      compare(
          ">", [&] { realAnswer = members.isGreater(&left.real, &right.real); },
          [&] { modelledAnswer = model_.IsGreater(left.modelled, right.modelled); });
      break;
    case 7:
      isValue = false;
      compare(
          "CheckCorrect(other)", [&] { members.checkBoth(&left.real, &right.real); },
          [&] { model_.CheckCorrect(left.modelled, right.modelled); });
      break;
    default:
      if (!left.modelled.unit) {
        return;  // ConvertTo does not check it
      }
      compare(
          "ConvertTo",
          [&] { members.convertTo(&result.real, &left.real, absolute, relative, code); },
          [&] { result.modelled = model_.ConvertTo(left.modelled, absolute, relative, code); });
      break;
  }
  CompareValues(left, "a left operand");
  CompareValues(right, "a right operand");
  if (realAnswer != modelledAnswer) {
    throw Disagreement(std::string(name) + ": the answers differ");
  }
  if (isValue && exception.empty()) {
    CompareValues(result, name);
    Keep(result);
  }
}

// ---- Rows

void CallSequence::MakeRows() {
  const ClassMembers& members = library_.Members();
  const int code = random_.Below(2) == 0 ? AnyCode() : static_cast<int>(random_.Bits());
  const UnitRow row = {code, AnyNumber(), AnyUnitText(), AnyKey()};
  LogCall([&] {
    return "ValueType of " + std::to_string(code) + ", " + ::Describe(row.symbol) + ", " +
           ::Describe(row.name) + ", copied and moved";
  });
  calls_ += 11;  // 12 with LogCall: three rows are made, queried twice each, and destroyed
  std::array<RowMemory, 3> rows = {};
  members.makeRow(rows.data(), row.code, row.factor, row.symbol.c_str(), row.name.c_str());
  members.copyRow(&rows[1], rows.data());
  members.moveRow(&rows[2], rows.data());
  for (RowMemory& memory : rows) {
    const ValueType& made = memory.Row();
    const bool isSame = made.code == row.code && IsSame(made.factor, row.factor) &&
                        made.symbol == row.symbol && made.name == row.name;
    const bool hasCode = members.sidOf(&memory) == model::SidOf(code) &&
                         members.stypeOf(&memory) == model::StypeOf(code);
    members.destroyRow(&memory);
    if (!isSame || !hasCode) {
      throw Disagreement("ValueType");
    }
  }
}

// ---- Locales of the host

void CallSequence::ChangeALocale() {
  if (random_.Below(4) == 0) {
    LogAction([] { return "- another global C++ locale"; });
    if (globalLocale_) {
      globalLocale_.reset();
    } else {
      globalLocale_.emplace(LocaleGroupedByPoints());
    }
    return;
  }
  // Locales that a system lacks are ignored.
  const char* const locale =
      AnyOf(random_, std::initializer_list<const char*>{"C", "C.UTF-8", "de_DE.UTF-8",
                                                        "English_United States.1252",
                                                        "German_Germany.1252"});
  LogAction([&] { return std::string("- setlocale ") + locale; });
  std::setlocale(AnyOf(random_, std::initializer_list<int>{LC_ALL, LC_ALL, LC_CTYPE, LC_NUMERIC}),
                 locale);
}

// ---- Comparing

// Makes the call on both. Returns their exception as text; empty if both return.
template <class Real, class Modelled>
std::string CallSequence::CompareEndings(const char* name, Real real, Modelled modelled) {
  std::string exception = ExceptionOf(real);
  const std::string expected = ExceptionOf(modelled);
  if (exception != expected) {
    throw Disagreement(::Describe(name, exception, expected));
  }
  return exception;
}

void CallSequence::CompareNumbers(const char* name, std::int64_t real, std::int64_t modelled) {
  if (real != modelled) {
    throw Disagreement(::Describe(name, ::Describe(real), ::Describe(modelled)));
  }
}

// Compares the whole text, also behind a NUL, and its terminator.
void CallSequence::CompareText(const wchar_t* real, const std::wstring& modelled,
                               const char* what) {
  for (std::size_t i = 0; i <= modelled.size(); ++i) {
    if (real[i] != modelled.c_str()[i]) {
      throw Disagreement(::Describe(what, ::Describe(std::wstring(real)), ::Describe(modelled)));
    }
  }
}

void CallSequence::CompareTexts(const wchar_t* real, const std::wstring* modelled,
                                const char* what) {
  if (modelled != nullptr) {
    CompareText(real, *modelled, what);
    if (real == emptyText_) {
      throw Disagreement(std::string(what) + ": the pointer for no text was returned for a text");
    }
    return;
  }
  CompareText(real, L"", what);
  if (emptyText_ != nullptr && real != emptyText_) {
    throw Disagreement(std::string(what) + ": another pointer for no text");
  }
  emptyText_ = real;
}

void CallSequence::CompareValues(const LivingValue& value, const char* what) {
  const auto& [real, modelled] = value;
  if (!IsSame(real.value, modelled.value) || !IsSame(real.absTolerance, modelled.absTolerance) ||
      !IsSame(real.relTolerance, modelled.relTolerance)) {
    throw Disagreement(::Describe(
        what, ::Describe(real.value, real.absTolerance, real.relTolerance), Describe(modelled)));
  }
  if ((real.unit != nullptr) != modelled.unit.has_value()) {
    throw Disagreement(std::string(what) + ": whether it has a unit");
  }
  if (!modelled.unit) {
    return;
  }
  const UnitRow& row = model_.catalogue[*modelled.unit];
  const ValueType& unit = *real.unit;
  if (unit.code != row.code || !IsSame(unit.factor, row.factor) || unit.symbol != row.symbol ||
      unit.name != row.name) {
    throw Disagreement(std::string(what) + ": the unit");
  }
  // Each row of the catalogue has one address.
  rows_.resize(model_.catalogue.size());
  if (rows_[*modelled.unit] == nullptr) {
    rows_[*modelled.unit] = real.unit;
  }
  if (rows_[*modelled.unit] != real.unit) {
    throw Disagreement(std::string(what) + ": another address of the same unit");
  }
}

LibraryUnderTest::Inside InsideOf(const model::Library& library) {
  LibraryUnderTest::Inside inside;
  inside.catalogue = library.catalogue;
  for (const auto& [language, units] : library.localizedUnits) {
    auto& seen = inside.units[language];
    for (const auto& [code, unit] : units) {
      seen[code] = {unit.symbol, unit.name};
    }
  }
  for (const std::wstring& message : library.loadMessages) {
    inside.loadMessages.push_back(UpToNul(message));
  }
  inside.currentLanguage = library.currentLanguage;
  return inside;
}

void CallSequence::CompareInside() const {
  const std::optional<LibraryUnderTest::Inside> inside = library_.LookInside();
  if (!inside) {
    return;
  }
  const LibraryUnderTest::Inside expected = InsideOf(model_);
  if (inside->catalogue != expected.catalogue) {
    throw Disagreement("the catalogue");
  }
  if (inside->units != expected.units) {
    throw Disagreement("the localized units");
  }
  if (inside->loadMessages != expected.loadMessages) {
    throw Disagreement("the load messages");
  }
  if (inside->currentLanguage != expected.currentLanguage) {
    throw Disagreement("the id of the current dictionary");
  }
}

void CallSequence::CompareAll() {
  CompareMessages();
  for (const KeptText& text : keptTexts_) {
    CompareText(text.real, text.modelled, "a text that LANG gave before");
  }
  for (const LivingValue& value : values_) {
    CompareValues(value, "a value at the end");
  }
  CompareInside();
  // Every text that was loaded.
  for (const auto& [id, dictionary] : model_.dictionaries) {
    if (id.find(L'\0') != std::wstring::npos) {
      continue;  // no host can name it
    }
    ++calls_;
    if (library_.Exports().UseLanguage(id.c_str()) != 0) {
      throw Disagreement("a dictionary is missing");
    }
    model_.UseLanguage(id);
    for (const auto& [key, text] : dictionary) {
      if (key.find(L'\0') == std::wstring::npos) {
        ++calls_;
        CompareText(library_.Exports().LANG(key.c_str()), text, "a text at the end");
      }
    }
  }
  DropValues();
}
