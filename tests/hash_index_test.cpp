#include "frame/hash_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <iterator>
#include <new>
#include <set>
#include <unordered_map>
#include <vector>

#include "tests/support/allocation_probe.h"
#include "tests/support/random_numbers.h"

namespace KelmoLibs::Localize {
namespace {

struct Record {
  std::uint64_t hash;
  int number;
};

using Index = HashIndex<Record>;
using Numbers = std::vector<int>;

constexpr std::size_t kMostPlaces = Index::kProbedBuckets * Index::kBucketRecords;
constexpr int kNone = -1;  // no record has it

std::uint64_t HashOf(const Record& record) { return record.hash; }

// What one question costs, and its answer.
struct Question {
  const Record* found;
  Numbers asked;  // in this order
  int askedAmongHomeless;
};

Question Ask(const Index& index, std::uint64_t hash, int number, const Record* homeless = nullptr) {
  Question question = {nullptr, {}, 0};
  question.found = index.Find(
      hash,
      [&](const Record& record) {
        question.asked.push_back(record.number);
        return record.number == number;
      },
      [&] {
        ++question.askedAmongHomeless;
        return homeless;
      });
  return question;
}

Index IndexFor(std::size_t most) {
  Index index;
  index.Grow(most, HashOf, [](const Record& /*record*/) { ADD_FAILURE() << "there was none"; });
  return index;
}

// An owner of records, who keeps the homeless ones in a way of his own.
class Owner {
 public:
  void Add(std::uint64_t hash) {
    if (index_.IsFull()) {
      Grow(std::max<std::size_t>(2 * index_.Count(), 5));
    }
    const Record& record = records_.emplace_back(Record{hash, static_cast<int>(records_.size())});
    if (!index_.Insert(hash, &record)) {
      homeless_.insert(&record);
    }
  }

  template <class OnHomeless>
  void Grow(std::size_t most, OnHomeless onHomeless) {
    index_.Grow(most, HashOf, onHomeless);
    for (auto place = homeless_.begin(); place != homeless_.end();) {
      place = index_.Insert((*place)->hash, *place) ? homeless_.erase(place) : std::next(place);
    }
  }
  void Grow(std::size_t most) {
    Grow(most, [this](const Record& record) { homeless_.insert(&record); });
  }

  const Record* Find(std::uint64_t hash, int number) const {
    return index_.Find(
        hash, [number](const Record& record) { return record.number == number; },
        [&]() -> const Record* {
          const auto place =
              std::find_if(homeless_.begin(), homeless_.end(),
                           [number](const Record* record) { return record->number == number; });
          return place != homeless_.end() ? *place : nullptr;
        });
  }

  // Every record is found by its number and at its place, and each stands in the index or is homeless.
  void ExpectAll() const {
    for (const Record& record : records_) {
      ASSERT_EQ(Find(record.hash, record.number), &record) << record.number;
    }
    EXPECT_EQ(index_.Count() + homeless_.size(), records_.size());
  }

  const Index& TheIndex() const { return index_; }
  std::size_t Homeless() const { return homeless_.size(); }

 private:
  std::deque<Record> records_;
  Index index_;
  std::set<const Record*> homeless_;
};

TEST(HashIndex, ThatIsEmptyHasNothingAndNoRoom) {
  const Index index;
  EXPECT_EQ(index.Count(), 0U);
  EXPECT_TRUE(index.IsFull());
  for (const std::uint64_t hash :
       {std::uint64_t{0}, std::uint64_t{0x123456789ABCDEF}, ~std::uint64_t{0}}) {
    const Question question = Ask(index, hash, kNone);
    EXPECT_EQ(question.found, nullptr);
    EXPECT_EQ(question.asked, Numbers{});
    EXPECT_EQ(question.askedAmongHomeless, 0);
  }
}

TEST(HashIndex, IsFullWithAsManyRecordsAsItWasGrownFor) {
  for (const std::size_t most : {1U, 2U, 5U, 7U, 64U, 1000U}) {
    SCOPED_TRACE(most);
    RandomNumbers random(randomSeed);
    Owner owner;
    owner.Grow(most);
    while (owner.TheIndex().Count() < most) {
      ASSERT_FALSE(owner.TheIndex().IsFull());
      owner.Add(random.Bits());
    }
    EXPECT_TRUE(owner.TheIndex().IsFull());
    owner.ExpectAll();
  }
}

TEST(HashIndex, FindsEachOfManyRecordsAndNoneOther) {
  constexpr int kRecords = 20'000;
  RandomNumbers random(randomSeed);
  Owner owner;
  std::unordered_map<std::uint64_t, int> numbers;
  for (int i = 0; i < kRecords; ++i) {
    const std::uint64_t hash = random.Bits();
    numbers.emplace(hash, i);
    owner.Add(hash);
  }
  owner.ExpectAll();
  std::vector<std::uint64_t> hashes;
  for (const auto& [hash, number] : numbers) {
    hashes.insert(hashes.end(), {hash, hash ^ 1U, hash ^ 0x40U, hash ^ (std::uint64_t{1} << 32U),
                                 hash ^ (std::uint64_t{1} << 63U)});
  }
  std::size_t asked = 0;
  for (const std::uint64_t hash : hashes) {
    const auto number = numbers.find(hash);
    const int wanted = number != numbers.end() ? number->second : kNone;
    const Record* const found = owner.Find(hash, wanted);
    ASSERT_EQ(found != nullptr ? found->number : kNone, wanted);
    asked += Ask(owner.TheIndex(), hash, wanted).asked.size();
  }
  EXPECT_LT(asked, hashes.size()) << "most that are not there are told by their tags";
  EXPECT_LE(owner.Homeless(), kRecords / 1000) << "few are without a place";
}

TEST(HashIndex, GrowsWithAllThatItHas) {
  RandomNumbers random(randomSeed);
  Owner owner;
  for (int i = 0; i < 500; ++i) {
    owner.Add(random.Bits() >> (4 * random.Below(4)));  // more of them at the front
  }
  for (const std::size_t most : {501U, 502U, 600U, 5000U, 100'000U, 501U}) {
    SCOPED_TRACE(most);
    owner.Grow(most);
    owner.ExpectAll();
  }
}

// Whoever makes hashes collide cannot make a question longer than this.
TEST(HashIndex, AsksAFewRecordsHoweverManyHashesCollide) {
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
    std::deque<Record> records;
    Index index = IndexFor(10'000);
    for (int i = 0; i < 3000; ++i) {
      const Record& record =
          records.emplace_back(Record{row.make(static_cast<std::uint64_t>(i)), i});
      const bool isHome = static_cast<std::size_t>(i) < kMostPlaces;
      ASSERT_EQ(index.Insert(record.hash, &record), isHome) << i;
    }
    EXPECT_EQ(index.Count(), kMostPlaces);
    for (const Record& record : records) {
      const bool isHome = static_cast<std::size_t>(record.number) < kMostPlaces;
      const Question question = Ask(index, record.hash, record.number, &record);
      ASSERT_EQ(question.found, &record);
      ASSERT_EQ(question.askedAmongHomeless, isHome ? 0 : 1) << record.number;
      ASSERT_LE(question.asked.size(), kMostPlaces);
      const Question missed = Ask(index, record.hash, kNone);
      ASSERT_EQ(missed.found, nullptr);
      ASSERT_EQ(missed.askedAmongHomeless, 1);
      ASSERT_LE(missed.asked.size(), kMostPlaces);
    }
  }
}

TEST(HashIndex, AsksAmongTheHomelessOnlyWhereNoBucketHasRoom) {
  constexpr std::uint64_t kHash = 0x5DEECE66D1234567;
  const std::vector<Record> records(kMostPlaces, Record{kHash, 0});
  Index index = IndexFor(1000);
  for (const Record& record : records) {
    const Question question = Ask(index, kHash, kNone);
    EXPECT_EQ(question.asked, Numbers(index.Count(), 0)) << "each once";
    EXPECT_EQ(question.askedAmongHomeless, 0) << index.Count();
    EXPECT_TRUE(index.Insert(kHash, &record));
  }
  const Question question = Ask(index, kHash, kNone);
  EXPECT_EQ(question.asked, Numbers(kMostPlaces, 0));
  EXPECT_EQ(question.askedAmongHomeless, 1);

  const Question elsewhere = Ask(index, ~kHash, kNone);
  EXPECT_EQ(elsewhere.asked, Numbers{});
  EXPECT_EQ(elsewhere.askedAmongHomeless, 0);
}

// With room for fewer the records of many homes have the same one.
TEST(HashIndex, TellsItsOwnerOfThoseThatLoseTheirPlace) {
  constexpr std::size_t kRecords = 100;
  Owner owner;
  owner.Grow(10'000);
  for (std::uint64_t i = 0; i < kRecords; ++i) {
    owner.Add(i << 53U);  // in the front twentieth of the homes
  }
  EXPECT_EQ(owner.Homeless(), 0U);
  owner.Grow(kRecords + 1);
  EXPECT_GT(owner.Homeless(), 0U);
  owner.ExpectAll();
  owner.Grow(10'000);
  EXPECT_EQ(owner.Homeless(), 0U);
  owner.ExpectAll();
}

TEST(HashIndex, IsAsBeforeWhereGrowingFails) {
  constexpr std::size_t kRecords = 100;
  Owner owner;
  owner.Grow(10'000);
  for (std::uint64_t i = 0; i < kRecords; ++i) {
    owner.Add(i << 53U);
  }
  int told = 0;
  for (const int failing : {1, 2, 10}) {
    told = 0;
    const allocation_probe::LeakCheck everythingIsGivenBack;
    EXPECT_THROW(owner.Grow(kRecords + 1,
                            [&](const Record& /*record*/) {
                              if (++told == failing) {
                                throw std::bad_alloc();
                              }
                            }),
                 std::bad_alloc);
    EXPECT_EQ(told, failing);
    owner.ExpectAll();
    EXPECT_FALSE(owner.TheIndex().IsFull());
  }
  EXPECT_EQ(allocation_probe::CallWithFailingAllocation(1, [&] { owner.Grow(kRecords + 1); }),
            allocation_probe::Outcome::kThrew);
  owner.ExpectAll();
  owner.Grow(kRecords + 1);
  owner.ExpectAll();
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

TEST(HashIndex, FindsTagsAsThePlainRuleDoes) {
  RandomNumbers random(randomSeed);
  std::size_t askedInVain = 0;
  for (unsigned wanted = 0x80; wanted <= 0xFF; ++wanted) {
    for (int round = 0; round < 60; ++round) {
      std::deque<Record> records;
      std::vector<unsigned> tags;
      Index index = IndexFor(Index::kBucketRecords);
      for (int count = 1 + random.Below(Index::kBucketRecords); count > 0; --count) {
        const unsigned bit = 1U << static_cast<unsigned>(random.Below(7));
        const unsigned other = 0x80U | static_cast<unsigned>(random.Below(0x80));
        const unsigned choices[] = {wanted, wanted, wanted ^ 1U, wanted ^ 1U, wanted ^ bit, other};
        tags.push_back(AnyOf(random, choices));
        const Record& record =
            records.emplace_back(Record{tags.back(), static_cast<int>(records.size())});
        ASSERT_TRUE(index.Insert(record.hash, &record));
      }
      // The highest bit of a tag says that there is a record; it is none of the hash's.
      const std::uint64_t hash = random.Below(2) != 0 ? wanted : wanted & 0x7FU;
      const Numbers expected = AskedByThePlainRule(tags, wanted);
      ASSERT_EQ(Ask(index, hash, kNone).asked, expected) << testing::PrintToString(tags);
      for (const int number : expected) {
        ASSERT_EQ(Ask(index, hash, number).found, &records[static_cast<std::size_t>(number)]);
      }
      askedInVain +=
          expected.size() - static_cast<std::size_t>(std::count(tags.begin(), tags.end(), wanted));
    }
  }
  EXPECT_GT(askedInVain, 0U) << "the case was not met";
}

}  // namespace
}  // namespace KelmoLibs::Localize
