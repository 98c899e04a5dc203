// The HTML page: for lint --html, and for people who start the program by mouse.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "lang/report/html_report.h"
#include "lang/texts/texts.h"
#include "platform/desktop.h"

namespace KelmoLibs::Lang {

/// Writes the page about `report` to the file `path`, and mended copies of dictionaries into a folder
/// beside it, "NAME-mended" for "NAME.html": those that fix mends without being told an encoding, and
/// one for each encoding that a file may have. Never writes over a file that was read. Returns what
/// cannot be written; a page without some of the copies is written all the same.
std::vector<PageProblem> WritePage(const Report& report, std::vector<PageProblem> problems,
                                   const std::filesystem::path& path, const Texts& texts);

/// Whether the program was started for these files: there are only paths of existing files and
/// folders among the arguments, or none at all.
bool AreDropped(const std::vector<std::string>& arguments);

/// Checks `paths`, or without any the folder of the program (the working folder, if there are no
/// dictionaries), and opens the page. It is written into a new folder under the user's local data.
/// If this fails, a message stays in the console until Enter is pressed. Returns the exit status.
int ShowPage(const std::vector<std::string>& paths, const Desktop& desktop, const Texts& texts);

}  // namespace KelmoLibs::Lang
