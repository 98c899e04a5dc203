// The layout of the examples' output. Other tests compare the real output with these files.

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tests/support/read_file.h"
#include "text/utf8.h"

namespace KelmoLibs::Localize {
namespace {

TEST(ExampleOutput, FitsATerminalOf80ColumnsWithoutTrailingBlanks) {
  for (const char* const name : {"demo_host", "first_host", "first_quantity", "first_texts",
                                 "first_values", "pump_sheet", "pump_values", "reload"}) {
    std::istringstream lines(ReadProjectFile(std::string("tests/data/examples/") + name + ".txt"));
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
      EXPECT_LE(DecodeUtf8(line).size(), 80U) << name << ": " << line;
      EXPECT_TRUE(line.empty() || line.back() != ' ') << name << ": " << line;
    }
    EXPECT_GE(count, 1U) << name;
  }
}

}  // namespace
}  // namespace KelmoLibs::Localize
