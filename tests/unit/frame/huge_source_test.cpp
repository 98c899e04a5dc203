// Files of more than 4 GiB: bytes, lines and positions must be counted in 64 bits. The files are
// never stored. The loaders call the OpenTextFile of this program, not that of platform/.

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
using Parts = std::map<std::uint64_t, std::string>;  // by position

constexpr std::uint64_t k2GiB = std::uint64_t{1} << 31U;
constexpr std::uint64_t k4GiB = std::uint64_t{1} << 32U;

// Has the parts at their positions, and `filler` elsewhere. It ends with the last part.
class HugeSource final : public ByteSource {
 public:
  HugeSource(Parts parts, char filler) : parts_(std::move(parts)), filler_(filler) {
    size_ = parts_.rbegin()->first + parts_.rbegin()->second.size();
  }

  std::size_t Read(char* buffer, std::size_t size) override {
    const std::uint64_t count = std::min<std::uint64_t>(size, size_ - position_);
    std::memset(buffer, filler_, count);
    for (const auto& [begin, bytes] : parts_) {
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
  Parts parts_;
  char filler_;
  std::uint64_t size_ = 0;
  std::uint64_t position_ = 0;
};

Parts openedParts;
char openedFiller = '\n';

}  // namespace

std::unique_ptr<ByteSource> OpenTextFile(const std::wstring& /*path*/) {
  return std::make_unique<HugeSource>(openedParts, openedFiller);
}

namespace {

// A line that ends at `position`.
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

TEST(HugeSource, ADictionaryHasItsEntriesFromBothSidesOf4GiB) {
  openedFiller = '\n';
  openedParts = {
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

TEST(HugeSource, ALanguageTableHasItsUnitsFromBothSidesOf4GiB) {
  openedFiller = '\n';
  openedParts = {
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

// The whole line is in the buffer, beside the smaller buffer that it has outgrown.
TEST(HugeSource, ALineOf4GiBHasItsKeyAndItsText) {
  constexpr std::uint64_t kNeeded = 3 * k4GiB;
  if (instrumented) {
    GTEST_SKIP() << "too slow with a sanitizer";
  }
  if (AvailableMemory() < kNeeded) {
    GTEST_SKIP() << "less than 12 GiB of memory are free";
  }
  const struct {
    const char* name;
    Parts parts;
  } rows[] = {
      {"blanks between key and text", {{0, "en\nkey"}, {k4GiB + 100, "text\nlast end\n"}}},
      {"blanks after the text", {{0, "en\nkey text"}, {k4GiB + 100, "\nlast end\n"}}},
  };
  openedFiller = ' ';
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    openedParts = row.parts;
    const Loaded loaded = LoadDictionary();
    EXPECT_EQ(loaded.result, 1);
    EXPECT_EQ(loaded.messages, (Messages{kOlder}));
    EXPECT_TRUE(Holds(loaded.dictionaries, {{L"en", {{L"key", L"text"}, {L"last", L"end"}}}}));
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
