// Reads a table of a page, for a test that checks it.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/support/read_file.h"

using Cells = std::vector<std::string>;

/// The rows of the table of `page`, a file below docs/, whose heading begins with `firstColumn`.
inline std::vector<Cells> TableOfPage(const std::string& page, const std::string& firstColumn) {
  std::istringstream file(ReadProjectFile("docs/" + page));
  std::vector<Cells> rows;
  bool inTable = false;
  for (std::string line; std::getline(file, line);) {
    if (line.rfind("| " + firstColumn + " |", 0) == 0) {
      inTable = true;
      std::getline(file, line);  // the rule below the heading
      continue;
    }
    inTable = inTable && line.rfind("| ", 0) == 0;
    if (!inTable) {
      continue;
    }
    Cells cells;
    std::size_t begin = 2;
    for (std::size_t end = 0; (end = line.find(" |", begin)) != std::string::npos;
         begin = end + 3) {
      cells.push_back(line.substr(begin, end - begin));
    }
    rows.push_back(cells);
  }
  return rows;
}
