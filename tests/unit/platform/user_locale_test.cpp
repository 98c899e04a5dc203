// The calls of setlocale and their order, with a fake setlocale. regional_settings_test.cpp uses
// the real one.

#include "platform/user_locale.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

namespace {

using namespace KelmoLibs::Localize;

using Calls = std::vector<std::string>;

Calls calls;
Calls failing;  // calls that return null, each once

// Like the real one, it returns a text that the next call overwrites.
char* FakeSetLocale(int category, const char* name) {
  static std::string result;
  EXPECT_EQ(category, LC_ALL);
  calls.push_back(name == nullptr ? "query" : "set " + std::string(name));
  if (!failing.empty() && failing.front() == calls.back()) {
    failing.erase(failing.begin());
    return nullptr;
  }
  result = name == nullptr ? "host's" : "overwritten";
  return result.data();
}

TEST(UserLocale, IsSetForTheCallAndRestored) {
  const struct {
    const char* name;
    Calls failing;
    Calls calls;
  } rows[] = {
      {"no failure", {}, {"query", "set ", "set host's"}},
      {"the user's locale is not installed", {"set "}, {"query", "set ", "set host's"}},
      {"no memory to restore at the first attempt",
       {"set host's"},
       {"query", "set ", "set host's", "set host's"}},
      {"no memory to restore at both attempts",
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

TEST(UserLocale, IsNotSetIfTheOldOneIsUnknown) {
  calls.clear();
  failing = {"query"};
  EXPECT_THROW(FormatUnderUserLocale(FakeSetLocale, 1.5, 1), std::bad_alloc);
  EXPECT_EQ(calls, (Calls{"query"}));
}

}  // namespace
