// What the tool says that the library reads of a unit table equals what the loader of the library
// reads. The tool speaks for Windows: before the Linux library loads a file, the file is cut at the
// first 0x1A, and a blank replaces each character that Windows does not keep.
#include "lang/reading/unit_file.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "lang/texts/embedded_texts.h"
#include "lang/unicode/windows_characters.h"
#include "tests/support/localized_units.h"
#include "tests/support/random_numbers.h"
#include "tests/support/read_all.h"
#include "tests/support/read_file.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/test_platform.h"
#include "text/utf8.h"
#include "unittables/language_table.h"
#include "unittables/unit_line.h"

namespace KelmoLibs::Lang {
namespace {

using namespace std::string_literals;

const bool isWindows = textModeEndsAtControlZ;

std::string Show(const UnitFile& file) {
  std::string text = std::string(file.LanguageKey()) + ':';
  for (const UnitLine& line : file.Lines()) {
    text += '(' + std::to_string(line.line) + ':' + std::to_string(line.code) + '=' +
            TextAsRead(line.symbol) + '|' + TextAsRead(line.name) + ')';
  }
  for (const std::string_view line : file.DroppedLines()) {
    text += '[' + std::string(line) + ']';
  }
  return text;
}

struct Row {
  const char* name;
  std::string bytes;
  UnitHeader header;
  std::string shown;
};

TEST(UnitFile, ReadsWhatTheLibraryReads) {
  const Row rows[] = {
      {"an empty file", "", UnitHeader::kMissing, ":"},
      {"LF, CR LF, an empty line and no line end", "de D\n1 m Meter\r\n\r\n\n2 s zwei Worte",
       UnitHeader::kWhole, "de:(2:1=m|Meter)(5:2=s|zwei Worte)"},
      {"an empty first line", "\nde D\n1 m M\n", UnitHeader::kEmpty, ":(3:1=m|M)[de D]"},
      {"a comment in front", "// de\n1 m M\n", UnitHeader::kEmpty, ":(2:1=m|M)"},
      {"one field", "de\n", UnitHeader::kTooFew, ":"},
      {"a comment takes the second field", "de //D\n", UnitHeader::kTooFew, ":"},
      {"three fields", "de D (D)\n", UnitHeader::kTooMany, "de:"},
      {"a blank at the end of the header", "de D \n", UnitHeader::kWhole, "de:"},
      {"a byte-order mark",
       "\xEF\xBB\xBF"
       "de D\n",
       UnitHeader::kWhole,
       "\xEF\xBB\xBF"
       "de:"},
      {"the name ends in front of its comment", "de D\n1 m a  b // c\n", UnitHeader::kWhole,
       "de:(2:1=m|a  b )"},
      {"too few fields", "de D\n1\n1 m\n//\n \n", UnitHeader::kWhole, "de:[1][1 m][//][ ]"},
      {"a code that is no number, or one with a tail", "de D\nx m M\n12x m M\n", UnitHeader::kWhole,
       "de:(2:0=m|M)(3:12=m|M)"},
      {"codes beyond 32 bits", "de D\n99999999999 m M\n-99999999999 m M\n", UnitHeader::kWhole,
       "de:(2:2147483647=m|M)(3:-2147483648=m|M)"},
      {"a character beyond U+FFFF is two blanks", "de D\n1 a\xF0\x9F\x98\x80z n\xF0\x9F\x98\x80\n",
       UnitHeader::kWhole, "de:(2:1=a|z n  )"},
      {"a sign that Windows does not keep separates fields", "de D\n1 \xE2\x84\x83 m M\n",
       UnitHeader::kWhole, "de:(2:1=m|M)"},
      {"NUL and CR are blanks", "de\0D\n1\rm\0M\r\r\n"s, UnitHeader::kWhole, "de:(2:1=m|M )"},
      {"0x1A ends the file",
       "de D\n1 m M\x1A"
       "\n2 s S\n",
       UnitHeader::kWhole, "de:(2:1=m|M)"},
      {"a byte that is not UTF-8 ends the file", "de D\n1 m M\xE9\n2 s S\n", UnitHeader::kWhole,
       "de:(2:1=m|M)"},
      {"UTF-16",
       "\xFF\xFE"
       "d\0e\0"s,
       UnitHeader::kMissing, ":"},
      {"CR as line end", "de D\r1 m M\r", UnitHeader::kTooMany, "de:"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const UnitFile file("de-val.txt", "de-val.txt", row.bytes);
    EXPECT_EQ(file.Header(), row.header);
    EXPECT_EQ(Show(file), row.shown);
  }
}

TEST(UnitFile, FindsTheFirstLineOfACode) {
  const UnitFile file("x", "x", "de D\n7 a A\n5 b B\n7 c C\n");
  EXPECT_EQ(file.Units(), (std::vector<std::uint32_t>{1, 0}));
  ASSERT_NE(file.Find(7), nullptr);
  EXPECT_EQ(file.Find(7)->symbol, "a");
  EXPECT_EQ(file.Find(6), nullptr);
  EXPECT_EQ(file.Find(8), nullptr);
}

TEST(UnitFile, ReadsTheDefaultTable) {
  std::string shown;
  for (const DefaultUnitLine& line : ReadDefaultUnitLines(EmbeddedUnitTable())) {
    shown += std::to_string(line.code) + '/' + std::to_string(line.fields.size()) + ' ';
  }
  EXPECT_EQ(shown, "0/0 10/4 10001/4 10002/4 20/4 20001/5 30001/4 40/5 40001/4 40002/4 0/0 ");
}

// ---- Code units of Windows

TEST(WindowsCharacters, AreKeptOrNot) {
  const struct {
    char32_t character;
    bool isKept;
  } rows[] = {
      {U'\t', true},   {U'\r', false},  {U'\0', false},  {0x7F, false},   {0x80, false},
      {0x00A0, true},  {0x00B0, true},  {0x00B2, true},  {0x00B5, true},  {0x0301, false},
      {0x03A9, true},  {0x043C, true},  {0x093F, false}, {0x0E31, false}, {0x200B, false},
      {0x2009, false}, {0x2030, true},  {0x20AC, false}, {0x2103, false}, {0x2116, false},
      {0x3000, true},  {0x33A1, false}, {0x4E2D, true},  {0xD7A3, true},  {0xD800, false},
      {0xDFFF, false}, {0xE000, false}, {0xFEFF, true},  {0xFF11, true},  {0xFFFF, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.character));
    const auto unit = static_cast<wchar_t>(row.character);
    EXPECT_EQ(IsKeptByWindows(unit), row.isKept);
    if (isWindows && row.character > 0x7F) {
      EXPECT_EQ(SystemSaysGraphicOrBlank(unit), row.isKept);
    }
  }
}

TEST(WindowsCharacters, MakeNumbers) {
  const struct {
    const wchar_t* field;
    std::int32_t number;
  } rows[] = {
      {L"10001", 10001},
      {L"", 0},
      {L"-7x", -7},
      {L"\uFF11\uFF10\uFF12", 102},  // full-width digits
      {L"1\u0660\u06F9", 109},       // Arabic digits
      {L"\u00A0\u300012", 12},       // no-break and ideographic space
      {L"1\u041E\u041E", 1},         // Cyrillic O
      {L"\uFEFF12", 0},              // byte-order mark
      {L"\u00A0\u00A0", 0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(WindowsIntegerField(row.field), row.number);
    if (isWindows) {
      EXPECT_EQ(Localize::IntegerField(row.field), row.number);
    }
  }
}

// ---- The prediction beside the loader

// What this system's library has to read so that it reads what Windows reads.
std::string ForThisSystem(std::string_view bytes) {
  if (isWindows) {
    return std::string(bytes);
  }
  bytes = bytes.substr(0, bytes.find('\x1A'));
  std::string changed;
  while (!bytes.empty()) {
    const std::size_t wellFormed = Localize::WellFormedUtf8Length(bytes);
    for (const wchar_t c : Localize::DecodeUtf8(bytes.substr(0, wellFormed))) {
      const auto character = static_cast<char32_t>(c);
      if (character > 0xFFFF) {
        changed += "  ";
      } else if (character > 0x7F && !IsKeptByWindows(c)) {
        changed += ' ';
      } else {
        Localize::AppendUtf8(character, changed);
      }
    }
    bytes.remove_prefix(wellFormed);
    if (!bytes.empty()) {
      changed += bytes.front();
      bytes.remove_prefix(1);
    }
  }
  return changed;
}

class Prediction : public testing::Test {
 protected:
  void Compare(const std::string& bytes) {
    const std::string loaded = ForThisSystem(bytes);
    // A new file: some file systems wait for the disk when a file is written again.
    std::filesystem::remove(folder_.Path() / "t-val.txt");
    folder_.Write(L"t-val.txt", loaded);
    Localize::LocalizedUnitTable table;
    Localize::ErrorList messages;
    const std::wstring folder = folder_.HostPath();
    const std::int32_t status =
        Localize::LoadLanguageUnitTable(folder, L"t-val.txt", table, messages);

    const UnitFile file("t-val.txt", "t-val.txt", bytes);
    Localize::LocalizedUnitTable predicted;
    if (file.Header() == UnitHeader::kWhole) {
      Localize::LocalizedUnits& units = predicted[Localize::DecodeUtf8(file.LanguageKey())];
      for (const std::uint32_t unit : file.Units()) {
        const UnitLine& line = file.Lines()[unit];
        EXPECT_EQ(file.Find(line.code), &line);
        units[line.code] = {Localize::DecodeUtf8(TextAsRead(line.symbol)),
                            Localize::DecodeUtf8(TextAsRead(line.name))};
      }
    }
    EXPECT_EQ(status, file.Header() == UnitHeader::kWhole ? 0 : -2);
    EXPECT_EQ(predicted, table);

    Localize::ErrorList predictedMessages;
    UnitFile("t-val.txt", "t-val.txt", loaded)
        .AppendMessages(folder + L"\\t-val.txt", predictedMessages);
    EXPECT_EQ(ReadAll(predictedMessages), ReadAll(messages));
  }

  const ScratchFolder folder_;
};

TEST_F(Prediction, EqualsTheLibraryForTheFilesOfTheProject) {
  int files = 0;
  for (const char* const folder :
       {"tests/fuzz/corpus/language_table", "tests/data/unittables", "examples/LANG"}) {
    const auto path = std::filesystem::u8path(KELMO_SOURCE_FOLDER "/"s + folder);
    for (const auto& entry : std::filesystem::directory_iterator(path)) {
      SCOPED_TRACE(entry.path().u8string());
      Compare(ReadFile(entry.path()));
      ++files;
    }
  }
  EXPECT_GE(files, 50);
}

// A no-break space follows a letter only: in front of a code, systems differ.
std::string MadeUpFile(RandomNumbers& random) {
  const std::string pieces[] = {
      "10001",
      "1",
      "-40002",
      "99999999999",
      "0",
      "20001\tm\xC2\xB2\tsquare meter",
      "m",
      "name",
      "\xD0\xBC",
      "\xC2\xB0",
      " ",
      "\t",
      "  ",
      "\t",
      " ",
      "\t",
      "\n",
      "\n",
      "\r\n",
      "\n",
      "\r",
      "//",
      "/",
      "\n10001 ",
      "\n20 ",
      "\xF0\x9F\x98\x80",
      "b\xC2\xA0",
      "\xEF\xBB\xBF",
      "\xE2\x84\x83",
      "a\xCC\x81",
      "b\xE3\x80\x80",
      "\xE0\xA4\xBF",
      "\0"s,
      "\x7F",
      "\xC2\x85",
  };
  const std::string headers[] = {"ru\tRussian\n", "de D\n", "de D\r\n",
                                 "\xEF\xBB\xBF"
                                 "de D\n",
                                 ""};
  std::string bytes = AnyOf(random, headers);
  for (int i = random.Below(40); i > 0; --i) {
    const int rare = random.Below(200);
    bytes += rare == 0 ? "\x1A"s : rare == 1 ? "\xE9"s : AnyOf(random, pieces);
  }
  return bytes;
}

TEST_F(Prediction, EqualsTheLibraryForMadeUpFiles) {
  RandomNumbers random(randomSeed);
  const std::uint64_t defaultRounds = isWindows ? 2'000 : 20'000;  // Wine is slow
  for (std::uint64_t round = Rounds(defaultRounds); round > 0 && !HasFailure(); --round) {
    const std::string bytes = MadeUpFile(random);
    SCOPED_TRACE(testing::PrintToString(bytes));
    Compare(bytes);
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
