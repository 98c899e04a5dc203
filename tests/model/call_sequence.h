// Random calls of everything that a host can call, with the library and its model side by side: each
// result, text, message and exception of the one must be that of the other.
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

/// The working directory with what the library may read there.
class Disk {
 public:
  /// The directory must be empty. Nobody else may write there.
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

/// The last calls that were made, in words: a line each.
using ToldCalls = std::deque<std::string>;

/// What the model has of that which no export shows. Messages as far as they can be read.
LibraryUnderTest::Inside InsideOf(const model::Library& library);

class CallSequence {
 public:
  /// The library and the model begin their lives here. The calls are told to `told`, unless that is
  /// null.
  CallSequence(RandomNumbers& random, Disk& disk, ToldCalls* told);

  /// Makes so many changes to the files that the calls may read: most are new ones.
  void WriteFiles(int changes);

  /// Makes one call or a few that belong together. `mayWriteFiles`: also changes files.
  void Step(bool mayWriteFiles);

  /// The same, of the calls that make values and compute with them; and sometimes one that starts.
  void StepWithValues();

  /// Makes this call.
  void Load(const std::wstring& folder, const std::wstring& fileName);
  void Select(const std::wstring& id);
  void Ask(const std::wstring& key);
  void AskForEveryText();  // of the current dictionary, and for such as it has not
  void Init(const std::wstring& folder, const std::wstring& language);
  void Init0(const std::wstring& folder);
  void ExportPhyVal();

  /// Gives up what a host can give up: messages, values, its locales.
  void GiveUp();

  /// Compares all that there is.
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

  // What is chosen at random.
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
  void Tell(Words words);  // of a call
  template <class Words>
  void Note(Words words);  // of what the host does besides
  std::string Told(const model::Value& value) const;
  template <class Real, class Modelled>
  static std::string CompareEndings(const char* name, Real real, Modelled modelled);
  static void CompareNumbers(const char* name, std::int64_t real, std::int64_t modelled);
  void CompareTexts(const wchar_t* real, const std::wstring* modelled, const char* what);
  static void CompareText(const wchar_t* real, const std::wstring& modelled, const char* what);
  void CompareValues(const LivingValue& value, const char* what);
  void CompareListBriefly();  // its length and its newest message
  void CompareMessages();
  void CompareInside() const;

  RandomNumbers& random_;
  Disk& disk_;
  ToldCalls* told_;
  Vocabulary words_;
  LibraryUnderTest library_;
  model::Library model_;
  std::uint64_t calls_ = 0;
  bool passesNull_ = false;
  std::vector<LivingValue> values_;
  std::vector<KeptText> keptTexts_;
  std::vector<const KelmoLibs::Localize::Phyval::ValueType*> rows_;  // of the catalogue, as seen
  std::map<const std::wstring*, const wchar_t*> addresses_;  // of texts, by those of the model
  std::optional<KeptText> keptMessage_;                      // as long as the list does not change
  std::size_t listed_ = 0;                                   // its length when it was looked at
  const wchar_t* emptyText_ = nullptr;                       // as seen
  std::optional<GlobalLocale> globalLocale_;
};
