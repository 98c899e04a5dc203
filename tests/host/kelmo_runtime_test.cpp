// kelmo_runtime.h: a program that is not linked to kelmo loads it, and refuses other files. This is
// linked with the header's code, once compiled as C and once as C++.
#include "kelmo/kelmo_runtime.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "kelmo/kelmo.hpp"
#include "tests/support/scratch_folder.h"

namespace {

constexpr std::string_view kDictionary =
    "de Deutsch\nfiles.one\t{count} Datei\nfiles.other\t{count} Dateien\n";

struct Opened {
  kelmo_status status;
  std::string reason;
};

Opened Open(const std::string& path) {
  std::array<char, 1000> reason{};
  reason.fill('x');
  const kelmo_status status = kelmo_runtime_open(path.c_str(), reason.data(), reason.size());
  return {status, reason.data()};
}

// The statuses of all functions that have one, called with null for each pointer.
std::vector<kelmo_status> StatusesWithNull() {
  return {
      kelmo_problems_create(nullptr),
      kelmo_problems_get(nullptr, 0, nullptr),
      kelmo_problems_print(nullptr, 0, nullptr, 0, nullptr),
      kelmo_loader_create(nullptr),
      kelmo_loader_add_file(nullptr, nullptr, 0, nullptr, nullptr),
      kelmo_loader_add_folder(nullptr, nullptr, 0, nullptr, nullptr),
      kelmo_loader_add_memory(nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr),
      kelmo_loader_finish(nullptr, nullptr, nullptr),
      kelmo_texts_language(nullptr, 0, nullptr),
      kelmo_texts_match_language(nullptr, nullptr, 0, 0, nullptr),
      kelmo_texts_entry(nullptr, 0, 0, nullptr),
      kelmo_number_format_of_language(nullptr, 0, nullptr),
      kelmo_number_format_of_user(nullptr),
      kelmo_number_print(nullptr, nullptr, nullptr, 0, nullptr),
      kelmo_view_create(nullptr, nullptr, nullptr, nullptr),
      kelmo_view_find(nullptr, nullptr, 0, nullptr, nullptr),
      kelmo_view_format(nullptr, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, nullptr),
      kelmo_view_take_problems(nullptr, nullptr, nullptr),
      kelmo_system_language(0, nullptr, 1, nullptr),
      kelmo_units_loader_create(0, nullptr),
      kelmo_units_loader_add(nullptr, nullptr, nullptr),
      kelmo_units_loader_add_file(nullptr, nullptr, 0, 0, nullptr),
      kelmo_units_loader_add_memory(nullptr, nullptr, 0, nullptr, 0, 0, nullptr),
      kelmo_units_loader_finish(nullptr, nullptr, nullptr),
      kelmo_units_kind(nullptr, nullptr, 0, nullptr),
      kelmo_units_at(nullptr, nullptr, 0, 0, nullptr),
      kelmo_units_find(nullptr, nullptr, 0, nullptr),
      kelmo_units_find_text(nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr),
      kelmo_units_convert(nullptr, 0, 0, nullptr, 0, nullptr),
      kelmo_quantity_add(nullptr, nullptr, nullptr, nullptr),
      kelmo_quantity_subtract(nullptr, nullptr, nullptr, nullptr),
      kelmo_quantity_multiply(nullptr, nullptr, 0, nullptr),
      kelmo_quantity_divide(nullptr, nullptr, 0, nullptr),
      kelmo_quantity_ratio(nullptr, nullptr, nullptr, nullptr),
      kelmo_quantity_sum(nullptr, nullptr, 0, nullptr),
      kelmo_quantity_compare(nullptr, nullptr, nullptr, nullptr),
      kelmo_quantity_hash(nullptr, nullptr, nullptr),
      kelmo_quantity_convert(nullptr, nullptr, 0, 0, nullptr),
      kelmo_quantity_round(nullptr, nullptr, nullptr),
      kelmo_quantity_print(nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr),
      kelmo_quantity_read(nullptr, nullptr, nullptr, 0, nullptr, nullptr, nullptr),
  };
}

class KelmoRuntime : public testing::Test {
 protected:
  void TearDown() override { kelmo_runtime_close(); }
};

TEST_F(KelmoRuntime, ALoadedLibraryServesTheFaceForCxx) {
  const Opened opened = Open(KELMO_FILE);
  ASSERT_EQ(opened.reason, "");
  ASSERT_EQ(opened.status, KELMO_OK);
  EXPECT_EQ(kelmo_runtime_is_open(), 1);
  EXPECT_EQ(kelmo_version(), KELMO_VERSION);
  EXPECT_STREQ(kelmo_status_name(KELMO_NOT_FOUND), "KELMO_NOT_FOUND");

  kelmo::Loader loader;
  loader.add_memory(kDictionary, "de.txt");
  const kelmo::View view(loader.finish(), {"de"});
  EXPECT_EQ(view.tr("files", kelmo::count(1)), "1 Datei");
  EXPECT_EQ(view.tr("files", kelmo::count(5)), "5 Dateien");
  EXPECT_EQ(view.tr("menu"), "menu");

  kelmo::UnitsLoader units_loader;
  units_loader.add({10001, 1, "m", "metre"});
  units_loader.add({10003, 0.001, "mm", "millimetre"});
  const kelmo::Quantity length = units_loader.finish().read("1,5 m", view);
  EXPECT_EQ((length + length).to(10003).str(view), "3000\u00A0mm");
}

TEST_F(KelmoRuntime, ALibraryMayBeOpenedAgainOnceItIsClosed) {
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(Open(KELMO_FILE).status, KELMO_OK);
    EXPECT_EQ(kelmo_version(), KELMO_VERSION);
    kelmo_runtime_close();
    EXPECT_EQ(kelmo_runtime_is_open(), 0);
    EXPECT_EQ(kelmo_version(), 0u);
    kelmo_runtime_close();  // does nothing
  }
}

TEST_F(KelmoRuntime, EachFunctionIsThatOfTheLoadedLibrary) {
  ASSERT_EQ(Open(KELMO_FILE).status, KELMO_OK);
  for (const kelmo_status status : StatusesWithNull()) {
    EXPECT_EQ(status, KELMO_INVALID_ARGUMENT);
  }
  kelmo_problems* problems = nullptr;
  ASSERT_EQ(kelmo_problems_create(&problems), KELMO_OK);
  kelmo_loader* loader = nullptr;
  ASSERT_EQ(kelmo_loader_create(&loader), KELMO_OK);
  EXPECT_EQ(kelmo_loader_add_memory(loader, "", 0, "de.txt", 6, nullptr, problems), KELMO_OK);
  EXPECT_EQ(kelmo_problems_count(problems), 1u);
  kelmo_problems_clear(problems);
  EXPECT_EQ(kelmo_problems_count(problems), 0u);
  EXPECT_EQ(kelmo_problems_lost(problems), 0u);
  EXPECT_EQ(kelmo_loader_add_memory(loader, "de\nk t\n", 7, "de.txt", 6, nullptr, nullptr),
            KELMO_OK);
  kelmo_texts* texts = nullptr;
  ASSERT_EQ(kelmo_loader_finish(loader, &texts, nullptr), KELMO_OK);
  EXPECT_EQ(kelmo_texts_language_count(texts), 1u);
  EXPECT_EQ(kelmo_texts_retain(texts), texts);
  kelmo_view* view = nullptr;
  ASSERT_EQ(kelmo_view_create(texts, nullptr, &view, nullptr), KELMO_OK);
  EXPECT_EQ(kelmo_view_texts(view), texts);
  EXPECT_EQ(kelmo_view_retain(view), view);
  EXPECT_STREQ(kelmo_view_text(view, "key", KELMO_ZERO_TERMINATED, nullptr), "key");
  kelmo_view_release(view);
  kelmo_view_release(view);
  kelmo_texts_release(texts);
  kelmo_texts_release(texts);

  kelmo_units_loader* units_loader = nullptr;
  ASSERT_EQ(kelmo_units_loader_create(KELMO_UNITS_NONE, &units_loader), KELMO_OK);
  EXPECT_EQ(
      kelmo_units_loader_add_memory(units_loader, "10001\t1\t\tm\tmetre\n", KELMO_ZERO_TERMINATED,
                                    "units.txt", 9, KELMO_UNITS_FILE, problems),
      KELMO_OK);
  kelmo_units* units = nullptr;
  ASSERT_EQ(kelmo_units_loader_finish(units_loader, &units, problems), KELMO_OK);
  EXPECT_EQ(kelmo_units_kind_count(units), 1u);
  EXPECT_EQ(kelmo_units_count(units, 10), 1u);
  EXPECT_EQ(kelmo_units_retain(units), units);
  kelmo_units_release(units);
  kelmo_units_release(units);
  kelmo_units_loader_destroy(units_loader);
  kelmo_loader_destroy(loader);
  kelmo_problems_destroy(problems);
}

TEST_F(KelmoRuntime, ASecondLibraryIsRefusedAndTheFirstStays) {
  ASSERT_EQ(Open(KELMO_FILE).status, KELMO_OK);
  const Opened second = Open(KELMO_FILE);
  EXPECT_EQ(second.status, KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(second.reason, "a library is open already");
  EXPECT_EQ(kelmo_version(), KELMO_VERSION);
}

TEST_F(KelmoRuntime, APathMayHaveBlanksAndLettersBeyondAscii) {
  const ScratchFolder folder;
  const std::filesystem::path file =
      folder.Path() / PortablePath(L"\u043C\u043E\u0439 lib\\\u00FC.dll");
  std::filesystem::create_directories(file.parent_path());
  std::filesystem::copy_file(std::filesystem::u8path(KELMO_COPIED_FILE), file);
  for (const std::filesystem::path& path : {file, std::filesystem::absolute(file)}) {
    const Opened opened = Open(path.u8string());
    EXPECT_EQ(opened.reason, "");
    EXPECT_EQ(opened.status, KELMO_OK);
    kelmo_runtime_close();
  }
}

TEST_F(KelmoRuntime, AFileThatIsNotTheLibraryIsRefused) {
  const ScratchFolder folder;
  folder.Write(L"text.dll", "This is not a library.\n");
  const std::string text = (folder.Path() / "text.dll").u8string();
  const std::string missing = (folder.Path() / "missing.dll").u8string();
  const std::string needed = ", and the program needs " + std::to_string(KELMO_VERSION);
  const auto version = [&](int difference) {
    return "the file has the version " + std::to_string(KELMO_VERSION + difference) + needed;
  };
  struct Row {
    const char* name;
    std::string path;
    kelmo_status status;
    std::string reason;  // the beginning
  };
  const std::vector<Row> rows = {
      {"no file", missing, KELMO_CANNOT_READ, "the system cannot load this file"},
      {"no file in the folders that are searched", "kelmo_missing.dll", KELMO_CANNOT_READ,
       "the system cannot load this file"},
      {"a folder", folder.Path().u8string(), KELMO_CANNOT_READ, "the system cannot load this file"},
      {"not a library", text, KELMO_CANNOT_READ, "the system cannot load this file"},
      {"another library", KELMO_OTHER_FILE, KELMO_RUNTIME_NO_FUNCTION,
       "the file lacks the function kelmo_version"},
      {"a function is missing", KELMO_SAME_VERSION_FILE, KELMO_RUNTIME_NO_FUNCTION,
       "the file lacks the function kelmo_status_name"},
      {"a later version", KELMO_LATER_VERSION_FILE, KELMO_RUNTIME_NO_FUNCTION,
       "the file lacks the function kelmo_status_name"},
      {"an earlier version", KELMO_EARLIER_VERSION_FILE, KELMO_RUNTIME_TOO_OLD, version(-1)},
      {"another interface", KELMO_NEXT_MAJOR_FILE, KELMO_RUNTIME_TOO_NEW, version(10000)},
      {"the empty path", "", KELMO_INVALID_ARGUMENT, "there is no path"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const Opened opened = Open(row.path);
    EXPECT_EQ(opened.status, row.status);
    EXPECT_EQ(opened.reason.substr(0, row.reason.size()), row.reason) << opened.reason;
    EXPECT_EQ(kelmo_runtime_open(row.path.c_str(), nullptr, 0), row.status);
    EXPECT_EQ(kelmo_runtime_is_open(), 0);
  }
}

TEST_F(KelmoRuntime, EachStatusHasItsNameWithAndWithoutALibrary) {
  for (const bool isOpen : {false, true}) {
    SCOPED_TRACE(isOpen ? "with" : "without");
    ASSERT_TRUE(!isOpen || Open(KELMO_FILE).status == KELMO_OK);
    EXPECT_STREQ(kelmo_status_name(KELMO_OK), "KELMO_OK");
    EXPECT_STREQ(kelmo_status_name(KELMO_NOT_FOUND), "KELMO_NOT_FOUND");
    EXPECT_STREQ(kelmo_status_name(KELMO_INVALID_ARGUMENT), "KELMO_INVALID_ARGUMENT");
    EXPECT_STREQ(kelmo_status_name(KELMO_OUT_OF_MEMORY), "KELMO_OUT_OF_MEMORY");
    EXPECT_STREQ(kelmo_status_name(KELMO_CANNOT_READ), "KELMO_CANNOT_READ");
    EXPECT_STREQ(kelmo_status_name(KELMO_INVALID_UTF8), "KELMO_INVALID_UTF8");
    EXPECT_STREQ(kelmo_status_name(KELMO_UNKNOWN_UNIT), "KELMO_UNKNOWN_UNIT");
    EXPECT_STREQ(kelmo_status_name(KELMO_DIFFERENT_KINDS), "KELMO_DIFFERENT_KINDS");
    EXPECT_STREQ(kelmo_status_name(KELMO_POINT_UNIT), "KELMO_POINT_UNIT");
    EXPECT_STREQ(kelmo_status_name(KELMO_CANNOT_ROUND), "KELMO_CANNOT_ROUND");
    EXPECT_STREQ(kelmo_status_name(KELMO_AMBIGUOUS_UNIT), "KELMO_AMBIGUOUS_UNIT");
    EXPECT_STREQ(kelmo_status_name(KELMO_INVALID_TEXT), "KELMO_INVALID_TEXT");
    EXPECT_STREQ(kelmo_status_name(KELMO_RUNTIME_NOT_OPEN), "KELMO_RUNTIME_NOT_OPEN");
    EXPECT_STREQ(kelmo_status_name(KELMO_RUNTIME_NO_FUNCTION), "KELMO_RUNTIME_NO_FUNCTION");
    EXPECT_STREQ(kelmo_status_name(KELMO_RUNTIME_TOO_OLD), "KELMO_RUNTIME_TOO_OLD");
    EXPECT_STREQ(kelmo_status_name(KELMO_RUNTIME_TOO_NEW), "KELMO_RUNTIME_TOO_NEW");
    EXPECT_STREQ(kelmo_status_name(-1005), "unknown status");
  }
}

TEST_F(KelmoRuntime, NullIsRefused) {
  std::array<char, 100> reason{};
  EXPECT_EQ(kelmo_runtime_open(nullptr, reason.data(), reason.size()), KELMO_INVALID_ARGUMENT);
  EXPECT_STREQ(reason.data(), "there is no path");
  EXPECT_EQ(kelmo_runtime_open(nullptr, nullptr, 0), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_runtime_open(KELMO_FILE, nullptr, 1), KELMO_INVALID_ARGUMENT);
  EXPECT_EQ(kelmo_runtime_is_open(), 0);
}

TEST_F(KelmoRuntime, AReasonIsCutBetweenCharacters) {
  const std::string path = u8"\u043D\u0435\u0442/\u20AC.dll";
  const std::string whole = Open(path).reason;
  ASSERT_NE(whole.find(path), std::string::npos) << whole;
  for (std::size_t capacity = 1; capacity <= whole.size() + 1; ++capacity) {
    std::size_t size = capacity - 1;
    while (size < whole.size() && (static_cast<unsigned char>(whole[size]) & 0xC0) == 0x80) {
      --size;
    }
    std::string reason(capacity + 1, 'x');
    kelmo_runtime_open(path.c_str(), reason.data(), capacity);
    EXPECT_EQ(reason.c_str(), whole.substr(0, size));
    EXPECT_EQ(reason.back(), 'x');
  }
}

TEST_F(KelmoRuntime, WithoutALibraryEachFunctionSaysSo) {
  EXPECT_EQ(kelmo_version(), 0u);
  kelmo_problems_destroy(nullptr);
  kelmo_problems_clear(nullptr);
  kelmo_loader_destroy(nullptr);
  kelmo_texts_release(nullptr);
  kelmo_view_release(nullptr);
  kelmo_units_loader_destroy(nullptr);
  kelmo_units_release(nullptr);
  EXPECT_EQ(kelmo_problems_count(nullptr), 0u);
  EXPECT_EQ(kelmo_problems_lost(nullptr), 0u);
  EXPECT_EQ(kelmo_texts_language_count(nullptr), 0u);
  EXPECT_EQ(kelmo_texts_retain(nullptr), nullptr);
  EXPECT_EQ(kelmo_view_retain(nullptr), nullptr);
  EXPECT_EQ(kelmo_view_texts(nullptr), nullptr);
  EXPECT_EQ(kelmo_units_retain(nullptr), nullptr);
  EXPECT_EQ(kelmo_units_kind_count(nullptr), 0u);
  EXPECT_EQ(kelmo_units_count(nullptr, 0), 0u);
  std::size_t size = 7;
  EXPECT_STREQ(kelmo_view_text(nullptr, "key", KELMO_ZERO_TERMINATED, &size), "");
  EXPECT_EQ(size, 0u);
  EXPECT_STREQ(kelmo_view_text(nullptr, "key", KELMO_ZERO_TERMINATED, nullptr), "");

  for (const kelmo_status status : StatusesWithNull()) {
    EXPECT_EQ(status, KELMO_RUNTIME_NOT_OPEN);
  }
  EXPECT_THROW(kelmo::number_format_of_user(), kelmo::Error);
  try {
    const kelmo::Loader loader;
    FAIL() << "a loader was made";
  } catch (const kelmo::Error& error) {
    EXPECT_EQ(error.status(), KELMO_RUNTIME_NOT_OPEN);
    EXPECT_STREQ(error.what(), "kelmo: KELMO_RUNTIME_NOT_OPEN");
  }
}

}  // namespace
