// Which calls are made, in which order, by a setlocale that the test makes up. With the system's
// own: regional_settings_test.cpp.

#include "platform/user_locale.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

namespace {

using namespace KelmoLibs::Localize;

using Calls = std::vector<std::string>;

Calls calls;
Calls failing;  // calls that answer with null, each once

// As the real one, it answers in a text that the next call overwrites.
char* FakeSetLocale(int category, const char* name) {
  static std::string answer;
  EXPECT_EQ(category, LC_ALL);
  calls.push_back(name == nullptr ? "query" : "set " + std::string(name));
  if (!failing.empty() && failing.front() == calls.back()) {
    failing.erase(failing.begin());
    return nullptr;
  }
  answer = name == nullptr ? "host's" : "overwritten";
  return answer.data();
}

TEST(UserLocale, IsQueriedSwitchedToAndRestored) {
  const struct {
    const char* name;
    Calls failing;
    Calls calls;
  } rows[] = {
      {"as it should be", {}, {"query", "set ", "set host's"}},
      {"the user's is not installed", {"set "}, {"query", "set ", "set host's"}},
      {"no memory to restore, but then",
       {"set host's"},
       {"query", "set ", "set host's", "set host's"}},
      {"no memory to restore at all",
       {"set host's", "set host's"},
       {"query", "set ", "set host's", "set host's"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    calls.clear();
    failing = row.failing;
    EXPECT_EQ(FormatUnderUserLocale(FakeSetLocale, -1234.5678, 3), L"-1234.568");
    EXPECT_EQ(calls, row.calls);
  }
}

TEST(UserLocale, IsNotSwitchedToWithoutAWayBack) {
  calls.clear();
  failing = {"query"};
  EXPECT_THROW(FormatUnderUserLocale(FakeSetLocale, 1.5, 1), std::bad_alloc);
  EXPECT_EQ(calls, (Calls{"query"}));
}

}  // namespace
