// kelmo finds the unit table in its own file, whatever the file is called.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "kelmo/kelmo_runtime.h"
#include "tests/support/scratch_folder.h"

namespace {

TEST(RenamedKelmo, HasTheUnitsOfItsOwnFile) {
  const ScratchFolder folder;
  const std::string path = (folder.Path() / "renamed.library").string();
  std::filesystem::copy_file(std::filesystem::u8path(KELMO_PATH), path);
  ASSERT_EQ(kelmo_runtime_open(path.c_str(), nullptr, 0), KELMO_OK);
  kelmo_units_loader* loader = nullptr;
  kelmo_units* units = nullptr;
  ASSERT_EQ(kelmo_units_loader_create(KELMO_UNITS_AFTER_INIT, &loader), KELMO_OK);
  ASSERT_EQ(kelmo_units_loader_finish(loader, &units, nullptr), KELMO_OK);
  EXPECT_EQ(kelmo_units_count(units, 0), 5U);
  kelmo_unit inch = {};
  inch.size = sizeof inch;
  ASSERT_EQ(kelmo_units_find(units, nullptr, 10002, &inch), KELMO_OK);
  EXPECT_EQ(inch.factor, 0.0273);
  kelmo_units_release(units);
  kelmo_units_loader_destroy(loader);
  kelmo_runtime_close();
}

}  // namespace
