// A program that was started by mouse: by a double click, or by files that were dropped on it.
#pragma once

#include <filesystem>
#include <optional>

namespace KelmoLibs::Lang {

/// What such a program needs, because its console closes with it.
struct Desktop {
  std::filesystem::path programFolder;  // where the file of the program is
  std::filesystem::path dataFolder;     // of the user, on this machine only; empty if there is none
  bool (*open)(const std::filesystem::path& file);  // in the program for such files; false: failed
  void (*waitForEnter)();
};

/// Nothing if somebody started the program in a terminal or by a script. On Linux always nothing.
std::optional<Desktop> StartedFromDesktop();

}  // namespace KelmoLibs::Lang
