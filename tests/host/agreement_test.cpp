// kelmo and the first library do the same: load the same files, select languages, look up keys,
// clear the messages, in random order. Both are the built files, in one process. Texts, messages and
// counts must agree. --rounds=N runs longer; a failure prints the command that repeats it.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kelmo/kelmo.h"
#include "tests/host/owned.h"
#include "tests/model/disagreement.h"
#include "tests/model/model.h"
#include "tests/model/nasty_files.h"
#include "tests/model/vocabulary.h"
#include "tests/support/encode_utf8.h"
#include "tests/support/library_exports.h"
#include "tests/support/loaded_library.h"
#include "tests/support/random_numbers.h"
#include "tests/support/scratch_folder.h"

namespace {

constexpr int kSteps = 15;

// A host cannot pass or read the rest of a wide text.
template <class Text>
Text UpToNul(const Text& text) {
  return text.substr(0, text.find('\0'));
}

std::string ToString(kelmo_string text) { return {text.data, text.size}; }

void Expect(kelmo_status status, kelmo_status expected, const char* what) {
  if (status != expected) {
    throw Disagreement(std::string(what) + ": " + kelmo_status_name(status) + " instead of " +
                       kelmo_status_name(expected));
  }
}

template <class Value>
void ExpectEqual(const Value& kelmos, const Value& firsts, const std::string& what) {
  if (kelmos != firsts) {
    throw Disagreement(what + ": kelmo has " + testing::PrintToString(kelmos) +
                       ", the first library " + testing::PrintToString(firsts));
  }
}

Owned<kelmo_loader> NewLoader() {
  kelmo_loader* loader = nullptr;
  Expect(kelmo_loader_create(&loader), KELMO_OK, "a loader");
  return Owned<kelmo_loader>(loader);
}

Owned<kelmo_texts> Finish(kelmo_loader& loader) {
  kelmo_texts* texts = nullptr;
  Expect(kelmo_loader_finish(&loader, &texts, nullptr), KELMO_OK, "finish");
  return Owned<kelmo_texts>(texts);
}

// Problems as the first library says them, in one list where equal ones are one.
class Messages {
 public:
  Messages() {
    kelmo_problems* problems = nullptr;
    Expect(kelmo_problems_create(&problems), KELMO_OK, "a list");
    problems_.reset(problems);
  }

  kelmo_problems* Problems() { return problems_.get(); }

  // Of the problems that were told since the last call.
  void Update() {
    for (std::size_t i = 0; i < kelmo_problems_count(problems_.get()); ++i) {
      auto problem = Sized<kelmo_problem>();
      Expect(kelmo_problems_get(problems_.get(), i, &problem), KELMO_OK, "a problem");
      const std::string message = MessageOf(problem);
      if (!message.empty() &&
          std::find(messages_.begin(), messages_.end(), message) == messages_.end()) {
        messages_.push_back(message);
      }
    }
    ExpectEqual(kelmo_problems_lost(problems_.get()), std::size_t{0}, "lost problems");
    kelmo_problems_clear(problems_.get());
  }

  void Clear() { messages_.clear(); }
  const std::vector<std::string>& All() const { return messages_; }

 private:
  // Empty for what the first library keeps silent.
  static std::string MessageOf(const kelmo_problem& problem) {
    std::string file = ToString(problem.file);
    std::replace(file.begin(), file.end(), '/', '\\');
    const std::string key = ToString(problem.key);
    switch (problem.code) {
      case KELMO_PROBLEM_KEY_REPEATED:
        return ToString(problem.sentence) + "\nKey: " + key + "\nDictionary: " + file;
      case KELMO_PROBLEM_CANNOT_READ:
        return ToString(problem.sentence) + "\nDictionary: " + file;
      case KELMO_PROBLEM_UNKNOWN_LANGUAGE:
        return ToString(problem.sentence) + "\nDictionary id: " + ToString(problem.language);
      case KELMO_PROBLEM_KEY_MISSING:  // the first library names the key twice
        return ToString(problem.sentence) + "\nKey: " + key + "\nDictionary id: " + key;
      default:
        return "";
    }
  }

  Owned<kelmo_problems> problems_;
  std::vector<std::string> messages_;
};

// One lifetime of the first library beside loaders and views of kelmo.
class Pair {
 public:
  Pair(RandomNumbers& random, const ScratchFolder& folder)
      : random_(random), words_(random), folder_(folder) {}

  void Step() {
    const int chance = random_.Below(10);
    if (chance < 3 || loaded_.empty()) {
      Load();
    } else if (chance < 5) {
      Select();
    } else if (chance < 9) {
      LookUp(AnyKey());
    } else {
      first_.ClearErrors();
      messages_.Clear();
    }
    CompareMessages();
  }

  void CompareAll() {
    CompareTextsOfFilesAndMemory();
    const std::size_t languages = kelmo_texts_language_count(Texts());
    for (std::size_t i = 0; i < languages; ++i) {
      const std::string id = IdOf(*texts_, i);
      if (id.find('\0') == std::string::npos) {
        Use(id);
        for (const std::string& key : KeysOf(i)) {
          LookUp(key);
        }
      }
    }
    CompareMessages();
  }

  std::uint64_t Lookups() const { return lookups_; }

 private:
  struct LoadedFile {
    std::string path;
    std::string bytes;
  };

  kelmo_load_options Options() const {
    auto options = Sized<kelmo_load_options>();
    options.flags = hasUtf16_ ? KELMO_LOAD_UTF16 : 0;
    return options;
  }

  void Load() {
    const std::wstring names[] = {L"a.txt", L"\u0434\u0432\u0435 \u0447\u0430\u0441\u0442\u0438",
                                  words_.FileName(), L"none.txt"};
    const std::wstring& name = AnyOf(random_, names);
    const std::filesystem::path file = folder_.Path() / std::filesystem::u8path(EncodeUtf8(name));
    const bool exists = name != L"none.txt";
    const bool isNew = files_.count(name) == 0;
    if (exists && (isNew || random_.Below(2) == 0)) {
      files_[name] = DictionaryBytes(words_);
      WriteFile(file, files_[name]);
    }
    const std::string path = file.u8string();
    const kelmo_load_options options = Options();
    const kelmo_status status = kelmo_loader_add_file(loader_.get(), path.c_str(), path.size(),
                                                      &options, messages_.Problems());
    messages_.Update();
    const std::int32_t result = first_.LoadDictionary(folder_.HostPath().c_str(), name.c_str());
    Expect(status, exists ? KELMO_OK : KELMO_CANNOT_READ, "load");
    ExpectEqual(exists ? static_cast<std::int32_t>(messages_.All().size()) : -2, result, "load");
    if (!exists) {
      return;
    }
    const Owned<kelmo_loader> alone = NewLoader();
    const std::string& bytes = files_[name];
    Expect(
        kelmo_loader_add_memory(alone.get(), bytes.data(), bytes.size(), "", 0, nullptr, nullptr),
        KELMO_OK, "load alone");
    const Owned<kelmo_texts> texts = Finish(*alone);
    if (kelmo_texts_language_count(texts.get()) == 1) {  // loading selects
      current_ = IdOf(*texts, 0);
      loaded_.push_back({path, bytes});
      texts_.reset();
      view_.reset();
    }
  }

  void Select() {
    const std::size_t languages = kelmo_texts_language_count(Texts());
    const auto chosen = static_cast<std::size_t>(random_.Below(static_cast<int>(languages) + 1));
    Use(UpToNul(chosen < languages ? IdOf(*texts_, chosen) : words_.Word()));
  }

  void Use(const std::string& id) {
    const bool isKnown = NewView(id, messages_.Problems()).second;
    messages_.Update();
    ExpectEqual(isKnown ? 0 : -1, first_.UseLanguage(model::Decode(id).c_str()), "select " + id);
    if (isKnown) {
      current_ = id;
      view_.reset();
    }
  }

  void LookUp(const std::string& wanted) {
    ++lookups_;
    const std::string key = UpToNul(wanted);
    if (view_ == nullptr) {
      view_ = NewView(current_, nullptr).first;
    }
    auto text = Sized<kelmo_text>();
    const kelmo_status status =
        kelmo_view_find(view_.get(), key.data(), key.size(), nullptr, &text);
    std::size_t lost = 0;
    Expect(kelmo_view_take_problems(view_.get(), messages_.Problems(), &lost), KELMO_OK, "take");
    ExpectEqual(lost, std::size_t{0}, "lost keys");
    messages_.Update();
    const std::wstring firsts = first_.LANG(model::Decode(key).c_str());
    const std::string found =
        status == KELMO_OK ? std::string(text.utf8, text.utf8_size) : std::string();
    ExpectEqual(UpToNul(found), EncodeUtf8(firsts), "the text of " + key);
    if (status == KELMO_OK) {
      CompareUtf16(text, found);
    } else {
      Expect(status, KELMO_NOT_FOUND, "find");
    }
  }

  void CompareUtf16(const kelmo_text& text, const std::string& utf8) const {
    ExpectEqual(text.utf16 != nullptr, hasUtf16_, "UTF-16");
    if (hasUtf16_) {
      std::vector<std::uint16_t> expected;
      for (const wchar_t unit : model::Decode(utf8)) {
        const auto c = static_cast<std::uint32_t>(std::char_traits<wchar_t>::to_int_type(unit));
        if (c > 0xFFFF) {
          expected.push_back(static_cast<std::uint16_t>(0xD800 + (c - 0x10000) / 0x400));
          expected.push_back(static_cast<std::uint16_t>(0xDC00 + (c - 0x10000) % 0x400));
        } else {
          expected.push_back(static_cast<std::uint16_t>(c));
        }
      }
      ExpectEqual(std::vector<std::uint16_t>(text.utf16, text.utf16 + text.utf16_size), expected,
                  "the text in UTF-16");
    }
  }

  void CompareMessages() const {
    ExpectEqual(static_cast<std::int64_t>(messages_.All().size()), first_.GetErrorsCount(),
                "messages");
    for (std::size_t i = 0; i < messages_.All().size(); ++i) {
      ExpectEqual(UpToNul(messages_.All()[i]),
                  EncodeUtf8(std::wstring_view(first_.GetError(static_cast<std::int32_t>(i)))),
                  "message");
    }
  }

  // The texts of all loads, which were made from files, and those of the same bytes in memory.
  void CompareTextsOfFilesAndMemory() {
    const Owned<kelmo_texts> fromFiles = Finish(*loader_);
    const std::size_t languages = kelmo_texts_language_count(Texts());
    ExpectEqual(kelmo_texts_language_count(fromFiles.get()), languages, "languages");
    for (std::size_t i = 0; i < languages; ++i) {
      ExpectEqual(EntriesOf(*fromFiles, i), EntriesOf(*texts_, i), "entries of files and memory");
    }
  }

  static std::vector<std::string> EntriesOf(const kelmo_texts& texts, std::size_t language) {
    std::vector<std::string> entries = {IdOf(texts, language)};
    auto text = Sized<kelmo_text>();
    for (std::size_t i = 0; kelmo_texts_entry(&texts, language, i, &text) == KELMO_OK; ++i) {
      entries.push_back(ToString(text.file) + ':' + std::to_string(text.line) + ' ' +
                        ToString(text.key) + '=' + std::string(text.utf8, text.utf8_size));
    }
    return entries;
  }

  // The texts of all loads so far: a finished loader is empty, so they are made anew from memory.
  kelmo_texts* Texts() {
    if (texts_ == nullptr) {
      const Owned<kelmo_loader> loader = NewLoader();
      const kelmo_load_options options = Options();
      for (const LoadedFile& file : loaded_) {
        Expect(kelmo_loader_add_memory(loader.get(), file.bytes.data(), file.bytes.size(),
                                       file.path.data(), file.path.size(), &options, nullptr),
               KELMO_OK, "load again");
      }
      texts_ = Finish(*loader);
    }
    return texts_.get();
  }

  // A view in one language, and whether that exists.
  std::pair<Owned<kelmo_view>, bool> NewView(const std::string& id, kelmo_problems* problems) {
    const kelmo_string language = {id.data(), id.size()};
    auto options = Sized<kelmo_view_options>();
    options.languages = &language;
    options.language_count = 1;
    options.problem_limit = 10;
    kelmo_view* view = nullptr;
    const std::size_t before = kelmo_problems_count(problems);
    Expect(kelmo_view_create(Texts(), &options, &view, problems), KELMO_OK, "a view");
    return {Owned<kelmo_view>(view), kelmo_problems_count(problems) == before};
  }

  static std::string IdOf(const kelmo_texts& texts, std::size_t language) {
    auto described = Sized<kelmo_language>();
    Expect(kelmo_texts_language(&texts, language, &described), KELMO_OK, "a language");
    return ToString(described.id);
  }

  std::vector<std::string> KeysOf(std::size_t language) {
    std::vector<std::string> keys;
    auto text = Sized<kelmo_text>();
    for (std::size_t i = 0; kelmo_texts_entry(texts_.get(), language, i, &text) == KELMO_OK; ++i) {
      keys.push_back(ToString(text.key));
    }
    return keys;
  }

  std::string AnyKey() {
    Texts();
    const std::size_t languages = kelmo_texts_language_count(texts_.get());
    const auto keys = KeysOf(static_cast<std::size_t>(random_.Below(static_cast<int>(languages))));
    std::string key = keys.empty() ? words_.Word() : AnyOf(random_, keys);
    switch (random_.Below(4)) {
      case 0:
        return words_.Word();
      case 1:
        return words_.Decorated(key);
      default:
        return key;
    }
  }

  RandomNumbers& random_;
  Vocabulary words_;
  const ScratchFolder& folder_;
  const LoadedLibrary library_;
  const LibraryExports first_ = ExportsOf(library_);
  const bool hasUtf16_ = random_.Below(2) == 0;
  Owned<kelmo_loader> loader_ = NewLoader();
  Messages messages_;
  std::map<std::wstring, std::string> files_;
  std::vector<LoadedFile> loaded_;
  std::string current_;
  Owned<kelmo_texts> texts_;  // null: files were loaded since
  Owned<kelmo_view> view_;    // of the current language; null: one of the two has changed
  std::uint64_t lookups_ = 0;
};

TEST(Kelmo, AgreesWithTheFirstLibraryInEverySequenceOfCalls) {
  const ScratchFolder folder;
  const std::uint64_t rounds = Rounds(2000);
  std::uint64_t lookups = 0;
  for (std::uint64_t i = 0; i < rounds; ++i) {
    const std::uint64_t seed = randomSeed + i;
    try {
      RandomNumbers random(seed);
      Pair pair(random, folder);
      for (int step = 0; step < kSteps; ++step) {
        pair.Step();
      }
      pair.CompareAll();
      lookups += pair.Lookups();
    } catch (const std::exception& difference) {
      FAIL() << difference.what() << "\nRepeat it with --seed=" << seed << " --rounds=1";
    }
  }
  std::cout << rounds << " rounds, " << lookups << " lookups, --seed=" << randomSeed << '\n';
}

}  // namespace
