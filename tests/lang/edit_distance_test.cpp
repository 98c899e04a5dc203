// How many typing mistakes lie between two words.
#include "lang/rules/edit_distance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace KelmoLibs::Lang {
namespace {

struct Row {
  const char* a;
  const char* b;
  std::size_t distance;
};

TEST(EditDistance, CountsLetters) {
  const Row rows[] = {
      {"", "", 0},      {"a", "", 1},      {"abc", "abc", 0},   {"abc", "abd", 1},
      {"abc", "ac", 1}, {"abc", "acb", 1}, {"abcd", "badc", 2}, {"abc", "xyz", 3},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(EditDistance(row.a, row.b, 9), row.distance) << row.a << ' ' << row.b;
    EXPECT_EQ(EditDistance(row.b, row.a, 9), row.distance) << row.a << ' ' << row.b;
  }
  EXPECT_GT(EditDistance("abc", "abcdef", 2), 2U);
}

TEST(EditDistance, ALimitChangesNoSmallerDistance) {
  const std::string words[] = {"",        "a",        "ab",       "ba",        "abcdefgh",
                               "abdcegh", "bacdefhg", "abcdxfgh", "xabcdefgh", "hgfedcba"};
  for (const std::string& a : words) {
    for (const std::string& b : words) {
      const std::size_t distance = EditDistance(a, b, 99);
      for (std::size_t limit = 0; limit < 9; ++limit) {
        const std::size_t limited = EditDistance(a, b, limit);
        EXPECT_EQ(std::min(limited, limit + 1), std::min(distance, limit + 1)) << a << ' ' << b;
      }
    }
  }
}

// Keys of this length must not take minutes.
TEST(EditDistance, OfLongWordsIsFoundInLinearTime) {
  const std::string word(1'000'000, 'a');
  EXPECT_EQ(EditDistance("b" + word, word + "c", 2), 2U);
}

// All words of up to four letters a and b.
TEST(IsOneMistake, IsAnEditDistanceOfOne) {
  std::vector<std::string> words = {""};
  for (std::size_t i = 0; words[i].size() < 4; ++i) {
    words.push_back(words[i] + 'a');
    words.push_back(words[i] + 'b');
  }
  for (const std::string& a : words) {
    for (const std::string& b : words) {
      EXPECT_EQ(IsOneMistake(a, b), EditDistance(a, b, 1) <= 1) << a << ' ' << b;
    }
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
