// The tables of languages beside those of ICU. ICU 72, which Debian 12 has, is made of CLDR 42; the
// tables are made of CLDR 41. The differences are listed by name.

#include <gtest/gtest.h>
#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/locid.h>
#include <unicode/numberformatter.h>
#include <unicode/numfmt.h>
#include <unicode/plurrule.h>
#include <unicode/uversion.h>

#include <algorithm>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "cldr/number_formats.h"
#include "cldr/number_table.h"
#include "cldr/plural_rules.h"
#include "cldr/plural_table.h"

namespace KelmoLibs::Cldr {
namespace {

constexpr int kKnownIcu = 72;
static_assert(U_ICU_VERSION_MAJOR_NUM >= kKnownIcu);

class BesideIcu : public testing::Test {
 protected:
  void SetUp() override {
    if (U_ICU_VERSION_MAJOR_NUM != kKnownIcu) {
      GTEST_SKIP() << "the differences are known for ICU " << kKnownIcu << " only";
    }
  }
};

bool IsGood(UErrorCode status) { return status <= U_ZERO_ERROR; }  // below are warnings

std::string Text(const icu::UnicodeString& text) {
  std::string bytes;
  return text.toUTF8String(bytes);
}

// The ids of ICU's own locales: "de-AT".
std::set<std::string> IdsOfIcu() {
  std::set<std::string> ids;
  std::int32_t count = 0;
  const icu::Locale* const locales = icu::Locale::getAvailableLocales(count);
  for (std::int32_t i = 0; i < count; ++i) {
    std::string id = locales[i].getName();
    std::replace(id.begin(), id.end(), '_', '-');
    ids.insert(id);
  }
  return ids;
}

// The ids of a row in the table: " de id ".
std::vector<std::string> IdsIn(std::string_view languages) {
  std::istringstream words{std::string(languages)};
  std::vector<std::string> ids;
  for (std::string id; words >> id;) {
    std::replace(id.begin(), id.end(), '_', '-');
    ids.push_back(id);
  }
  return ids;
}

icu::Locale LocaleOf(const std::string& id) {
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale locale = icu::Locale::forLanguageTag(id, status);
  EXPECT_TRUE(IsGood(status)) << id;
  return locale;
}

// A number as it is shown, for both libraries.
struct ShownNumber {
  std::string text;
  icu::number::FormattedNumber icu;
};

ShownNumber Shown(const std::string& text) {
  const std::size_t dot = text.find('.');
  const auto decimals =
      dot != std::string::npos ? static_cast<std::int32_t>(text.size() - dot - 1) : 0;
  UErrorCode status = U_ZERO_ERROR;
  ShownNumber number{text, icu::number::NumberFormatter::withLocale("en")
                               .precision(icu::number::Precision::fixedFraction(decimals))
                               .formatDecimal(text, status)};
  EXPECT_TRUE(IsGood(status)) << text;
  return number;
}

std::vector<ShownNumber> Numbers() {
  std::vector<ShownNumber> numbers;
  for (int i = 0; i <= 1000; ++i) {
    numbers.push_back(Shown(std::to_string(i)));
  }
  for (const char* const large : {"1001", "1002", "1100", "2000", "20000", "40000", "100000",
                                  "200000", "1000000", "1000001", "2000000", "10000000"}) {
    numbers.push_back(Shown(large));
  }
  for (const char* const integer :
       {"0",  "1",  "2",  "3",  "4",  "5",  "6",  "7",   "8",   "9",   "10",   "11",
        "12", "13", "19", "20", "21", "22", "71", "100", "101", "111", "1000", "1000000"}) {
    for (const char* const decimals :
         {"0",   "1",   "2",   "3",   "4",   "5",   "6",   "7",    "9",    "00",     "01", "02",
          "03",  "05",  "09",  "10",  "11",  "12",  "14",  "19",   "20",   "21",     "22", "50",
          "000", "001", "010", "100", "101", "111", "112", "0000", "0001", "1000000"}) {
      numbers.push_back(Shown(std::string(integer) + '.' + decimals));
    }
  }
  return numbers;
}

// For the regions of languages, whose rules are in most cases those of the language.
std::vector<ShownNumber> FewNumbers() {
  std::vector<ShownNumber> numbers;
  for (const char* const number : {"0", "1", "2", "3", "5", "6", "11", "12", "20", "21", "100",
                                   "101", "1000000", "0.0", "0.2", "1.0", "1.5"}) {
    numbers.push_back(Shown(number));
  }
  return numbers;
}

// The first number in which the rules of an id differ, with both categories; or an empty text.
std::string PluralDifference(const std::string& id, const std::vector<ShownNumber>& numbers) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::PluralRules> rules(icu::PluralRules::forLocale(LocaleOf(id), status));
  for (const ShownNumber& number : numbers) {
    const std::string ofIcu = Text(rules->select(number.icu, status));
    const std::string_view own =
        PluralCategoryName(PluralRulesOf(id).categoryOf(OperandsOf(number.text)));
    if (!IsGood(status) || ofIcu != own) {
      return id + ' ' + number.text + ": " + std::string(own) + ", ICU: " + ofIcu;
    }
  }
  return {};
}

TEST_F(BesideIcu, AllPluralRulesAreEqual) {
  std::set<std::string> ids = IdsOfIcu();
  for (const PluralRules& rules : kPluralTable) {
    const std::vector<std::string> languages = IdsIn(rules.languages);
    ids.insert(languages.begin(), languages.end());
  }
  const std::vector<ShownNumber> numbers = Numbers();
  const std::vector<ShownNumber> fewNumbers = FewNumbers();
  std::vector<std::string> differences;
  for (const std::string& id : ids) {
    const bool isLanguage = id.find('-') == std::string::npos || id == "pt-PT";
    const std::string difference = PluralDifference(id, isLanguage ? numbers : fewNumbers);
    if (!difference.empty()) {
      differences.push_back(difference);
    }
  }
  EXPECT_GT(ids.size(), 800U);
  // CLDR 42 has changed five languages: Catalan, Hebrew, Icelandic, Romanian and Maltese, and the
  // former ids of two of them.
  const std::vector<std::string> known = {
      "ca 1000000: other, ICU: many",    "ca-AD 1000000: other, ICU: many",
      "ca-ES 1000000: other, ICU: many", "ca-FR 1000000: other, ICU: many",
      "ca-IT 1000000: other, ICU: many", "he 20: many, ICU: other",
      "he-IL 20: many, ICU: other",      "is 0.2: one, ICU: other",
      "is-IS 0.2: one, ICU: other",      "iw 20: many, ICU: other",
      "mo 101: other, ICU: few",         "mt 2: few, ICU: two",
      "mt-MT 2: few, ICU: two",          "ro 101: other, ICU: few",
      "ro-MD 101: other, ICU: few",      "ro-RO 101: other, ICU: few",
  };
  EXPECT_EQ(differences, known);
}

// The default locale of ICU, so that it does not fall back to a language that it has.
constexpr const char* kUnknownLanguage = "tlh";

// Such as "decimal , group . minus - 3 3 1 30".
std::string Described(const NumberFormat& format) {
  std::ostringstream text;
  text << "decimal " << format.decimalMark << " group " << format.groupMark << " minus "
       << format.minusSign << ' ' << format.groupSize << ' ' << format.furtherGroupSize << ' '
       << format.minimumFirstGroup << ' ' << std::hex
       << static_cast<std::uint32_t>(format.zeroDigit);
  return text.str();
}

// The fewest digits before the first mark. icu::DecimalFormat does not know it.
std::uint32_t MinimumFirstGroup(const std::string& id, std::int32_t groupSize) {
  const icu::number::LocalizedNumberFormatter formatter =
      icu::number::NumberFormatter::withLocale(LocaleOf(id));
  std::int64_t number = 1;
  for (std::int32_t i = 0; i < groupSize; ++i) {
    number *= 10;
  }
  // With a mark the text has a character more.
  for (std::int32_t digits = 1; digits < 10; ++digits, number *= 10) {
    UErrorCode status = U_ZERO_ERROR;
    if (formatter.formatInt(number, status).toString(status).countChar32() > groupSize + digits) {
      return static_cast<std::uint32_t>(digits);
    }
  }
  return 0;
}

// "none" if ICU has nothing for the language.
std::string DescribedByIcu(const std::string& id) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::NumberFormat> created(
      icu::NumberFormat::createInstance(LocaleOf(id), UNUM_DECIMAL, status));
  const auto* const format = dynamic_cast<const icu::DecimalFormat*>(created.get());
  if (format == nullptr || !IsGood(status)) {
    return "no format";
  }
  const std::string found = created->getLocale(ULOC_VALID_LOCALE, status).getLanguage();
  if (found == kUnknownLanguage || found.empty()) {
    return "none";
  }
  const icu::DecimalFormatSymbols& symbols = *format->getDecimalFormatSymbols();
  const auto symbol = [&symbols](icu::DecimalFormatSymbols::ENumberFormatSymbol which) {
    return Text(symbols.getConstSymbol(which));
  };
  const std::string decimal = symbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol);
  const std::string group = symbol(icu::DecimalFormatSymbols::kGroupingSeparatorSymbol);
  const std::string minus = symbol(icu::DecimalFormatSymbols::kMinusSignSymbol);
  const std::int32_t groupSize = format->getGroupingSize();
  const std::int32_t further = format->getSecondaryGroupingSize();
  NumberFormat described;
  described.decimalMark = decimal;
  described.groupMark = group;
  described.minusSign = minus;
  described.zeroDigit = static_cast<char32_t>(
      symbols.getConstSymbol(icu::DecimalFormatSymbols::kZeroDigitSymbol).char32At(0));
  described.groupSize = static_cast<std::uint32_t>(groupSize);
  described.furtherGroupSize = static_cast<std::uint32_t>(further > 0 ? further : groupSize);
  described.minimumFirstGroup = groupSize > 0 ? MinimumFirstGroup(id, groupSize) : 1;
  return Described(described);
}

TEST_F(BesideIcu, AllNumberFormatsAreEqual) {
  std::set<std::string> ids = IdsOfIcu();
  for (const NumberFormatRow& row : kNumberTable) {
    const std::vector<std::string> languages = IdsIn(row.languages);
    ids.insert(languages.begin(), languages.end());
  }
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale::setDefault(icu::Locale(kUnknownLanguage), status);
  ASSERT_TRUE(IsGood(status));
  std::vector<std::string> differences;
  for (const std::string& id : ids) {
    const NumberFormat* const format = FindNumberFormat(id);
    const std::string own = format != nullptr ? Described(*format) : "none";
    const std::string ofIcu = DescribedByIcu(id);
    if (own != ofIcu) {
      differences.push_back(id + ": " + own + ", ICU: " + ofIcu);
    }
  }
  EXPECT_GT(ids.size(), 800U);
  const std::vector<std::string> known = {
      // New in CLDR 42.
      "bgc: none, ICU: decimal . group , minus - 3 3 1 966",
      "bgc-IN: none, ICU: decimal . group , minus - 3 3 1 966",
      "bho: none, ICU: decimal . group , minus - 3 3 1 966",
      "bho-IN: none, ICU: decimal . group , minus - 3 3 1 966",
      "cv: none, ICU: decimal , group \u00A0 minus - 3 3 1 30",
      "cv-RU: none, ICU: decimal , group \u00A0 minus - 3 3 1 30",
      // ICU has neither these former ids nor Low German.
      "ji: decimal . group , minus - 3 3 1 30, ICU: none",
      "jw: decimal , group . minus - 3 3 1 30, ICU: none",
      "nds: decimal . group , minus - 3 3 1 30, ICU: none",
      // New in CLDR 42.
      "raj: none, ICU: decimal . group , minus - 3 3 1 966",
      "raj-IN: none, ICU: decimal . group , minus - 3 3 1 966",
      // A former id.
      "tw: decimal . group , minus - 3 3 1 30, ICU: none",
  };
  EXPECT_EQ(differences, known);
}

}  // namespace
}  // namespace KelmoLibs::Cldr
