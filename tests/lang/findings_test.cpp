// Which findings are kept, and which are only counted.
#include "lang/rules/findings.h"

#include <gtest/gtest.h>

#include <string>

namespace KelmoLibs::Lang {
namespace {

TEST(Findings, KeepsSoManyOfARuleSeverityAndFileAndCountsTheRest) {
  Findings findings;
  for (std::size_t i = 0; i < Findings::kKept + 3; ++i) {
    findings.Add(RuleId::kMissing, Severity::kWarning, 7).key = std::to_string(i);
  }
  findings.Add(RuleId::kMissing, Severity::kWarning, 8);
  findings.Add(RuleId::kMissing, Severity::kError, 7);
  findings.Add(RuleId::kEmpty, Severity::kWarning, 7);
  EXPECT_EQ(findings.size(), Findings::kKept + 3);
  EXPECT_EQ(findings[Findings::kKept - 1].key, std::to_string(Findings::kKept - 1));
  const std::vector<CountedFindings> counted = findings.Counted();
  ASSERT_EQ(counted.size(), 1U);
  EXPECT_EQ(counted[0].rule, RuleId::kMissing);
  EXPECT_EQ(counted[0].severity, Severity::kWarning);
  EXPECT_EQ(counted[0].file, 7U);
  EXPECT_EQ(counted[0].count, 3U);
}

TEST(Findings, CutsLongTextsBetweenCharacters) {
  Findings findings;
  Finding& finding = findings.Add(RuleId::kMissing, Severity::kWarning, 0);
  const std::string justFits(Findings::kKeptBytes, 'x');
  finding.key = std::string(Findings::kKeptBytes - 1, 'x') + u8"\u00E9";
  finding.message = {"message", {justFits, justFits + 'y'}};
  finding.related.push_back({{}, {"related", {justFits + 'y'}}});
  const std::vector<Finding> kept = findings.Take();
  EXPECT_EQ(kept[0].key, std::string(Findings::kKeptBytes - 1, 'x') + u8"\u2026");
  EXPECT_EQ(kept[0].message.arguments[0], justFits);
  EXPECT_EQ(kept[0].message.arguments[1], justFits + u8"\u2026");
  EXPECT_EQ(kept[0].related[0].message.arguments[0], justFits + u8"\u2026");
}

}  // namespace
}  // namespace KelmoLibs::Lang
