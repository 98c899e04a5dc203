// A second, simple implementation of the whole library's behaviour: with whole copies, ordered maps
// and linear searches. It shares no code with the library, and changes only if a promise to hosts
// changes. call_sequence.h compares the two.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/unit_rows.h"

namespace model {

/// Files by their paths below the working directory, with backslashes between folders.
using Files = std::map<std::wstring, std::string>;

/// The bytes of the file at a host's path; null if there is none.
const std::string* FindFile(const Files& files, const std::wstring& path);

/// Bytes as wide text, up to the first invalid UTF-8.
std::wstring Decode(const std::string& bytes);

/// The lines of a text file.
std::vector<std::wstring> LinesOf(const std::string& bytes);

/// Key and text.
std::pair<std::wstring, std::wstring> SplitDictionaryLine(const std::wstring& line);

/// The fields of a line in a table of `count` columns.
std::vector<std::wstring> SplitUnitLine(std::wstring line, std::size_t count);

/// The number in a field.
std::int32_t IntegerOf(const std::wstring& field);

struct Value {
  double value;
  double absTolerance;
  double relTolerance;
  std::optional<std::size_t> unit;  // index in the catalogue
};

int StypeOf(int code);  // the quantity
int SidOf(int code);    // the number of the unit in it

double ToleranceOf(const Value& value);

/// Whether rounding by this tolerance ends. If not, neither the library nor the model may be
/// called.
bool RoundingEnds(double tolerance);

/// The number and the decimals of a value's text.
struct Rounded {
  double number;
  int decimals;
};
Rounded Round(double value, double tolerance);

/// One lifetime of the library. Results, messages and exceptions equal those of the real library.
class Library {
 public:
  /// `usersPoint` is the decimal separator of the user's settings.
  Library(const Files& files, wchar_t usersPoint) : files_(&files), usersPoint_(usersPoint) {}

  // ---- Failing allocations

  /// TakeMemory() stands for an allocation: before each change the library may need memory. Makes
  /// the n-th call from now fail (1 is the next), and all later ones too if `fromThenOn`.
  void FailAt(std::size_t n, bool fromThenOn);
  bool HasFailed() const { return failed_; }
  /// Throws std::bad_alloc if this call must fail.
  void TakeMemory();
  /// Whether the text of an exception takes memory from operator new. Not every C++ library does
  /// that.
  bool exceptionsTakeMemory = true;

  // ---- The nine functions

  std::int32_t Init(const std::wstring& folder, const std::wstring& language);
  std::int32_t Init0(const std::wstring& folder);
  std::int32_t ExportPhyVal();
  std::int32_t LoadDictionary(const std::wstring& folder, const std::wstring& fileName);
  std::int32_t UseLanguage(const std::wstring& id);
  const std::wstring* LANG(const std::wstring& key);  // null: no text
  void ClearErrors() { errors.clear(); }
  std::int64_t GetErrorsCount() const { return static_cast<std::int64_t>(errors.size()); }
  const std::wstring* GetError(std::int32_t index);  // null: no message

  // ---- Double

  Value FromCode(double value, double absTolerance, double relTolerance, int code) const;
  Value FromText(double value, double absTolerance, double relTolerance,
                 const std::wstring& text) const;
  Value Plus(const Value& left, const Value& right);
  Value Minus(const Value& left, const Value& right);
  Value Times(const Value& left, double k);
  Value DividedBy(const Value& left, double k);
  bool IsEqual(const Value& left, const Value& right);
  bool IsLess(const Value& left, const Value& right);
  bool IsGreater(const Value& left, const Value& right);
  Value ConvertTo(const Value& value, double absTolerance, double relTolerance, int code);
  void CheckCorrect(const Value& value);
  void CheckCorrect(const Value& value, const Value& other);
  double Vs(const Value& value, double x) const;

  std::wstring ToString(const Value& value);
  std::wstring ToString(const Value& value, wchar_t separator);

  // ---- State

  struct LocalizedUnit {
    std::wstring symbol;
    std::wstring name;
  };
  using Dictionary = std::map<std::wstring, std::wstring>;

  UnitRows catalogue = kBuiltInUnits;
  std::map<std::wstring, std::map<std::int32_t, LocalizedUnit>> localizedUnits;
  std::vector<std::wstring> loadMessages;
  std::wstring currentLanguage;
  std::map<std::wstring, Dictionary> dictionaries;
  std::vector<std::wstring> errors;
  bool hasExported = false;  // the whole file of ExportPhyVal

 private:
  void Append(std::vector<std::wstring>& messages, const std::wstring& message);
  void RebuildCatalogue(bool exportsIt);
  std::int32_t LoadLanguageTable(const std::wstring& path);
  bool ReadHeader(const std::wstring& path, std::vector<std::wstring>& lines,
                  std::wstring& language);
  bool AddUnit(const std::wstring& line, const std::wstring& language);
  double Converted(const Value& value, const Value& to) const;
  template <class Exception>
  [[noreturn]] void Refuse(const char* text);

  const Files* files_;
  wchar_t usersPoint_;
  std::size_t untilFailure_ = 0;  // 0: nothing fails
  bool failsFromThenOn_ = false;
  bool failed_ = false;
};

}  // namespace model
