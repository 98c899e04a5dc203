#include "storage/record_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "tests/support/allocation_probe.h"
#include "tests/support/random_numbers.h"

namespace KelmoLibs::Localize {
namespace {

using allocation_probe::CallWithFailingAllocation;
using allocation_probe::LeakCheck;
using allocation_probe::Outcome;

constexpr int kNone = -1;  // no record has it

struct Record {
  std::uint64_t hash;
  int number;

  std::uint64_t Hash() const { return hash; }
};

int Compare(const Record& left, const Record& right) { return left.number - right.number; }
int Compare(const Record& left, int right) { return left.number - right; }

using Table = RecordTable<Record>;
using Numbers = std::vector<int>;

constexpr std::size_t kMostPlaces = Table::kProbedBuckets * Table::kBucketRecords;

// A query, which writes down which records it was compared with outside the overflow.
class Query {
 public:
  Query(std::uint64_t hash, int number) : hash_(hash), number_(number) {}

  std::uint64_t Hash() const { return hash_; }
  bool Matches(const Record& record) const {
    asked_.push_back(record.number);
    return record.number == number_;
  }
  int SortKey() const {
    isAskedInOrder_ = true;
    return number_;
  }

  const Numbers& Asked() const { return asked_; }
  bool IsAskedInOrder() const { return isAskedInOrder_; }

 private:
  std::uint64_t hash_;
  int number_;
  mutable Numbers asked_;
  mutable bool isAskedInOrder_ = false;
};

// A table and, in the order in which they were added, its records.
class Filled {
 public:
  Filled() { records_.reserve(100); }  // not to fail where it is the table's turn

  void Add(std::uint64_t hash) {
    const int number = static_cast<int>(records_.size());
    records_.push_back(table_.Add(hash, sizeof(Record), [hash, number](std::byte* memory) {
      return new (memory) Record{hash, number};
    }));
  }
  void Grow(std::size_t records) { table_.Grow(records); }

  const Record* Find(std::uint64_t hash, int number) const {
    return table_.Find(Query(hash, number));
  }

  void ExpectAll() const {
    for (const Record* const record : records_) {
      ASSERT_EQ(Find(record->hash, record->number), record) << record->number;
    }
    EXPECT_EQ(table_.Count(), records_.size());
  }

  // How many stand in the overflow.
  std::size_t InOverflow() const {
    return static_cast<std::size_t>(
        std::count_if(records_.begin(), records_.end(), [this](const Record* record) {
          const Query query(record->hash, record->number);
          return table_.Find(query) == record && query.IsAskedInOrder();
        }));
  }

  const Table& TheTable() const { return table_; }
  const std::vector<const Record*>& Records() const { return records_; }

 private:
  Table table_{nullptr};
  std::vector<const Record*> records_;
};

TEST(RecordTable, ThatIsEmptyHasNothingAndNoRoom) {
  const Table table(nullptr);
  EXPECT_EQ(table.Count(), 0U);
  EXPECT_TRUE(table.IsFull());
  for (const std::uint64_t hash :
       {std::uint64_t{0}, std::uint64_t{0x123456789ABCDEF}, ~std::uint64_t{0}}) {
    const Query query(hash, kNone);
    EXPECT_EQ(table.Find(query), nullptr);
    EXPECT_EQ(query.Asked(), Numbers{});
    EXPECT_FALSE(query.IsAskedInOrder());
  }
}

TEST(RecordTable, FindsEachOfManyRecordsAndNoneOther) {
  constexpr int kRecords = 20'000;
  RandomNumbers random(randomSeed);
  Filled filled;
  std::unordered_map<std::uint64_t, int> numbers;
  for (int i = 0; i < kRecords; ++i) {
    const std::uint64_t hash = random.Bits();
    numbers.emplace(hash, i);
    filled.Add(hash);
  }
  filled.ExpectAll();
  std::vector<std::uint64_t> hashes;
  for (const auto& [hash, number] : numbers) {
    hashes.insert(hashes.end(), {hash, hash ^ 1U, hash ^ 0x40U, hash ^ (std::uint64_t{1} << 32U),
                                 hash ^ (std::uint64_t{1} << 63U)});
  }
  std::size_t asked = 0;
  for (const std::uint64_t hash : hashes) {
    const auto number = numbers.find(hash);
    const Query query(hash, number != numbers.end() ? number->second : kNone);
    const Record* const found = filled.TheTable().Find(query);
    ASSERT_EQ(found != nullptr, number != numbers.end());
    asked += query.Asked().size();
  }
  EXPECT_LT(asked, hashes.size()) << "most that are not there are told by their tags";
  EXPECT_LE(filled.InOverflow(), kRecords / 1000U);
}

// The quick way to most records is right wherever it finds something.
TEST(RecordTable, FindsNineOfTenRecordsAtOnce) {
  constexpr int kRecords = 20'000;
  RandomNumbers random(randomSeed);
  Filled filled;
  EXPECT_EQ(filled.TheTable().FindFirstCandidate(Query(0, kNone)), nullptr);
  for (int i = 0; i < kRecords; ++i) {
    filled.Add(random.Bits());
  }
  std::size_t found = 0;
  for (const Record* const record : filled.Records()) {
    const Query query(record->hash, record->number);
    const Record* const first = filled.TheTable().FindFirstCandidate(query);
    ASSERT_TRUE(first == record || first == nullptr) << record->number;
    found += first != nullptr ? 1 : 0;
    EXPECT_LE(query.Asked().size(), 1U);
    EXPECT_FALSE(query.IsAskedInOrder());
    ASSERT_EQ(filled.TheTable().FindFirstCandidate(Query(record->hash, kNone)), nullptr);
  }
  EXPECT_GT(found, kRecords * 9U / 10);
}

TEST(RecordTable, GrowsWithAllThatItHas) {
  RandomNumbers random(randomSeed);
  Filled filled;
  for (int i = 0; i < 500; ++i) {
    filled.Add(random.Bits() >> (4 * random.Below(4)));  // more of them at the front
  }
  const std::vector<const Record*> records = filled.Records();
  for (int i = 0; i < 4; ++i) {
    filled.Grow(0);
    filled.ExpectAll();
  }
  EXPECT_EQ(filled.Records(), records) << "they stay where they are";
}

TEST(RecordTable, MakesRoomWithinReason) {
  constexpr std::size_t kFewRecords = 64;
  const struct {
    const char* name;
    std::size_t records;
    std::size_t expected;
    std::size_t room;
  } rows[] = {
      {"nothing is expected of an empty one", 0, 0, kFewRecords},
      {"little is expected of an empty one", 0, 1, kFewRecords},
      {"much is expected of an empty one", 0, SIZE_MAX, kFewRecords},
      {"of one nothing", 1, 0, kFewRecords},
      {"of one the largest number", 1, SIZE_MAX, kFewRecords},
      {"nothing", 100, 0, 200},
      {"fewer than there are", 100, 50, 200},
      {"as many as there are", 100, 100, 200},
      {"less than twice as many", 100, 199, 200},
      {"three times as many and one", 100, 301, 301},
      {"64 times as many", 100, 6400, 6400},
      {"more than 64 times as many", 100, 6401, 6400},
      {"the largest number", 100, SIZE_MAX, 6400},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    RandomNumbers random(randomSeed);
    const LeakCheck everythingIsGivenBack;
    Filled filled;
    while (filled.TheTable().Count() < row.records) {
      filled.Add(random.Bits());
    }
    const std::size_t before = allocation_probe::LiveBytes();
    filled.Grow(row.expected);
    EXPECT_LE(allocation_probe::LiveBytes(), before + 20 * row.room + 2000);
    filled.ExpectAll();
    while (filled.TheTable().Count() < row.room) {
      ASSERT_FALSE(filled.TheTable().IsFull()) << filled.TheTable().Count();
      filled.Add(random.Bits());
    }
    EXPECT_TRUE(filled.TheTable().IsFull());
    filled.ExpectAll();
  }
}

// A lookup compares at most 56 records outside the overflow, even under hash flooding.
TEST(RecordTable, ComparesAFewRecordsHoweverManyHashesCollide) {
  using MakeHash = std::uint64_t (*)(std::uint64_t);
  const struct {
    const char* name;
    MakeHash make;  // of the i-th record
  } rows[] = {
      {"all are zero", [](std::uint64_t /*i*/) { return std::uint64_t{0}; }},
      {"all are the largest", [](std::uint64_t /*i*/) { return ~std::uint64_t{0}; }},
      {"all are the same", [](std::uint64_t /*i*/) { return std::uint64_t{0x5DEECE66D1234567}; }},
      {"they differ in the lower bits", [](std::uint64_t i) { return i; }},
      {"they differ in the lower bits, at the end",
       [](std::uint64_t i) { return (std::uint64_t{0xFFFFFFFF} << 32U) | i; }},
      {"they differ in the lower half, but not in the tag",
       [](std::uint64_t i) { return std::uint64_t{0x7FFFFFFF00000000} | (i << 8U); }},
      {"they differ in what is no part of home and tag",
       [](std::uint64_t i) { return std::uint64_t{0x8000000000000025} | (i << 32U); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Filled filled;
    for (std::uint64_t i = 0; i < 3000; ++i) {
      filled.Add(row.make(i));
    }
    filled.ExpectAll();
    EXPECT_EQ(filled.InOverflow(), 3000 - kMostPlaces);
    for (const Record* const record : filled.Records()) {
      const Query missed(record->hash, kNone);
      ASSERT_EQ(filled.TheTable().Find(missed), nullptr);
      ASSERT_LE(missed.Asked().size(), kMostPlaces);
      ASSERT_TRUE(missed.IsAskedInOrder());
    }
  }
}

TEST(RecordTable, AsksTheSortedSetOnlyWhereNoBucketHasRoom) {
  constexpr std::uint64_t kHash = 0x5DEECE66D1234567;
  Filled filled;
  filled.Grow(0);
  for (std::size_t count = 0; count < kMostPlaces; ++count) {
    const Query query(kHash, kNone);
    EXPECT_EQ(filled.TheTable().Find(query), nullptr);
    EXPECT_EQ(query.Asked().size(), count) << "each once";
    EXPECT_FALSE(query.IsAskedInOrder()) << count;
    filled.Add(kHash);
  }
  const Query query(kHash, kNone);
  EXPECT_EQ(filled.TheTable().Find(query), nullptr);
  EXPECT_EQ(query.Asked().size(), kMostPlaces);
  EXPECT_TRUE(query.IsAskedInOrder());

  const Query elsewhere(~kHash, kNone);
  EXPECT_EQ(filled.TheTable().Find(elsewhere), nullptr);
  EXPECT_EQ(elsewhere.Asked(), Numbers{});
  EXPECT_FALSE(elsewhere.IsAskedInOrder());
}

// In a larger table those of one home have many.
TEST(RecordTable, GivesPlacesToThoseThatHadNoneOnceItIsLarger) {
  Filled filled;
  for (std::uint64_t i = 0; i < 100; ++i) {
    filled.Add(i << 53U);  // in the front part of the homes
  }
  EXPECT_GT(filled.InOverflow(), 0U);
  filled.Grow(800);
  filled.Grow(800);
  filled.ExpectAll();
  for (int i = 0; i < 10 && filled.InOverflow() > 0; ++i) {
    while (!filled.TheTable().IsFull()) {
      filled.Add(~std::uint64_t{0} / (filled.Records().size() + 2));
    }
    filled.Grow(SIZE_MAX);
  }
  EXPECT_EQ(filled.InOverflow(), 0U);
  filled.ExpectAll();
}

TEST(RecordTable, HasWhatItHadWhereMemoryFails) {
  constexpr std::uint64_t kHash = 0x5DEECE66D1234567;
  const struct {
    const char* name;
    std::uint64_t hashOfOthers;
    std::size_t others;
    std::size_t failures;  // at least
  } rows[] = {
      {"the first one", 0, 0, 3},
      {"one that makes the table grow", 1, 64, 1},
      {"one that has no place", kHash, 60, 1},
      {"one that makes a table grow that has no place for some", kHash, 64, 4},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    for (std::size_t n = 1;; ++n) {
      SCOPED_TRACE(n);
      const LeakCheck everythingIsGivenBack;
      Filled filled;
      for (std::size_t i = 0; i < row.others; ++i) {
        filled.Add(row.hashOfOthers == kHash ? kHash : i << 50U);
      }
      const Outcome outcome = CallWithFailingAllocation(n, [&] { filled.Add(kHash); });
      ASSERT_NE(outcome, Outcome::kReturned) << "the failure was not passed on";
      filled.ExpectAll();
      if (outcome == Outcome::kNoFailure) {
        EXPECT_GT(n, row.failures);
        break;
      }
      filled.Add(kHash);
      filled.ExpectAll();
    }
  }
}

TEST(RecordTable, AFailedAddFreesTheMemoryOfItsRecord) {
  constexpr std::uint64_t kHash = 0x5DEECE66D1234567;
  Table table(nullptr);
  std::byte* latest = nullptr;
  int number = 0;
  const auto add = [&] {
    table.Add(kHash, sizeof(Record), [&](std::byte* memory) {
      latest = memory;
      return new (memory) Record{kHash, number++};
    });
  };
  while (number < 60) {  // all buckets that take this hash are full
    add();
  }
  const std::byte* const before = latest;
  ASSERT_EQ(CallWithFailingAllocation(1, add), Outcome::kThrew);
  const std::byte* const failed = latest;
  EXPECT_NE(failed, before);
  add();
  EXPECT_EQ(latest, failed);
}

// Which records of one bucket are asked, in plain words: those with the wanted tag; and, which costs a
// look, one that differs from it in the lowest bit and stands right behind one that is asked.
Numbers AskedByThePlainRule(const std::vector<unsigned>& tags, unsigned wanted) {
  Numbers asked;
  bool isBehindOne = false;
  for (std::size_t slot = 0; slot < tags.size(); ++slot) {
    isBehindOne = tags[slot] == wanted || (isBehindOne && tags[slot] == (wanted ^ 1U));
    if (isBehindOne) {
      asked.push_back(static_cast<int>(slot));
    }
  }
  return asked;
}

TEST(RecordTable, FindsTagsAsThePlainRuleDoes) {
  RandomNumbers random(randomSeed);
  std::size_t askedInVain = 0;
  for (unsigned wanted = 0x80; wanted <= 0xFF; ++wanted) {
    for (int round = 0; round < 60; ++round) {
      std::vector<unsigned> tags;
      Filled filled;
      for (int count = 1 + random.Below(Table::kBucketRecords); count > 0; --count) {
        const unsigned bit = 1U << static_cast<unsigned>(random.Below(7));
        const unsigned other = 0x80U | static_cast<unsigned>(random.Below(0x80));
        const unsigned choices[] = {wanted, wanted, wanted ^ 1U, wanted ^ 1U, wanted ^ bit, other};
        tags.push_back(AnyOf(random, choices));
        filled.Add(tags.back());
      }
      // The highest bit of a tag says that there is a record; it is none of the hash's.
      const std::uint64_t hash = random.Below(2) != 0 ? wanted : wanted & 0x7FU;
      const Numbers expected = AskedByThePlainRule(tags, wanted);
      const Query query(hash, kNone);
      ASSERT_EQ(filled.TheTable().Find(query), nullptr);
      ASSERT_EQ(query.Asked(), expected) << testing::PrintToString(tags);
      for (const int number : expected) {
        ASSERT_EQ(filled.Find(hash, number), filled.Records()[static_cast<std::size_t>(number)]);
      }
      askedInVain +=
          expected.size() - static_cast<std::size_t>(std::count(tags.begin(), tags.end(), wanted));
    }
  }
  EXPECT_GT(askedInVain, 0U) << "the case was not met";
}

}  // namespace
}  // namespace KelmoLibs::Localize
