#include "host/placeholders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/unit_files.h"
#include "host/unit_set.h"
#include "tests/support/allocation_probe.h"

namespace {

using namespace KelmoLibs::Host;

// Keeps the descriptions of faults.
class Faults final : public FaultListener {
 public:
  void Tell(const PlaceholderFault& fault) noexcept override { all.push_back(Describe(fault)); }

  std::vector<std::string> all;
};

Argument Named(std::string_view name, Argument argument) {
  argument.name = name;
  return argument;
}

Argument Text(std::string_view text) { return {{}, text}; }
Argument Integer(std::int64_t integer) { return {{}, integer}; }
Argument Double(double number, int decimals = kShortest) { return {{}, number, decimals}; }

struct Filled {
  std::string text;
  std::vector<std::string> faults;
};

Filled Fill(std::string_view text, const std::vector<Argument>& arguments,
            const FillOptions& options = {}, const KelmoLibs::Cldr::NumberFormat& format = {}) {
  std::string buffer(text.size() + 1000, '?');
  TextSink sink(buffer.data(), buffer.size());
  Faults faults;
  FillPlaceholders(text, {arguments.data(), arguments.size()}, options, format, sink, &faults);
  buffer.resize(sink.Finish());
  return {buffer, faults.all};
}

struct FillCase {
  const char* name;
  std::string_view text;
  const char* expected;
  std::vector<std::string> faults = {};
};

class FillPlaceholdersTest : public ::testing::Test {
 protected:
  void Check(const std::vector<FillCase>& cases, const FillOptions& options = {}) const {
    for (const FillCase& row : cases) {
      const Filled filled = Fill(row.text, arguments_, options);
      EXPECT_EQ(filled.text, row.expected) << row.name;
      EXPECT_EQ(filled.faults, row.faults) << row.name;
    }
  }

  std::vector<Argument> arguments_ = {
      Text("alpha"),
      Integer(-42),
      Double(2.5),
      Double(1, 2),
      Named("name", Text("{0} %1")),
      Named("\u00E4-b_c.9", Integer(7)),
      Named("name", Text("second")),
  };
};

TEST_F(FillPlaceholdersTest, FillsByPositionAndByName) {
  Check({
      {"no placeholder", "text", "text"},
      {"empty text", "", ""},
      {"a text", "{0}", "alpha"},
      {"in the middle", "<{0}>", "<alpha>"},
      {"two side by side", "{1}{0}", "-42alpha"},
      {"the same twice", "{0} {0}", "alpha alpha"},
      {"a number with its shortest text", "{2}", "2.5"},
      {"a number with its decimals", "{3}", "1.00"},
      {"leading zeroes of a position", "{001}", "-42"},
      {"the first argument of a name", "{name}!", "{0} %1!"},
      {"an argument is not searched", "{name}{0}", "{0} %1alpha"},
      {"all kinds of characters in a name", "{\u00E4-b_c.9}", "7"},
  });
}

TEST_F(FillPlaceholdersTest, KeepsOtherBracesAndPercents) {
  Check({
      {"escaped", "{{0}", "{0}"},
      {"escaped in front of a placeholder", "{{{0}", "{alpha"},
      {"escaped twice", "{{{{", "{{"},
      {"escaped at the end", "a{{", "a{"},
      {"an escaped closing brace", "}}", "}"},
      {"both braces escaped", "{{0}}", "{0}"},
      {"both around a placeholder", "{{{0}}}", "{alpha}"},
      {"three closing braces", "}}}", "}}"},
      {"a lone closing brace", "a}b", "a}b"},
      {"a lone opening brace at the end",
       "a{",
       "a{",
       {"{: this is no placeholder; a brace that is text is written {{"}},
      {"nothing inside",
       "{}",
       "{}",
       {"{}: this is no placeholder; a brace that is text is written {{"}},
      {"an escaped brace behind an opening one",
       "{}}",
       "{}",
       {"{}: this is no placeholder; a brace that is text is written {{"}},
      {"a blank inside",
       "{ }",
       "{ }",
       {"{ }: this is no placeholder; a brace that is text is written {{"}},
      {"a blank behind the position",
       "{0 }",
       "{0 }",
       {"{0 }: this is no placeholder; a brace that is text is written {{"}},
      {"a letter behind the position",
       "{0th}",
       "{0th}",
       {"{0th}: this is no placeholder; a brace that is text is written {{"}},
      {"a sign", "{-1}", "{-1}", {"{-1}: there is no argument with the name -1"}},
      {"not closed",
       "{0",
       "{0",
       {"{0: this is no placeholder; a brace that is text is written {{"}},
      {"a name that is not closed",
       "{name",
       "{name",
       {"{name: this is no placeholder; a brace that is text is written {{"}},
      {"a format that is not closed",
       "{1:5",
       "{1:5",
       {"{1:5: this is no placeholder; a brace that is text is written {{"}},
      {"a format with a brace",
       "{1:{0}}",
       "{1:alpha}",
       {"{1:{0}: this is no placeholder; a brace that is text is written {{"}},
      {"only a format",
       "{:5}",
       "{:5}",
       {"{:5}: this is no placeholder; a brace that is text is written {{"}},
      {"like JSON",
       R"({"a": [1]})",
       R"({"a": [1]})",
       {R"({"a": [1]}: this is no placeholder; a brace that is text is written {{)"}},
      {"a long text that is not closed",
       "{ a text whose character \u00E4 is cut",
       "{ a text whose character \u00E4 is cut",
       {"{ a text whose character: this is no placeholder; a brace that is text is written {{"}},
      {"never within a character",
       "{23456789012345678901234\u00E4",
       "{23456789012345678901234\u00E4",
       {"{23456789012345678901234: this is no placeholder; a brace that is text is written {{"}},
      {"not even if the character ends one byte later",
       "{2345678901234567890123\u00E4",
       "{2345678901234567890123\u00E4",
       {"{2345678901234567890123: this is no placeholder; a brace that is text is written {{"}},
      {"a brace that is just near",
       "{ 345678901234567890123}5",
       "{ 345678901234567890123}5",
       {"{ 345678901234567890123}: this is no placeholder; a brace that is text is written {{"}},
      {"a brace that is far",
       "{ 3456789012345678901234}6",
       "{ 3456789012345678901234}6",
       {"{ 3456789012345678901234: this is no placeholder; a brace that is text is written {{"}},
      {"a fault keeps its brace", "{7}}", "{7}}", {"{7}: there is no argument 7"}},
      {"a placeholder inside of braces",
       "{ {0} }",
       "{ alpha }",
       {"{ {0}: this is no placeholder; a brace that is text is written {{"}},
      {"percents without the option", "%1 100% %", "%1 100% %"},
  });
}

TEST_F(FillPlaceholdersTest, FillsCountWithTheNumberThatChoosesTheForm) {
  Argument count = Integer(3);
  count.isCount = true;
  EXPECT_EQ(Fill("{count} {1}", {Integer(9), count}).text, "3 3");
  EXPECT_EQ(Fill("{count} {n}", {Named("n", count)}).text, "3 3");
  EXPECT_EQ(Fill("{count}", {count, Named("count", Integer(5))}).text, "5");
  EXPECT_EQ(Fill("{count}", {Integer(9)}).faults,
            std::vector<std::string>{"{count}: there is no argument with the name count"});
}

TEST_F(FillPlaceholdersTest, FillsPercentsWhereTheyAreAskedFor) {
  FillOptions options;
  options.hasPercent = true;
  Check(
      {
          {"the first argument", "%1", "alpha"},
          {"beside a brace", "%2{1}%1", "-42-42alpha"},
          {"zero is no number", "%0 %01", "%0 %01"},
          {"other characters", "100% %s %% %", "100% %s %% %"},
          {"two digits", "%15", "%15", {"%15: there is no argument 15"}},
          {"at most two digits", "%991", "%991", {"%99: there is no argument 99"}},
          {"in front of a placeholder", "%%1", "%alpha"},
          {"not in a format", "{1:%1}", "{1:%1}", {"{1:%1}: this is no format of numbers"}},
      },
      options);
}

TEST_F(FillPlaceholdersTest, KeepsAndTellsWhatCannotBeFilled) {
  Check({
      {"no such position", "{7}", "{7}", {"{7}: there is no argument 7"}},
      {"a huge position",
       "{18446744073709551616}",
       "{18446744073709551616}",
       {"{18446744073709551616}: there is no argument 18446744073709551616"}},
      {"no such name",
       "{nobody}",
       "{nobody}",
       {"{nobody}: there is no argument with the name nobody"}},
      {"every kind of character in a name",
       "{azAZ09_-.\u00E4}",
       "{azAZ09_-.\u00E4}",
       {"{azAZ09_-.\u00E4}: there is no argument with the name azAZ09_-.\u00E4"}},
      {"a longer name",
       "{names}",
       "{names}",
       {"{names}: there is no argument with the name names"}},
      {"two of them with text around",
       "a{8}b{x:5}c{0}d",
       "a{8}b{x:5}calphad",
       {"{8}: there is no argument 8", "{x:5}: there is no argument with the name x"}},
      {"an unknown type", "{1:q}", "{1:q}", {"{1:q}: this is no format of numbers"}},
      {"the character in front of 0", "{1:/}", "{1:/}", {"{1:/}: this is no format of numbers"}},
      {"the character behind 9", "{1:5:}", "{1:5:}", {"{1:5:}: this is no format of numbers"}},
      {"parts in another order", "{1:5+}", "{1:5+}", {"{1:5+}: this is no format of numbers"}},
      {"a point without decimals", "{2:.f}", "{2:.f}", {"{2:.f}: this is no format of numbers"}},
      {"a point at the end", "{2:.}", "{2:.}", {"{2:.}: this is no format of numbers"}},
      {"only a fill", "{1:*}", "{1:*}", {"{1:*}: this is no format of numbers"}},
      {"two characters as fill",
       "{1:**<5}",
       "{1:**<5}",
       {"{1:**<5}: this is no format of numbers"}},
      {"a format of a text",
       "{0:5}",
       "{0:5}",
       {"{0:5}: the argument is a text, and only numbers have a format"}},
      {"too wide", "{1:256}", "{1:256}", {"{1:256}: the width is larger than 255"}},
      {"much too wide",
       "{1:99999999999}",
       "{1:99999999999}",
       {"{1:99999999999}: the width is larger than 255"}},
      {"too many decimals", "{2:.100}", "{2:.100}", {"{2:.100}: there are more decimals than 99"}},
      {"an integer's type for a double",
       "{2:d}",
       "{2:d}",
       {"{2:d}: d is for integers, without decimals"}},
      {"decimals of d", "{1:.2d}", "{1:.2d}", {"{1:.2d}: d is for integers, without decimals"}},
  });
}

TEST_F(FillPlaceholdersTest, TakesLettersDigitsAndThreeSignsForAName) {
  constexpr std::string_view kSigns = "_-.";
  for (char c = 1; c < 0x7F; ++c) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    const bool isDigit = c >= '0' && c <= '9';
    const bool isSign = kSigns.find(c) != std::string_view::npos;
    if (c == ':' || c == '}') {
      continue;  // these end a name
    }
    const std::string text = std::string("{n") + c + '}';
    const std::string expected =
        isLetter || isDigit || isSign
            ? text + ": there is no argument with the name n" + c
            : text + ": this is no placeholder; a brace that is text is written {{";
    EXPECT_EQ(Fill(text, {}).faults.front(), expected);
  }
  Check({
      {"the last byte of ASCII",
       "{\x7F}",
       "{\x7F}",
       {"{\x7F}: this is no placeholder; a brace that is text is written {{"}},
      {"the first byte behind ASCII",
       "{\u00C0}",
       "{\u00C0}",
       {"{\u00C0}: there is no argument with the name \u00C0"}},
  });
}

TEST_F(FillPlaceholdersTest, TakesPositionsOfSeveralDigits) {
  std::vector<Argument> arguments;
  for (int i = 0; i <= 120; ++i) {
    arguments.push_back(Integer(i));
  }
  FillOptions options;
  options.hasPercent = true;
  EXPECT_EQ(Fill("{9} {10} {98} {0119} {120} %9 %10 %99", arguments, options).text,
            "9 10 98 119 120 8 9 98");
}

TEST_F(FillPlaceholdersTest, FillsNothingWithTextsThatAreNotUtf8) {
  for (const char* const text : {"\xFF", "a\xC3", "\xED\xA0\x80"}) {
    const Filled filled = Fill("a {0} b", {Text(text)});
    EXPECT_EQ(filled.text, "a {0} b");
    EXPECT_EQ(filled.faults,
              std::vector<std::string>{"{0}: the argument is a text that is not UTF-8"});
  }
}

TEST_F(FillPlaceholdersTest, FormatsNumbers) {
  Check({
      {"an empty format", "{1:}{0:}", "-42alpha"},
      {"a width", "{1:6}|", "   -42|"},
      {"a fill", "{1:*<6}|", "-42***|"},
      {"a fill of several bytes", "{1:\u00B7^6}|", "\u00B7-42\u00B7\u00B7|"},
      {"a closing alignment as fill", "{1:>>6}", ">>>-42"},
      {"zeroes", "{1:06d}", "-00042"},
      {"decimals", "{2:.3f}", "2.500"},
      {"decimals of an integer", "{1:.1f} {1:.0f}", "-42.0 -42"},
      {"an integer with an exponent", "{1:.1e} {1:g}", "-4.2e+01 -42"},
      {"the argument's decimals", "{3:+f}", "+1.00"},
      {"the widest", "{1:255}",
       "                                                                                     "
       "                                                                                     "
       "                                                                                  -42"},
      {"by name", "{\u00E4-b_c.9:+}", "+7"},
  });
}

TEST_F(FillPlaceholdersTest, WritesUnsignedIntegersWithTheirType) {
  EXPECT_EQ(Fill("{0:d}", {{{}, std::uint64_t{7}}}).text, "7");
}

// Without languages, the symbol is that of the unit itself.
TEST_F(FillPlaceholdersTest, WritesQuantitiesWithoutLanguages) {
  UnitCollection collection;
  ReadUnitFile("10001\t1\t\tm\tmetre\n", "units", collection, nullptr);
  ReadUnitNames("de Deutsch\n10001\tM\tMeter\n", "names", collection, nullptr);
  const UnitSet units(collection, nullptr);
  const kelmo_quantity quantity = kelmo_quantity_of(2.5, 0.1, 0, 10001);
  EXPECT_EQ(Fill("{0}", {{{}, QuantityArgument{&units, &quantity}}}).text, "2.5\u00A0m");
}

TEST_F(FillPlaceholdersTest, IsolatesFilledArguments) {
  FillOptions options;
  options.isIsolating = true;
  Check(
      {
          {"a text and a number", "{0}:{1:4}", "\u2068alpha\u2069:\u2068 -42\u2069"},
          {"not what cannot be filled", "{9}", "{9}", {"{9}: there is no argument 9"}},
          {"not an escape", "{{", "{"},
      },
      options);
}

TEST_F(FillPlaceholdersTest, WritesNumbersByTheFormat) {
  KelmoLibs::Cldr::NumberFormat german;
  german.decimalMark = ",";
  german.groupMark = ".";
  german.isGrouped = true;
  EXPECT_EQ(Fill("{0:.2f} {1}", {Double(1234567.891), Integer(-1000)}, {}, german).text,
            "1.234.567,89 -1.000");
}

TEST_F(FillPlaceholdersTest, TakesNoMemory) {
  const std::string text = "{0} {1:*^30} {2:.99e} {3} {name} {{ {9} {1:q}";
  std::array<char, 1000> buffer = {};
  const std::size_t before = allocation_probe::Count();
  TextSink sink(buffer.data(), buffer.size());
  FillPlaceholders(text, {arguments_.data(), arguments_.size()}, {}, {}, sink, nullptr);
  sink.Finish();
  EXPECT_EQ(allocation_probe::Count(), before);
}

// Every capacity from 0 to more than the text needs: what is written is the longest beginning of
// the whole text that ends with a whole character, and nothing is written behind the capacity.
TEST_F(FillPlaceholdersTest, CutsAtWholeCharacters) {
  KelmoLibs::Cldr::NumberFormat format;
  format.decimalMark = "\u066B";
  format.groupMark = "\u066C";
  format.minusSign = "\u061C-";
  format.zeroDigit = U'\U0001E950';
  format.isGrouped = true;
  FillOptions options;
  options.isIsolating = true;
  const std::string_view text = "\u20AC{0}\U0001F600{1:\u00B7^9}{2:012.2f}{9}{{\u00E4";
  const std::vector<Argument> arguments = {Text("gr\u00FC\u00DFe \u4E16"), Integer(-12345),
                                           Double(-98765.4321)};
  const std::string whole = Fill(text, arguments, options, format).text;
  for (std::size_t capacity = 0; capacity <= whole.size() + 2; ++capacity) {
    std::vector<char> buffer(capacity + 8, '#');
    TextSink sink(buffer.data(), capacity);
    FillPlaceholders(text, {arguments.data(), arguments.size()}, options, format, sink, nullptr);
    EXPECT_EQ(sink.Finish(), whole.size()) << capacity;
    std::string expected;
    if (capacity != 0) {
      std::size_t end = std::min(capacity - 1, whole.size());
      while (end < whole.size() && (static_cast<unsigned char>(whole[end]) & 0xC0U) == 0x80U) {
        --end;
      }
      expected = whole.substr(0, end) + '\0';
    }
    EXPECT_EQ(std::string(buffer.data(), expected.size()), expected) << capacity;
    EXPECT_EQ(std::string(buffer.data() + expected.size(), buffer.data() + buffer.size()),
              std::string(buffer.size() - expected.size(), '#'))
        << capacity;
  }
}

// Searching the rest of the text for the end of each, or for the next percent, would take minutes.
TEST(FillPlaceholders, TakesAMomentForVeryManyBracesWithoutAnEnd) {
  constexpr std::size_t kBraces = 2000000;
  std::string text(2 * kBraces, ' ');
  for (std::size_t i = 0; i < text.size(); i += 2) {
    text[i] = '{';
  }
  text.back() = '%';
  FillOptions options;
  options.hasPercent = true;
  TextSink sink(nullptr, 0);
  const auto start = std::chrono::steady_clock::now();
  FillPlaceholders(text, {}, options, {}, sink, nullptr);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  EXPECT_EQ(sink.Finish(), text.size());
}

}  // namespace
