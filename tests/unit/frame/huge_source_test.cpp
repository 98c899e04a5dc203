// Files of more than 4 GiB: whatever counts bytes, lines or positions has to do so in 64 bits. They
// are nowhere as a whole. This program answers the question for a file in the place of the operating
// system: OpenTextFile below is the one that the loaders call.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "dictionary/dictionary_loader.h"
#include "platform/files.h"
#include "tests/support/contents.h"
#include "tests/support/localized_units.h"
#include "tests/support/read_all.h"
#include "tests/support/test_platform.h"
#include "unittables/language_table.h"

namespace KelmoLibs::Localize {
namespace {

using Messages = std::vector<std::wstring>;
using Pieces = std::map<std::uint64_t, std::string>;  // by position

constexpr std::uint64_t k2GiB = std::uint64_t{1} << 31U;
constexpr std::uint64_t k4GiB = std::uint64_t{1} << 32U;

// Holds the pieces at their positions, and elsewhere nothing but `filler`. The last piece is its end.
class HugeSource final : public ByteSource {
 public:
  HugeSource(Pieces pieces, char filler) : pieces_(std::move(pieces)), filler_(filler) {
    size_ = pieces_.rbegin()->first + pieces_.rbegin()->second.size();
  }

  std::size_t Read(char* buffer, std::size_t size) override {
    const std::uint64_t count = std::min<std::uint64_t>(size, size_ - position_);
    std::memset(buffer, filler_, count);
    for (const auto& [begin, bytes] : pieces_) {
      const std::uint64_t from = std::max(begin, position_);
      const std::uint64_t to = std::min(begin + bytes.size(), position_ + count);
      if (from < to) {
        bytes.copy(buffer + (from - position_), to - from, from - begin);
      }
    }
    position_ += count;
    return count;
  }

  std::size_t SizeHint() const noexcept override { return size_; }

 private:
  Pieces pieces_;
  char filler_;
  std::uint64_t size_ = 0;
  std::uint64_t position_ = 0;
};

Pieces openedPieces;
char openedFiller = '\n';

}  // namespace

std::unique_ptr<ByteSource> OpenTextFile(const std::wstring& /*path*/) {
  return std::make_unique<HugeSource>(openedPieces, openedFiller);
}

namespace {

// A line that ends right in front of `position`.
std::pair<const std::uint64_t, std::string> Before(std::uint64_t position,
                                                   const std::string& line) {
  return {position - line.size(), line};
}

const std::wstring kOlder = L"EL112. Dictionary not found\nDictionary id: older";

struct Loaded {
  std::int32_t result;
  CurrentLanguage currentLanguage;
  DictionaryTable dictionaries;
  Messages messages;
};

Loaded LoadDictionary() {
  Loaded loaded = {};
  ErrorList errors;
  errors.Append(UnknownDictionaryMessage(L"older"));
  loaded.result =
      LoadDictionaryFile(L"lang\\en.txt", loaded.currentLanguage, loaded.dictionaries, errors);
  loaded.messages = ReadAll(errors);
  return loaded;
}

TEST(HugeSource, OfEmptyLinesGivesADictionaryItsEntriesFromEverywhere) {
  openedFiller = '\n';
  openedPieces = {
      {0, "en English\n"},
      Before(k2GiB, "before.2GiB text\n"),
      {k2GiB, "behind.2GiB text\n"},
      Before(k4GiB, "before.4GiB text\n"),
      {k4GiB, "behind.4GiB text\n"},
      {k4GiB + 1000, "before.2GiB again\n"},
      {k4GiB + 100'000, "last t\xC3\xA4xt"},
  };
  const Loaded loaded = LoadDictionary();
  EXPECT_EQ(loaded.result, 2);
  EXPECT_EQ(
      loaded.messages,
      (Messages{kOlder,
                L"EL101. Key already declared.\nKey: before.2GiB\nDictionary: lang\\en.txt"}));
  EXPECT_EQ(loaded.currentLanguage.id, L"en");
  EXPECT_TRUE(Holds(loaded.dictionaries, {{L"en",
                                           {{L"before.2GiB", L"text"},
                                            {L"behind.2GiB", L"text"},
                                            {L"before.4GiB", L"text"},
                                            {L"behind.4GiB", L"text"},
                                            {L"last", L"t\u00E4xt"}}}}));
}

TEST(HugeSource, OfEmptyLinesGivesALanguageItsUnitsFromEverywhere) {
  openedFiller = '\n';
  openedPieces = {
      {0, "ru Russian\n"},          {k2GiB - 5, "1 m across\n"},     {k2GiB + 1000, "2 short\n"},
      {k4GiB - 5, "3 km across\n"}, {k4GiB + 1000, "4 last of all"},
  };
  LocalizedUnitTable table;
  ErrorList messages;
  EXPECT_EQ(LoadLanguageUnitTable(L"app", kNeutralUnitTableName, table, messages), 0);
  EXPECT_EQ(
      table,
      (LocalizedUnitTable{
          {L"ru", {{1, {L"m", L"across"}}, {3, {L"km", L"across"}}, {4, {L"last", L"of all"}}}}}));
  EXPECT_EQ(ReadAll(messages),
            (Messages{L"EV101. Error parse string.\nString: 2 short\nDictionary: "
                      L"app\\lang-val.text"}));
}

// A line is held as a whole while it is read, and the buffer that it outgrows beside it.
TEST(HugeSource, OfOneLineGivesItsKeyAndItsText) {
  constexpr std::uint64_t kNeeded = 3 * k4GiB;
  if (instrumented) {
    GTEST_SKIP() << "a sanitizer takes many times as long";
  }
  if (AvailableMemory() < kNeeded) {
    GTEST_SKIP() << "less than 12 GiB of memory are free";
  }
  const struct {
    const char* name;
    Pieces pieces;
  } rows[] = {
      {"blanks between key and text", {{0, "en\nkey"}, {k4GiB + 100, "text\nlast end\n"}}},
      {"blanks behind the text", {{0, "en\nkey text"}, {k4GiB + 100, "\nlast end\n"}}},
  };
  openedFiller = ' ';
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    openedPieces = row.pieces;
    const Loaded loaded = LoadDictionary();
    EXPECT_EQ(loaded.result, 1);
    EXPECT_EQ(loaded.messages, (Messages{kOlder}));
    EXPECT_TRUE(Holds(loaded.dictionaries, {{L"en", {{L"key", L"text"}, {L"last", L"end"}}}}));
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
