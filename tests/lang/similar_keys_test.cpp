// Pairs of keys with typing mistakes.
#include "lang/rules/similar_keys.h"

#include <gtest/gtest.h>

#include <string>

namespace KelmoLibs::Lang {
namespace {

struct Row {
  const char* missing;
  const char* surplus;
  bool areSimilar;
};

TEST(FindSimilarKeys, FindsTypingMistakes) {
  const Row rows[] = {
      {"button.apply", "button.aply", true},       // a letter too few
      {"button.apply", "button.appply", true},     // too many
      {"button.apply", "button.aplpy", true},      // swapped
      {"button.apply", "buttonapply", true},       // without the dot
      {"button.apply", "bitton.appky", true},      // two
      {"button.settings", "button.sttngs", true},  // two too few
      {"button.apply", "button.reply", false},     // two of five: another word
      {"button.settings", "utton.setting", true},  // at both ends
      {"open", "opne", true},
      {"open", "oqnn", false},  // a short key may differ by one letter only
      {"ok", "oc", false},
      {"item.1", "item.2", false},
      {"item.10", "item.1", false},
      {"axis.x", "axis.y", false},
      {"axis.x.name", "axis.y.name", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(FindSimilarKeys({row.missing}, {row.surplus}).size(), row.areSimilar ? 1U : 0U)
        << row.missing << ' ' << row.surplus;
  }
}

TEST(FindSimilarKeys, UsesEachKeyOnceAndTakesTheNearest) {
  const auto found = FindSimilarKeys({"menu.close", "menu.clone"}, {"menu.clonne", "menu.clse"});
  ASSERT_EQ(found.size(), 2U);
  for (const SimilarKeys& pair : found) {
    EXPECT_EQ(pair.missing + pair.surplus, 1U);  // close and clse, clone and clonne
  }
  EXPECT_EQ(FindSimilarKeys({"menu.close"}, {"menu.clos", "menu.clse"}).size(), 1U);
  EXPECT_TRUE(FindSimilarKeys({}, {"a"}).empty());
}

}  // namespace
}  // namespace KelmoLibs::Lang
