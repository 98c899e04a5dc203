// Keys and texts beside those of the base.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#include "tests/lang/findings_of.h"

namespace KelmoLibs::Lang {
namespace {

struct Row {
  const char* name;
  std::string lines;  // of the translation
  std::string expected;
};

constexpr const char* kBase =
    "en English\nmenu.open\tOpen\nmenu.save\tSave\nmsg.saved\tThe file is saved.\nunit.none\t\n"
    "# a comment of the base\n";

TEST(CheckBesideBase, ReportsOneFindingForOneCause) {
  const std::string open = "menu.open\tÖffnen\n";
  const std::string save = "menu.save\tSpeichern\n";
  const std::string saved = "msg.saved\tDie Datei ist gespeichert.\n";
  const std::string none = "unit.none\n";
  const Row rows[] = {
      {"all keys", open + save + saved + none, ""},
      {"a key is missing", open + saved + none,
       "de:2:1 warning missing menu.save missing.message\n"},
      {"the first key is missing", save + saved + none,
       "de:2:1 warning missing menu.open missing.message\n"},
      {"a typing mistake", open + "menu.sav\tSpeichern\n" + saved + none,
       "de:3:1 warning missing menu.save missing.message\n"},
      {"a translated key", open + "menu.speichern\tSpeichern\n" + saved + none,
       "de:3:1 warning missing menu.save missing.message\n"},
      {"a translated key in another place", open + saved + none + "menu.speichern\tSpeichern\n",
       "de:2:1 warning missing menu.save missing.message\n"
       "de:5:1 warning surplus menu.speichern surplus.message\n"},
      {"two other keys in the place of one",
       open + "menu.speichern\tSpeichern\nmenu.drucken\tDrucken\n" + saved + none,
       "de:2:1 warning missing menu.save missing.message\n"
       "de:3:1 warning surplus menu.speichern surplus.message\n"
       "de:4:1 warning surplus menu.drucken surplus.message\n"},
      {"a key with more parts", open + "menu.datei.speichern\tSpeichern\n" + saved + none,
       "de:2:1 warning missing menu.save missing.message\n"
       "de:3:1 warning surplus menu.datei.speichern surplus.message\n"},
      {"a surplus key", open + save + saved + none + "menu.print\tDrucken\n",
       "de:6:1 warning surplus menu.print surplus.message\n"},
      {"an empty text", open + "menu.save\t\n" + saved + none,
       "de:3:1 warning empty menu.save empty.message\n"},
      {"a text of blanks", open + "menu.save\t  \n" + saved + none,
       "de:3:11 warning empty menu.save empty.message\n"},
      {"a Cyrillic letter", open + "menu.s\u0430ve\tSpeichern\n" + saved + none,
       "de:3:7 error look-alike-key menu.save look-alike-key.cyrillic\n"},
      {"case", open + "Menu.save\tSpeichern\n" + saved + none,
       "de:3:1 error look-alike-key menu.save look-alike-key.case\n"},
      {"a lost tab", open + "menu.saveSpeichern\n" + saved + none,
       "de:3:10 error lost-separator menu.save lost-separator.message\n"},
      {"a lost tab before a text of several words",
       open + save + "msg.savedDie Datei ist gespeichert.\n" + none,
       "de:4:10 error lost-separator msg.saved lost-separator.message\n"},
      {"= as separator", open + "menu.save=Speichern\n" + saved + none,
       "de:3:10 error lost-separator menu.save lost-separator.mark\n"},
      {"a longer key is no lost tab", open + "menu.saveAs\tSpeichern unter\n" + saved + none,
       "de:2:1 warning missing menu.save missing.message\n"
       "de:3:1 warning surplus menu.saveAs surplus.message\n"},
      {"a no-break space is one cause", open + "menu.save\u00A0Alles speichern\n" + saved + none,
       "de:3:10 error blank-in-key menu.save\u00A0Alles blank-in-key.no_break\n"},
      {"an indented line is one cause", open + "  menu.save\tSpeichern\n" + saved + none,
       "de:3:1 error indented-line  indented-line.message\n"},
      {"a key that was commented out", open + "# menu.save\tSpeichern\n" + saved + none,
       "de:3:1 warning comment # comment.message.#\n"
       "de:2:1 warning missing menu.save missing.message\n"},
      {"lines behind a byte that is not UTF-8 are not missing",
       open + "menu.save\tS\xFF\n" + saved + none, ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(FindingsOf({{"en", kBase, false}, {"de", "de Deutsch\n" + row.lines}}, 0,
                         RuleId::kHeader, RuleId::kEmpty),
              row.expected);
  }
}

TEST(CheckBesideBase, DoesNotReportKeysOfUnreadableFiles) {
  const std::string lines = "menu.open\tx\nmenu.save\tx\nmsg.saved\tx\nunit.none\t\n";
  std::string carriageReturns = "de Deutsch\n" + lines;
  std::string utf16 = "\xFF\xFE";
  for (char& c : carriageReturns) {
    utf16 += {c, '\0'};
    c = c == '\n' ? '\r' : c;
  }
  for (const std::string& bytes : {carriageReturns, utf16}) {
    EXPECT_EQ(FindingsOf({{"en", kBase, false}, {"de", bytes}}, 0, RuleId::kHeader, RuleId::kEmpty),
              "");
  }
}

TEST(CheckBesideBase, AnIdUnlikeTheNameHidesNothing) {
  EXPECT_EQ(FindingsOf({{"en.txt", kBase, false},
                        {"fr.txt", "de Deutsch\nmenu.open\tx\nmsg.saved\tx\nunit.none\n"}},
                       0, RuleId::kHeader, RuleId::kEmpty),
            "fr.txt:1:1 warning id-unlike-name  id-unlike-name.message\n"
            "fr.txt:2:1 warning missing menu.save missing.message\n");
}

TEST(CheckBesideBase, OfSeveralFilesTheOneWithTheNeighbourLacksAKey) {
  const std::vector<MadeUpFile> files = {
      {"en", "en English\na.one\t1\na.two\t2\na.three\t3\n", false},
      {"en-b", "en English\nb.one\t1\nb.two\t2\n", false},
      {"de", "de Deutsch\na.one\t1\na.two\t2\na.three\t3\n", false},
      {"de-b", "de Deutsch\nb.one\t1\n"},
  };
  EXPECT_EQ(FindingsOf(files, 0, RuleId::kHeader, RuleId::kEmpty),
            "de-b:2:1 warning missing b.two missing.message\n");
}

TEST(CheckBesideBase, ASetOfItsOwnLacksNothing) {
  std::string base = "en English\n";
  for (int i = 0; i < 20; ++i) {
    base += "key." + std::string(3, static_cast<char>('a' + i)) + "\tx\n";
  }
  const std::string own = "de Deutsch\nown.first\tx\nown.other\tx\n";
  EXPECT_EQ(FindingsOf({{"en", base, false}, {"de", own + "key.aaa\t\n"}}, 0, RuleId::kHeader,
                       RuleId::kEmpty),
            "de:4:1 warning empty key.aaa empty.message\n");
  const std::string enough =
      FindingsOf({{"en", base, false}, {"de", own + "key.aaa\tx\nkey.bbb\tx\n"}}, 0,
                 RuleId::kMissing, RuleId::kSurplus);
  EXPECT_EQ(std::count(enough.begin(), enough.end(), '\n'), 18 + 2) << enough;
}

// A change to one line of a right dictionary gives the one finding that fits it.
class OneChange : public testing::Test {
 protected:
  std::string Word() {
    std::string word;
    for (std::size_t i = 4 + random_() % 5; i > 0; --i) {
      word += static_cast<char>('a' + random_() % 26);
    }
    return word;
  }

  // Sets base_ and lines_ to a dictionary and its translation.
  void MakeDictionary() {
    base_ = "en English\n";
    lines_.clear();
    const std::size_t count = 10 + random_() % 30;
    for (std::size_t i = 0; i < count; ++i) {
      const std::string key = Word() + "." + Word() + "_" + Word();
      base_ += key + "\t" + Word() + " " + Word() + "\n";
      lines_.push_back({key, "\u00DC" + Word() + " " + Word()});
    }
  }

  std::string Findings() const {
    std::string translation = "de Deutsch\n";
    for (const auto& [key, text] : lines_) {
      translation += key + text_separator_ + text + "\n";
    }
    return FindingsOf({{"en", base_, false}, {"de", translation}}, 0, RuleId::kHeader,
                      RuleId::kEmpty);
  }

  static constexpr unsigned kStart = 22;
  std::mt19937 random_{kStart};
  std::string base_;
  std::vector<std::array<std::string, 2>> lines_;
  std::string text_separator_ = "\t";
};

TEST_F(OneChange, GivesOneFinding) {
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(round);
    MakeDictionary();
    text_separator_ = round % 2 == 0 ? "\t" : "  ";
    ASSERT_EQ(Findings(), "");
    const auto lines = lines_;
    const std::size_t at = random_() % lines_.size();
    const std::string key = lines_[at][0];
    const std::string line = std::to_string(at + 2);

    lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(at));
    EXPECT_EQ(Findings(), "de:" + std::to_string(std::max<std::size_t>(at + 1, 2)) +
                              ":1 warning missing " + key + " missing.message\n");
    lines_ = lines;

    const std::size_t letter = random_() % key.size();
    lines_[at][0].erase(letter, 1);
    EXPECT_EQ(Findings(), "de:" + line + ":1 warning missing " + key + " missing.message\n");
    lines_ = lines;

    lines_[at][0][0] = static_cast<char>(lines_[at][0][0] - 'a' + 'A');
    EXPECT_EQ(Findings(),
              "de:" + line + ":1 error look-alike-key " + key + " look-alike-key.case\n");
    lines_ = lines;

    lines_.push_back({key, lines_[at][1]});
    const std::string last = std::to_string(lines_.size() + 1);
    EXPECT_EQ(Findings(),
              "de:" + last + ":1 warning duplicate-key " + key + " duplicate-key.same_text\n");
    lines_.back()[1] += "x";
    EXPECT_EQ(Findings(),
              "de:" + last + ":1 error duplicate-key " + key + " duplicate-key.other_text\n");
    lines_ = lines;

    lines_[at][1].clear();
    const std::string column = text_separator_ == "\t" ? "1" : std::to_string(key.size() + 2);
    EXPECT_EQ(Findings(),
              "de:" + line + ":" + column + " warning empty " + key + " empty.message\n");
    lines_ = lines;

    lines_[at] = {key + lines_[at][1].substr(0, 5), lines_[at][1].substr(5)};
    lines_[at][0] += lines_[at][1];  // the first word of the text, and the second one, are glued
    lines_[at][1].clear();
    std::string glued = Findings();
    EXPECT_EQ(glued, "de:" + line + ":" + std::to_string(key.size() + 1) +
                         " error lost-separator " + key + " lost-separator.message\n");
    lines_ = lines;

    lines_.push_back({"surplus.key_here", "x"});
    EXPECT_EQ(Findings(), "de:" + last + ":1 warning surplus surplus.key_here surplus.message\n");
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
