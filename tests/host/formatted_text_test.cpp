#include "host/formatted_text.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/host/texts_of_tests.h"
#include "tests/support/allocation_probe.h"

namespace {

using KelmoLibs::Host::Argument;
using KelmoLibs::Host::MissingText;
using KelmoLibs::Host::ProblemList;
using KelmoLibs::Host::TextCollection;
using KelmoLibs::Host::TextSink;
using KelmoLibs::Host::View;
using KelmoLibs::Host::ViewOptions;
using KelmoLibs::Host::WriteFormatted;
using Lines = std::vector<std::string>;

std::string Formatted(const View& view, std::string_view key, const std::vector<Argument>& list,
                      const Argument* count = nullptr, ProblemList* problems = nullptr) {
  std::string buffer(200, '?');
  TextSink sink(&buffer[0], buffer.size());
  WriteFormatted(view, key, {list.data(), list.size()}, count, sink, problems);
  buffer.resize(sink.Finish());
  return buffer;
}

Argument TextArgument(std::string_view text) {
  Argument argument;
  argument.value = text;
  return argument;
}

TEST(FormattedText, FillsTheTextThatIsFound) {
  const TextCollection texts =
      LoadTexts({"en\nhello Hello {0}!\nfiles.one one file\nfiles.other {0} files\n"});
  const View view(texts, ViewOf({"en"}), nullptr);
  EXPECT_EQ(Formatted(view, "hello", {TextArgument("Anna")}), "Hello Anna!");
  Argument count;
  count.value = std::int64_t{1};
  EXPECT_EQ(Formatted(view, "files", {count}, &count), "one file");
  count.value = std::int64_t{5};
  EXPECT_EQ(Formatted(view, "files", {count}, &count), "5 files");
}

TEST(FormattedText, ReadsPercentOnlyWhereTheLoadAskedForIt) {
  const TextCollection without = LoadTexts({"en\nhello Hello %1!\n"});
  const TextCollection with = LoadTexts({"en\nhello Hello %1!\n"}, true);
  EXPECT_EQ(Formatted(View(without, ViewOf({"en"}), nullptr), "hello", {TextArgument("Anna")}),
            "Hello %1!");
  EXPECT_EQ(Formatted(View(with, ViewOf({"en"}), nullptr), "hello", {TextArgument("Anna")}),
            "Hello Anna!");
}

TEST(FormattedText, WritesWhatStandsForAMissingKeyAsItIs) {
  const TextCollection texts = LoadTexts({"en\nok OK\n"});
  ViewOptions options = ViewOf({"en"});
  options.missing = MissingText::kMarked;
  const View view(texts, options, nullptr);
  EXPECT_EQ(Formatted(view, "{0}", {TextArgument("Anna")}), "[[{0}]]");
  options.missing = MissingText::kNothing;
  EXPECT_EQ(Formatted(View(texts, options, nullptr), "{0}", {TextArgument("Anna")}), "");
}

// Only kelmo_view_text keeps marked forms, of which there is a limit.
TEST(FormattedText, MarksMissingKeysWithoutLimitAndWithoutMemory) {
  const TextCollection texts = LoadTexts({"en\nok OK\n"});
  ViewOptions options = ViewOf({"en"});
  options.missing = MissingText::kMarked;
  const View view(texts, options, nullptr);
  std::array<char, 20> buffer = {};
  for (int i = 10000; i < 20000; ++i) {
    const std::string key = std::to_string(i);
    const std::size_t allocations = allocation_probe::Count();
    TextSink sink(buffer.data(), buffer.size());
    EXPECT_FALSE(WriteFormatted(view, key, {}, nullptr, sink, nullptr));
    sink.Finish();
    ASSERT_EQ(allocation_probe::Count(), allocations) << key;
    ASSERT_EQ(std::string(buffer.data()), "[[" + key + "]]");
  }
}

// The call that writes tells them.
TEST(FormattedText, TellsNothingAndTakesNoMemoryIfItOnlyMeasures) {
  const TextCollection texts = LoadTexts({"en\nhello Hello {name} {7}!\n"});
  ViewOptions options = ViewOf({"en"});
  options.problemLimit = 10;
  const View view(texts, options, nullptr);
  ProblemList problems;
  const std::size_t allocations = allocation_probe::Count();
  for (ProblemList* const list : {static_cast<ProblemList*>(nullptr), &problems}) {
    TextSink found(nullptr, 0);
    EXPECT_TRUE(WriteFormatted(view, "hello", {}, nullptr, found, list));
    EXPECT_EQ(found.Finish(), std::string_view("Hello {name} {7}!").size());
    TextSink missing(nullptr, 0);
    EXPECT_FALSE(WriteFormatted(view, "missing", {}, nullptr, missing, list));
    EXPECT_EQ(missing.Finish(), std::string_view("missing").size());
  }
  EXPECT_EQ(allocation_probe::Count(), allocations);
  EXPECT_EQ(view.TakeProblems(&problems), 0U);
  EXPECT_EQ(Printed(problems), Lines());
}

TEST(FormattedText, TellsFaultsInTheListOrElseInTheRecord) {
  const TextCollection texts = LoadTexts({"en\nok OK\nhello Hello {name} {7}!\n"});
  ViewOptions options = ViewOf({"en"});
  options.problemLimit = 10;
  const View view(texts, options, nullptr);
  const Lines expected = {
      "en.txt:3: error: A placeholder cannot be filled: {name}: there is no argument with the name "
      "name "
      "(key \"hello\") (language \"en\")",
      "en.txt:3: error: A placeholder cannot be filled: {7}: there is no argument 7 (key "
      "\"hello\") "
      "(language \"en\")"};
  ProblemList given;
  EXPECT_EQ(Formatted(view, "hello", {TextArgument("Anna")}, nullptr, &given), "Hello {name} {7}!");
  EXPECT_EQ(Printed(given), expected);
  ProblemList recorded;
  view.TakeProblems(&recorded);
  EXPECT_EQ(Printed(recorded), Lines());
  Formatted(view, "hello", {TextArgument("Anna")});
  Formatted(view, "hello", {TextArgument("Anna")});
  view.TakeProblems(&recorded);
  EXPECT_EQ(Printed(recorded), expected);
}

}  // namespace
