// Random calls of every function and member, on the library and on its model. All results, texts,
// messages and exceptions must be equal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/model/disagreement.h"
#include "tests/model/library_under_test.h"
#include "tests/model/model.h"
#include "tests/model/vocabulary.h"
#include "tests/support/global_locale.h"
#include "tests/support/random_numbers.h"

/// The working directory and the files that the library may read there.
class Disk {
 public:
  /// Precondition: the directory is empty, and nothing else writes there.
  Disk() = default;
  Disk(const Disk&) = delete;
  Disk& operator=(const Disk&) = delete;
  ~Disk() { Clear(); }

  void Write(const std::wstring& path, const std::string& bytes);
  void Remove(const std::wstring& path);
  void Clear();

  const model::Files& Files() const { return files_; }

 private:
  model::Files files_;
};

/// The last calls as text, one line each.
using CallLog = std::deque<std::string>;

/// The model's state that no export shows. Messages end at their first NUL.
LibraryUnderTest::Inside InsideOf(const model::Library& library);

class CallSequence {
 public:
  /// Starts the lifetimes of the library and of the model. Appends the calls to `log`, unless it is
  /// null.
  CallSequence(RandomNumbers& random, Disk& disk, CallLog* log);

  /// Makes `changes` changes to the files that the calls may read. Most write a file.
  void WriteFiles(int changes);

  /// Makes one call or a few related ones. `mayWriteFiles`: may change a file instead.
  void Step(bool mayWriteFiles);

  /// Like Step, with values only; sometimes starts the library.
  void StepWithValues();

  /// Each makes this call on both and compares the results.
  void Load(const std::wstring& folder, const std::wstring& fileName);
  void Select(const std::wstring& id);
  void Ask(const std::wstring& key);
  void AskForEveryText();  // of the current dictionary, and for similar keys
  void Init(const std::wstring& folder, const std::wstring& language);
  void Init0(const std::wstring& folder);
  void ExportPhyVal();

  /// Releases what a host can release: messages, values, locales.
  void ReleaseAll();

  /// Compares the whole state. Destroys the values.
  void CompareAll();

  std::uint64_t Calls() const { return calls_; }

 private:
  struct LivingValue {
    ValueMemory real;
    model::Value modelled;
  };
  struct KeptText {
    const wchar_t* real;
    std::wstring modelled;
  };

  const wchar_t* Argument(const std::wstring& text);

  // Random choices
  std::wstring AnyFolder();
  std::wstring AnyLanguage();
  template <class Texts>
  std::wstring AnyOfTheKeys(const Texts& texts);
  std::wstring AnyId();
  std::wstring AnyKey();
  std::wstring AnyUnitText();
  int AnyCode();
  double AnyNumber();
  double AnyAbsoluteTolerance();
  double AnyRelativeTolerance();

  void ChangeAFile();
  void LoadADictionary();
  void SelectADictionary();
  void AskForTexts();
  void ListManyMessages();
  void LoadManyDictionaries();
  void ReadMessages();
  void ClearMessages();
  void Start();
  void StartWithATable();
  template <class Call>
  void StartBy(Call call);
  void MakeAValue();
  void UseAValue();
  void ComputeWithValues();
  void MakeRows();
  void ChangeALocale();

  LivingValue& AnyValue();
  LivingValue MakeComparable(const LivingValue& left);
  void Keep(const LivingValue& made);
  void Destroy(LivingValue& value);
  void DropValues();

  template <class Words>
  void LogCall(Words words);
  template <class Words>
  void LogAction(Words words);  // of the host itself
  std::string Describe(const model::Value& value) const;
  template <class Real, class Modelled>
  static std::string CompareEndings(const char* name, Real real, Modelled modelled);
  static void CompareNumbers(const char* name, std::int64_t real, std::int64_t modelled);
  void CompareTexts(const wchar_t* real, const std::wstring* modelled, const char* what);
  static void CompareText(const wchar_t* real, const std::wstring& modelled, const char* what);
  void CompareValues(const LivingValue& value, const char* what);
  void CompareListBriefly();  // the length and the newest message
  void CompareMessages();
  void CompareInside() const;

  RandomNumbers& random_;
  Disk& disk_;
  CallLog* log_;
  Vocabulary words_;
  LibraryUnderTest library_;
  model::Library model_;
  std::uint64_t calls_ = 0;
  bool passesNull_ = false;
  std::vector<LivingValue> values_;
  std::vector<KeptText> keptTexts_;
  // Addresses of the catalogue's rows; null until one is seen.
  std::vector<const KelmoLibs::Localize::Phyval::ValueType*> rows_;
  std::map<const std::wstring*, const wchar_t*> addresses_;  // of texts, by the model's addresses
  std::optional<KeptText> keptMessage_;                      // valid until the list changes
  std::size_t listed_ = 0;                                   // length of the list at that time
  const wchar_t* emptyText_ = nullptr;                       // the library's pointer for no text
  std::optional<GlobalLocale> globalLocale_;
};
