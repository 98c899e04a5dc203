#include "host/typed_number.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "cldr/number_formats.h"
#include "cldr/number_table.h"
#include "host/number_text.h"
#include "host/typed_blanks.h"
#include "tests/support/bits.h"
#include "tests/support/invalid_utf8.h"
#include "tests/support/random_numbers.h"
#include "text/utf8.h"

namespace KelmoLibs::Host {

bool operator==(const TypedNumber& left, const TypedNumber& right) {
  return left.fault == right.fault && left.end == right.end &&
         BitsOf(left.number) == BitsOf(right.number) &&
         BitsOf(left.lastDigit) == BitsOf(right.lastDigit);
}

std::ostream& operator<<(std::ostream& out, const TypedNumber& typed) {
  return out << "{fault " << static_cast<int>(typed.fault) << ", end " << typed.end << ", "
             << testing::PrintToString(typed.number) << ", last digit "
             << testing::PrintToString(typed.lastDigit) << '}';
}

namespace {

using Cldr::NumberFormat;

constexpr double kSmallest = std::numeric_limits<double>::denorm_min();

// Reads a copy of exactly its size: the address sanitizer notices a byte read behind it.
TypedNumber Read(std::string_view text, const NumberFormat& format) {
  const std::unique_ptr<char[]> copy(new char[text.size()]);
  std::memcpy(copy.get(), text.data(), text.size());
  return ReadTypedNumber({copy.get(), text.size()}, format);
}

// A text with "|" where reading ends: behind the number, or where the fault shows.
struct MarkedText {
  explicit MarkedText(std::string_view marked) : end(marked.find('|')), text(marked) {
    text.erase(end, 1);
  }
  std::size_t end;
  std::string text;
};

struct NumberRow {
  const char* name;
  std::string marked;
  double number;
  double lastDigit;
};

void CheckNumbers(const NumberFormat& format, const std::vector<NumberRow>& rows) {
  for (const NumberRow& row : rows) {
    const MarkedText text(row.marked);
    EXPECT_EQ(Read(text.text, format),
              (TypedNumber{NumberFault::kNone, text.end, row.number, row.lastDigit}))
        << row.name;
  }
}

struct FaultRow {
  const char* name;
  std::string marked;
  NumberFault fault;
};

TypedNumber Fault(NumberFault fault, std::size_t end) {
  TypedNumber typed;
  typed.fault = fault;
  typed.end = end;
  return typed;
}

void CheckFaults(const NumberFormat& format, const std::vector<FaultRow>& rows) {
  for (const FaultRow& row : rows) {
    const MarkedText text(row.marked);
    EXPECT_EQ(Read(text.text, format), Fault(row.fault, text.end)) << row.name;
  }
}

const NumberFormat& Of(std::string_view language) { return *Cldr::FindNumberFormat(language); }

NumberFormat WithoutGroups() {
  NumberFormat format;
  format.groupSize = 0;
  format.furtherGroupSize = 0;
  return format;
}

TEST(TypedBlanks, AreThoseThatPeopleType) {
  struct Row {
    const char* name;
    std::string text;
    std::size_t length;
  };
  const Row rows[] = {
      {"nothing", "", 0},
      {"space", " 5", 1},
      {"tab", "\t", 1},
      {"one of two", "  ", 1},
      {"no-break space", "\u00A0", 2},
      {"narrow no-break space", "\u202F5", 3},
      {"thin space", "\u2009", 3},
      {"line feed", "\n", 0},
      {"digit", "5 ", 0},
      {"en space", "\u2002", 0},
      {"another character of the same lead", "\u00B0", 0},
      {"first byte of a blank", "\xC2", 0},
      {"two bytes of a blank", "\xE2\x80", 0},
      {"last byte of a blank", "\xA0", 0},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(BlankLength(row.text), row.length) << row.name;
  }
}

TEST(TypedBlanks, AreSkippedFromAnOffset) {
  const std::string text = " \t\u00A0x\u202F\u2009";
  EXPECT_EQ(SkipBlanks(text), 4U);
  EXPECT_EQ(SkipBlanks(text, 1), 4U);
  EXPECT_EQ(SkipBlanks(text, 4), 4U);
  EXPECT_EQ(SkipBlanks(text, 5), text.size());
  EXPECT_EQ(SkipBlanks(text, text.size()), text.size());
}

TEST(ReadTypedNumber, ReadsPlainNumbers) {
  CheckNumbers(Of("en"), {
                             {"digit", "5|", 5, 1},
                             {"unit behind a blank", "12.5| mm", 12.5, 0.1},
                             {"unit without a blank", "90|\u00B0", 90, 1},
                             {"unit of letters", "3|mm", 3, 1},
                             {"no integer part", ".5|", 0.5, 0.1},
                             {"no integer part, with a sign", "-.25|", -0.25, 0.01},
                             {"no fraction", "5.| mm", 5, 1},
                             {"leading zeroes", "007.50|", 7.5, 0.01},
                             {"zero", "0|", 0, 1},
                             {"zero with decimals", "0.00|", 0, 0.01},
                             {"minus zero", "-0.0|", -0.0, 0.1},
                             {"NUL ends it", std::string("5|\0", 3), 5, 1},
                             {"character behind 9", "5|:30", 5, 1},
                             {"character before 0", "5|/3", 5, 1},
                         });
  CheckNumbers(Of("de"), {{"comma", "12,5| mm", 12.5, 0.1}, {"only comma", ",5|", 0.5, 0.1}});
  CheckNumbers(Of("fa"), {{"mark of two bytes", "1\u066B5|", 1.5, 0.1}});
}

TEST(ReadTypedNumber, SkipsBlanksInFrontOfTheNumber) {
  CheckNumbers(Of("en"), {
                             {"space", " 5|", 5, 1},
                             {"all blanks", " \t\u00A0\u202F\u2009-5|", -5, 1},
                             {"not behind it", "5| \t", 5, 1},
                         });
}

TEST(ReadTypedNumber, TakesOneSign) {
  CheckNumbers(Of("en"), {
                             {"plus", "+5|", 5, 1},
                             {"hyphen", "-5|", -5, 1},
                             {"minus sign", "\u22125|", -5, 1},
                         });
  CheckNumbers(Of("sv"), {{"hyphen in place of the format's", "-5|", -5, 1}});
  NumberFormat format;
  format.minusSign = "\u200E~";
  CheckNumbers(format, {
                           {"that of the format, behind a blank", " \u200E~5|", -5, 1},
                           {"another one", "-5|", -5, 1},
                           {"that of the format in an exponent", "5e\u200E~1|", 0.5, 0.1},
                       });
  CheckFaults(format, {{"a part of the format's", "|~5", NumberFault::kNoNumber}});
  CheckFaults(Of("en"), {
                            {"two", "-|-5", NumberFault::kNoNumber},
                            {"plus and minus", "+|\u22125", NumberFault::kNoNumber},
                            {"blank behind it", "-| 5", NumberFault::kNoNumber},
                            {"no-break space behind it", "-|\u00A05", NumberFault::kNoNumber},
                        });
}

// Right-to-left formats print such marks; other programs put texts between isolates.
TEST(ReadTypedNumber, SkipsBidiMarks) {
  CheckNumbers(Of("he"),
               {
                   {"that of the format", "\u200E-5|", -5, 1},
                   {"all, around sign and number",
                    "\u200E\u200F\u061C-\u2066\u2067\u20685\u2069\u2069\u2069| mm", -5, 1},
                   {"without a sign, beside blanks", "\u200F \u200F 5|", 5, 1},
                   {"around the sign of an exponent", "1e\u200F-\u200F2\u200F|", 0.01, 0.01},
                   {"in front of a unit", "5\u200F|mm", 5, 1},
                   {"the blank ends the number", "5| \u200Fmm", 5, 1},
                   {"e behind one belongs to the unit", "5\u200E|e3", 5, 1},
               });
  CheckNumbers(Of("ar"), {{"Arabic letter mark", "\u061C-\u0661\u066B\u0665|", -1.5, 0.1}});
  CheckNumbers(Of("ks"), {{"on both sides", "\u200E-\u200E\u06F5|", -5, 1}});
  CheckFaults(Of("he"),
              {
                  {"blank behind the sign and a mark", "-\u200E| 5", NumberFault::kNoNumber},
                  {"digit behind a mark", "5\u200E|5", NumberFault::kGroups},
                  {"group behind a mark", "5\u200E| 500", NumberFault::kGroups},
                  {"decimal mark behind a mark", "5\u200E|.5", NumberFault::kDecimalMark},
                  {"character before the isolates",
                   "|\xE2\x81\xA5"
                   "5",
                   NumberFault::kNoNumber},
                  {"character behind the isolates",
                   "|\xE2\x81\xAA"
                   "5",
                   NumberFault::kNoNumber},
                  {"first bytes of a mark", "|\xE2\x81", NumberFault::kNoNumber},
                  {"first byte of a mark", "|\xD8", NumberFault::kNoNumber},
              });
}

TEST(ReadTypedNumber, TakesDigitsOfTheFormat) {
  CheckNumbers(Of("hi"), {{"not those of another format", "12.5|\u0967", 12.5, 0.1}});
  CheckNumbers(Of("mr"),
               {
                   {"Devanagari", "\u0967\u0968.\u096B|", 12.5, 0.1},
                   {"both",
                    "\u0967"
                    "2|",
                    12, 1},
                   {"all", "\u0966\u0967\u0968\u0969\u096A.\u096B\u096C\u096D\u096E\u096F| kg",
                    1234.56789, 1e-5},
                   {"in the exponent", "\u0967e\u0968|", 100, 100},
                   {"e without digits", "\u0967|e\u0970", 1, 1},
                   {"character behind 9", "\u0967|\u0970", 1, 1},
                   {"character before 0", "\u0967|\u0965", 1, 1},
                   {"equal but for the first bytes", "\u0967|\u0A67", 1, 1},
                   {"the first two bytes", "\u0967|\xE0\xA5", 1, 1},
                   {"the last six bits, in two bytes", "1|\u00E7", 1, 1},
                   {"the last six bits, in four bytes", "1|\U0001F9A7", 1, 1},
                   {"the last six bits, in one byte", "1|'", 1, 1},
               });
  CheckNumbers(Of("ccp"), {{"four bytes", "\U00011137\U0001113F.\U0001113A|", 19.4, 0.1}});
  NumberFormat format;
  format.zeroDigit = U'\u07FB';
  CheckNumbers(format, {{"9 has more bytes than 0", "\u07FB.\u0800\u0804|", 0.59, 0.01}});
  format.zeroDigit = U'\uFF10';
  CheckNumbers(format, {{"full width", "\uFF11\uFF12.\uFF19|", 12.9, 0.1}});
  format.zeroDigit = U'v';
  CheckNumbers(format, {{"9 is the last of ASCII", "w\x7F|", 19, 1}});
  format.zeroDigit = U'A';
  CheckNumbers(format, {{"letters of ASCII", "BJ|K", 19, 1}, {"lower case is none", "1|b", 1, 1}});
}

TEST(ReadTypedNumber, TakesGroupsOfTheFormat) {
  CheckNumbers(Of("en"), {
                             {"one mark", "1,234|", 1234, 1},
                             {"full first group", "-123,456,789.5| m", -123456789.5, 0.1},
                             {"none", "1234567|", 1234567, 1},
                             {"blank", "1 234.5| kPa", 1234.5, 0.1},
                             {"different blanks", "1 234\t567\u00A0890\u202F123\u2009456|",
                              1234567890123456, 1},
                             {"all zeroes", "0,000|", 0, 1},
                             {"exponent", "1,234e3|", 1234000, 1000},
                             {"two blanks end it", "1|  234", 1, 1},
                             {"apostrophe is a unit", "1|'234", 1, 1},
                         });
  CheckNumbers(Of("de"), {{"point", "1.234|", 1234, 1}, {"and comma", "1.234,5|", 1234.5, 0.1}});
  CheckNumbers(Of("fr"), {{"space in place of the mark", "1 234|", 1234, 1},
                          {"mark and space", "1\u202F234 567|", 1234567, 1}});
  CheckNumbers(Of("es"), {{"few digits in front of the mark", "1.234|", 1234, 1}});
  CheckNumbers(Of("hi"), {
                             {"further groups of two", "1,23,45,678|", 12345678, 1},
                             {"full first group", "12,34,567|", 1234567, 1},
                             {"blanks", "12 34 567|", 1234567, 1},
                         });
  CheckNumbers(Of("de-CH"), {
                                {"that of the format", "1\u2019234\u2019567|", 1234567, 1},
                                {"typewriter apostrophe", "1'234'567| m", 1234567, 1},
                                {"blanks", "1 234|", 1234, 1},
                                {"minutes", "5|'", 5, 1},
                                {"minutes behind groups", "5 000|\u2019", 5000, 1},
                                {"minutes behind a fraction", "5.5|' x", 5.5, 0.1},
                            });
  CheckFaults(Of("en"),
              {
                  {"short last group", "1|,23", NumberFault::kGroups},
                  {"long last group", "1|,2345", NumberFault::kGroups},
                  {"long first group", "1234|,567", NumberFault::kGroups},
                  {"short group between", "1|,23,456", NumberFault::kGroups},
                  {"long group between", "1,234|,5678,901", NumberFault::kGroups},
                  {"short last group of three", "1,234|,56", NumberFault::kGroups},
                  {"short group before the decimal mark", "1|,23.5", NumberFault::kGroups},
                  {"one digit behind a blank", "1| 2", NumberFault::kGroups},
                  {"two digits behind a blank", "12| 34", NumberFault::kGroups},
                  {"blank behind marks", "1,234| 567", NumberFault::kGroups},
                  {"mark behind blanks", "1 234|,567", NumberFault::kGroups},
                  {"no digit in front", "|,234", NumberFault::kGroups},
                  {"no digit behind", "1|,", NumberFault::kGroups},
                  {"unit behind", "1,234|,mm", NumberFault::kGroups},
                  {"two marks", "1|,,234", NumberFault::kGroups},
                  {"decimal mark behind", "1|,.5", NumberFault::kGroups},
                  {"in the fraction", "1.234|,5", NumberFault::kGroups},
                  {"mark behind the fraction", "1.234|,", NumberFault::kGroups},
                  {"blank in the fraction", "1.234| 567", NumberFault::kGroups},
                  {"blank behind the decimal mark", "1.| 5", NumberFault::kGroups},
                  {"digit behind the exponent", "1e3| 5", NumberFault::kGroups},
                  {"mark in the exponent", "1e3|,500", NumberFault::kGroups},
              });
  CheckFaults(Of("de"), {
                            {"one digit behind the point", "1|.5", NumberFault::kGroups},
                            {"number with a point", "12|.25 mm", NumberFault::kGroups},
                            {"point at the end", "5|. mm", NumberFault::kGroups},
                            {"no digit in front", "|.5", NumberFault::kGroups},
                        });
  CheckFaults(Of("hi"), {
                            {"groups of three", "1|,234,567", NumberFault::kGroups},
                            {"first group of three", "123|,456", NumberFault::kGroups},
                        });
  CheckFaults(Of("de-CH"),
              {
                  {"both apostrophes", "1'234|\u2019567", NumberFault::kGroups},
                  {"short group", "1|'2", NumberFault::kGroups},
                  {"apostrophe in front", "|'123", NumberFault::kGroups},
                  {"apostrophe in the fraction", "1.5|'5", NumberFault::kGroups},
                  {"other apostrophe in the fraction", "1.5|\u20195", NumberFault::kGroups},
              });
}

TEST(ReadTypedNumber, TakesOtherGroups) {
  CheckNumbers(WithoutGroups(), {{"groups of three between blanks", "1 234 567|", 1234567, 1},
                                 {"blank of the unit", "1 234| m", 1234, 1}});
  CheckFaults(WithoutGroups(), {{"mark", "1|,234", NumberFault::kGroups},
                                {"mark at the end", "1|,", NumberFault::kGroups},
                                {"groups of two", "1| 23 456", NumberFault::kGroups},
                                {"short last group", "1| 23", NumberFault::kGroups}});
  NumberFormat noMark = WithoutGroups();
  noMark.groupMark = "";
  CheckNumbers(noMark, {{"format without a mark", "1 234.5|", 1234.5, 0.1}});
  CheckFaults(noMark, {{"mark of no meaning", "1|,234", NumberFault::kDecimalMark}});
  noMark.groupMark = " ";
  CheckNumbers(noMark, {{"blank as the mark of no groups", "1 234|", 1234, 1}});
  NumberFormat odd;
  odd.groupMark = " ~";
  odd.groupSize = 1;
  odd.furtherGroupSize = 2;
  CheckNumbers(odd, {{"mark that begins with a blank", "12 ~34 ~5|", 12345, 1},
                     {"blanks", "12 34 5|", 12345, 1}});
  CheckFaults(odd, {{"the mark is no blank", "5| ~", NumberFault::kGroups}});
}

TEST(ReadTypedNumber, TakesOnlyTheDecimalMarkOfTheFormat) {
  CheckNumbers(Of("en"), {{"behind the exponent is the unit", "1e3|x.5", 1000, 1000}});
  CheckFaults(Of("en"), {
                            {"second one", "1.5|.3", NumberFault::kDecimalMark},
                            {"two", "1.|.5", NumberFault::kDecimalMark},
                            {"second one at the end", "1.5|. mm", NumberFault::kDecimalMark},
                            {"in the exponent", "1e3|.5", NumberFault::kDecimalMark},
                        });
  CheckFaults(Of("fr"), {
                            {"point", "12|.5", NumberFault::kDecimalMark},
                            {"point behind groups", "1 234|.5", NumberFault::kDecimalMark},
                            {"point in front", "|.5", NumberFault::kDecimalMark},
                            {"point behind a fraction", "1,5|.3", NumberFault::kDecimalMark},
                            {"point at the end", "5|.", NumberFault::kDecimalMark},
                        });
  CheckFaults(Of("de-CH"), {{"comma", "12|,5", NumberFault::kDecimalMark},
                            {"comma in the exponent", "1e3|,5", NumberFault::kDecimalMark}});
  CheckFaults(Of("fa"), {{"comma in Persian", "12|,5", NumberFault::kDecimalMark},
                         {"point in Persian", "12|.5", NumberFault::kDecimalMark},
                         {"second one in Persian", "1\u066B5|\u066B3", NumberFault::kDecimalMark}});
  NumberFormat format;
  format.groupMark = ".";
  CheckNumbers(format, {{"a mark of both is that of decimals", "1.234|", 1.234, 0.001}});
  format.decimalMark = " ";
  CheckNumbers(format, {{"blank as the decimal mark", "1 25|", 1.25, 0.01}});
}

TEST(ReadTypedNumber, ReadsExponents) {
  CheckNumbers(Of("en"), {
                             {"plain", "1e3|", 1000, 1000},
                             {"upper case", "2.5E2| m", 250, 10},
                             {"negative", "-3.2e-3| m\u00B3/h", -3.2e-3, 1e-4},
                             {"plus", "1e+2|", 100, 100},
                             {"minus sign", "1e\u22122|", 0.01, 0.01},
                             {"behind the decimal mark", "5.e3|", 5000, 1000},
                             {"leading zeroes", "1e0000000000000000000001|", 10, 10},
                             {"zero", "1e0|", 1, 1},
                             {"unit behind a blank", "5| eV", 5, 1},
                             {"unit", "5|eV", 5, 1},
                             {"unit of one letter", "5|e", 5, 1},
                             {"only a sign", "5|e-", 5, 1},
                             {"two signs", "5|e--3", 5, 1},
                             {"blank behind it", "5|e 3", 5, 1},
                             {"blank behind the sign", "5|e- 3", 5, 1},
                             {"second one", "1e3|e4", 1000, 1000},
                         });
}

TEST(ReadTypedNumber, RoundsToTheNearestDouble) {
  CheckNumbers(
      Of("en"),
      {
          {"all integers of doubles", "9007199254740992|", 9007199254740992.0, 1},
          {"half, to even", "9007199254740993|", 9007199254740992.0, 1},
          {"more than half", "9007199254740993.0000000000000000001|", 9007199254740994.0, 1e-19},
          {"largest exact power", "3e22|", 3e22, 1e22},
          {"power that is no double", "3e23|", 3e23, 1e23},
          {"smallest exact quotient", "3e-22|", 3e-22, 1e-22},
          {"no exact quotient", "3e-23|", 3e-23, 1e-23},
          {"19 digits with leading zeroes", "0000000000000000012|", 12, 1},
          {"20 digits with leading zeroes", "00000000000000000012|", 12, 1},
          {"more than 64 bits, small modulo 2^64", "18446744073709551617|", 18446744073709551617.0,
           1},
          {"largest", "1.7976931348623157e308|", DBL_MAX, 1e292},
          {"smallest", "5e-324|", kSmallest, kSmallest},
          {"just more than half the smallest", "2.4703282292062328e-324|", kSmallest, kSmallest},
          {"last digit below the smallest", "1e-300|", 1e-300, 1e-300},
          {"many zeroes and an exponent", "0." + std::string(350, '0') + "1e351|", 1, 1},
          {"zero with a small exponent", "0e-99999999999|", 0, kSmallest},
          {"zero with a large exponent", "-0e308|", -0.0, 1e308},
      });
  // The last digit counts 1e-357.
  CheckNumbers(Of("en"), {{"last digit below the smallest", "1." + std::string(57, '0') + "e-300|",
                           1e-300, kSmallest}});
}

TEST(ReadTypedNumber, RefusesWhatIsNoNumber) {
  CheckFaults(Of("en"), {
                            {"nothing", "|", NumberFault::kNoNumber},
                            {"blanks", "  |", NumberFault::kNoNumber},
                            {"letters", "|abc", NumberFault::kNoNumber},
                            {"letters behind blanks", "  |abc", NumberFault::kNoNumber},
                            {"sign", "-|", NumberFault::kNoNumber},
                            {"exponent", "|e5", NumberFault::kNoNumber},
                            {"decimal mark", "|.", NumberFault::kNoNumber},
                            {"decimal mark and unit", "-|. mm", NumberFault::kNoNumber},
                            {"decimal mark and exponent", "|.e5", NumberFault::kNoNumber},
                            {"group mark", "|,", NumberFault::kNoNumber},
                            {"infinity", "-|\u221E", NumberFault::kNoNumber},
                            {"not a number", "|NaN", NumberFault::kNoNumber},
                            {"digit of no format", "|\u0665", NumberFault::kNoNumber},
                        });
  CheckFaults(Of("fr"), {{"another decimal mark", "|. x", NumberFault::kNoNumber}});
  CheckFaults(Of("de-CH"), {{"apostrophe", "|'x", NumberFault::kNoNumber}});
}

TEST(ReadTypedNumber, RefusesWhatIsOutOfRange) {
  CheckFaults(Of("en"),
              {
                  {"too large", "|1.7976931348623159e308", NumberFault::kRange},
                  {"too large, with sign, blank and unit", " -|1e309 m", NumberFault::kRange},
                  {"many digits", "|" + std::string(310, '9'), NumberFault::kRange},
                  {"huge exponent", "|1e99999999999999999999", NumberFault::kRange},
                  {"too small", "|2.4703282292062327e-324", NumberFault::kRange},
                  {"tiny exponent", "|1e-99999999999999999999", NumberFault::kRange},
                  {"last digit of a zero is too large", "|0e309", NumberFault::kRange},
              });
}

TEST(ReadTypedNumber, RefusesTooManyDigits) {
  const std::string most(kMostTypedDigits, '0');
  CheckNumbers(Of("en"), {{"most", most + '|', 0, 1},
                          {"most, with an exponent", most + "e-99999|", 0, kSmallest}});
  std::string groups = "00";
  while (groups.size() < kMostTypedDigits / 3 * 4) {
    groups += " 000";
  }
  CheckNumbers(Of("en"), {{"most, in groups", groups + '|', 0, 1}});
  CheckFaults(Of("en"), {{"one more", most + "|0", NumberFault::kTooLong},
                         {"one more behind the decimal mark", most + ".|0", NumberFault::kTooLong},
                         {"one more in a group", groups + " |000", NumberFault::kTooLong}});
}

TEST(ReadTypedNumber, EndsAtInvalidUtf8) {
  NumberFormat format = Of("mr");
  for (const InvalidUtf8& row : kInvalidUtf8) {
    const std::string bytes(row.bytes);
    CheckNumbers(format, {{row.name, "\u0967" + ('|' + bytes), 1, 1},
                          {row.name, "1.5|" + bytes + "5", 1.5, 0.1}});
    CheckFaults(format, {{row.name, '|' + bytes, NumberFault::kNoNumber},
                         {row.name, "-|" + bytes + "5", NumberFault::kNoNumber}});
  }
}

std::string Printed(double number, const NumberSpec& spec, const NumberFormat& format) {
  std::string text(4000, '?');
  TextSink sink(text.data(), text.size());
  WriteNumber({{}, number}, spec, format, sink);
  text.resize(sink.Finish());
  return text;
}

// What the number of `plain`, a text as in C++, is as a typed one that ends at `end`.
TypedNumber Expected(std::string_view plain, std::size_t end) {
  const std::size_t exponent = std::min(plain.find('e'), plain.size());
  const std::size_t mark = plain.substr(0, exponent).find('.');
  int lastDigit = mark != std::string_view::npos ? static_cast<int>(mark + 1 - exponent) : 0;
  if (exponent != plain.size()) {
    lastDigit += std::stoi(std::string(plain.substr(exponent + 1)));
  }
  TypedNumber expected;
  expected.end = end;
  EXPECT_EQ(std::from_chars(plain.data(), plain.data() + plain.size(), expected.number).ptr,
            plain.data() + plain.size())
      << plain;
  const std::string unit = "1e" + std::to_string(lastDigit);
  std::from_chars(unit.data(), unit.data() + unit.size(), expected.lastDigit);
  expected.lastDigit = std::max(expected.lastDigit, kSmallest);
  return expected;
}

TEST(ReadTypedNumber, ReadsWhatIsPrinted) {
  constexpr SignOption kSigns[] = {SignOption::kOnlyMinus, SignOption::kAlways, SignOption::kBlank};
  RandomNumbers random(randomSeed);
  const std::uint64_t rounds = Rounds(300);
  for (const Cldr::NumberFormatRow& row : Cldr::kNumberTable) {
    NumberFormat format = row.format;
    for (std::uint64_t i = 0; i < rounds; ++i) {
      const double number =
          random.Below(4) == 0 ? random.OfMagnitude(-300, 1023) : random.OfMagnitude(-10, 40);
      NumberSpec spec;
      if (random.Below(4) != 0) {
        spec.type = random.Below(4) == 0 ? 'e' : 'f';
        spec.decimals = random.Below(random.Below(4) == 0 ? kMaxDecimals + 1 : 6);
      }
      const std::string plain = Printed(number, spec, {});
      spec.sign = AnyOf(random, kSigns);
      format.isGrouped = random.Below(2) == 0;
      const std::string text = Printed(number, spec, format);
      ASSERT_EQ(Read(text, format), Expected(plain, text.size()))
          << text << " in" << row.languages << "seed " << randomSeed;
    }
  }
}

// What stands at the start of a typed number, and what that is in C++.
struct Part {
  std::string typed;
  std::string plain;
};

std::vector<Part> PartsOf(const NumberFormat& format) {
  std::vector<Part> parts;
  for (char32_t value = 0; value <= 9; ++value) {
    const std::string ascii = std::to_string(static_cast<unsigned>(value));
    std::string digit;
    Localize::AppendUtf8(format.zeroDigit + value, digit);
    parts.insert(parts.end(), {{ascii, ascii}, {digit, ascii}});
  }
  parts.insert(parts.end(), {{std::string(format.decimalMark), "."},
                             {std::string(format.minusSign), "-"},
                             {"-", "-"},
                             {"\u2212", "-"},
                             {"e", "e"},
                             {"E", "e"}});
  return parts;
}

// A typed number that was accepted, as in C++: without separators, bidi marks and pluses. Does not
// check their places.
std::string PlainText(std::string_view typed, const std::vector<Part>& parts) {
  std::string plain;
  while (!typed.empty()) {
    const auto part = std::find_if(parts.begin(), parts.end(), [typed](const Part& candidate) {
      return typed.substr(0, candidate.typed.size()) == candidate.typed;
    });
    plain += part != parts.end() ? part->plain : "";
    typed.remove_prefix(part != parts.end() ? part->typed.size() : 1);
  }
  return plain;
}

std::string RandomPieces(RandomNumbers& random, const NumberFormat& format) {
  constexpr std::string_view kDigits[] = {"0", "1", "9", "12", "345", "678", "000"};
  constexpr std::string_view kPieces[] = {
      "0",      "345",  "\u0661", "\u096F", ".",      ",",      "\u066B",  "\u066C", " ",
      " ",      "'",    "-",      "+",      "\u00A0", "\u2019", "\u202F",  "e",      "\u2212",
      "\u200E", "\xE2", "\xC2",   "\xD8",   "m",      "E1",     "\xE0\xA5"};
  const std::string_view marks[] = {format.groupMark, format.decimalMark, format.minusSign};
  std::string text;
  for (int pieces = random.Below(8); pieces > 0; --pieces) {
    const int choice = random.Below(16);
    text += choice < 3   ? AnyOf(random, marks)
            : choice < 6 ? AnyOf(random, kDigits)
                         : AnyOf(random, kPieces);
  }
  return text;
}

TEST(ReadTypedNumber, ReadsPiecesInAnyOrder) {
  RandomNumbers random(randomSeed);
  const std::uint64_t rounds = Rounds(2000);
  std::map<NumberFault, std::uint64_t> counts;
  for (const Cldr::NumberFormatRow& row : Cldr::kNumberTable) {
    const std::vector<Part> parts = PartsOf(row.format);
    for (std::uint64_t i = 0; i < rounds; ++i) {
      const std::string text = RandomPieces(random, row.format);
      const TypedNumber typed = Read(text, row.format);
      ASSERT_LE(typed.end, text.size());
      const bool isNumber = typed.fault == NumberFault::kNone;
      const std::string plain = PlainText(text.substr(0, typed.end), parts);
      ASSERT_EQ(typed, isNumber ? Expected(plain, typed.end) : Fault(typed.fault, typed.end))
          << testing::PrintToString(text) << " in" << row.languages << "seed " << randomSeed;
      ++counts[typed.fault];
    }
  }
  for (const NumberFault fault : {NumberFault::kNone, NumberFault::kNoNumber,
                                  NumberFault::kDecimalMark, NumberFault::kGroups}) {
    EXPECT_GE(counts[fault], rounds / 10) << static_cast<int>(fault);
  }
}

// What stands behind the number makes no difference.
TEST(ReadTypedNumber, StaysInsideAnyBytes) {
  RandomNumbers random(randomSeed);
  const std::uint64_t rounds = Rounds(200);
  for (const Cldr::NumberFormatRow& row : Cldr::kNumberTable) {
    for (std::uint64_t i = 0; i < rounds; ++i) {
      std::string text = RandomPieces(random, row.format);
      for (int bytes = random.Below(12); bytes > 0; --bytes) {
        text += static_cast<char>(random.Below(256));
      }
      const TypedNumber typed = Read(text, row.format);
      ASSERT_LE(typed.end, text.size());
      const TypedNumber expected = typed.fault == NumberFault::kNone
                                       ? Read(text.substr(0, typed.end), row.format)
                                       : Fault(typed.fault, typed.end);
      ASSERT_EQ(typed, expected) << testing::PrintToString(text) << " in" << row.languages
                                 << "seed " << randomSeed;
    }
  }
}

}  // namespace
}  // namespace KelmoLibs::Host
