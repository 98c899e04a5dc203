#include "unittables/unit_line.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/characters.h"
#include "tests/support/allocation_probe.h"

namespace KelmoLibs::Localize {
namespace {

using namespace std::string_literals;

using Fields = std::vector<std::wstring>;

TEST(SplitText, ReturnsThePartsBetweenTheDelimiters) {
  const struct {
    const char* name;
    std::wstring text;
    std::wstring delimiter;
    Fields parts;
  } rows[] = {
      {"two lines, each with an LF", L"a\nb\n", L"\n", {L"a", L"b", L""}},
      {"no LF after the last line", L"a\nb", L"\n", {L"a", L"b"}},
      {"no delimiter", L"a line", L"\n", {L"a line"}},
      {"nothing", L"", L"\n", {L""}},
      {"only a delimiter", L"\n", L"\n", {L"", L""}},
      {"empty parts", L"\na\n\nb", L"\n", {L"", L"a", L"", L"b"}},
      {"a CR stays", L"a\r\nb\r\n", L"\n", {L"a\r", L"b\r", L""}},
      {"a byte-order mark stays", L"\uFEFF//\na", L"\n", {L"\uFEFF//", L"a"}},
      {"a NUL stays", L"a\0b\nc"s, L"\n", {L"a\0b"s, L"c"}},
      {"a delimiter of two characters", L"a--b---c--", L"--", {L"a", L"b", L"-c", L""}},
      {"a part of a delimiter", L"a-b", L"--", {L"a-b"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::vector<std::wstring_view> parts = SplitText(row.text, row.delimiter);
    EXPECT_EQ(Fields(parts.begin(), parts.end()), row.parts);
  }
}

// All fields of a line as owned texts.
Fields FieldsOf(std::wstring line, std::int32_t count) {
  const std::vector<std::wstring_view> fields = SplitUnitLine(line, count, SIZE_MAX);
  return {fields.begin(), fields.end()};
}

TEST(SplitUnitLine, ReturnsTheFieldsOfALine) {
  const std::wstring about =
      L"\u043F\u0440\u0438 \u0412\u0412\u0412=0";  // a comment in Cyrillic letters
  const struct {
    const char* name;
    std::wstring line;
    std::int32_t count;
    Fields fields;
  } rows[] = {
      {"tabs in runs", L"10001\t1.0\t\t\t\t\tm\t\tmeter", 4, {L"10001", L"1.0", L"m", L"meter"}},
      {"a CR becomes a blank in the last field",
       L"10001\t1.0\t\t\t\t\t\u043C\t\tmeter\r",
       4,
       {L"10001", L"1.0", L"\u043C", L"meter "}},
      {"the blank before a comment stays",
       L"10\t\t0.0\t\t\t\t\tL\t\tlength // " + about + L"\r",
       4,
       {L"10", L"0.0", L"L", L"length "}},
      {"a name of two words gives one field more",
       L"20001\t1.0\t\t\t\t\tm2\t\tsquare meter\r",
       4,
       {L"20001", L"1.0", L"m2", L"square meter ", L"meter "}},
      {"a name of three words gives two more",
       L"1 2 m a b c",
       4,
       {L"1", L"2", L"m", L"a b c", L"b c", L"c"}},
      {"a tab in the name separates words", L"1\t2\tm\ta\tb", 4, {L"1", L"2", L"m", L"a\tb", L"b"}},
      {"a blank after a field is a separator",
       L"30001 \t0.0\t\t\t\t\tK\t\tkoefficient",
       4,
       {L"30001", L"0.0", L"K", L"koefficient"}},
      {"leading separators are skipped", L" \t 1 2 m name", 4, {L"1", L"2", L"m", L"name"}},
      {"blanks at the end stay in the last field",
       L"1 2 m name \t ",
       4,
       {L"1", L"2", L"m", L"name \t "}},
      {"one field of four", L"1", 4, {}},
      {"two fields of four", L"1 2", 4, {}},
      {"three fields of four", L"1 2 m", 4, {}},
      {"three fields and a blank", L"1 2 m ", 4, {}},
      {"three fields and a CR", L"1 2 m\r", 4, {}},
      {"nothing", L"", 4, {}},
      {"blanks and tabs", L" \t \t", 4, {}},
      {"only a CR", L"\r", 4, {}},
      {"only a comment", L"//1 2 m name", 4, {}},
      {"a comment after blanks", L" \t// 1 2 m name", 4, {}},
      {"a comment truncates the name", L"1 2 m na//me", 4, {L"1", L"2", L"m", L"na"}},
      {"two words joined by a comment are one name",
       L"1 2 m square//meter",
       4,
       {L"1", L"2", L"m", L"square"}},
      {"a comment instead of the name", L"1 2 m //name", 4, {}},
      {"a comment after two fields", L"1 2// m name", 4, {}},
      {"the first of two comments counts",
       L"1 2 m name // a // b",
       4,
       {L"1", L"2", L"m", L"name "}},
      {"one slash is not a comment",
       L"1 2 m/s / name",
       4,
       {L"1", L"2", L"m/s", L"/ name", L"name"}},
      {"three slashes begin a comment", L"1 2 m name///", 4, {L"1", L"2", L"m", L"name"}},
      {"a control character between slashes is a blank",
       L"1 2 m a/\x01/b",
       4,
       {L"1", L"2", L"m", L"a/ /b", L"/b"}},
      {"control characters are separators",
       L"1\x01"
       L"2\x1F\x7Fm\vname\f",
       4,
       {L"1", L"2", L"m", L"name "}},
      {"an LF is a separator", L"1\n2\nm\nname", 4, {L"1", L"2", L"m", L"name"}},
      {"a NUL is a separator",
       L"1\0"
       L"2 m name\0"s,
       4,
       {L"1", L"2", L"m", L"name "}},
      {"letters of every script, and signs",
       L"\u043C \u00B0 \u05D0\u0627\u0915 \u8F9E\u66F8\uAC00",
       4,
       {L"\u043C", L"\u00B0", L"\u05D0\u0627\u0915", L"\u8F9E\u66F8\uAC00"}},
      {"the first and the last graphic character of ASCII",
       L"1 2 !~ ~!",
       4,
       {L"1", L"2", L"!~", L"~!"}},
      {"a byte-order mark is not a separator", L"\uFEFFru Russian", 2, {L"\uFEFFru", L"Russian"}},
      {"surrogates are separators",
       L"1 m "s + wchar_t{0xD83D} + wchar_t{0xDE00} + L"a",
       3,
       {L"1", L"m", L"a"}},
      {"two fields, as in a header", L"ru\tRussian", 2, {L"ru", L"Russian"}},
      {"a header with a third word", L"ru Russian x", 2, {L"ru", L"Russian x", L"x"}},
      {"a header with one word", L"ru", 2, {}},
      {"three fields, as in a unit", L"10001 m meter", 3, {L"10001", L"m", L"meter"}},
      {"one field", L"a b", 1, {L"a b", L"b"}},
      {"no field", L"a b", 0, {L"a b", L"b"}},
      {"a negative count", L"a b", -1, {L"a b", L"b"}},
      {"the smallest count", L"a b", INT_MIN, {L"a b", L"b"}},
      {"the largest count", L"a b", INT_MAX, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(FieldsOf(row.line, row.count), row.fields);
  }
}

// The reference: one simple step after another.
Fields ReferenceFields(const std::wstring& line, std::int32_t count) {
  const auto isSeparator = [&line](std::size_t i) { return line[i] == L' ' || line[i] == L'\t'; };
  const auto skip = [&](std::size_t i, bool separators) {
    while (i < line.size() && isSeparator(i) == separators) {
      ++i;
    }
    return i;
  };
  Fields fields;
  std::size_t start = skip(0, true);
  while (start < line.size()) {
    const std::size_t end = skip(start, false);
    const bool last = static_cast<std::int64_t>(fields.size()) >= std::int64_t{count} - 1;
    fields.push_back(last ? line.substr(start) : line.substr(start, end - start));
    start = skip(end, true);
  }
  return static_cast<std::int64_t>(fields.size()) < count ? Fields() : fields;
}

// Characters that the system calls neither graphic nor blank separate fields.
TEST(SplitUnitLine, KeepsTheBlanksOfTheSystem) {
  for (const wchar_t blank : {L'\u00A0', L'\u2003'}) {  // no-break space, em space
    SCOPED_TRACE(testing::Message() << static_cast<std::int32_t>(blank));
    const std::wstring name = std::wstring(L"square") + blank + L"meter";
    const bool known = IsBlank(blank) || IsGraphic(blank);
    EXPECT_EQ(FieldsOf(L"1 m " + name, 3),
              (known ? Fields{L"1", L"m", name} : Fields{L"1", L"m", L"square meter", L"meter"}));
  }
}

TEST(SplitUnitLine, EqualsTheReferenceOnAllShortLines) {
  constexpr std::wstring_view kAlphabet = L"a \t/";
  constexpr std::size_t kMaxLength = 7;
  std::vector<std::wstring> lines = {L""};
  for (std::size_t next = 0; next < lines.size(); ++next) {
    const std::wstring line = lines[next];
    const std::wstring uncommented = line.substr(0, line.find(L"//"));
    for (const std::int32_t count : {1, 2, 3, 4}) {
      ASSERT_EQ(FieldsOf(line, count), ReferenceFields(uncommented, count))
          << testing::PrintToString(line) << ", count " << count;
    }
    for (const wchar_t c : line.size() < kMaxLength ? kAlphabet : std::wstring_view()) {
      lines.push_back(line + c);
    }
  }
}

// Without the zero the runtime could read past its field: it may skip a blank of another script as
// white space, and read the next number.
TEST(SplitUnitLine, EachFieldEndsWithAZero) {
  std::wstring line = L" 1\t\t2.5 m square meter";
  const std::vector<std::wstring_view> fields = SplitUnitLine(line, 4, 5);
  ASSERT_EQ(fields.size(), 5U);
  EXPECT_STREQ(fields[0].data(), L"1");
  EXPECT_STREQ(fields[1].data(), L"2.5");
  EXPECT_STREQ(fields[2].data(), L"m");
  EXPECT_STREQ(fields[3].data(), L"square meter");
  EXPECT_STREQ(fields[4].data(), L"meter");
}

TEST(SplitUnitLine, ReturnsAtMostTheRequestedFields) {
  for (const std::size_t maxFields : {3U, 4U, 5U, 6U}) {
    std::wstring line = L"1 m a b c";
    const std::vector<std::wstring_view> fields = SplitUnitLine(line, 3, maxFields);
    const Fields all = {L"1", L"m", L"a b c", L"b c", L"c"};
    EXPECT_EQ(Fields(fields.begin(), fields.end()),
              Fields(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(
                                                    std::min<std::size_t>(maxFields, 5))));
  }
  std::wstring line = L"1 m";
  EXPECT_TRUE(SplitUnitLine(line, 3, 3).empty());
}

TEST(SplitUnitLine, AllocatesLittleForALineOfManyWords) {
  constexpr std::size_t kWords = 100'000;
  std::wstring line;
  for (std::size_t i = 0; i < kWords; ++i) {
    line += L"w ";
  }
  allocation_probe::ResetPeak();
  const std::size_t before = allocation_probe::LiveBytes();
  const std::vector<std::wstring_view> fields = SplitUnitLine(line, 3, SIZE_MAX);
  EXPECT_EQ(fields.size(), kWords);
  EXPECT_EQ(fields[2].size(), line.size() - 4);
  EXPECT_EQ(fields.back(), L"w ");
  EXPECT_LE(allocation_probe::PeakBytes() - before, 4 * kWords * sizeof(std::wstring_view));
}

TEST(SplitUnitLine, OnlyBlanksAndControlCharactersOfAsciiAreSeparators) {
  for (int code = 0; code < 0x80; ++code) {
    SCOPED_TRACE(code);
    const auto c = static_cast<wchar_t>(code);
    const std::wstring field = std::wstring(1, c) + L"a" + c + L"b" + c;
    const bool separates = code <= 0x20 || code == 0x7F;
    const Fields expected = separates ? Fields{L"1", L"a", c == L'\t' ? L"b\t m" : L"b  m", L"m"}
                                      : Fields{L"1", field, L"m"};
    EXPECT_EQ(FieldsOf(L"1 " + field + L" m", 3), expected);
  }
}

TEST(IntegerField, IsTheNumberAtTheBeginningOfTheField) {
  const struct {
    const char* name;
    const wchar_t* field;
    std::int32_t number;
  } rows[] = {
      {"a code", L"10001", 10001},
      {"nothing", L"", 0},
      {"not a number", L"abc", 0},
      {"digits and more", L"12abc", 12},
      {"a fraction", L"12.9", 12},
      {"a minus sign", L"-5", -5},
      {"a plus sign", L"+5", 5},
      {"two signs", L"+-5", 0},
      {"only a sign", L"-", 0},
      {"leading zeros do not make an octal number", L"0010", 10},
      {"not a hexadecimal number", L"0x10", 0},
      {"a sign before a blank", L"- 5", 0},
      {"the largest", L"2147483647", INT_MAX},
      {"the largest plus one", L"2147483648", INT_MAX},
      {"2^32 + 1", L"4294967297", INT_MAX},
      {"beyond 64 bits", L"99999999999999999999", INT_MAX},
      {"the smallest", L"-2147483648", INT_MIN},
      {"the smallest minus one", L"-2147483649", INT_MIN},
      {"far below", L"-99999999999999999999", INT_MIN},
      {"after a byte-order mark",
       L"\uFEFF"
       L"1",
       0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(IntegerField(row.field), row.number);
  }
}

TEST(IntegerField, EndsAtEveryOtherCharacter) {
  for (wchar_t c = L'!'; c <= L'~'; ++c) {
    if ((c >= L'0' && c <= L'9') || c == L'+' || c == L'-') {
      continue;
    }
    SCOPED_TRACE(static_cast<char>(c));
    EXPECT_EQ(IntegerField((std::wstring(1, c) + L"12").c_str()), 0);
    EXPECT_EQ(IntegerField((std::wstring(L"1") + c + L"2").c_str()), 1);
    EXPECT_EQ(IntegerField((std::wstring(L"12") + c).c_str()), 12);
  }
}

TEST(NumberField, IsTheNumberAtTheBeginningOfTheField) {
  const struct {
    const char* name;
    const wchar_t* field;
    double number;
  } rows[] = {
      {"a factor", L"57.29577951308232", 57.29577951308232},
      {"another", L"0.0273", 0.0273},
      {"an integer", L"1", 1.0},
      {"nothing", L"", 0.0},
      {"not a number", L"abc", 0.0},
      {"a number and more", L"1.5m", 1.5},
      {"a decimal comma ends it", L"1,5", 1.0},
      {"no digit before the point", L".5", 0.5},
      {"an exponent", L"2.5e-3", 0.0025},
      {"a minus sign", L"-2.5", -2.5},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(NumberField(row.field), row.number);
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
