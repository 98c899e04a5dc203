// The rule inconsistent, which is off unless asked for.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "lang/rules/check_workspace.h"

namespace KelmoLibs::Lang {
namespace {

class ConsistencyTest : public ::testing::Test {
 protected:
  ConsistencyTest() {
    Add("en", "en\na\tOpen\nb\tOpen\nc\tClose\nd\tClose\ne\tOpen\n");
    Add("de", "de\na\tÖffnen\nb\tAufmachen\nc\tZu\nd\tZu\n");
    Add("de", "de\ne\tAuf\n");
    workspace_.baseFile = 0;
  }

  void Add(const std::string& id, const std::string& bytes) {
    WorkspaceFile& file = workspace_.files.emplace_back();
    file.dictionary = std::make_unique<DictionaryFile>(id + ".txt", id + ".txt", bytes);
    workspace_.dictionaries[id].Merge(static_cast<std::uint32_t>(workspace_.files.size() - 1),
                                      *file.dictionary);
  }

  std::string Check(bool isOn) {
    SettingsOfFiles settings;
    settings.settings[0].isOn[static_cast<std::size_t>(RuleId::kInconsistent)] = isOn;
    std::string keys;
    for (const Finding& finding : CheckWorkspace(workspace_, settings)) {
      if (finding.rule == RuleId::kInconsistent) {
        keys += finding.key + ":" + finding.message.arguments[0] + "/" +
                finding.related[0].message.arguments[0] + " ";
      }
    }
    return keys;
  }

  Workspace workspace_;
};

TEST_F(ConsistencyTest, ReportsEachTranslationUnlikeTheFirstOne) {
  EXPECT_EQ(Check(true), "b:Open/a e:Open/a ");
}

TEST_F(ConsistencyTest, IsOffUnlessAskedFor) {
  EXPECT_FALSE(RuleSettings().IsOn(RuleId::kInconsistent));
  EXPECT_EQ(Check(false), "");
}

}  // namespace
}  // namespace KelmoLibs::Lang
