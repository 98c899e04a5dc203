// Two keys that differ by few letters become equal when few letters are deleted from each. So the
// hashes of all keys that such deletions give are sorted, and equal hashes are candidates.
// Tested by similar_keys_test.cpp.
#include "lang/rules/similar_keys.h"

#include <algorithm>
#include <cstdint>
#include <tuple>
#include <utility>

#include "lang/rules/edit_distance.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kShortestKey = 4;
constexpr std::size_t kShortestKeyOfTwo = 8;  // shorter keys may differ by one letter only
constexpr std::size_t kLongestKey = 256;
constexpr std::size_t kMostHashes = 1'000'000;   // of the shorter list, in memory
constexpr std::size_t kMostLookups = 4'000'000;  // of the longer list
constexpr std::size_t kMostOfOneHash = 8;
constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;  // arbitrary, odd
constexpr std::string_view kPartEnds = "._-/:";

// Hashes of a text without some of its bytes.
class DeletionHashes {
 public:
  // `visit` gets the hash of `key` without one byte after the other, or without each two bytes, and
  // of the whole key.
  template <class Visitor>
  void Visit(std::string_view key, std::size_t deletions, Visitor visit) {
    Prepare(key);
    const std::size_t size = key.size();
    visit(Part(0, size));
    for (std::size_t i = 0; i < size; ++i) {
      const std::uint64_t before = Part(0, i);
      visit(Join(before, i + 1, size));
      for (std::size_t j = i + 1; deletions > 1 && j < size; ++j) {
        visit(Join(Join(before, i + 1, j), j + 1, size));
      }
    }
  }

  // The number of calls that Visit makes.
  static std::size_t Count(std::size_t size, std::size_t deletions) noexcept {
    return 1 + size + (deletions > 1 ? size * (size - 1) / 2 : 0);
  }

 private:
  void Prepare(std::string_view key) {
    prefixes_.assign(1, 0);
    powers_.assign(1, 1);
    for (const char c : key) {
      prefixes_.push_back(prefixes_.back() * kFactor + static_cast<unsigned char>(c) + 1);
      powers_.push_back(powers_.back() * kFactor);
    }
  }
  std::uint64_t Part(std::size_t begin, std::size_t end) const noexcept {
    return prefixes_[end] - prefixes_[begin] * powers_[end - begin];
  }
  std::uint64_t Join(std::uint64_t before, std::size_t begin, std::size_t end) const noexcept {
    return before * powers_[end - begin] + Part(begin, end);
  }

  std::vector<std::uint64_t> prefixes_;
  std::vector<std::uint64_t> powers_;
};

struct Difference {
  std::string_view a;
  std::string_view b;
  std::size_t start;  // of both
};

Difference DifferenceOf(std::string_view a, std::string_view b) noexcept {
  std::size_t start = 0;
  while (start < a.size() && start < b.size() && a[start] == b[start]) {
    ++start;
  }
  std::size_t end = 0;
  while (end < a.size() - start && end < b.size() - start &&
         a[a.size() - 1 - end] == b[b.size() - 1 - end]) {
    ++end;
  }
  return {a.substr(start, a.size() - start - end), b.substr(start, b.size() - start - end), start};
}

// The part of a key, such as "open" in "menu.open", around a difference.
std::size_t PartLength(std::string_view key, std::size_t start, std::size_t end) noexcept {
  const std::size_t before =
      start == 0 ? std::string_view::npos : key.find_last_of(kPartEnds, start - 1);
  const std::size_t begin = before == std::string_view::npos ? 0 : before + 1;
  return std::min(key.find_first_of(kPartEnds, end), key.size()) - begin;
}

bool IsTypingMistake(std::string_view a, std::string_view b, const Difference& difference,
                     std::size_t distance) {
  constexpr std::string_view kDigits = "0123456789";
  const auto has = [&difference](std::string_view characters) {
    return difference.a.find_first_of(characters) != std::string_view::npos ||
           difference.b.find_first_of(characters) != std::string_view::npos;
  };
  if (has(kDigits)) {
    return false;
  }
  const std::size_t shortestPart = distance > 1 ? 6 : 3;  // others are rather other words
  const std::size_t start = difference.start;
  return has(kPartEnds) || (PartLength(a, start, start + difference.a.size()) >= shortestPart &&
                            PartLength(b, start, start + difference.b.size()) >= shortestPart);
}

struct Pair {
  std::size_t distance;
  SimilarKeys keys;

  friend bool operator<(const Pair& a, const Pair& b) noexcept {
    return std::tie(a.distance, a.keys.missing, a.keys.surplus) <
           std::tie(b.distance, b.keys.missing, b.keys.surplus);
  }
};

class Search {
 public:
  Search(const std::vector<std::string_view>& missing, const std::vector<std::string_view>& surplus)
      : missing_(missing),
        surplus_(surplus),
        isMissingUsed_(missing.size()),
        isSurplusUsed_(surplus.size()) {}

  std::vector<SimilarKeys> Run() {
    FindPairs(1, kShortestKey);
    FindPairs(2, kShortestKeyOfTwo);
    return std::move(found_);
  }

 private:
  // Finds pairs with a distance of at most `deletions` among the keys that are in none yet.
  void FindPairs(std::size_t deletions, std::size_t shortestKey) {
    const bool isMissingIndexed = missing_.size() <= surplus_.size();
    const auto& indexed = isMissingIndexed ? missing_ : surplus_;
    const auto& isIndexedUsed = isMissingIndexed ? isMissingUsed_ : isSurplusUsed_;
    const auto& others = isMissingIndexed ? surplus_ : missing_;
    const auto& isOtherUsed = isMissingIndexed ? isSurplusUsed_ : isMissingUsed_;
    DeletionHashes hashes;

    std::vector<std::pair<std::uint64_t, std::size_t>> index;
    ForEachKey(indexed, isIndexedUsed, deletions, shortestKey, kMostHashes, [&](std::size_t i) {
      hashes.Visit(indexed[i], deletions,
                   [&index, i](std::uint64_t hash) { index.emplace_back(hash, i); });
    });
    std::sort(index.begin(), index.end());
    index.erase(std::unique(index.begin(), index.end()), index.end());

    std::vector<Pair> pairs;
    std::vector<std::size_t> candidates;
    ForEachKey(others, isOtherUsed, deletions, shortestKey, kMostLookups, [&](std::size_t i) {
      candidates.clear();
      hashes.Visit(others[i], deletions, [&index, &candidates](std::uint64_t hash) {
        auto at = std::lower_bound(index.begin(), index.end(), std::pair(hash, std::size_t{0}));
        for (std::size_t n = 0; n < kMostOfOneHash && at != index.end() && at->first == hash;
             ++n, ++at) {
          candidates.push_back(at->second);
        }
      });
      std::sort(candidates.begin(), candidates.end());
      candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
      for (const std::size_t candidate : candidates) {
        AddPair(isMissingIndexed ? SimilarKeys{candidate, i} : SimilarKeys{i, candidate}, deletions,
                pairs);
      }
    });
    Choose(pairs);
  }

  template <class Visitor>
  static void ForEachKey(const std::vector<std::string_view>& keys, const std::vector<bool>& isUsed,
                         std::size_t deletions, std::size_t shortest, std::size_t budget,
                         Visitor visit) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
      const std::size_t size = keys[i].size();
      if (isUsed[i] || size < shortest || size > kLongestKey) {
        continue;
      }
      const std::size_t cost = DeletionHashes::Count(size, deletions);
      if (cost > budget) {
        return;
      }
      budget -= cost;
      visit(i);
    }
  }

  void AddPair(SimilarKeys keys, std::size_t limit, std::vector<Pair>& pairs) const {
    const std::string_view a = missing_[keys.missing];
    const std::string_view b = surplus_[keys.surplus];
    const Difference difference = DifferenceOf(a, b);
    const std::size_t distance = EditDistance(difference.a, difference.b, limit);
    if (distance <= limit && IsTypingMistake(a, b, difference, distance)) {
      pairs.push_back({distance, keys});
    }
  }

  void Choose(std::vector<Pair>& pairs) {
    std::sort(pairs.begin(), pairs.end());
    for (const Pair& pair : pairs) {
      if (!isMissingUsed_[pair.keys.missing] && !isSurplusUsed_[pair.keys.surplus]) {
        isMissingUsed_[pair.keys.missing] = true;
        isSurplusUsed_[pair.keys.surplus] = true;
        found_.push_back(pair.keys);
      }
    }
  }

  const std::vector<std::string_view>& missing_;
  const std::vector<std::string_view>& surplus_;
  std::vector<bool> isMissingUsed_;
  std::vector<bool> isSurplusUsed_;
  std::vector<SimilarKeys> found_;
};

}  // namespace

std::vector<SimilarKeys> FindSimilarKeys(const std::vector<std::string_view>& missing,
                                         const std::vector<std::string_view>& surplus) {
  if (missing.empty() || surplus.empty()) {
    return {};
  }
  return Search(missing, surplus).Run();
}

}  // namespace KelmoLibs::Lang
