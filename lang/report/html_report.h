// The findings of a run as one HTML page, for people who open no terminal.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "lang/report/report.h"
#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {

/// A copy of a checked file in which faults are mended.
struct MendedCopy {
  std::uint32_t file = 0;         // index in Workspace::files
  std::string path;               // relative to the page, with slashes, UTF-8
  std::string readAs;             // if the encoding of the file is a guess: the one of this copy
  std::vector<Sentence> changes;  // what is mended
};

/// A file or folder that could not be checked.
struct PageProblem {
  std::string path;  // UTF-8
  Sentence reason;
};

struct Page {
  const Report& report;
  std::vector<PageProblem> problems;
  std::vector<MendedCopy> copies;
  std::string folderOfCopies;  // to open it by hand; empty if there are none
};

/// The page in the language of `texts`. It has no scripts and loads nothing. Everything from a file
/// is escaped, and isolated from the direction of the text around it.
std::string HtmlReport(const Page& page, const Texts& texts);

}  // namespace KelmoLibs::Lang
