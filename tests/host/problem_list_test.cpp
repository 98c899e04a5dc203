#include "host/problem_list.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

#include "kelmo/kelmo.h"

namespace {

using KelmoLibs::Host::Print;
using KelmoLibs::Host::Problem;
using KelmoLibs::Host::ProblemCode;
using KelmoLibs::Host::ProblemList;
using KelmoLibs::Host::ProblemSeverity;
using KelmoLibs::Host::SentenceOf;

TEST(ProblemPrint, WritesOneLineForPeople) {
  struct PrintCase {
    const char* name;
    Problem problem;
    const char* expected;
  };
  const std::vector<PrintCase> cases = {
      {"a place in a file",
       {ProblemCode::kKeyRepeated, ProblemSeverity::kWarning, 7, 1, "ok", "de", "de.txt", ""},
       R"(de.txt:7:1: warning: EL101. Key already declared. (key "ok") (language "de"))"},
      {"a line without a column",
       {ProblemCode::kLineBreak, ProblemSeverity::kNote, 7, 0, "ok", "de", "de.txt",
        "2 line breaks"},
       "de.txt:7: note: A backslash and an n are read as a line break: 2 line breaks (key \"ok\") "
       "(language \"de\")"},
      {"a file without a place",
       {ProblemCode::kCannotRead, ProblemSeverity::kError, 0, 0, "", "", "de.txt", "no such file"},
       "de.txt: error: EL111. Dictionary file not found: no such file"},
      {"no file",
       {ProblemCode::kKeyMissing, ProblemSeverity::kWarning, 0, 0, "ok", "de", "", ""},
       R"(warning: EL121. Key not found in dictionary (key "ok") (language "de"))"},
      {"control characters and ends of lines",
       {ProblemCode::kKeyMissing, ProblemSeverity::kWarning, 0, 0,
        "\x1B\n\x7F|\u0080\u0085\u009F\u00A0|\u2027\u2028\u2029\u0442", "", "", ""},
       "warning: EL121. Key not found in dictionary (key \"\\x1B\\x0A\\x7F|\\xC2\\x80\\xC2\\x85"
       "\\xC2\\x9F\u00A0|\u2027\\xE2\\x80\\xA8\\xE2\\x80\\xA9\u0442\")"},
      {"only a language",
       {ProblemCode::kUnknownLanguage, ProblemSeverity::kWarning, 0, 0, "", "fr", "", ""},
       "warning: EL112. Dictionary not found (language \"fr\")"},
      {"a detail behind a sentence with its point",
       {ProblemCode::kKeyRepeated, ProblemSeverity::kWarning, 7, 1, "", "", "de.txt", "it stays"},
       "de.txt:7:1: warning: EL101. Key already declared. (it stays)"},
      {"a part of a character in a key",
       {ProblemCode::kCannotRead, ProblemSeverity::kError, 0, 0, "\xC2|", "", "de.txt", "\xC2"},
       "de.txt: error: EL111. Dictionary file not found: \xC2 (key \"\xC2|\")"},
      {"a part of a character in a detail",
       {ProblemCode::kCannotRead, ProblemSeverity::kError, 0, 0, "", "", "de.txt", "\xC2"},
       "de.txt: error: EL111. Dictionary file not found: \xC2"},
      {"control characters",
       {ProblemCode::kKeyMissing, ProblemSeverity::kWarning, 0, 0,
        std::string("a\0\n\x1F \x7F\u00E4", 8), "", "", ""},
       "warning: EL121. Key not found in dictionary (key \"a\\x00\\x0A\\x1F \\x7F\u00E4\")"},
  };
  for (const PrintCase& row : cases) {
    EXPECT_EQ(Print(row.problem), row.expected) << row.name;
  }
}

TEST(Problem, HasTheNumberOfTheHeaderAndASentence) {
  struct SentenceCase {
    int code;
    ProblemCode problem;
    const char* sentence;
  };
  const std::vector<SentenceCase> cases = {
      {KELMO_PROBLEM_KEY_REPEATED, ProblemCode::kKeyRepeated, "EL101. Key already declared."},
      {KELMO_PROBLEM_CANNOT_READ, ProblemCode::kCannotRead, "EL111. Dictionary file not found"},
      {KELMO_PROBLEM_UNKNOWN_LANGUAGE, ProblemCode::kUnknownLanguage,
       "EL112. Dictionary not found"},
      {KELMO_PROBLEM_KEY_MISSING, ProblemCode::kKeyMissing, "EL121. Key not found in dictionary"},
      {KELMO_PROBLEM_NOT_UTF8, ProblemCode::kNotUtf8, "Bytes that are not UTF-8 are dropped"},
      {KELMO_PROBLEM_BYTE_ORDER_MARK, ProblemCode::kByteOrderMark,
       "A byte-order mark stands in front of the id of the language"},
      {KELMO_PROBLEM_EMPTY_FILE, ProblemCode::kEmptyFile, "The file is empty"},
      {KELMO_PROBLEM_CONTROL_Z, ProblemCode::kControlZ, "A byte 0x1A ends the text"},
      {KELMO_PROBLEM_LINE_BREAK, ProblemCode::kLineBreak,
       "A backslash and an n are read as a line break"},
      {KELMO_PROBLEM_NO_LANGUAGE_ID, ProblemCode::kNoLanguageId,
       "The first line does not begin with the id of a language"},
      {KELMO_PROBLEM_EMPTY_FOLDER, ProblemCode::kEmptyFolder, "The folder has no dictionary"},
      {KELMO_PROBLEM_NO_LANGUAGE, ProblemCode::kNoLanguage, "The view has no language"},
      {KELMO_PROBLEM_OVERRIDES_NOTHING, ProblemCode::kOverridesNothing,
       "The text overrides no other text"},
      {KELMO_PROBLEM_PLACEHOLDER, ProblemCode::kPlaceholder, "A placeholder cannot be filled"},
  };
  for (const SentenceCase& row : cases) {
    EXPECT_EQ(static_cast<int>(row.problem), row.code);
    EXPECT_EQ(SentenceOf(row.problem), row.sentence);
  }
  EXPECT_EQ(static_cast<int>(ProblemSeverity::kNote), KELMO_NOTE);
  EXPECT_EQ(static_cast<int>(ProblemSeverity::kWarning), KELMO_WARNING);
  EXPECT_EQ(static_cast<int>(ProblemSeverity::kError), KELMO_ERROR);
}

TEST(ProblemList, CountsWhatItCannotKeep) {
  ProblemList list;
  Problem problem;
  problem.key = "kept";
  list.Append([&] { return problem; });
  list.Append([]() -> Problem { throw std::bad_alloc(); });
  list.CountLost();
  ASSERT_EQ(list.All().size(), 1U);
  EXPECT_EQ(list.All().front().key, "kept");
  EXPECT_EQ(list.Lost(), 2U);
  list.Clear();
  EXPECT_TRUE(list.All().empty());
  EXPECT_EQ(list.Lost(), 0U);
}

// Hosts have the strings of a problem while they append others.
TEST(ProblemList, KeepsEachProblemAtItsAddress) {
  ProblemList problems;
  const auto append = [&problems] {
    problems.Append([] {
      Problem problem;
      problem.key = "short";
      return problem;
    });
  };
  append();
  const Problem* const first = &problems.All().front();
  const char* const key = first->key.data();
  for (int i = 0; i < 1000; ++i) {
    append();
  }
  EXPECT_EQ(&problems.All().front(), first);
  EXPECT_EQ(problems.All().front().key.data(), key);
}

}  // namespace
