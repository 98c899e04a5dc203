// Units for tests.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/problem_list.h"
#include "host/unit_collection.h"
#include "host/unit_files.h"
#include "host/unit_loader.h"
#include "host/unit_set.h"
#include "tests/support/read_file.h"

/// The units of a file in memory, which has the name "units.txt".
inline KelmoLibs::Host::UnitCollection CollectUnits(
    std::string_view bytes, KelmoLibs::Host::ProblemList* problems = nullptr) {
  KelmoLibs::Host::UnitCollection units;
  KelmoLibs::Host::ReadUnitFile(bytes, "units.txt", units, problems);
  return units;
}

/// The units that the project ships, with the names of their languages.
inline KelmoLibs::Host::UnitCollection EngineeringUnits(
    const std::vector<std::string>& languages = {},
    KelmoLibs::Host::ProblemList* problems = nullptr) {
  KelmoLibs::Host::UnitCollection units;
  KelmoLibs::Host::ReadUnitFile(ReadProjectFile("units/engineering.txt"), "engineering.txt", units,
                                problems);
  for (const std::string& language : languages) {
    const std::string name = language + "-val.txt";
    KelmoLibs::Host::ReadUnitNames(ReadProjectFile("units/LANG/" + name), name, units, problems);
  }
  return units;
}

/// The units with which a loader begins.
inline KelmoLibs::Host::UnitCollection UnitsAtStart(KelmoLibs::Host::UnitStart start) {
  KelmoLibs::Host::UnitLoader loader;
  if (!loader.Start(start)) {
    ADD_FAILURE() << "this program has no unit table";
  }
  return loader.Collected();
}
