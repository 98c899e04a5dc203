#include "host/unit_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace KelmoLibs::Host;

// How similar two texts are.
enum class Match { kExact, kKeyboard, kLooks, kNot };

Match MatchOf(std::string_view left, std::string_view right) {
  for (const auto& [match, result] : {std::pair(UnitTextMatch::kExact, Match::kExact),
                                      std::pair(UnitTextMatch::kKeyboard, Match::kKeyboard),
                                      std::pair(UnitTextMatch::kLooks, Match::kLooks)}) {
    if (IsSameUnitText(left, right, match)) {
      return result;
    }
  }
  return Match::kNot;
}

void PrintTo(Match match, std::ostream* out) {
  constexpr const char* kNames[] = {"exact", "keyboard", "looks", "not"};
  *out << kNames[static_cast<int>(match)];
}

struct Row {
  const char* name;
  std::string left;
  std::string right;
  Match match;
};

const Row kRows[] = {
    {"equal", "mm", "mm", Match::kExact},
    {"empty", "", "", Match::kExact},
    {"a prefix", "m", "mm", Match::kNot},
    {"upper case is another letter", "mW", "MW", Match::kNot},

    // Blanks
    {"a no-break space", "US gal", "US\u00A0gal", Match::kExact},
    {"a narrow no-break space", "US gal", "US\u202Fgal", Match::kExact},
    {"a thin space", "US gal", "US\u2009gal", Match::kExact},
    {"a tab", "US gal", "US\tgal", Match::kExact},
    {"two blanks", "US gal", "US  gal", Match::kNot},
    {"no blank", "US gal", "USgal", Match::kNot},
    {"another white space", "US gal", "US\u2003gal", Match::kNot},

    // What is typed for characters that keyboards lack
    {"a raised 1", "s\u00B9", "s1", Match::kKeyboard},
    {"a raised 2", "m\u00B2", "m2", Match::kKeyboard},
    {"a raised 3", "m\u00B3", "m3", Match::kKeyboard},
    {"a circumflex", "m\u00B3", "m^3", Match::kKeyboard},
    {"the other raised digits", "\u2070\u2074\u2075\u2076\u2077\u2078\u2079", "0456789",
     Match::kKeyboard},
    {"a raised minus", "s\u207B\u00B9", "s^-1", Match::kKeyboard},
    {"a minus sign", "s\u2212", "s-", Match::kKeyboard},
    {"a middle dot", "N\u00B7m", "N*m", Match::kKeyboard},
    {"a dot operator", "N\u00B7m", "N\u22C5m", Match::kKeyboard},
    {"no dot", "N\u00B7m", "Nm", Match::kNot},
    {"a point", "N\u00B7m", "N.m", Match::kNot},
    {"micro", "\u00B5m", "um", Match::kKeyboard},
    {"Greek mu", "\u03BCm", "um", Match::kKeyboard},
    {"both characters for micro", "\u00B5m", "\u03BCm", Match::kKeyboard},
    {"both characters for ohm", "\u2126", "\u03A9", Match::kKeyboard},
    {"both characters for angstrom", "\u212B", "\u00C5", Match::kKeyboard},
    {"a degree sign", "\u00B0C", "\u00BAC", Match::kKeyboard},
    {"a minute", "\u2032", "'", Match::kKeyboard},
    {"a minute as a quotation mark", "\u2032", "\u2019", Match::kKeyboard},
    {"a second", "\u2033", "\"", Match::kKeyboard},
    {"a second as a quotation mark", "\u2033", "\u201D", Match::kKeyboard},
    {"a second as two minutes", "\u2033", "''", Match::kNot},

    // Letters that look the same
    {"a Cyrillic em", "m", "\u043C", Match::kLooks},
    {"a Cyrillic em and a raised digit", "m2", "\u043C\u00B2", Match::kLooks},
    {"a Greek kappa", "K", "\u039A", Match::kLooks},
    {"Greek and Cyrillic", "\u039A", "\u041A", Match::kLooks},
    {"a word", "Pa", "\u0420\u0430", Match::kLooks},
    {"a Cyrillic letter that looks like none", "d", "\u0434", Match::kNot},

    // No character counts as nothing but the circumflex
    {"a zero", "m", std::string("m\0", 2), Match::kNot},
    {"a zero in front", "m", std::string("\0m", 2), Match::kNot},
    {"four bytes", "\U0001F600", "\U0001F600", Match::kExact},
    {"more bytes than a character has", "\xF0\x90\x80\x80\x80", "\xF0\x90\x80\x80\x81",
     Match::kNot},
    {"four other bytes", "\U0001F600", "\U0001F601", Match::kNot},
};

TEST(UnitText, MatchesInThreeDegrees) {
  for (const Row& row : kRows) {
    EXPECT_EQ(MatchOf(row.left, row.right), row.match) << row.name;
    EXPECT_EQ(MatchOf(row.right, row.left), row.match) << row.name << ", exchanged";
  }
}

TEST(UnitText, HashesOfTextsThatLookTheSameAreEqual) {
  for (const Row& row : kRows) {
    if (row.match != Match::kNot) {
      EXPECT_EQ(HashOfUnitText(row.left), HashOfUnitText(row.right)) << row.name;
    } else {
      EXPECT_NE(HashOfUnitText(row.left), HashOfUnitText(row.right)) << row.name;
    }
  }
}

}  // namespace
