// What the tool says that the library reads of dictionaries equals what the built library reads: the
// files of the project and random ones (--rounds=N, --seed=N). The tool speaks for the Windows
// library. The only difference of the Linux library is that a byte 0x1A does not end a file, so
// there it gets the bytes before the first 0x1A only.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lang/reading/dictionary_file.h"
#include "lang/reading/merged_dictionary.h"
#include "tests/model/disagreement.h"
#include "tests/model/model.h"
#include "tests/model/nasty_files.h"
#include "tests/support/host_test.h"
#include "tests/support/invalid_utf8.h"
#include "tests/support/random_numbers.h"
#include "tests/support/read_file.h"
#include "tests/support/test_platform.h"
#include "text/utf8.h"

namespace KelmoLibs::Lang {
namespace {

void Expect(bool isTrue, const std::string& what) {
  if (!isTrue) {
    throw Disagreement(what);
  }
}

std::wstring Wide(std::string_view utf8) { return model::Decode(std::string(utf8)); }

// What a host can read of a text.
std::wstring UpToZero(const std::wstring& text) { return text.substr(0, text.find(L'\0')); }

bool HasZero(std::string_view text) { return text.find('\0') != std::string_view::npos; }

// One lifetime of the library beside the prediction of the tool.
class Lifetime {
 public:
  explicit Lifetime(const ScratchFolder& folder)
      : folder_(folder.Path() / std::filesystem::u8path(u8"папка с пробелами")),
        hostPath_(folder.HostPath() + L"\\папка с пробелами") {}

  // Loads a file and compares what the load itself shows.
  void Load(const std::string& bytes) {
    const std::string name = u8"словарь " + std::to_string(files_.size()) + ".txt";
    const std::size_t end = textModeEndsAtControlZ ? bytes.size() : bytes.find('\x1A');
    WriteFile(folder_ / std::filesystem::u8path(name), bytes.substr(0, end));
    const auto number = static_cast<std::uint32_t>(files_.size());
    const DictionaryFile& file = files_.emplace_back(name, std::filesystem::path(), bytes);
    if (file.HasHeader()) {
      current_ = &dictionaries_[std::string(file.Id())];
      current_->Merge(number, file);
      for (const Entry& entry : file.Entries()) {
        if (current_->Find(entry.key).entry != &entry) {
          messages_.Add(DuplicateMessage(entry, Wide(name)));
        }
      }
    }
    const std::int32_t result = host_.LoadDictionary(hostPath_.c_str(), Wide(name).c_str());
    Expect(result == static_cast<std::int32_t>(messages_.texts.size()), "the result of the load");
    messages_.Compare(host_);
    if (current_ != nullptr) {
      CompareTexts(file, *current_);
    }
  }

  // Compares everything that hosts can ask for.
  void CompareAll() {
    for (const DictionaryFile& file : files_) {
      if (!file.HasHeader()) {
        continue;
      }
      const MergedDictionary& dictionary = dictionaries_.find(file.Id())->second;
      if (!HasZero(file.Id())) {
        Expect(host_.UseLanguage(Wide(file.Id()).c_str()) == 0, "the id");
        CompareTexts(file, dictionary);
        CompareMissing(file);
      }
    }
    CompareKeys();
  }

  const DictionaryFile& FileOf(std::size_t number) const { return files_[number]; }

 private:
  // The list of messages: it has each text once.
  struct MessageList {
    std::vector<std::wstring> texts;
    std::set<std::wstring> known;

    void Add(const std::wstring& text) {
      if (known.insert(text).second) {
        texts.push_back(text);
      }
    }
    void Compare(const LibraryExports& host) const {
      Expect(host.GetErrorsCount() == static_cast<std::int64_t>(texts.size()),
             "the number of messages");
      for (std::size_t i = 0; i < texts.size(); ++i) {
        Expect(host.GetError(static_cast<std::int32_t>(i)) == UpToZero(texts[i]), "a message");
      }
    }
  };

  std::wstring DuplicateMessage(const Entry& entry, const std::wstring& name) const {
    return L"EL101. Key already declared.\nKey: " + Wide(entry.key) + L"\nDictionary: " +
           hostPath_ + L"\\" + name;
  }

  // The texts of the keys of `file`, which belongs to the current dictionary.
  void CompareTexts(const DictionaryFile& file, const MergedDictionary& dictionary) const {
    const std::int64_t count = host_.GetErrorsCount();
    for (const Entry& entry : file.Entries()) {
      if (!HasZero(entry.key)) {
        const FoundEntry found = dictionary.Find(entry.key);
        Expect(static_cast<bool>(found), "an entry is not found");
        Expect(host_.LANG(Wide(entry.key).c_str()) == UpToZero(Wide(found.entry->text)), "a text");
      }
    }
    Expect(host_.GetErrorsCount() == count, "a key that is read is missing");
  }

  // The library has no other keys in the current dictionary: not those that the tool takes for lost.
  void CompareMissing(const DictionaryFile& file) const {
    std::set<std::string_view> keys;
    for (const DictionaryFile& other : files_) {
      if (other.HasHeader() && other.Id() == file.Id()) {
        for (const Entry& entry : other.Entries()) {
          keys.insert(entry.key.substr(0, entry.key.find('\0')));
        }
      }
    }
    for (const Entry& entry : file.LostEntries()) {
      const bool isUtf8 = Localize::WellFormedUtf8Length(entry.key) == entry.key.size();
      if (isUtf8 && !HasZero(entry.key) && keys.count(entry.key) == 0) {
        host_.ClearErrors();
        Expect(*host_.LANG(Wide(entry.key).c_str()) == L'\0', "a lost text");
        Expect(host_.GetErrorsCount() == 1, "a lost key");
      }
    }
  }

  // A second load lists every key of a file.
  void CompareKeys() {
    for (const DictionaryFile& file : files_) {
      const std::wstring name = Wide(file.Source().Name());
      MessageList expected;
      for (const Entry& entry : file.Entries()) {
        expected.Add(DuplicateMessage(entry, name));
      }
      host_.ClearErrors();
      host_.LoadDictionary(hostPath_.c_str(), name.c_str());
      expected.Compare(host_);
    }
  }

  const std::filesystem::path folder_;
  const std::wstring hostPath_;
  const LoadedLibrary library_;
  const LibraryExports host_ = ExportsOf(library_);
  std::deque<DictionaryFile> files_;
  std::map<std::string, MergedDictionary, std::less<>> dictionaries_;
  MergedDictionary* current_ = nullptr;
  MessageList messages_;
};

// Every byte that ends the file is replaced by a question mark, as a translator could do it.
std::string Mended(std::string_view bytes) {
  std::string mended;
  while (!bytes.empty()) {
    const std::size_t wellFormed = Localize::WellFormedUtf8Length(bytes);
    mended += bytes.substr(0, wellFormed);
    bytes.remove_prefix(wellFormed);
    if (!bytes.empty()) {
      mended += '?';
      bytes.remove_prefix(1);
    }
  }
  std::replace(mended.begin(), mended.end(), '\x1A', '?');
  return mended;
}

// `file` behind its fault: what the library reads of these bytes is what the tool takes for lost.
std::string LostBytes(const DictionaryFile& file) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  std::string lost(file.Source().Bytes());
  const bool isUtf16 = file.Source().EncodedAsUtf16() != Utf16::kNo;
  if (isUtf16 || file.Source().LineEnds() == LineEnd::kCr || !file.HasHeader()) {
    if (lost.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0) {
      lost.erase(0, kByteOrderMark.size());
    }
    if (file.Source().LineEnds() == LineEnd::kCr) {
      std::replace(lost.begin(), lost.end(), '\r', '\n');
    }
    return Mended(lost);
  }
  const std::size_t end = lost.find('\n', file.StopsAt());
  return "id" + (end != std::string::npos ? Mended(lost.substr(end)) : "\n");
}

void ExpectLostEntries(const DictionaryFile& file, const ScratchFolder& folder) {
  Lifetime lifetime(folder);
  lifetime.Load(LostBytes(file));
  const DictionaryFile& mended = lifetime.FileOf(0);
  Expect(mended.Entries().size() == file.LostEntries().size(), "the number of lost entries");
  for (std::size_t i = 0; i < mended.Entries().size(); ++i) {
    const Entry& expected = mended.Entries()[i];
    const Entry& lost = file.LostEntries()[i];
    Expect(Mended(lost.key) == expected.key && Mended(lost.text) == expected.text, "a lost entry");
  }
  if (!file.HasHeader() || file.Source().LineEnds() == LineEnd::kCr) {
    Expect(Mended(file.IntendedId()) == mended.Id(), "the intended id");
  }
}

std::string Visible(std::string_view bytes) {
  constexpr std::size_t kShown = 4000;
  return testing::PrintToString(std::string(bytes.substr(0, kShown)));
}

// Compares all in one lifetime, then what is lost, for which the library must forget the keys.
void Check(const std::vector<std::string>& files, const ScratchFolder& folder) {
  {
    Lifetime lifetime(folder);
    for (const std::string& bytes : files) {
      lifetime.Load(bytes);
    }
    lifetime.CompareAll();
  }
  for (const std::string& bytes : files) {
    const DictionaryFile file("", {}, bytes);
    if (!file.LostEntries().empty() || file.StopsBecause() != Stop::kEndOfFile) {
      ExpectLostEntries(file, folder);
    }
  }
}

// ---- Made-up files

constexpr std::size_t kChunk = 32768;  // the library reads large files in chunks of this size

std::string Utf16Of(std::string_view utf8, bool isBigEndian, bool hasMark) {
  std::string bytes;
  const auto add = [&](char32_t unit) {
    const char low = static_cast<char>(unit & 0xFFU);
    const char high = static_cast<char>(unit >> 8U);
    bytes += isBigEndian ? high : low;
    bytes += isBigEndian ? low : high;
  };
  if (hasMark) {
    add(0xFEFF);
  }
  for (const wchar_t c : Wide(utf8)) {
    const auto character = static_cast<char32_t>(c);
    if (character > 0xFFFF) {
      add(0xD800 + ((character - 0x10000) >> 10U));
      add(0xDC00 + ((character - 0x10000) & 0x3FFU));
    } else {
      add(character);
    }
  }
  return bytes;
}

// Moves a random place of the file close to the end of a chunk, by an entry behind the first line.
void MoveToEndOfChunk(RandomNumbers& random, std::string& bytes) {
  const std::size_t headerEnd = bytes.find('\n');
  if (headerEnd == std::string::npos || headerEnd + 1 == bytes.size()) {
    return;
  }
  const auto behind = static_cast<int>(bytes.size() - headerEnd);
  const std::size_t place = headerEnd + static_cast<std::size_t>(random.Below(behind));
  const std::size_t chunks = 1 + static_cast<std::size_t>(random.Below(3));
  const std::string start = "long ";
  const std::size_t target = chunks * kChunk + static_cast<std::size_t>(random.Below(4));
  if (target > place + start.size()) {
    bytes.insert(headerEnd + 1, start + std::string(target - place - start.size() - 1, 'x') + '\n');
  }
}

std::string AnyDictionary(Vocabulary& words) {
  RandomNumbers& random = words.Random();
  std::string bytes = DictionaryBytes(words);
  switch (random.Below(16)) {
    case 0:
      return Utf16Of(bytes, random.Below(2) == 0, random.Below(3) != 0);
    case 1:
      std::replace(bytes.begin(), bytes.end(), '\n', '\r');
      return bytes;
    case 2:
      bytes.insert(static_cast<std::size_t>(random.Below(static_cast<int>(bytes.size()) + 1)),
                   AnyOf(random, kInvalidUtf8).bytes);
      MoveToEndOfChunk(random, bytes);
      return bytes;
    case 3:
      MoveToEndOfChunk(random, bytes);
      return bytes;
    default:
      return bytes;
  }
}

std::vector<std::string> FilesOfALifetime(std::uint64_t seed) {
  RandomNumbers random(seed);
  Vocabulary words(random);
  std::vector<std::string> files(static_cast<std::size_t>(1 + random.Below(3)));
  for (std::string& bytes : files) {
    bytes = AnyDictionary(words);
  }
  return files;
}

// ---- Tests

class Prediction : public testing::Test {
 protected:
  const ScratchFolder folder_;
};

TEST_F(Prediction, EqualsTheLibraryForTheFilesOfTheProject) {
  const auto top = std::filesystem::u8path(KELMO_SOURCE_FOLDER);
  std::size_t checked = 0;
  for (const char* const folder : {"tests/data/dictionary", "tests/data/lang",
                                   "tests/fuzz/corpus/dictionary", "examples/LANG"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(top / folder)) {
      if (entry.is_regular_file()) {
        SCOPED_TRACE(entry.path().u8string());
        EXPECT_NO_THROW(Check({ReadFile(entry.path())}, folder_));
        ++checked;
      }
    }
  }
  EXPECT_GT(checked, 80U);
}

TEST_F(Prediction, EqualsTheLibraryForMadeUpFiles) {
  const std::uint64_t wanted = Rounds(3000);
  std::uint64_t checked = 0;
  for (std::uint64_t lifetime = 0; checked < wanted; ++lifetime) {
    const std::uint64_t seed = randomSeed + lifetime;
    const std::vector<std::string> files = FilesOfALifetime(seed);
    try {
      Check(files, folder_);
    } catch (const std::exception& difference) {
      std::string shown;
      for (const std::string& bytes : files) {
        shown += "\nfile of " + std::to_string(bytes.size()) + " bytes: " + Visible(bytes);
      }
      FAIL() << difference.what() << "\nRepeat it: --gtest_filter=*MadeUp* --seed=" << seed
             << " --rounds=1" << shown;
    }
    checked += files.size();
  }
  std::cout << checked << " files, --seed=" << randomSeed << '\n';
}

// The test above would pass with a generator that makes only whole files.
TEST_F(Prediction, SeesFilesOfEveryKind) {
  std::map<std::string, int> kinds;
  for (std::uint64_t lifetime = 0; lifetime < 1000; ++lifetime) {
    for (const std::string& bytes : FilesOfALifetime(randomSeed + lifetime)) {
      const DictionaryFile file("", {}, bytes);
      kinds["stop " + std::to_string(static_cast<int>(file.StopsBecause()))] += 1;
      kinds["utf-16 " + std::to_string(static_cast<int>(file.Source().EncodedAsUtf16()))] += 1;
      kinds["line end " + std::to_string(static_cast<int>(file.Source().LineEnds()))] += 1;
      kinds[file.HasHeader() ? "header" : "no header"] += 1;
      kinds[file.LostEntries().empty() ? "nothing lost" : "lost entries"] += 1;
      kinds[bytes.size() > kChunk ? "several chunks" : "one chunk"] += 1;
      kinds[file.Id() != file.IntendedId() ? "other id meant" : "id as meant"] += 1;
    }
  }
  EXPECT_EQ(kinds.size(), 16U);
  for (const auto& [kind, count] : kinds) {
    EXPECT_GE(count, 10) << kind;
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
