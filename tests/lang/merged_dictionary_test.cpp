// Which entry of several files with one id hosts see.
#include "lang/reading/merged_dictionary.h"

#include <gtest/gtest.h>

namespace KelmoLibs::Lang {
namespace {

TEST(MergedDictionary, GivesTheFirstEntryThatHostsSee) {
  const DictionaryFile first("a.txt", {}, "de\nread first\nbroken \xE4\nlost first\nread lost\n");
  const DictionaryFile second("b.txt", {}, "de\nread second\nlost second\n\x1A\nlost_too second\n");
  MergedDictionary merged;
  merged.Merge(4, first);
  merged.Merge(7, second);

  EXPECT_EQ(merged.KeyCount(), 4U);
  const FoundEntry read = merged.Find("read");
  EXPECT_EQ(read.file, 4U);
  EXPECT_EQ(read.entry, first.Entries().data());
  EXPECT_FALSE(read.isLost);
  const FoundEntry lostInTheFirst = merged.Find("lost");
  EXPECT_EQ(lostInTheFirst.file, 7U);
  EXPECT_EQ(lostInTheFirst.entry, &second.Entries()[1]);
  EXPECT_FALSE(lostInTheFirst.isLost);
  const FoundEntry lost = merged.Find("lost_too");
  EXPECT_EQ(lost.file, 7U);
  EXPECT_EQ(lost.entry, second.LostEntries().data());
  EXPECT_TRUE(lost.isLost);
  EXPECT_FALSE(merged.Find("none"));
}

}  // namespace
}  // namespace KelmoLibs::Lang
