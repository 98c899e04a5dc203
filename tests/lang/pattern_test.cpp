// Which names fit a pattern.
#include "lang/reading/pattern.h"

#include <gtest/gtest.h>

#include <string>

namespace KelmoLibs::Lang {
namespace {

TEST(FitsPattern, KnowsStarsAndQuestionMarks) {
  struct Row {
    const char* name;
    const char* pattern;
    bool fits;
  };
  const Row rows[] = {
      {"menu.file", "menu.file", true},
      {"menu.file", "menu.fil", false},
      {"menu.fil", "menu.file", false},
      {"menu.file", "menu.*", true},
      {"menu.", "menu.*", true},
      {"menu", "menu.*", false},
      {"menu.file.title", "*.title", true},
      {"menu.title.file", "*.title", false},
      {"a.title.b.title", "*.title", true},
      {"abcabd", "*ab?", true},
      {"", "*", true},
      {"", "", true},
      {"", "?", false},
      {"a", "", false},
      {u8"\u00E9", "?", true},
      {u8"\u4E2D\u6587", "??", true},
      {"a*b", "a*b", true},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(FitsPattern(row.name, row.pattern), row.fits) << row.name << ' ' << row.pattern;
  }
}

TEST(FitsPattern, IsNotSlowForManyStars) {
  std::string pattern;
  for (int i = 0; i < 1000; ++i) {
    pattern += "*a";
  }
  EXPECT_FALSE(FitsPattern(std::string(10'000, 'a') + 'b', pattern));
}

}  // namespace
}  // namespace KelmoLibs::Lang
