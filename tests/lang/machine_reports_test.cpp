// The reports for programs: escapes, bytes that are not UTF-8, places. And the progress bar.
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>

#include "lang/project/baseline.h"
#include "lang/report/machine_text.h"
#include "lang/report/progress_bar.h"
#include "lang/report/report.h"

namespace KelmoLibs::Lang {
namespace {

struct Fixture {
  explicit Fixture(const std::string& name) {
    WorkspaceFile file;
    file.dictionary = std::make_unique<DictionaryFile>(name, name, "de\xFF\nkey text\n");
    workspace.files.push_back(std::move(file));
    Finding finding = {};
    finding.rule = RuleId::kTag;
    finding.severity = Severity::kNote;
    finding.place = {0, 2, 5, 4, 8};
    finding.id = "d\xFF";
    finding.key = "k\"\n\xE9";
    finding.message = {"related.base", {"100%\n\xE9:,"}};
    finding.mendCommand = "fix x";
    findings.push_back(finding);
  }

  Report MakeReport() const { return {workspace, findings, {}, {}, {}}; }

  Workspace workspace;
  std::vector<Finding> findings;
};

std::string LineWith(const std::string& text, const std::string& part) {
  const std::size_t at = text.find(part);
  if (at == std::string::npos) {
    return "";
  }
  const std::size_t start = text.rfind('\n', at) + 1;
  return text.substr(start, text.find('\n', at) - start);
}

TEST(MachineReports, JsonIsUtf8AndKeepsKeys) {
  const Fixture fixture("a.txt");
  EXPECT_EQ(LineWith(JsonReport(fixture.MakeReport()), "\"tag\""),
            "{\"file\":\"a.txt\",\"line\":2,\"column\":5,\"endColumn\":9,\"severity\":\"note\","
            "\"rule\":\"tag\",\"id\":\"d<FF>\",\"key\":\"k\\\"\\n<E9>\","
            "\"message\":\"\\\"100%<U+000A><E9>:,\\\"\",\"hint\":null,"
            "\"mend\":\"kelmo-lang fix x\",\"command\":\"kelmo-lang fix x\",\"related\":[]}");
}

TEST(MachineReports, GithubEscapesPropertiesAndData) {
  const Fixture fixture("a,b:c%.txt");
  EXPECT_EQ(GithubReport(fixture.MakeReport()),
            "::notice file=a%2Cb%3Ac%25.txt,line=2,col=5,endColumn=8,title=kelmo-lang%3A tag::"
            "\"100%25<U+000A><E9>:,\"%0Akelmo-lang fix x\n");
  // Logs are shown on terminals too.
  // NOLINTNEXTLINE(misc-misleading-bidirectional): a name that turns the line around
  EXPECT_EQ(GithubReport(Fixture(u8"a\x1B[31m\u202E\xFF.txt").MakeReport()).substr(0, 47),
            "::notice file=a<U+001B>[31m<U+202E><FF>.txt,lin");
}

TEST(MachineReports, SarifEncodesUris) {
  struct Row {
    std::string name;
    std::string uri;
  };
  const Row rows[] = {
      {"LANG/de.txt", "LANG/de.txt"},
      {u8"\u043C\u043E\u0439 a#?%.txt", "%D0%BC%D0%BE%D0%B9%20a%23%3F%25.txt"},
      {"/home/a b.txt", "file:///home/a%20b.txt"},
      {"C:/a b.txt", "file:///C:/a%20b.txt"},
      {"C:b.txt", "C%3Ab.txt"},
      {"a:/b.txt", "file:///a:/b.txt"},
      {"1:/b.txt", "1%3A/b.txt"},
      {"//server/a.txt", "file://server/a.txt"},
      {"a\xE9.txt", "a%E9.txt"},
  };
  for (const Row& row : rows) {
    const Fixture fixture(row.name);
    EXPECT_NE(SarifReport(fixture.MakeReport()).find("{\"uri\":\"" + row.uri + "\"}"),
              std::string::npos)
        << row.uri;
  }
}

TEST(MachineReports, AnIdentityLeavesOutNumbers) {
  Finding finding = {};
  finding.rule = RuleId::kEncoding;
  finding.key = "k";
  finding.message = {"m", {"18", "text", "412"}};
  Finding moved = finding;
  moved.message.arguments = {"19", "text", "413"};
  Finding other = finding;
  other.message.arguments = {"18", "texts", "412"};
  EXPECT_EQ(IdentityOf(finding), IdentityOf(moved));
  EXPECT_NE(IdentityOf(finding), IdentityOf(other));
  EXPECT_EQ(FingerprintOf(""), "CBF29CE484222325");
  EXPECT_EQ(FingerprintOf("a"), "AF63DC4C8601EC8C");
}

TEST(Baseline, AcceptsEachFindingAsOftenAsItHasIt) {
  Fixture fixture("a.txt");
  fixture.findings.push_back(fixture.findings[0]);
  const std::string bytes = WriteBaseline(fixture.workspace, fixture.findings, "known.json");
  fixture.findings.push_back(fixture.findings[0]);
  fixture.findings[0].place.line = 7;
  EXPECT_FALSE(RemoveAccepted(bytes, fixture.workspace, "known.json", fixture.findings));
  EXPECT_EQ(fixture.findings.size(), 1U);
}

TEST(Baseline, RefusesOtherFiles) {
  for (const char* const bytes :
       {"", "[]", "{}", R"({"version": 2, "findings": []})", R"({"version": 1})",
        R"({"version": 1, "findings": [{"file": "a"}]})", R"({"version": 1, "findings": [1]})"}) {
    Fixture fixture("a.txt");
    const auto fault = RemoveAccepted(bytes, fixture.workspace, "known.json", fixture.findings);
    ASSERT_TRUE(fault) << bytes;
    EXPECT_EQ(fault->sentence.key, "baseline.no_baseline");
    EXPECT_EQ(fixture.findings.size(), 1U);
  }
}

TEST(ProgressBar, IsSilentForASecondAndErasesItself) {
  using namespace std::chrono_literals;
  std::string written;
  ProgressBar::Clock::time_point now;
  {
    ProgressBar bar([&written](std::string_view text) { written += text; }, [&now] { return now; });
    now += 999ms;
    bar.Show(0.1);
    EXPECT_EQ(written, "");
    now += 1ms;
    bar.Show(0.5);
    EXPECT_EQ(written, "\r[==========          ] 50 %");
    now += 50ms;
    bar.Show(0.6);  // too early
    now += 50ms;
    bar.Show(2);
    EXPECT_EQ(written, "\r[==========          ] 50 %\r[====================] 100 %");
    written.clear();
  }
  EXPECT_EQ(written, '\r' + std::string(28, ' ') + '\r');
}

TEST(ProgressBar, OfAShortRunWritesNothing) {
  std::string written;
  {
    ProgressBar([&written](std::string_view text) { written += text; }).Show(1);
  }
  EXPECT_EQ(written, "");
}

}  // namespace
}  // namespace KelmoLibs::Lang
