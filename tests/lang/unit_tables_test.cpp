// What the rules find in the bytes of unit tables. The golden files of the rules unit-* show their
// sentences.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "lang/rules/check.h"
#include "lang/rules/library_units.h"
#include "lang/rules/symbol_letters.h"

namespace KelmoLibs::Lang {
namespace {

using namespace std::string_literals;

// Has a line for each unit of the library.
const std::string table =
    "de D\n10001 m M\n10002 Z Z\n20001 q Q\n30001 % K\n40001 ° G\n40002 rad R";

Findings Check(const std::string& bytes, const std::string& name) {
  Workspace workspace;
  workspace.files.emplace_back().units = std::make_unique<UnitFile>(name, name, bytes);
  Findings findings;
  CheckUnits(workspace, 0, findings);
  return findings;
}

// "encoding error 2:3; " for each finding.
std::string FindingsIn(const std::string& bytes, const std::string& name = "de-val.txt") {
  const Findings findings = Check(bytes, name);
  std::string text;
  for (const Finding& finding : findings) {
    text.append(RuleOf(finding.rule).name).append(" ").append(SeverityName(finding.severity));
    text += ' ' + std::to_string(finding.place.line) + ':' + std::to_string(finding.place.column);
    text += "; ";
  }
  return text;
}

struct Row {
  const char* name;
  std::string bytes;
  std::string findings;
};

TEST(UnitTables, FindFaultsOfBytes) {
  const Row rows[] = {
      {"nothing", table, ""},
      {"CR LF", table + "\r\n", ""},
      {"UTF-16 with a mark",
       "\xFF\xFE"
       "d\0e\0"s,
       "encoding error 0:0; "},
      {"CR as line end", "de D\r10001 m M\r", "line-end error 0:0; "},
      {"not UTF-8, with lines behind", "de D\n10001 m M\xE9\n10002 Z Z\n", "encoding error 2:10; "},
      {"not UTF-8 in the name of the language",
       "fr Fran\xE7"
       "ais\n10001 m M\n",
       "encoding error 1:8; "},
      {"the cut line has too few fields", "de D\n10001 \xB0 Grad\n", "encoding error 2:7; "},
      {"0x1A", table + "\n\x1A", "control-character error 8:1; "},
      {"a byte-order mark", "\xEF\xBB\xBF" + table, "byte-order-mark error 1:1; "},
      {"NUL in a symbol", table + "\n10 a\0b c\n"s, "control-character error 8:5; "},
      {"a tab is no control character", table + "\n10\tL\tl\n", ""},
      {"two CRs at the end of a line", table + "\n10 L l\r\r\n", ""},
      {"an emoji", table + "\n10 \xF0\x9F\x93\x8F l x\n", "beyond-bmp error 8:4; "},
      {"an emoji in a comment", table + "\n10 L l // \xF0\x9F\x93\x8F\n", ""},
      {"an emoji takes a field", table + "\n10 \xF0\x9F\x93\x8F l\n", "beyond-bmp error 8:4; "},
      {"a sign that Windows may not know", table + "\n10 \xE2\x84\x83 l x\n",
       "unit-symbol warning 8:4; "},
      {"a no-break space in a name",
       table + "\n10 L a\xC2\xA0"
               "b\n",
       ""},
      {"a no-break space in front of a code",
       table + "\n\xC2\xA0"
               "10 L l\n",
       "unit-code error 8:1; "},
      {"an empty file", "", "unit-header error 0:0; "},
      {"a header with a sign that is a blank", "de\xE2\x84\x83 D\n" + table.substr(5),
       "unit-symbol warning 1:3; "},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(FindingsIn(row.bytes), row.findings);
  }
}

TEST(UnitTables, SayHowToMendTheBytes) {
  const struct {
    const char* name;
    std::string bytes;
    const char* command;
    const char* mend;
  } rows[] = {
      {"Cyrillic", "ru R\n10001 \xEC \xEC\xE5\xF2\xF0\n20001 x \xEF\xEB\xEE\xF9\xE0\xE4\xFC\n",
       "fix --from windows-1251 a-val.txt", ""},
      {"a language of other encodings", "ja J\n10001 \x81 \x8D\n", "", "encoding.mend.unknown"},
      {"UTF-16 with a mark",
       "\xFF\xFE"
       "d\0e\0"s,
       "fix a-val.txt", ""},
      {"UTF-16 without a mark", "\0d\0e\0 \0D\0\n\0\x31\0 \0m\0 \0M"s,
       "fix --from utf-16be a-val.txt", ""},
      {"CR", "a A\r10001 m M\r", "fix a-val.txt", ""},
      {"a byte-order mark",
       "\xEF\xBB\xBF"
       "a A\n",
       "fix a-val.txt", ""},
      {"0x1A", "a A\n10001 m M\x1A", "", "units.mend.delete"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Findings findings = Check(row.bytes, "a-val.txt");
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings[0].mendCommand, row.command);
    EXPECT_EQ(findings[0].mend.key, row.mend);
  }
}

TEST(UnitTables, CompareTheKeyWithTheName) {
  EXPECT_EQ(FindingsIn(table, "texts/de-val.txt"), "");
  EXPECT_EQ(FindingsIn(table, "lang-val.text"), "");
  EXPECT_EQ(FindingsIn(table, "-val.txt"), "");
  EXPECT_EQ(FindingsIn(table, "De-val.txt"), "unit-header warning 1:1; ");
}

TEST(UnitTables, SuggestTheOnlyNearCode) {
  EXPECT_EQ(NearestLibraryCode(1001), 10001);    // a digit too few
  EXPECT_EQ(NearestLibraryCode(400001), 40001);  // one too many
  EXPECT_EQ(NearestLibraryCode(10010), 10001);   // two exchanged
  EXPECT_EQ(NearestLibraryCode(30002), 0);       // 30001, 10002 or 40002
  EXPECT_EQ(NearestLibraryCode(77777), 0);
}

TEST(SymbolLetters, TellScriptsApart) {
  const struct {
    const char* symbol;
    SymbolScript script;
    bool isMixed;
    bool haveTwins;
  } rows[] = {
      {"m", SymbolScript::kLatin, false, true},
      {"kHz", SymbolScript::kLatin, false, false},
      {u8"\u043C\u00B2", SymbolScript::kCyrillic, false, true},  // em, superscript two
      {u8"\u0434\u044E\u0439\u043C", SymbolScript::kCyrillic, false, false},
      {u8"Z\u043Ell", SymbolScript::kBoth, true, false},                   // Cyrillic o
      {u8"\u043A\u0412\u0442\u00B7h", SymbolScript::kBoth, false, false},  // two words
      {u8"\u03BCm", SymbolScript::kLatin, false, true},                    // Greek mu
      {"%", SymbolScript::kNone, false, true},
      {"", SymbolScript::kNone, false, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.symbol);
    const SymbolLetters letters = LettersOf(row.symbol);
    EXPECT_EQ(letters.script, row.script);
    EXPECT_EQ(letters.isMixed, row.isMixed);
    EXPECT_EQ(letters.haveTwins, row.haveTwins);
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
