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

constexpr int kNone = -1;  // not the number of a record

struct Record {
  std::uint64_t hash;
  int number;

  std::uint64_t Hash() const { return hash; }
};

int Compare(const Record& left, const Record& right) { return left.number - right.number; }
int Compare(const Record& left, int right) { return left.number - right; }

using Table = RecordTable<Record>;
using Numbers = std::vector<int>;

constexpr std::size_t kMaxInBuckets = Table::kProbedBuckets * Table::kBucketRecords;

// Notes the records outside the overflow that it is compared with.
class Query {
 public:
  Query(std::uint64_t hash, int number) : hash_(hash), number_(number) {}

  std::uint64_t Hash() const { return hash_; }
  bool Matches(const Record& record) const {
    compared_.push_back(record.number);
    return record.number == number_;
  }
  int SortKey() const {
    searchedOverflow_ = true;
    return number_;
  }

  const Numbers& Compared() const { return compared_; }
  bool SearchedOverflow() const { return searchedOverflow_; }

 private:
  std::uint64_t hash_;
  int number_;
  mutable Numbers compared_;
  mutable bool searchedOverflow_ = false;
};

// A table, and its records in the order in which they were added.
class FilledTable {
 public:
  FilledTable() { records_.reserve(100); }  // so that only the table's allocations can fail

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

  std::size_t OverflowCount() const {
    return static_cast<std::size_t>(
        std::count_if(records_.begin(), records_.end(), [this](const Record* record) {
          const Query query(record->hash, record->number);
          return table_.Find(query) == record && query.SearchedOverflow();
        }));
  }

  const Table& GetTable() const { return table_; }
  const std::vector<const Record*>& Records() const { return records_; }

 private:
  Table table_{nullptr};
  std::vector<const Record*> records_;
};

TEST(RecordTable, EmptyTableIsFullAndFindsNothing) {
  const Table table(nullptr);
  EXPECT_EQ(table.Count(), 0U);
  EXPECT_TRUE(table.IsFull());
  for (const std::uint64_t hash :
       {std::uint64_t{0}, std::uint64_t{0x123456789ABCDEF}, ~std::uint64_t{0}}) {
    const Query query(hash, kNone);
    EXPECT_EQ(table.Find(query), nullptr);
    EXPECT_EQ(query.Compared(), Numbers{});
    EXPECT_FALSE(query.SearchedOverflow());
  }
}

TEST(RecordTable, FindsEachRecordAndNothingElse) {
  constexpr int kRecords = 20'000;
  RandomNumbers random(randomSeed);
  FilledTable filled;
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
  std::size_t comparisons = 0;
  for (const std::uint64_t hash : hashes) {
    const auto number = numbers.find(hash);
    const Query query(hash, number != numbers.end() ? number->second : kNone);
    const Record* const found = filled.GetTable().Find(query);
    ASSERT_EQ(found != nullptr, number != numbers.end());
    comparisons += query.Compared().size();
  }
  EXPECT_LT(comparisons, hashes.size()) << "most absent records are rejected by their tags";
  EXPECT_LE(filled.OverflowCount(), kRecords / 1000U);
}

TEST(RecordTable, FirstCandidateIsTheRecordInNineOfTenLookups) {
  constexpr int kRecords = 20'000;
  RandomNumbers random(randomSeed);
  FilledTable filled;
  EXPECT_EQ(filled.GetTable().FindFirstCandidate(Query(0, kNone)), nullptr);
  for (int i = 0; i < kRecords; ++i) {
    filled.Add(random.Bits());
  }
  std::size_t found = 0;
  for (const Record* const record : filled.Records()) {
    const Query query(record->hash, record->number);
    const Record* const first = filled.GetTable().FindFirstCandidate(query);
    ASSERT_TRUE(first == record || first == nullptr) << record->number;
    found += first != nullptr ? 1 : 0;
    EXPECT_LE(query.Compared().size(), 1U);
    EXPECT_FALSE(query.SearchedOverflow());
    ASSERT_EQ(filled.GetTable().FindFirstCandidate(Query(record->hash, kNone)), nullptr);
  }
  EXPECT_GT(found, kRecords * 9U / 10);
}

TEST(RecordTable, GrowingKeepsAllRecordsAtTheirAddresses) {
  RandomNumbers random(randomSeed);
  FilledTable filled;
  for (int i = 0; i < 500; ++i) {
    filled.Add(random.Bits() >> (4 * random.Below(4)));  // more records in the first buckets
  }
  const std::vector<const Record*> records = filled.Records();
  for (int i = 0; i < 4; ++i) {
    filled.Grow(0);
    filled.ExpectAll();
  }
  EXPECT_EQ(filled.Records(), records);
}

TEST(RecordTable, CapacityGrowsWithinBounds) {
  constexpr std::size_t kInitialCapacity = 64;
  const struct {
    const char* name;
    std::size_t records;
    std::size_t expected;
    std::size_t capacity;
  } rows[] = {
      {"empty table, no estimate", 0, 0, kInitialCapacity},
      {"empty table, small estimate", 0, 1, kInitialCapacity},
      {"empty table, largest estimate", 0, SIZE_MAX, kInitialCapacity},
      {"one record, no estimate", 1, 0, kInitialCapacity},
      {"one record, largest estimate", 1, SIZE_MAX, kInitialCapacity},
      {"no estimate", 100, 0, 200},
      {"fewer records than now", 100, 50, 200},
      {"as many records as now", 100, 100, 200},
      {"less than twice as many", 100, 199, 200},
      {"three times as many and one", 100, 301, 301},
      {"64 times as many", 100, 6400, 6400},
      {"more than 64 times as many", 100, 6401, 6400},
      {"largest estimate", 100, SIZE_MAX, 6400},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    RandomNumbers random(randomSeed);
    const LeakCheck leakCheck;
    FilledTable filled;
    while (filled.GetTable().Count() < row.records) {
      filled.Add(random.Bits());
    }
    const std::size_t before = allocation_probe::LiveBytes();
    filled.Grow(row.expected);
    EXPECT_LE(allocation_probe::LiveBytes(), before + 20 * row.capacity + 2000);
    filled.ExpectAll();
    while (filled.GetTable().Count() < row.capacity) {
      ASSERT_FALSE(filled.GetTable().IsFull()) << filled.GetTable().Count();
      filled.Add(random.Bits());
    }
    EXPECT_TRUE(filled.GetTable().IsFull());
    filled.ExpectAll();
  }
}

// A lookup compares at most 56 records outside the overflow, even under hash flooding.
TEST(RecordTable, LookupComparesFewRecordsUnderHashFlooding) {
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
      {"they differ only in bits that select neither home nor tag",
       [](std::uint64_t i) { return std::uint64_t{0x8000000000000025} | (i << 32U); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    FilledTable filled;
    for (std::uint64_t i = 0; i < 3000; ++i) {
      filled.Add(row.make(i));
    }
    filled.ExpectAll();
    EXPECT_EQ(filled.OverflowCount(), 3000 - kMaxInBuckets);
    for (const Record* const record : filled.Records()) {
      const Query missed(record->hash, kNone);
      ASSERT_EQ(filled.GetTable().Find(missed), nullptr);
      ASSERT_LE(missed.Compared().size(), kMaxInBuckets);
      ASSERT_TRUE(missed.SearchedOverflow());
    }
  }
}

TEST(RecordTable, SearchesTheOverflowOnlyIfAllProbedBucketsAreFull) {
  constexpr std::uint64_t kHash = 0x5DEECE66D1234567;
  FilledTable filled;
  filled.Grow(0);
  for (std::size_t count = 0; count < kMaxInBuckets; ++count) {
    const Query query(kHash, kNone);
    EXPECT_EQ(filled.GetTable().Find(query), nullptr);
    EXPECT_EQ(query.Compared().size(), count) << "each once";
    EXPECT_FALSE(query.SearchedOverflow()) << count;
    filled.Add(kHash);
  }
  const Query query(kHash, kNone);
  EXPECT_EQ(filled.GetTable().Find(query), nullptr);
  EXPECT_EQ(query.Compared().size(), kMaxInBuckets);
  EXPECT_TRUE(query.SearchedOverflow());

  const Query elsewhere(~kHash, kNone);
  EXPECT_EQ(filled.GetTable().Find(elsewhere), nullptr);
  EXPECT_EQ(elsewhere.Compared(), Numbers{});
  EXPECT_FALSE(elsewhere.SearchedOverflow());
}

// The records of one home have several homes in a larger table.
TEST(RecordTable, GrowingMovesOverflowedRecordsIntoBuckets) {
  FilledTable filled;
  for (std::uint64_t i = 0; i < 100; ++i) {
    filled.Add(i << 53U);  // in the first homes
  }
  EXPECT_GT(filled.OverflowCount(), 0U);
  filled.Grow(800);
  filled.Grow(800);
  filled.ExpectAll();
  for (int i = 0; i < 10 && filled.OverflowCount() > 0; ++i) {
    while (!filled.GetTable().IsFull()) {
      filled.Add(~std::uint64_t{0} / (filled.Records().size() + 2));
    }
    filled.Grow(SIZE_MAX);
  }
  EXPECT_EQ(filled.OverflowCount(), 0U);
  filled.ExpectAll();
}

TEST(RecordTable, KeepsItsRecordsIfMemoryRunsOut) {
  constexpr std::uint64_t kHash = 0x5DEECE66D1234567;
  const struct {
    const char* name;
    std::uint64_t hashOfOthers;
    std::size_t others;
    std::size_t failures;  // at least
  } rows[] = {
      {"the first one", 0, 0, 3},
      {"one that makes the table grow", 1, 64, 1},
      {"one that overflows", kHash, 60, 1},
      {"one that makes a table with overflow grow", kHash, 64, 4},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    for (std::size_t n = 1;; ++n) {
      SCOPED_TRACE(n);
      const LeakCheck leakCheck;
      FilledTable filled;
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
  while (number < 60) {  // until all probed buckets are full
    add();
  }
  const std::byte* const before = latest;
  ASSERT_EQ(CallWithFailingAllocation(1, add), Outcome::kThrew);
  const std::byte* const failed = latest;
  EXPECT_NE(failed, before);
  add();
  EXPECT_EQ(latest, failed);
}

// The slots of one bucket that a lookup compares: those with the wanted tag, and those that
// directly follow a compared slot and differ from the wanted tag in the lowest bit only
// (ZeroBytes).
Numbers ExpectedComparisons(const std::vector<unsigned>& tags, unsigned wanted) {
  Numbers compared;
  bool isCompared = false;
  for (std::size_t slot = 0; slot < tags.size(); ++slot) {
    isCompared = tags[slot] == wanted || (isCompared && tags[slot] == (wanted ^ 1U));
    if (isCompared) {
      compared.push_back(static_cast<int>(slot));
    }
  }
  return compared;
}

TEST(RecordTable, LookupComparesTheRecordsWithTheWantedTag) {
  RandomNumbers random(randomSeed);
  std::size_t comparedInVain = 0;
  for (unsigned wanted = 0x80; wanted <= 0xFF; ++wanted) {
    for (int round = 0; round < 60; ++round) {
      std::vector<unsigned> tags;
      FilledTable filled;
      for (int count = 1 + random.Below(Table::kBucketRecords); count > 0; --count) {
        const unsigned bit = 1U << static_cast<unsigned>(random.Below(7));
        const unsigned other = 0x80U | static_cast<unsigned>(random.Below(0x80));
        const unsigned choices[] = {wanted, wanted, wanted ^ 1U, wanted ^ 1U, wanted ^ bit, other};
        tags.push_back(AnyOf(random, choices));
        filled.Add(tags.back());
      }
      // The highest bit of a tag marks a used slot; it is not a bit of the hash.
      const std::uint64_t hash = random.Below(2) != 0 ? wanted : wanted & 0x7FU;
      const Numbers expected = ExpectedComparisons(tags, wanted);
      const Query query(hash, kNone);
      ASSERT_EQ(filled.GetTable().Find(query), nullptr);
      ASSERT_EQ(query.Compared(), expected) << testing::PrintToString(tags);
      for (const int number : expected) {
        ASSERT_EQ(filled.Find(hash, number), filled.Records()[static_cast<std::size_t>(number)]);
      }
      comparedInVain +=
          expected.size() - static_cast<std::size_t>(std::count(tags.begin(), tags.end(), wanted));
    }
  }
  EXPECT_GT(comparedInVain, 0U) << "no record was compared in vain";
}

}  // namespace
}  // namespace KelmoLibs::Localize
