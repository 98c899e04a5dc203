// Pages and e-mail addresses of texts.
#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "tests/lang/text_rule_results.h"

namespace KelmoLibs::Lang {
namespace {

std::string Repeated(const std::string& piece) {
  constexpr int kCount = 100'000;
  std::string text;
  for (int i = 0; i < kCount; ++i) {
    text += piece;
  }
  return text;
}

// Time that grows with the square of the length would be minutes.
TEST(Addresses, TakeLinearTime) {
  const TextRow rows[] = {
      {"alike", "de", Repeated("http://b.example/ "), Repeated("http://a.example/ "), ""},
      {"different in all texts", "de", Repeated("http://ones.example/ "),
       Repeated("http://one.example/ "), "warning address.other http://one.example/"},
      {"one in the base", "de", "http://ones.example/", Repeated("http://one.example/ "),
       "warning address.other http://one.example/"},
      {"mistake behind all others", "de", "http://ones.example/",
       Repeated("http://other.example/ ") + "http://one.example/",
       "warning address.other http://one.example/"},
      {"schemes", "de", Repeated("https://x.example/ "), Repeated("http://"),
       "warning address.missing (all)"},
      {"one long address", "de", Repeated("http://a.example/") + "x", Repeated("http://a.example/"),
       ""},
      {"mail", "de", Repeated("me@two.example "), Repeated("me@one.example "), ""},
  };
  for (const TextRow& row : rows) {
    SCOPED_TRACE(row.name);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(ResultsOf(CheckAddresses, row), row.expected);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
