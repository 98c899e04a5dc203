// What is wrong with a project file, and where; which findings it ignores; what is added to it.
#include "lang/project/project.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;

std::string Faults(const std::string& bytes) {
  std::vector<ProjectFault> faults;
  ParseProject(bytes, "kelmo-lang.json", faults);
  const Texts texts("en");
  std::string said;
  for (const ProjectFault& fault : faults) {
    said += std::to_string(fault.line) + ':' + std::to_string(fault.column) + ": " +
            texts.Say(fault.sentence) + '\n';
  }
  return said;
}

TEST(Project, SaysWhatIsWrongAndWhere) {
  struct Row {
    const char* name;
    std::string bytes;
    std::string faults;
  };
  const Row rows[] = {
      {"nothing wrong",
       "{\"base\": \"en.txt\", \"levels\": {\"missing\": \"off\"}, \"failOn\": \"never\",\n"
       " \"ignored\": [{\"file\": \"a\", \"key\": \"\", \"rule\": \"tag\", \"reason\": \"r\"}],\n"
       " \"limits\": [{\"key\": \"*\", \"characters\": 20}], \"baseline\": \"known.json\"}",
       ""},
      {"an empty object", "{}", ""},
      {"a byte-order mark", "\xEF\xBB\xBF{}", ""},
      {"an empty file", "", "1:1: this is no valid JSON\n"},
      {"a comma too many", "{\n  \"base\": \"en.txt\",\n}", "3:1: this is no valid JSON\n"},
      {"a comma is missing", "{\"base\": \"en.txt\"\n \"levels\": {}}",
       "2:2: this is no valid JSON\n"},
      {"single quotes", "{'base': 1}", "1:2: this is no valid JSON\n"},
      {"a comment", "{} // c", "1:4: this is no valid JSON\n"},
      {"not UTF-8", "{\"base\": \"\xE9\"}", "1:10: this is no valid JSON\n"},
      {"the file ends early", "{\"base\":", "1:9: this is no valid JSON\n"},
      {"nested too deep", std::string(100, '['), "1:17: this is no valid JSON\n"},
      {"no object", "[]", "1:1: this must be of the type object, not array\n"},
      {"an unknown name", "{\"bse\": \"en.txt\"}", "1:2: unknown name \"bse\"\n"},
      {"a name in capitals", "{\"Base\": \"en.txt\"}", "1:2: unknown name \"Base\"\n"},
      {"a repeated name", u8"{\"base\": \"\u00E9\", \"base\": \"b\"}",
       "1:15: the name \"base\" is there twice\n"},
      {"the base is no text", "{\"base\": 12}",
       "1:10: this must be of the type string, not number\n"},
      {"an empty path", "{\"base\": \"\"}", "1:10: \"base\" must not be empty\n"},
      {"a path with a NUL", "{\"baseline\": \"b\\u0000.json\"}",
       std::string("1:14: \"b") + '\0' + ".json\" is no path of a file\n"},
      {"levels are no object", "{\"levels\":[null]}",
       "1:11: this must be of the type object, not array\n"},
      {"an unknown rule", "{\"levels\": {\"mising\": \"off\"}}", "1:13: unknown name \"mising\"\n"},
      {"an unknown level", "{\"levels\": {\"missing\": \"of\"}}",
       "1:24: unknown value \"of\"; the values are off, note, warning, error\n"},
      {"a level is no text", "{\"levels\": {\"missing\": false}}",
       "1:24: this must be of the type string, not boolean\n"},
      {"failOn", "{\"failOn\": \"all\"}",
       "1:12: unknown value \"all\"; the values are never, note, warning, error\n"},
      {"a reason is missing",
       "{\"ignored\": [{\"file\": \"a\", \"key\": \"b\", \"rule\": \"tag\"}]}",
       "1:14: \"reason\" is missing here\n"},
      {"an empty reason",
       "{\"ignored\": [{\"file\": \"a\", \"key\": \"b\", \"rule\": \"tag\", \"reason\": \"\"}]}",
       "1:65: \"reason\" must not be empty\n"},
      {"an unknown rule is ignored",
       "{\"ignored\": [{\"file\": \"a\", \"key\": \"b\", \"rule\": \"tagg\", \"reason\": \"r\"}]}",
       "1:14: there is no rule \"tagg\"\n"},
      {"an unknown name in a record", "{\"limits\": [{\"keys\": \"a\", \"characters\": 3}]}",
       "1:14: unknown name \"keys\"\n1:13: \"key\" is missing here\n"},
      {"a limit of 0", "{\"limits\": [{\"key\": \"a\", \"characters\": 0}]}",
       "1:13: \"characters\" must be a whole number from 1 to 1000000\n"},
      {"half a character", "{\"limits\": [{\"key\": \"a\", \"characters\": 1.5}]}",
       "1:13: \"characters\" must be a whole number from 1 to 1000000\n"},
      {"several faults", "{\"x\": 1,\n\"y\": 2}",
       "1:2: unknown name \"x\"\n2:1: unknown name \"y\"\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Faults(row.bytes), row.faults);
  }
}

// More would need a time that grows with the square of the size.
TEST(Project, SaysTwentyFaultsAtMost) {
  std::string bytes = "{";
  for (int i = 0; i < 200'000; ++i) {
    bytes += "\"name " + std::to_string(i) + "\": 1,\n";
  }
  const std::string faults = Faults(bytes + "\"base\": \"en.txt\"}");
  EXPECT_EQ(std::count(faults.begin(), faults.end(), '\n'), 20);
  EXPECT_EQ(faults.substr(0, 27), "1:2: unknown name \"name 0\"\n");
}

Project Parse(const std::string& bytes, const fs::path& path) {
  std::vector<ProjectFault> faults;
  Project project = ParseProject(bytes, path, faults);
  EXPECT_TRUE(faults.empty());
  return project;
}

TEST(Project, KeepsWhatTheFileSays) {
  const Project project = Parse(
      "{\"base\": \"texts/en.txt\", \"levels\": {\"missing\": \"error\", \"tag\": \"off\"},"
      "\"failOn\": \"warning\", \"baseline\": \"../known.json\","
      "\"limits\": [{\"key\": \"menu.*\", \"characters\": 20}]}",
      "a/b/kelmo-lang.json");
  EXPECT_EQ(project.base->generic_u8string(), "a/b/texts/en.txt");
  EXPECT_EQ(project.baseline->generic_u8string(), "a/known.json");
  EXPECT_EQ(project.failOn, FailOn::kWarning);
  EXPECT_EQ(project.levels[static_cast<std::size_t>(RuleId::kMissing)], Level::kError);
  EXPECT_EQ(project.levels[static_cast<std::size_t>(RuleId::kTag)], Level::kOff);
  EXPECT_EQ(project.levels[static_cast<std::size_t>(RuleId::kEmpty)], std::nullopt);
  ASSERT_EQ(project.limits.size(), 1U);
  EXPECT_EQ(project.limits[0].keys, "menu.*");
  EXPECT_EQ(project.limits[0].characters, 20U);
}

TEST(Project, IgnoresByFileKeyAndRule) {
  const Project project = Parse(
      "{\"ignored\": ["
      "{\"file\": \"LANG/de.txt\", \"key\": \"menu.*\", \"rule\": \"missing\", \"reason\": \"r\"},"
      "{\"file\": \"*\", \"key\": \"\", \"rule\": \"header\", \"reason\": \"r\"}]}",
      "top/kelmo-lang.json");
  EXPECT_NE(project.FindIgnored("top/LANG/de.txt", RuleId::kMissing, "menu.file"), nullptr);
  EXPECT_NE(project.FindIgnored("top/other/../LANG/./de.txt", RuleId::kMissing, "menu.file"),
            nullptr);
  EXPECT_EQ(project.FindIgnored("top/LANG/fr.txt", RuleId::kMissing, "menu.file"), nullptr);
  EXPECT_EQ(project.FindIgnored("LANG/de.txt", RuleId::kMissing, "menu.file"), nullptr);
  EXPECT_EQ(project.FindIgnored("top/LANG/de.txt", RuleId::kMissing, "button"), nullptr);
  EXPECT_EQ(project.FindIgnored("top/LANG/de.txt", RuleId::kEmpty, "menu.file"), nullptr);
  EXPECT_NE(project.FindIgnored("top/x/y.txt", RuleId::kHeader, ""), nullptr);
  EXPECT_EQ(project.FindIgnored("top/x/y.txt", RuleId::kHeader, "k"), nullptr);
}

TEST(Project, GetsOneMoreIgnoredFindingAndKeepsTheRest) {
  struct Row {
    const char* name;
    std::string before;
    std::string after;
  };
  const std::string record =
      "{\"file\": \"de.txt\", \"key\": \"a \\\"b\\\"\", \"rule\": \"tag\", \"reason\": \"r\"}";
  const Row rows[] = {
      {"a new file", "", "{\n  \"ignored\": [\n    " + record + "\n  ]\n}\n"},
      {"an empty object", "{}\n", "{\n  \"ignored\": [\n    " + record + "\n  ]\n}\n"},
      {"other members stay", "{ \"levels\":  {\"tag\":\"off\"} }",
       "{ \"levels\":  {\"tag\":\"off\"},\n  \"ignored\": [\n    " + record + "\n  ] }"},
      {"an empty list", "{\"ignored\": [ ], \"base\": \"en.txt\"}",
       "{\"ignored\": [\n    " + record + "\n  ], \"base\": \"en.txt\"}"},
      {"a list with an entry",
       "{\"ignored\": [\n    {\"file\":\"x\",\"key\":\"y\",\"rule\":\"tag\",\"reason\":\"z\"}\n  "
       "]\n}",
       "{\"ignored\": [\n    {\"file\":\"x\",\"key\":\"y\",\"rule\":\"tag\",\"reason\":\"z\"},\n   "
       " " +
           record + "\n  ]\n}"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const std::string after = WithIgnored(row.before, {"de.txt", "a \"b\"", RuleId::kTag}, "r");
    EXPECT_EQ(after, row.after);
    const Project project = Parse(after, "kelmo-lang.json");
    EXPECT_NE(project.FindIgnored("de.txt", RuleId::kTag, "a \"b\""), nullptr);
  }
}

TEST(Project, IsTheNearestFileUpwardsInTheRepository) {
  const fs::path top =
      fs::temp_directory_path() / fs::u8path(u8"kelmo \u043F\u0440\u043E\u0435\u043A\u0442");
  fs::remove_all(top);
  fs::create_directories(top / "repository" / ".git");
  fs::create_directories(top / "repository" / "a" / "b");
  std::ofstream(top / "kelmo-lang.json") << "{}";
  EXPECT_EQ(FindProjectFile(top / "repository" / "a" / "b"), std::nullopt);
  EXPECT_EQ(FindProjectFile(top / "other"), top / "kelmo-lang.json");
  std::ofstream(top / "repository" / "kelmo-lang.json") << "{}";
  EXPECT_EQ(FindProjectFile(top / "repository" / "a" / "b"),
            top / "repository" / "kelmo-lang.json");
  std::ofstream(top / "repository" / "a" / "kelmo-lang.json") << "{}";
  EXPECT_EQ(FindProjectFile(top / "repository" / "a" / "b"),
            top / "repository" / "a" / "kelmo-lang.json");
  // A file that is named without a folder has an empty one.
  const fs::path before = fs::current_path();
  fs::current_path(top / "repository" / "a");
  const std::optional<fs::path> found = FindProjectFile("");
  fs::current_path(before);
  EXPECT_EQ(found, fs::canonical(top / "repository" / "a" / "kelmo-lang.json"));
  // A path that begins with two backslashes, as those of other computers do.
  const std::string start = fs::path::preferred_separator == '/' ? "" : R"(\\?\)";
  const fs::path far = fs::u8path(start + (top / "repository" / "a").u8string());
  const std::optional<fs::path> foundFar = FindProjectFile(far / "b" / ".." / "b");
  ASSERT_TRUE(foundFar);
  EXPECT_EQ(foundFar->native(), (far / "kelmo-lang.json").native());
  EXPECT_EQ(NameInProject("//server/a/b/fr.txt", "//server/a/kelmo-lang.json"), "b/fr.txt");
  EXPECT_EQ(Parse("{\"base\": \"./en.txt\"}", *foundFar).base->native(), (far / "en.txt").native());
  fs::remove_all(top);
}

}  // namespace
}  // namespace KelmoLibs::Lang
