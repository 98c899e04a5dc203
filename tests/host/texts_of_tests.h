// Texts and views for tests.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/loader.h"
#include "host/problem_list.h"
#include "host/view.h"

/// The texts of dictionaries, whose names are their languages with ".txt".
inline KelmoLibs::Host::TextCollection LoadTexts(const std::vector<std::string>& dictionaries,
                                                 bool hasPercent = false) {
  KelmoLibs::Host::Loader loader;
  KelmoLibs::Host::ReadingOptions options;
  options.hasPercent = hasPercent;
  for (const std::string& bytes : dictionaries) {
    const std::string name = bytes.substr(0, bytes.find_first_of(" \n")) + ".txt";
    loader.AddMemory(bytes, name, options, nullptr);
  }
  return loader.Finish(nullptr);
}

/// Options with those languages, the first choice first.
inline KelmoLibs::Host::ViewOptions ViewOf(std::vector<std::string_view> languages) {
  KelmoLibs::Host::ViewOptions options;
  options.languages = std::move(languages);
  return options;
}

/// The problems as people read them.
inline std::vector<std::string> Printed(const KelmoLibs::Host::ProblemList& problems) {
  std::vector<std::string> lines;
  for (const auto& problem : problems.All()) {
    lines.push_back(Print(problem));
  }
  return lines;
}
