// Units of kelmo.h that end with their scope, for tests in C++.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "kelmo/kelmo.h"
#include "tests/host/owned.h"

struct KelmoUnitsDestroyer {
  void operator()(kelmo_units_loader* loader) const { kelmo_units_loader_destroy(loader); }
  void operator()(kelmo_units* units) const { kelmo_units_release(units); }
};
using OwnedUnitsLoader = std::unique_ptr<kelmo_units_loader, KelmoUnitsDestroyer>;
using OwnedUnits = std::unique_ptr<kelmo_units, KelmoUnitsDestroyer>;

inline OwnedUnitsLoader NewUnitsLoader(int32_t start = KELMO_UNITS_NONE) {
  kelmo_units_loader* loader = nullptr;
  EXPECT_EQ(kelmo_units_loader_create(start, &loader), KELMO_OK);
  return OwnedUnitsLoader(loader);
}

/// Adds the units of a file in memory, in which everything is right.
inline void AddUnits(kelmo_units_loader& loader, std::string_view bytes) {
  kelmo_problems* problems = nullptr;
  EXPECT_EQ(kelmo_problems_create(&problems), KELMO_OK);
  const Owned<kelmo_problems> owner(problems);
  EXPECT_EQ(kelmo_units_loader_add_memory(&loader, bytes.data(), bytes.size(), "units.txt",
                                          KELMO_ZERO_TERMINATED, KELMO_UNITS_FILE, problems),
            KELMO_OK);
  EXPECT_EQ(kelmo_problems_count(problems), 0U);
}

inline OwnedUnits FinishUnits(kelmo_units_loader& loader) {
  kelmo_units* units = nullptr;
  EXPECT_EQ(kelmo_units_loader_finish(&loader, &units, nullptr), KELMO_OK);
  return OwnedUnits(units);
}

inline Owned<kelmo_problems> NewProblems() {
  kelmo_problems* problems = nullptr;
  EXPECT_EQ(kelmo_problems_create(&problems), KELMO_OK);
  return Owned<kelmo_problems>(problems);
}

/// All problems, one in a line.
inline std::string PrintedProblems(const kelmo_problems& problems) {
  std::string lines;
  for (std::size_t i = 0; i < kelmo_problems_count(&problems); ++i) {
    std::array<char, 1000> buffer = {};
    EXPECT_EQ(kelmo_problems_print(&problems, i, buffer.data(), buffer.size(), nullptr), KELMO_OK);
    lines.append(buffer.data()).append("\n");
  }
  return lines;
}

/// A view that wants one language. Its texts have an English one with the key "q".
inline Owned<kelmo_view> ViewWith(const char* language,
                                  const kelmo_number_format* numbers = nullptr) {
  kelmo_loader* loader = nullptr;
  EXPECT_EQ(kelmo_loader_create(&loader), KELMO_OK);
  const Owned<kelmo_loader> owner(loader);
  EXPECT_EQ(kelmo_loader_add_memory(loader, "en\nq is {0}\n", KELMO_ZERO_TERMINATED, "en.txt",
                                    KELMO_ZERO_TERMINATED, nullptr, nullptr),
            KELMO_OK);
  kelmo_texts* texts = nullptr;
  EXPECT_EQ(kelmo_loader_finish(loader, &texts, nullptr), KELMO_OK);
  const Owned<kelmo_texts> ownerOfTexts(texts);
  const std::array<kelmo_string, 2> languages = {
      {{language, KELMO_ZERO_TERMINATED}, {"en", KELMO_ZERO_TERMINATED}}};
  auto options = Sized<kelmo_view_options>();
  options.languages = languages.data();
  options.language_count = languages.size();
  options.numbers = numbers;
  kelmo_view* view = nullptr;
  EXPECT_EQ(kelmo_view_create(texts, &options, &view, nullptr), KELMO_OK);
  return Owned<kelmo_view>(view);
}
