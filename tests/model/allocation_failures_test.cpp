// Failing allocations. For each export and each member, the first operator new of a call fails,
// then the second, and so on until the call succeeds: once only that allocation, once also all
// later ones. The result, the messages and the state must equal those of the model (model/model.h)
// for a failure at some point of the call; a later failure never has the outcome of an earlier
// point. Nothing may leak. The same call must succeed afterwards.
//
// Two programs contain this file: one with the library's objects, and, on Linux only, one with the
// built library. On Windows a loaded library does not call the program's operator new.

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <clocale>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/model/call_sequence.h"
#include "tests/support/allocation_probe.h"
#include "tests/support/encode_utf8.h"
#include "tests/support/exported_table.h"
#include "tests/support/test_platform.h"

namespace {

using allocation_probe::FailAllocation;
using allocation_probe::Failing;
using allocation_probe::LeakCheck;

// ---- The host's calls, made on the library and on its model

struct Answer {
  std::int64_t number = 0;
  double real = 0;
  const wchar_t* text = nullptr;
  std::wstring string;
};

enum class Operation { kPlus, kMinus, kTimes, kDividedBy, kConvertTo };
enum class Question { kIsEqual, kIsLess, kIsGreater, kCheckCorrect, kCheckBoth, kT, kTs, kVs };

// RealHost calls the library, ModelHost its model. In the functions down to MoveRow only the
// library allocates memory. Each slot holds a value and a row; operations use the values of the
// first slots.
class Host {
 public:
  static constexpr std::size_t kSlots = 3;

  Host() = default;
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
  virtual ~Host() = default;

  virtual std::int32_t Init(const std::wstring& folder, const std::wstring& language) = 0;
  virtual std::int32_t Init0(const std::wstring& folder) = 0;
  virtual std::int32_t ExportPhyVal() = 0;
  virtual std::int32_t LoadDictionary(const std::wstring& folder, const std::wstring& fileName) = 0;
  virtual std::int32_t UseLanguage(const std::wstring& id) = 0;
  virtual const wchar_t* LANG(const std::wstring& key) = 0;
  virtual void ClearErrors() = 0;
  virtual std::int64_t GetErrorsCount() = 0;
  virtual const wchar_t* GetError(std::int32_t index) = 0;

  virtual void FromCode(std::size_t slot, double value, double tolerance, int code) = 0;
  virtual void FromText(std::size_t slot, double value, double tolerance,
                        const std::wstring& text) = 0;
  virtual void Assign() = 0;  // the second value to the first
  virtual void Compute(Operation operation, double number, int code) = 0;  // into the last slot
  virtual double Ask(Question question, double number) = 0;
  virtual double Rounded() = 0;
  virtual std::wstring Text() = 0;
  virtual std::wstring Text(wchar_t separator) = 0;

  virtual void MakeRow(std::size_t slot, const std::wstring& symbol, const std::wstring& name) = 0;
  virtual void CopyRow(std::size_t from, std::size_t to) = 0;
  virtual void MoveRow(std::size_t from, std::size_t to) = 0;
  virtual int SidAndStypeOf(std::size_t slot) = 0;

  virtual void DropValues() = 0;
  virtual std::wstring DescribeExported() const = 0;
  virtual std::wstring DescribeSlots() const = 0;
  virtual std::wstring DescribeInside() const = 0;
};

constexpr int kRowsCode = 10002;

std::wstring DescribeValue(double value, double absolute, double relative, int code) {
  std::wostringstream words;
  words << value << L" (" << absolute << L", " << relative << L") " << code << L'\n';
  return words.str();
}

std::wstring DescribeExport(bool exists) { return exists ? L"exported\n" : L""; }

std::wstring Describe(const LibraryUnderTest::Inside& inside) {
  std::wstring words = L"current: " + inside.currentLanguage + L'\n';
  for (const UnitRow& row : inside.catalogue) {
    words += std::to_wstring(row.code) + L' ' + row.symbol + L' ' + row.name + L'\n';
  }
  for (const auto& [language, units] : inside.units) {
    words += L"units of " + language + L'\n';
    for (const auto& [code, unit] : units) {
      words += std::to_wstring(code) + L' ' + unit.first + L' ' + unit.second + L'\n';
    }
  }
  for (const std::wstring& message : inside.loadMessages) {
    words += message + L'\n';
  }
  return words;
}

class RealHost final : public Host {
 public:
  RealHost() { std::filesystem::remove(ExportPlace::kFile); }
  ~RealHost() override {
    RealHost::DropValues();
    for (std::size_t i = 0; i < kSlots; ++i) {
      DropRow(i);
    }
  }

  std::int32_t Init(const std::wstring& folder, const std::wstring& language) override {
    library_.CountStart();
    return exports_.Init(folder.c_str(), language.c_str());
  }
  std::int32_t Init0(const std::wstring& folder) override {
    library_.CountStart();
    return exports_.Init0(folder.c_str());
  }
  std::int32_t ExportPhyVal() override {
    library_.CountStart();
    return exports_.ExportPhyVal();
  }
  std::int32_t LoadDictionary(const std::wstring& folder, const std::wstring& fileName) override {
    return exports_.LoadDictionary(folder.c_str(), fileName.c_str());
  }
  std::int32_t UseLanguage(const std::wstring& id) override {
    return exports_.UseLanguage(id.c_str());
  }
  const wchar_t* LANG(const std::wstring& key) override { return exports_.LANG(key.c_str()); }
  void ClearErrors() override { exports_.ClearErrors(); }
  std::int64_t GetErrorsCount() override { return exports_.GetErrorsCount(); }
  const wchar_t* GetError(std::int32_t index) override { return exports_.GetError(index); }

  void FromCode(std::size_t slot, double value, double tolerance, int code) override {
    members_.fromCode(&values_[slot], value, tolerance, 0, code);
    hasValue_[slot] = true;
  }
  void FromText(std::size_t slot, double value, double tolerance,
                const std::wstring& text) override {
    members_.fromText(&values_[slot], value, tolerance, 0, text.c_str());
    hasValue_[slot] = true;
  }
  void Assign() override { members_.assign(values_.data(), &values_[1]); }
  void Compute(Operation operation, double number, int code) override {
    ValueMemory* const left = values_.data();
    ValueMemory* const right = left + 1;
    ValueMemory* const result = left + 2;
    switch (operation) {
      case Operation::kPlus:
        members_.plus(result, left, right);
        break;
      case Operation::kMinus:
        members_.minus(result, left, right);
        break;
      case Operation::kTimes:
        members_.times(result, left, number);
        break;
      case Operation::kDividedBy:
        members_.dividedBy(result, left, number);
        break;
      case Operation::kConvertTo:
        members_.convertTo(result, left, number, 0, code);
        break;
    }
    hasValue_[2] = true;
  }
  double Ask(Question question, double number) override {
    ValueMemory* const left = values_.data();
    ValueMemory* const right = left + 1;
    switch (question) {
      case Question::kIsEqual:
        return members_.isEqual(left, right) ? 1 : 0;
      case Question::kIsLess:
        return members_.isLess(left, right) ? 1 : 0;
      case Question::kIsGreater:
        return members_.isGreater(left, right) ? 1 : 0;
      case Question::kCheckCorrect:
        members_.check(left);
        return 0;
      case Question::kCheckBoth:
        members_.checkBoth(left, right);
        return 0;
      case Question::kT:
        return members_.tolerance(left);
      case Question::kTs:
        return members_.toleranceTimes(left, number);
      case Question::kVs:
        return members_.inUnitOf(left, number);
    }
    return -1;
  }
  double Rounded() override { return members_.rounded(values_.data()); }
  std::wstring Text() override { return members_.toString(values_.data()); }
  std::wstring Text(wchar_t separator) override {
    return members_.toStringWith(values_.data(), separator);
  }

  void MakeRow(std::size_t slot, const std::wstring& symbol, const std::wstring& name) override {
    DropRow(slot);
    members_.makeRow(&rows_[slot], kRowsCode, 0.5, symbol.c_str(), name.c_str());
    hasRow_[slot] = true;
  }
  void CopyRow(std::size_t from, std::size_t to) override {
    DropRow(to);
    members_.copyRow(&rows_[to], &rows_[from]);
    hasRow_[to] = true;
  }
  void MoveRow(std::size_t from, std::size_t to) override {
    DropRow(to);
    members_.moveRow(&rows_[to], &rows_[from]);
    hasRow_[to] = true;
  }
  int SidAndStypeOf(std::size_t slot) override {
    return members_.sidOf(&rows_[slot]) * 1000 + members_.stypeOf(&rows_[slot]);
  }

  void DropValues() override {
    for (std::size_t i = 0; i < kSlots; ++i) {
      if (hasValue_[i]) {
        members_.destroy(&values_[i]);
        hasValue_[i] = false;
      }
    }
  }
  std::wstring DescribeExported() const override {
    const bool exists = ExportPlace::Exists();
    EXPECT_TRUE(!exists || ExportPlace::Bytes() == ExportedDefaultTable());
    return DescribeExport(exists);
  }
  std::wstring DescribeSlots() const override {
    std::wstring words;
    for (std::size_t i = 0; i < kSlots; ++i) {
      if (hasValue_[i]) {
        const ValueMemory& value = values_[i];
        words += DescribeValue(value.value, value.absTolerance, value.relTolerance,
                               value.unit != nullptr ? value.unit->code : 0);
      }
      if (hasRow_[i]) {
        words += L"row " + rows_[i].Row().symbol + L' ' + rows_[i].Row().name + L'\n';
      }
    }
    return words;
  }
  std::wstring DescribeInside() const override {
    const auto inside = library_.LookInside();
    return inside ? Describe(*inside) : L"";
  }
  bool CanLookInside() const { return library_.LookInside().has_value(); }

 private:
  void DropRow(std::size_t slot) {
    if (hasRow_[slot]) {
      members_.destroyRow(&rows_[slot]);
      hasRow_[slot] = false;
    }
  }

  LibraryUnderTest library_;
  const LibraryExports& exports_ = library_.Exports();
  const ClassMembers& members_ = library_.Members();
  std::array<ValueMemory, kSlots> values_ = {};
  std::array<bool, kSlots> hasValue_ = {};
  std::array<RowMemory, kSlots> rows_ = {};
  std::array<bool, kSlots> hasRow_ = {};
};

class ModelHost final : public Host {
 public:
  ModelHost(const model::Files& files, bool comparesInside)
      : library_(files, L'.'), comparesInside_(comparesInside) {}

  model::Library& Library() { return library_; }

  std::int32_t Init(const std::wstring& folder, const std::wstring& language) override {
    return library_.Init(folder, language);
  }
  std::int32_t Init0(const std::wstring& folder) override { return library_.Init0(folder); }
  std::int32_t ExportPhyVal() override { return library_.ExportPhyVal(); }
  std::int32_t LoadDictionary(const std::wstring& folder, const std::wstring& fileName) override {
    return library_.LoadDictionary(folder, fileName);
  }
  std::int32_t UseLanguage(const std::wstring& id) override { return library_.UseLanguage(id); }
  const wchar_t* LANG(const std::wstring& key) override { return TextOf(library_.LANG(key)); }
  void ClearErrors() override { library_.ClearErrors(); }
  std::int64_t GetErrorsCount() override { return library_.GetErrorsCount(); }
  const wchar_t* GetError(std::int32_t index) override { return TextOf(library_.GetError(index)); }

  void FromCode(std::size_t slot, double value, double tolerance, int code) override {
    values_[slot] = library_.FromCode(value, tolerance, 0, code);
  }
  void FromText(std::size_t slot, double value, double tolerance,
                const std::wstring& text) override {
    values_[slot] = library_.FromText(value, tolerance, 0, text);
  }
  void Assign() override { values_[0] = values_[1]; }
  void Compute(Operation operation, double number, int code) override {
    const model::Value& left = *values_[0];
    switch (operation) {
      case Operation::kPlus:
        values_[2] = library_.Plus(left, *values_[1]);
        break;
      case Operation::kMinus:
        values_[2] = library_.Minus(left, *values_[1]);
        break;
      case Operation::kTimes:
        values_[2] = library_.Times(left, number);
        break;
      case Operation::kDividedBy:
        values_[2] = library_.DividedBy(left, number);
        break;
      case Operation::kConvertTo:
        values_[2] = library_.ConvertTo(left, number, 0, code);
        break;
    }
  }
  double Ask(Question question, double number) override {
    const model::Value& left = *values_[0];
    switch (question) {
      case Question::kIsEqual:
        return library_.IsEqual(left, *values_[1]) ? 1 : 0;
      case Question::kIsLess:
        return library_.IsLess(left, *values_[1]) ? 1 : 0;
      case Question::kIsGreater:
        return library_.IsGreater(left, *values_[1]) ? 1 : 0;
      case Question::kCheckCorrect:
        library_.CheckCorrect(left);
        return 0;
      case Question::kCheckBoth:
        library_.CheckCorrect(left, *values_[1]);
        return 0;
      case Question::kT:
        return model::ToleranceOf(left);
      case Question::kTs:
        return model::ToleranceOf(left) * number;
      case Question::kVs:
        return library_.Vs(left, number);
    }
    return -1;
  }
  double Rounded() override {
    return model::Round(values_[0]->value, model::ToleranceOf(*values_[0])).number;
  }
  std::wstring Text() override { return library_.ToString(*values_[0]); }
  std::wstring Text(wchar_t separator) override {
    return library_.ToString(*values_[0], separator);
  }

  void MakeRow(std::size_t slot, const std::wstring& symbol, const std::wstring& name) override {
    library_.TakeMemory();
    rows_[slot] = UnitRow{kRowsCode, 0.5, symbol, name};
  }
  void CopyRow(std::size_t from, std::size_t to) override {
    library_.TakeMemory();
    rows_[to] = rows_[from];
  }
  void MoveRow(std::size_t from, std::size_t to) override { CopyRow(from, to); }
  int SidAndStypeOf(std::size_t slot) override {
    return model::SidOf(rows_[slot]->code) * 1000 + model::StypeOf(rows_[slot]->code);
  }

  void DropValues() override { values_ = {}; }
  std::wstring DescribeExported() const override { return DescribeExport(library_.hasExported); }
  std::wstring DescribeSlots() const override {
    std::wstring words;
    for (std::size_t i = 0; i < kSlots; ++i) {
      if (const auto& value = values_[i]) {
        words += DescribeValue(value->value, value->absTolerance, value->relTolerance,
                               value->unit ? library_.catalogue[*value->unit].code : 0);
      }
      if (rows_[i]) {
        words += L"row " + rows_[i]->symbol + L' ' + rows_[i]->name + L'\n';
      }
    }
    return words;
  }
  std::wstring DescribeInside() const override {
    return comparesInside_ ? Describe(InsideOf(library_)) : L"";
  }

 private:
  static const wchar_t* TextOf(const std::wstring* text) {
    return text != nullptr ? text->c_str() : L"";
  }

  model::Library library_;
  bool comparesInside_;
  std::array<std::optional<model::Value>, kSlots> values_;
  std::array<std::optional<UnitRow>, kSlots> rows_;
};

// ---- The calls

// Most are longer than a string can hold without an allocation.
const std::wstring kFolder = L".";
const std::wstring kId = L"an.id.that.needs.memory.of.its.own";
const std::wstring kOtherId = L"another.id.that.needs.memory.of.its.own";
// Too long for the rest of any block of an arena: storing one, or its message, always allocates.
const std::wstring kKey1 = L"first.key." + std::wstring(2500, L'x');
const std::wstring kUnknownKey = L"an.unknown.key." + std::wstring(2500, L'x');
const std::string kLong(5000, 't');
const std::wstring kUnknownId = L"an.unknown.id." + std::wstring(2500, L'x');
const std::wstring kKey2 = L"second.key.that.needs.memory.\u00E4\u20AC";
const std::wstring kLanguage = L"a language that needs memory";
const std::wstring kLongText(100, L't');
const std::wstring kMissingFolder = L"a folder that is missing";
const std::wstring kKey = L"key";
const std::wstring kRadian = L"radian ";
const std::wstring kSquareMeter = L"square meter";
const std::wstring kInvalidPath = kMissingFolder + wchar_t{0xD800};

const std::wstring kIds[] = {kId, kOtherId, L"an.older.id", L""};
const std::wstring kKeys[] = {kKey1, kKey1 + L"k", kKey2, kKey, L"k", L"", L"last"};
constexpr int kCodes[] = {10, 10001, 10002, 20001, 30001, 40001, 40002};

void WriteFiles(Disk& disk) {
  const std::string id = EncodeUtf8(kId);
  const std::string text = " a text that needs memory " + kLong;
  disk.Write(L"older.txt", "an.older.id\nkey older text\n");
  disk.Write(L"other.txt", EncodeUtf8(kOtherId) + " Other\nkey other text\n");
  disk.Write(L"file.txt", id + " Language\n" + EncodeUtf8(kKey1) + text + "\r\n\n" +
                              EncodeUtf8(kKey1) + " again\n" + EncodeUtf8(kKey1) + "k\n" +
                              std::string(kLong.size(), ' ') + "\n" + EncodeUtf8(kKey2) +
                              "\tein l\xC3\xA4ngerer Text \xF0\x9F\x98\x80" + kLong + "\n" +
                              "last\t" + text + "\xFF\nafter all\n");
  std::string longKeys = id;
  for (const char* const end : {"a", "b", "c"}) {
    longKeys += "\n" + EncodeUtf8(kKey1) + end + " text";
  }
  disk.Write(L"long_keys.txt", longKeys);
  disk.Write(L"merged.txt", id + "\n" + EncodeUtf8(kKey1) + " again\n" + EncodeUtf8(kKey1) + "k");
  disk.Write(L"long.txt", id + "\nkey " + std::string(200'000, 't') + "\nk " +
                              std::string(70'000, ' ') + "end\nlast " + std::string(150'000, 't'));
  // Ends of chunks between CR and LF, and among CRs that are part of a text.
  constexpr std::size_t kChunk = 32768;
  std::string chunks = id + "\nkey ";
  chunks += std::string(kChunk - 1 - chunks.size(), 't') + "\r\nk ";
  chunks += std::string(2 * kChunk, '\r') + "end\nlast " + std::string(150'000, 't');
  disk.Write(L"chunks.txt", chunks);
  disk.Write(L"cut.txt", id + "\nkey \xC3\xA4\xE2\x82\xAC\nk " + kLong + "\xE2\x82");
  disk.Write(L"not_utf8.txt", id + "\nkey text\nk " + kLong + "\xF0\x9F\x98z");
  disk.Write(L"empty.txt", "");
  disk.Write(L"LANG\\a language that needs memory-val.txt",
             "key.of.a.language.that.needs.memory Language\n"
             "1 symbol.that.needs.memory name that needs memory\n\n"
             "a.line.that.is.short.and.needs.memory\n// a comment among the units\n"
             "1 another.symbol another name\n2 symbol.that.needs.memory n\xC3\xA4me\n");
  disk.Write(L"LANG\\bad-val.txt", "a header that has more than two fields\n1 m name\n");
  disk.Write(L"LANG\\empty-val.txt", "");
  disk.Write(L"lang-val.text", "neutral.units.that.need.memory N\n1 symbol.that.needs.memory n\n");
}

struct Call {
  const char* name;
  std::function<void(Host&)> before;
  std::function<void(Host&, Answer&)> call;
};

void Nothing(Host& /*host*/) {}

void LoadOlder(Host& host) {
  host.LoadDictionary(kFolder, L"other.txt");
  host.LoadDictionary(kFolder, L"older.txt");
  host.UseLanguage(kUnknownId);
}

// Lists `messages` messages.
auto List(int messages) {
  return [messages](Host& host) {
    for (int i = 0; i < messages; ++i) {
      host.UseLanguage(L"missing" + std::to_wstring(i));
    }
  };
}

auto Load(const wchar_t* fileName) {
  return [name = std::wstring(fileName)](Host& host, Answer& answer) {
    answer.number = host.LoadDictionary(kFolder, name);
  };
}

auto LoadBefore(const wchar_t* fileName) {
  return [name = std::wstring(fileName)](Host& host) {
    LoadOlder(host);
    host.LoadDictionary(kFolder, name);
  };
}

auto Start(const wchar_t* language) {
  return [name = std::wstring(language)](Host& host, Answer& answer) {
    answer.number = host.Init(kFolder, name);
  };
}

auto Error(std::int32_t index) {
  return [index](Host& host, Answer& answer) { answer.text = host.GetError(index); };
}

// Two values, by their codes.
auto Values(int left, int right) {
  return [=](Host& host) {
    host.FromCode(0, -1234567890123456.0, 0.001, left);
    host.FromCode(1, 1.5, 0.01, right);
  };
}

auto Computed(Operation operation, double number = 0, int code = 0) {
  return [=](Host& host, Answer& /*answer*/) { host.Compute(operation, number, code); };
}

auto Asked(Question question, double number = 0) {
  return [=](Host& host, Answer& answer) { answer.real = host.Ask(question, number); };
}

const std::vector<Call>& TakingMemory() {
  static const std::vector<Call> calls = {
      // Dictionaries
      {"LoadDictionary", LoadOlder, Load(L"file.txt")},
      {"LoadDictionary, the first of all", Nothing, Load(L"file.txt")},
      {"LoadDictionary of an existing id", LoadBefore(L"file.txt"), Load(L"merged.txt")},
      {"LoadDictionary for the second time", LoadBefore(L"long_keys.txt"), Load(L"long_keys.txt")},
      {"LoadDictionary of long lines", LoadOlder, Load(L"long.txt")},
      {"LoadDictionary of a file of several chunks", LoadOlder, Load(L"chunks.txt")},
      {"LoadDictionary of a file that ends inside a character", LoadOlder, Load(L"cut.txt")},
      {"LoadDictionary of invalid UTF-8", LoadOlder, Load(L"not_utf8.txt")},
      {"LoadDictionary of an empty file", LoadOlder, Load(L"empty.txt")},
      {"LoadDictionary of a missing file", LoadOlder, Load(L"missing.txt")},
      {"LoadDictionary of a missing file that is listed", LoadBefore(L"missing.txt"),
       Load(L"missing.txt")},
      {"LoadDictionary of an invalid path", LoadOlder,
       [](Host& host, Answer& answer) {
         answer.number = host.LoadDictionary(kFolder, kInvalidPath);
       }},
      {"UseLanguage", LoadOlder,
       [](Host& host, Answer& answer) { answer.number = host.UseLanguage(kOtherId); }},
      {"UseLanguage of an unknown id", Nothing,
       [](Host& host, Answer& answer) { answer.number = host.UseLanguage(kUnknownId); }},
      {"LANG of a missing key", LoadOlder,
       [](Host& host, Answer& answer) { answer.text = host.LANG(kUnknownKey); }},
      {"LANG without a dictionary", Nothing,
       [](Host& host, Answer& answer) { answer.text = host.LANG(kKey1); }},
      // When a list allocates depends on its length.
      {"a message behind one", List(1),
       [](Host& host, Answer& answer) { answer.number = host.UseLanguage(kUnknownId); }},
      {"a message behind two", List(2),
       [](Host& host, Answer& answer) { answer.number = host.UseLanguage(kUnknownId); }},
      {"a message behind four", List(4),
       [](Host& host, Answer& answer) { answer.number = host.UseLanguage(kUnknownId); }},
      {"a message behind eight", List(8),
       [](Host& host, Answer& answer) { answer.number = host.UseLanguage(kUnknownId); }},
      {"a message behind sixteen", List(16),
       [](Host& host, Answer& answer) { answer.number = host.UseLanguage(kUnknownId); }},
      {"a message behind thirty-two", List(32),
       [](Host& host, Answer& answer) { answer.number = host.UseLanguage(kUnknownId); }},
      {"a message behind a hundred and twenty-eight", List(128),
       [](Host& host, Answer& answer) { answer.number = host.UseLanguage(kUnknownId); }},
      {"GetError just past the last", List(2), Error(2)},

      // Starting
      {"Init", LoadOlder, Start(kLanguage.c_str())},
      {"Init for the second time", [](Host& host) { host.Init(kFolder, kLanguage); },
       Start(kLanguage.c_str())},
      {"Init without a table", LoadOlder, Start(L"a language that is missing")},
      {"Init with a bad table", LoadOlder, Start(L"bad")},
      {"Init with an empty table", LoadOlder, Start(L"empty")},
      {"Init with an invalid path", Nothing, Start(kInvalidPath.c_str())},
      {"Init0", LoadOlder, [](Host& host, Answer& answer) { answer.number = host.Init0(kFolder); }},
      {"Init0 without a table", Nothing,
       [](Host& host, Answer& answer) { answer.number = host.Init0(kMissingFolder); }},
      {"ExportPhyVal", LoadOlder,
       [](Host& host, Answer& answer) { answer.number = host.ExportPhyVal(); }},

      // Values
      {"to_string()", Values(10001, 10001),
       [](Host& host, Answer& answer) { answer.string = host.Text(); }},
      {"to_string(separator)", Values(10001, 10001),
       [](Host& host, Answer& answer) { answer.string = host.Text(L','); }},
      {"+ without a unit", Values(10, 10001), Computed(Operation::kPlus)},
      {"+ with a right operand without a unit", Values(10001, 10), Computed(Operation::kPlus)},
      {"+ of two quantities", Values(10001, 40001), Computed(Operation::kPlus)},
      {"- of two quantities", Values(10001, 40001), Computed(Operation::kMinus)},
      {"* without a unit", Values(10, 10), Computed(Operation::kTimes, 2)},
      {"/ without a unit", Values(10, 10), Computed(Operation::kDividedBy, 2)},
      {"== without a unit", Values(10, 10), Asked(Question::kIsEqual)},
      {"< of two quantities", Values(10001, 40001), Asked(Question::kIsLess)},
      {"> of two quantities", Values(10001, 40001), Asked(Question::kIsGreater)},
      {"CheckCorrect without a unit", Values(10, 10), Asked(Question::kCheckCorrect)},
      {"CheckCorrect of two quantities", Values(10001, 40001), Asked(Question::kCheckBoth)},
      {"ConvertTo another quantity", Values(10001, 10001),
       Computed(Operation::kConvertTo, 0.1, 40001)},
      {"ConvertTo a code without a unit", Values(10001, 10001),
       Computed(Operation::kConvertTo, 0.1, 10)},

      // Rows
      {"ValueType", Nothing,
       [](Host& host, Answer& /*answer*/) { host.MakeRow(0, kLongText, kLongText); }},
      {"a copied ValueType", [](Host& host) { host.MakeRow(0, kLongText, kLongText); },
       [](Host& host, Answer& /*answer*/) { host.CopyRow(0, 1); }},
      {"a moved ValueType", [](Host& host) { host.MakeRow(0, kLongText, kLongText); },
       [](Host& host, Answer& /*answer*/) { host.MoveRow(0, 1); }},
  };
  return calls;
}

const std::vector<Call>& TakingNoMemory() {
  static const std::vector<Call> calls = {
      {"UseLanguage of the current id", LoadBefore(L"other.txt"),
       [](Host& host, Answer& answer) { answer.number = host.UseLanguage(kOtherId); }},
      {"UseLanguage of an unknown id that is listed", LoadOlder,
       [](Host& host, Answer& answer) { answer.number = host.UseLanguage(kUnknownId); }},
      {"LANG of a missing key that is listed",
       [](Host& host) {
         LoadOlder(host);
         host.LANG(kUnknownKey);
       },
       [](Host& host, Answer& answer) { answer.text = host.LANG(kUnknownKey); }},
      {"LANG without a dictionary, which is listed", [](Host& host) { host.LANG(kKey1); },
       [](Host& host, Answer& answer) { answer.text = host.LANG(kKey1); }},
      {"LANG of an existing key", LoadOlder,
       [](Host& host, Answer& answer) { answer.text = host.LANG(kKey); }},
      {"LANG of a long key in a dictionary of a long id", LoadBefore(L"file.txt"),
       [](Host& host, Answer& answer) { answer.text = host.LANG(kKey1); }},
      {"ClearErrors of one", List(1), [](Host& host, Answer& /*answer*/) { host.ClearErrors(); }},
      {"ClearErrors of many", List(100),
       [](Host& host, Answer& /*answer*/) { host.ClearErrors(); }},
      {"ClearErrors of nothing", Nothing,
       [](Host& host, Answer& /*answer*/) { host.ClearErrors(); }},
      {"GetErrorsCount", List(3),
       [](Host& host, Answer& answer) { answer.number = host.GetErrorsCount(); }},
      {"GetError of the first", List(3), Error(0)},
      {"GetError", List(3), Error(1)},
      {"GetError of the last", List(100), Error(99)},
      {"GetError before the first", List(3), Error(-1)},
      {"GetError far behind the last", List(3), Error(INT_MAX)},
      {"GetError of nothing", Nothing, Error(0)},
      {"Double by code", Nothing,
       [](Host& host, Answer& /*answer*/) { host.FromCode(0, 1.5, 0.1, 40002); }},
      {"Double by text", Nothing,
       [](Host& host, Answer& /*answer*/) { host.FromText(0, 1.5, 0.1, kRadian); }},
      {"Double by a long text", Nothing,
       [](Host& host, Answer& /*answer*/) { host.FromText(0, 1.5, 0.1, kSquareMeter); }},
      {"Double by an unknown text", Nothing,
       [](Host& host, Answer& /*answer*/) { host.FromText(0, 1.5, 0.1, kLongText); }},
      {"=", Values(10001, 10002), [](Host& host, Answer& /*answer*/) { host.Assign(); }},
      {"+", Values(10001, 10002), Computed(Operation::kPlus)},
      {"-", Values(10001, 10002), Computed(Operation::kMinus)},
      {"*", Values(10001, 10002), Computed(Operation::kTimes, 3)},
      {"/", Values(10001, 10002), Computed(Operation::kDividedBy, 3)},
      {"ConvertTo", Values(10001, 10002), Computed(Operation::kConvertTo, 0.1, 10002)},
      {"ConvertTo its own unit", Values(10001, 10002), Computed(Operation::kConvertTo, 0.1, 10001)},
      {"==", Values(10001, 10002), Asked(Question::kIsEqual)},
      {"<", Values(10001, 10002), Asked(Question::kIsLess)},
      {">", Values(10001, 10002), Asked(Question::kIsGreater)},
      {"CheckCorrect", Values(10001, 10002), Asked(Question::kCheckCorrect)},
      {"CheckCorrect of two", Values(10001, 10002), Asked(Question::kCheckBoth)},
      {"T", Values(10001, 10002), Asked(Question::kT)},
      {"Ts", Values(10001, 10002), Asked(Question::kTs, 3)},
      {"Vs", Values(10001, 10002), Asked(Question::kVs, 0.0273)},
      {"Return", Values(10001, 10002),
       [](Host& host, Answer& answer) { answer.real = host.Rounded(); }},
      {"GetSid, GetStype", [](Host& host) { host.MakeRow(0, kLongText, kLongText); },
       [](Host& host, Answer& answer) { answer.number = host.SidAndStypeOf(0); }},
      {"destruction of values", Values(10001, 10002),
       [](Host& host, Answer& /*answer*/) { host.DropValues(); }},
  };
  return calls;
}

// ---- The outcome of a call

// How a call has ended, and the whole state afterwards. Describing the state changes it, because
// that needs more calls.
struct Outcome {
  std::wstring ending;
  std::wstring state;

  friend bool operator==(const Outcome& left, const Outcome& right) {
    return left.ending == right.ending && left.state == right.state;
  }
  friend void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << testing::PrintToString(outcome.ending) << ", then\n"
         << testing::PrintToString(outcome.state);
  }
};

// Replaces a long text by its beginning and its length.
std::wstring Shown(const std::wstring& text) {
  constexpr std::size_t kMaxLength = 200;
  return text.substr(0, kMaxLength) +
         (text.size() > kMaxLength ? std::to_wstring(text.size()) : L"");
}

std::wstring DescribeEnding(const Answer& answer, const std::exception_ptr& exception) {
  if (exception == nullptr) {
    std::wostringstream words;
    words << answer.number << L' ' << answer.real << L' '
          << Shown(answer.text != nullptr ? answer.text : L"-") << L' ' << Shown(answer.string);
    return words.str();
  }
  try {
    std::rethrow_exception(exception);
  } catch (const std::bad_alloc&) {
    return L"no memory";
  } catch (const std::logic_error& refusal) {
    const std::string text = refusal.what();
    return {text.begin(), text.end()};
  }
}

void DescribeMessages(Host& host, std::wstring& words) {
  for (std::int32_t i = 0; i < host.GetErrorsCount(); ++i) {
    words += Shown(host.GetError(i));
    words += L'\n';
  }
}

std::wstring DescribeState(Host& host) {
  std::wstring words = host.DescribeExported() + host.DescribeSlots() + host.DescribeInside();
  DescribeMessages(host, words);
  words += host.LANG(kUnknownKey);  // the message depends on the current dictionary
  for (const std::wstring& id : kIds) {
    words += L"\n" + id + L": " + std::to_wstring(host.UseLanguage(id));
    for (const std::wstring& key : kKeys) {
      words += L" [";
      words += Shown(host.LANG(key));
      words += L']';
    }
  }
  words += L'\n';
  host.DropValues();
  for (const int code : kCodes) {
    host.FromCode(0, 1, 1, code);
    words += host.DescribeSlots();
    host.DropValues();
  }
  DescribeMessages(host, words);
  return words;
}

std::exception_ptr Try(Host& host, const Call& call, Answer& answer) noexcept {
  try {
    call.call(host, answer);
    return nullptr;
  } catch (...) {
    return std::current_exception();
  }
}

// Repeats the call if `again`, and describes the outcome.
Outcome Observe(Host& host, const Call& call, Answer& answer, std::exception_ptr exception,
                bool again) {
  if (again) {
    answer = {};
    exception = Try(host, call, answer);
  }
  const std::wstring ending = DescribeEnding(answer, exception);
  return {ending, DescribeState(host)};
}

// ---- The possible outcomes

// Of a failure at one point of the call: the outcome of the call itself, and, in another lifetime,
// that of the repeated call.
struct Expected {
  Outcome failed;
  Outcome repeated;
};

// Microsoft's library allocates the text of an exception with malloc, others with operator new.
bool ExceptionsTakeMemory() {
  const std::size_t before = allocation_probe::Count();
  const std::out_of_range exception("a text that is too long for a string without an allocation");
  return allocation_probe::Count() > before;
}

// One for each point in the order of the call; the last is that of a call without a failure.
std::vector<Expected> ExpectedOf(const Call& call, Failing failing, const model::Files& files,
                                 bool comparesInside) {
  const bool exceptionsTakeMemory = ExceptionsTakeMemory();
  std::vector<Expected> expected;
  for (std::size_t point = 1;; ++point) {
    bool hasFailed = false;
    const auto run = [&](bool again) {
      ModelHost host(files, comparesInside);
      host.Library().exceptionsTakeMemory = exceptionsTakeMemory;
      call.before(host);
      Answer answer;
      host.Library().FailAt(point, failing == Failing::kFromThenOn);
      const std::exception_ptr exception = Try(host, call, answer);
      hasFailed = host.Library().HasFailed();
      host.Library().FailAt(0, false);
      return Observe(host, call, answer, exception, again);
    };
    expected.push_back({run(false), run(true)});
    if (!hasFailed) {
      return expected;
    }
  }
}

class AllocationFailures : public testing::Test {
 protected:
  AllocationFailures() { WriteFiles(disk_); }

  // The name of the locale is so long that copying it allocates memory. Linux has the first locale,
  // Windows the other.
  void SetUp() override {
    ASSERT_TRUE(std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr ||
                std::setlocale(LC_CTYPE, "English_United States.1252") != nullptr);
    ASSERT_GT(std::string(std::setlocale(LC_ALL, nullptr)).size(), 15U);
    locale_ = std::setlocale(LC_ALL, nullptr);
    comparesInside_ = RealHost().CanLookInside();
  }
  void TearDown() override { std::setlocale(LC_ALL, "C"); }

  // In a new lifetime of the library. Returns whether an allocation has failed.
  bool FailOne(const Call& call, std::size_t n, Failing failing, bool again,
               Outcome& outcome) const {
    constexpr std::size_t kCapacity = 20000;  // reserved before the check for leaks begins
    outcome.ending.reserve(kCapacity);
    outcome.state.reserve(kCapacity);
    bool hasFailed = false;
    const std::uintptr_t nextHandle = NextHandle();
    {
      const LeakCheck everythingIsFreed;
      RealHost host;
      call.before(host);
      Answer answer;
      std::exception_ptr exception;
      {
        const FailAllocation failure(n, failing);
        exception = Try(host, call, answer);
        hasFailed = failure.Happened();
      }
      EXPECT_EQ(std::setlocale(LC_ALL, nullptr), locale_);
      const Outcome observed = Observe(host, call, answer, exception, again);
      outcome = observed;
    }
    EXPECT_LE(outcome.ending.size() + outcome.state.size(), kCapacity);
    EXPECT_EQ(NextHandle(), nextHandle) << "a handle leaked";
    return hasFailed;
  }

  // Returns the number of failures. If `everyPoint`, the outcome of each point must occur.
  std::size_t FailEach(const Call& call, Failing failing, bool everyPoint) const {
    const std::vector<Expected> expected =
        ExpectedOf(call, failing, disk_.Files(), comparesInside_);
    std::vector<bool> wasObserved(expected.size());
    std::size_t point = 0;  // the model's failure here has the same outcome
    Outcome failed;
    Outcome repeated;
    for (std::size_t n = 1;; ++n) {
      SCOPED_TRACE(testing::Message()
                   << "allocation " << n
                   << (failing == Failing::kOnce ? " fails" : " and all later ones fail"));
      if (!FailOne(call, n, failing, false, failed)) {
        EXPECT_EQ(failed, expected.back().failed);
        for (std::size_t i = 0; everyPoint && i + 1 < expected.size(); ++i) {
          EXPECT_TRUE(wasObserved[i])
              << "never observed: " << testing::PrintToString(expected[i].failed);
        }
        return n - 1;
      }
      while (point < expected.size() && !(expected[point].failed == failed)) {
        ++point;
      }
      if (point == expected.size()) {
        ADD_FAILURE() << "observed: " << testing::PrintToString(failed);
        for (const Expected& possible : expected) {
          ADD_FAILURE() << "possible: " << testing::PrintToString(possible.failed);
        }
        return n;
      }
      FailOne(call, n, failing, true, repeated);
      EXPECT_EQ(repeated, expected[point].repeated);
      if (HasFailure()) {
        return n;
      }
      for (std::size_t i = 0; i < expected.size(); ++i) {
        wasObserved[i] = wasObserved[i] || expected[i].failed == failed;
      }
    }
  }

  const ScratchFolder folder_;
  const ExportPlace exportPlace_{folder_};
  Disk disk_;
  std::string locale_;
  bool comparesInside_ = false;
};

TEST_F(AllocationFailures, LeaveThePromisedStateAtEveryAllocation) {
  std::size_t failures = 0;
  for (const Call& call : TakingMemory()) {
    SCOPED_TRACE(call.name);
    for (const Failing failing : {Failing::kOnce, Failing::kFromThenOn}) {
      const std::size_t failed = FailEach(call, failing, true);
      EXPECT_TRUE(failed > 0 || !ExceptionsTakeMemory()) << "the call should allocate memory";
      failures += failed;
      if (HasFailure()) {
        return;
      }
    }
  }
  std::cout << failures << " failures in " << TakingMemory().size() << " calls\n";
}

TEST_F(AllocationFailures, DoNotHappenInCallsThatNeedNoMemory) {
  for (const Call& call : TakingNoMemory()) {
    SCOPED_TRACE(call.name);
    EXPECT_EQ(FailEach(call, Failing::kOnce, false), 0U);
  }
}

TEST_F(AllocationFailures, OfAStreamUnderTheHostsGlobalLocaleReachTheHost) {
  const GlobalLocale grouped(LocaleGroupedByPoints());
  for (const double number : {1e9, 1e300}) {
    const Call call = {"to_string(separator)",
                       [number](Host& host) { host.FromCode(0, number, 0.001, 10001); },
                       [](Host& host, Answer& answer) { answer.string = host.Text(L';'); }};
    EXPECT_GT(FailEach(call, Failing::kOnce, true), 0U);
    EXPECT_GT(FailEach(call, Failing::kFromThenOn, true), 0U);
  }
}

}  // namespace
