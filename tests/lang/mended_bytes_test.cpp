// What `fix` changes, what it leaves, and what it must never change.
#include "lang/commands/mended_bytes.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>
#include <string>

#include "lang/reading/dictionary_file.h"

namespace KelmoLibs::Lang {
namespace {

using namespace std::string_literals;

std::string Keys(const std::vector<Sentence>& sentences) {
  std::string keys;
  for (const Sentence& sentence : sentences) {
    keys += sentence.key + ' ';
  }
  return keys;
}

struct Row {
  const char* name;
  std::string bytes;
  std::optional<NamedEncoding> encoding;
  std::string mended;  // empty: nothing changes
  std::string changes;
  std::string left;
  std::string refusal;
};

const std::string kMark = "\xEF\xBB\xBF";
constexpr CodePage kWestern = CodePage::kWindows1252;

TEST(MendedBytes, ChangesOnlyWhatHasOneAnswer) {
  const Row rows[] = {
      {"nothing to mend", "de\na b\n", {}, "", "", "", ""},
      {"an encoding for a file that is UTF-8", "de\na \u00FC\n", kWestern, "", "", "", ""},
      {"mark at the start", kMark + "de\r\na b\r\n", {}, "de\r\na b\r\n", "fix.marks.# ", "", ""},
      {"marks in front of keys",
       "de\n" + kMark + kMark + "a b\nc " + kMark + "d\n",
       {},
       "de\na b\nc " + kMark + "d\n",
       "fix.marks.# ",
       "",
       ""},
      {"a line in a code page", "fr\na \xE9\nb \u00E9\n", kWestern, "fr\na \u00E9\nb \u00E9\n",
       "fix.code_page.# ", "", ""},
      {"a code page that is not named",
       "fr\na enregistr\xE9\n",
       {},
       "",
       "",
       "fix.left.encoding.one_guess.# ",
       ""},
      {"a damaged letter stays", "fr\na Param\u00E8tres enregistr\xC3\nb \xE9t\xE9\n", kWestern,
       "fr\na Param\u00E8tres enregistr\xC3\nb \u00E9t\u00E9\n", "fix.code_page.# ",
       "fix.left.damaged.# ", ""},
      {"a byte that the code page lacks", "fr\na \xE9\x81\n", kWestern, "", "", "",
       "fix.refused.byte"},
      {"CR as line end", "de\ra b\rc d", {}, "de\na b\nc d", "fix.line_ends ", "", ""},
      {"a single CR stays", "de\na b\rc\n", {}, "", "", "", ""},
      {"UTF-16 with a mark",
       "\xFF\xFE"s + "d\0e\0\n\0a\0 \0\xFC\0"s,
       {},
       "de\na \u00FC",
       "fix.utf16 ",
       "",
       ""},
      {"UTF-16 with CRs",
       "\xFE\xFF"s + "\0d\0e\0\r\0a\0 \0b"s,
       {},
       "de\na b",
       "fix.utf16 fix.line_ends ",
       "",
       ""},
      {"UTF-16 without a mark", "d\0e\0\n\0a\0 \0b\0"s, {}, "", "", "fix.left.utf16 ", ""},
      {"UTF-16 that is named", "d\0e\0\n\0a\0 \0b\0"s, Utf16::kLittleEndian, "de\na b",
       "fix.utf16 ", "", ""},
      {"UTF-16 named for UTF-8", "de\na b\n", Utf16::kLittleEndian, "", "", "", ""},
      {"half a character of UTF-16",
       "\xFF\xFE"s + "d\0e\0\n\0a\0 \0\x3D\xD8"s,
       {},
       "",
       "",
       "",
       "fix.refused.utf16"},
      {"U+FFFD that stands in UTF-16",
       "\xFF\xFE"s + "d\0e\0\n\0a\0 \0\xFD\xFF"s,
       {},
       "de\na \uFFFD",
       "fix.utf16 ",
       "",
       ""},
      {"without its mark a key hides a later one",
       "de\n" + kMark + "a b\na c\n",
       {},
       "",
       "",
       "",
       "fix.refused.entry"},
      {"a mark alone in a line",
       "de\n" + kMark + "\na c\n",
       {},
       "de\n\na c\n",
       "fix.marks.# ",
       "",
       ""},
      {"an empty file", "", {}, "", "", "", ""},
      {"a mark alone", kMark, {}, "", "fix.marks.# ", "", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const MendedBytes mended = MendBytes(row.bytes, row.encoding);
    EXPECT_EQ(mended.bytes, row.changes.empty() ? row.bytes : row.mended);
    EXPECT_EQ(Keys(mended.changes), row.changes);
    EXPECT_EQ(Keys(mended.left), row.left);
    EXPECT_EQ(mended.refusal.key, row.refusal);
  }
}

TEST(MendedBytes, TellsADoubtAboutTheNamedCodePage) {
  // "Наружный диаметр", "Сохранить"
  const std::string russian =
      "ru \u0440\u0443\u0441\u0441\u043A\u0438\u0439\n"
      "a \xCD\xE0\xF0\xF3\xE6\xED\xFB\xE9 \xE4\xE8\xE0\xEC\xE5\xF2\xF0\n"
      "b \xD1\xEE\xF5\xF0\xE0\xED\xE8\xF2\xFC\n";
  const MendedBytes mended = MendBytes(russian, kWestern);
  EXPECT_EQ(Keys(mended.changes), "fix.code_page.# ");
  EXPECT_EQ(mended.doubt.key, "fix.refused.guess");
  EXPECT_EQ(mended.doubt.arguments,
            (std::vector<std::string>{"windows-1252",
                                      "\u00CD\u00E0\u00F0\u00F3\u00E6\u00ED\u00FB\u00E9 "
                                      "\u00E4\u00E8\u00E0\u00EC\u00E5\u00F2\u00F0",
                                      "windows-1251",
                                      "\u041D\u0430\u0440\u0443\u0436\u043D\u044B\u0439 "
                                      "\u0434\u0438\u0430\u043C\u0435\u0442\u0440"}));
  EXPECT_TRUE(MendBytes(russian, CodePage::kWindows1251).doubt.IsEmpty());
  EXPECT_TRUE(MendBytes("fr\na enregistr\xE9\n", kWestern).doubt.IsEmpty());
}

TEST(MendedBytes, KnowsTheNamesOfItsEncodings) {
  for (const std::string& name : EncodingNames()) {
    EXPECT_TRUE(FindEncoding(name)) << name;
  }
  EXPECT_EQ(FindEncoding("UTF-16LE"), NamedEncoding(Utf16::kLittleEndian));
  EXPECT_FALSE(FindEncoding("utf-8"));
}

// A reader of its own: the first text of each key up to the first fault.
std::map<std::string, std::string> Texts(const std::string& bytes) {
  const DictionaryFile file("", "", bytes);
  std::map<std::string, std::string> texts;
  for (const Entry& entry : file.Entries()) {
    texts.try_emplace(std::string(entry.key), entry.text);
  }
  return texts;
}

std::string RandomFile(std::mt19937& random) {
  const std::array<std::string, 22> pieces = {"a",
                                              "b",
                                              "key",
                                              " ",
                                              "\t",
                                              "\n",
                                              "\r\n",
                                              "\r",
                                              kMark,
                                              "\xE9",
                                              "\xC3",
                                              "\x81",
                                              "\xD0",
                                              "\u00E9",
                                              "\u0436",
                                              "\xFF\xFE",
                                              "\0"s,
                                              "\x1A",
                                              "\xF0\x9F\x98\x80",
                                              "\uFFFD",
                                              "\xEF",
                                              "\n\n"};
  std::string bytes = random() % 4 == 0 ? "" : "de\n";
  for (std::size_t left = random() % 40; left > 0; --left) {
    bytes += pieces[random() % pieces.size()];
  }
  return bytes;
}

TEST(MendedBytes, LosesNothingAndMendsAllAtOnce) {
  std::mt19937 random(20261121);  // NOLINT(cert-msc51-cpp): the same files in each run
  const std::array<std::optional<NamedEncoding>, 5> encodings = {
      std::nullopt, kWestern, CodePage::kCp866, Utf16::kLittleEndian, CodePage::kWindows1251};
  std::size_t changed = 0;
  for (int round = 0; round < 40'000; ++round) {
    const std::string bytes = RandomFile(random);
    const auto& encoding = encodings[random() % encodings.size()];
    const MendedBytes once = MendBytes(bytes, encoding);
    SCOPED_TRACE(testing::PrintToString(bytes));
    if (once.changes.empty()) {
      ASSERT_EQ(once.bytes, bytes);
      continue;
    }
    ++changed;
    const MendedBytes twice = MendBytes(once.bytes, encoding);
    ASSERT_EQ(twice.bytes, once.bytes);
    ASSERT_EQ(Keys(twice.changes), "");
    const DictionaryFile before("", "", bytes);
    if (before.Source().EncodedAsUtf16() != Utf16::kNo ||
        before.Source().LineEnds() == LineEnd::kCr) {
      continue;
    }
    const std::map<std::string, std::string> after = Texts(once.bytes);
    const bool isCut = before.StopsBecause() == Stop::kNotUtf8;
    for (const auto& [key, text] : Texts(bytes)) {
      const bool isLast = isCut && before.Entries().back().key == key;
      if (!isLast && key.find(kMark) != 0) {
        ASSERT_EQ(after.count(key), 1U) << key;
        ASSERT_EQ(after.at(key), text) << key;
      }
    }
  }
  EXPECT_GT(changed, 4'000U);
}

}  // namespace
}  // namespace KelmoLibs::Lang
