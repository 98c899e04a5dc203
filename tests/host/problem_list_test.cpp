#include "host/problem_list.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using KelmoLibs::Host::Print;
using KelmoLibs::Host::Problem;
using KelmoLibs::Host::ProblemCode;
using KelmoLibs::Host::ProblemSeverity;

struct PrintCase {
  const char* name;
  Problem problem;
  const char* expected;
};

TEST(ProblemPrint, WritesOneLineForPeople) {
  const std::vector<PrintCase> cases = {
      {"a place in a file",
       {ProblemCode::kKeyRepeated, ProblemSeverity::kWarning, 7, 1, "ok", "de", "de.txt", ""},
       "de.txt:7:1: warning: EL101. Key already declared. (key \"ok\") (language \"de\")"},
      {"a file without a place",
       {ProblemCode::kCannotRead, ProblemSeverity::kError, 0, 0, "", "", "de.txt", "no such file"},
       "de.txt: error: EL111. Dictionary file not found: no such file"},
      {"no file",
       {ProblemCode::kKeyMissing, ProblemSeverity::kWarning, 0, 0, "ok", "de", "", ""},
       "warning: EL121. Key not found in dictionary (key \"ok\") (language \"de\")"},
  };
  for (const PrintCase& row : cases) {
    EXPECT_EQ(Print(row.problem), row.expected) << row.name;
  }
}

}  // namespace
