// Failing allocations. In each call the first operator new fails, then the second, and so on until
// the call succeeds: once only that allocation, once also all later ones. The status tells it, or a
// list counts a lost problem; nothing leaks; the same call succeeds afterwards, with all texts.
//
// Two programs contain this file: one with the objects of kelmo, and, on Linux only, one with the
// built file. On Windows a loaded library does not call the program's operator new.

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <iostream>
#include <iterator>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "kelmo/kelmo.h"
#include "kelmo/kelmo.hpp"
#include "tests/host/owned.h"
#include "tests/host/owned_units.h"
#include "tests/support/allocation_probe.h"
#include "tests/support/scratch_folder.h"

namespace {

using allocation_probe::FailAllocation;
using allocation_probe::Failing;
using allocation_probe::LeakCheck;

constexpr std::size_t kZero = KELMO_ZERO_TERMINATED;

// More entries than the table's first capacity; a repeated key, placeholders, bytes that are not
// UTF-8.
const std::string& Dictionary() {
  static const std::string bytes = [] {
    std::string lines = "en English, a name that is too long to need no memory\n";
    for (int i = 0; i < 150; ++i) {
      lines += "key." + std::to_string(i) + " text\n";
    }
    return lines +
           "key.1 repeated, a text that is too long\n"
           "placeholders {0} {1} {wrong}\n"
           "files.one a file\nfiles.other {count} files\\n\n"
           "last \xFF"
           "end\n";
  }();
  return bytes;
}

std::string path;    // of a file with these bytes
std::string folder;  // of that file

// Points, a kind, texts that need memory, and lines that are not right.
constexpr const char* kUnits =
    "10000\t\t\tL\tthe name of a kind, which needs memory\n"
    "10001\t1\t\tm\tthe name of a unit, which needs memory\n"
    "18001\t1\t\tK\tkelvin\t19001\n19001\t1\t\tK\tkelvin\n"
    "18002\t5/9\t1\tF\tno unit of differences has this factor\t19001\n"
    "10001\t2\t\trepeated\t\na line that has too few fields\n";
constexpr const char* kNames =
    "de\n10001\tM\tder Name einer Einheit, der Speicher braucht\n"
    "20001\tno\tunit has this code, and that is told\n10002 x\n";
std::string unitsPath;               // of a file with kUnits
const kelmo_view* german = nullptr;  // a view in German

// The objects of a host.
struct World {
  World() { Reset(); }

  void Reset() {
    kelmo_problems* list = nullptr;
    kelmo_loader* made = nullptr;
    EXPECT_EQ(kelmo_problems_create(&list), KELMO_OK);
    EXPECT_EQ(kelmo_loader_create(&made), KELMO_OK);
    problems.reset(list);
    loader.reset(made);
  }
  void Load() const {
    EXPECT_EQ(kelmo_loader_add_memory(loader.get(), Dictionary().data(), Dictionary().size(), "en",
                                      kZero, nullptr, nullptr),
              KELMO_OK);
  }
  // Two of three stand for nothing. To look for the forms of the last one takes memory.
  void LoadOverrides() const {
    const std::string bytes = "en\nkey.1 own\nfiles own\n" + std::string(300, 'k') + ".one own\n";
    auto options = Sized<kelmo_load_options>();
    options.flags = KELMO_LOAD_OVERRIDE;
    EXPECT_EQ(kelmo_loader_add_memory(loader.get(), bytes.data(), bytes.size(), "own", kZero,
                                      &options, nullptr),
              KELMO_OK);
  }
  void Seal() {
    Load();
    kelmo_texts* made = nullptr;
    EXPECT_EQ(kelmo_loader_finish(loader.get(), &made, nullptr), KELMO_OK);
    texts.reset(made);
  }
  kelmo_status MakeView() {
    static const kelmo_string languages[] = {{"a language that no texts have at all", kZero},
                                             {"en", kZero}};
    auto options = Sized<kelmo_view_options>();
    options.languages = languages;
    options.language_count = 2;
    options.missing = KELMO_MISSING_MARKED;
    options.problem_limit = 10;
    kelmo_view* made = nullptr;
    const kelmo_status status = kelmo_view_create(texts.get(), &options, &made, problems.get());
    EXPECT_EQ(status == KELMO_OK, made != nullptr);
    view.reset(made);
    return status;
  }
  void View() {
    Seal();
    EXPECT_EQ(MakeView(), KELMO_OK);
    kelmo_problems_clear(problems.get());
  }

  kelmo_status LoadUnits(std::int32_t format, const char* bytes, kelmo_problems* told) {
    return kelmo_units_loader_add_memory(unitsLoader.get(), bytes, kZero,
                                         "the name of a file that needs memory", kZero, format,
                                         told);
  }
  void MakeUnitsLoader() {
    unitsLoader = NewUnitsLoader(KELMO_UNITS_BUILT_IN);
    EXPECT_EQ(LoadUnits(KELMO_UNITS_FILE, kUnits, nullptr), KELMO_OK);
    EXPECT_EQ(LoadUnits(KELMO_UNITS_NAMES, kNames, nullptr), KELMO_OK);
  }
  void SealUnits() {
    MakeUnitsLoader();
    units = FinishUnits(*unitsLoader);
  }

  std::size_t Told() const {
    return kelmo_problems_count(problems.get()) + kelmo_problems_lost(problems.get());
  }

  Owned<kelmo_problems> problems;
  Owned<kelmo_loader> loader;
  Owned<kelmo_texts> texts;
  Owned<kelmo_view> view;
  OwnedUnitsLoader unitsLoader;
  OwnedUnits units;
};

// All units that were sealed, or of the loader.
std::string UnitsOf(World& world) {
  if (world.units == nullptr && world.unitsLoader != nullptr) {
    world.units = FinishUnits(*world.unitsLoader);
  }
  std::string lines;
  auto unit = Sized<kelmo_unit>();
  for (std::size_t i = 0; kelmo_units_at(world.units.get(), german, 0, i, &unit) == KELMO_OK; ++i) {
    lines += std::to_string(unit.code) + ' ' + unit.symbol.data + ' ' + unit.name.data + '\n';
  }
  return lines;
}

// All entries of the texts that were sealed, or of the loader.
std::string EntriesOf(World& world) {
  if (world.texts == nullptr) {
    kelmo_texts* made = nullptr;
    EXPECT_EQ(kelmo_loader_finish(world.loader.get(), &made, nullptr), KELMO_OK);
    world.texts.reset(made);
  }
  std::string lines;
  auto text = Sized<kelmo_text>();
  for (std::size_t language = 0; language < kelmo_texts_language_count(world.texts.get());
       ++language) {
    for (std::size_t i = 0; kelmo_texts_entry(world.texts.get(), language, i, &text) == KELMO_OK;
         ++i) {
      lines += std::to_string(text.line) + ' ' + text.key.data + '=' + text.utf8 + '|';
      lines += std::to_string(text.utf16_size) + '\n';
    }
  }
  return lines + UnitsOf(world);
}

kelmo_status AddMemory(World& world, std::uint32_t flags) {
  auto options = Sized<kelmo_load_options>();
  options.flags = flags;
  return kelmo_loader_add_memory(world.loader.get(), Dictionary().data(), Dictionary().size(),
                                 "the name of a file that needs memory", kZero, &options,
                                 world.problems.get());
}

kelmo_status Format(World& world, const char* key, kelmo_problems* problems) {
  std::array<kelmo_argument, 20> arguments = {};
  arguments.fill(kelmo_integer_argument(1));
  arguments[1] = kelmo_count_argument(2);
  std::array<char, 300> buffer = {};
  return kelmo_view_format(world.view.get(), key, kZero, arguments.data(), arguments.size(),
                           buffer.data(), buffer.size(), nullptr, problems);
}

const std::string& LongKey() {
  static const std::string key(300, 'k');
  return key;
}

kelmo_status MakeUnitsLoader(World& world, std::int32_t start) {
  kelmo_units_loader* made = nullptr;
  const kelmo_status status = kelmo_units_loader_create(start, &made);
  EXPECT_EQ(status == KELMO_OK, made != nullptr);
  world.unitsLoader.reset(made);
  return status;
}

// Every function for units and quantities that takes no memory. KELMO_OK if all give that.
kelmo_status UseUnits(World& world) {
  const kelmo_units* const units = world.units.get();
  const kelmo_quantity metre = kelmo_quantity_of(1.5, 0.1, 0, 10001);
  const kelmo_quantity inch = kelmo_quantity_of(2.5, 0.1, 0, 10002);
  std::array<kelmo_quantity, 2> both = {metre, inch};
  kelmo_quantity result = {};
  auto unit = Sized<kelmo_unit>();
  double number = 2.5;
  std::int32_t order = 0;
  std::uint64_t hash = 0;
  std::array<char, 100> buffer = {};
  kelmo_units_release(kelmo_units_retain(world.units.get()));
  EXPECT_GT(kelmo_units_kind_count(units) + kelmo_units_count(units, 10), 0U);
  const kelmo_argument argument = kelmo_quantity_argument(units, &metre);
  const std::array<kelmo_status, 18> statuses = {
      kelmo_units_kind(units, german, 0, &unit),
      kelmo_units_at(units, german, 10, 0, &unit),
      kelmo_units_find(units, german, 10001, &unit),
      kelmo_units_find_text(units, german, 0, "M", 1, &unit, world.problems.get()),
      kelmo_units_convert(units, 10002, 10001, &number, 1, &number),
      kelmo_quantity_add(units, &metre, &inch, &result),
      kelmo_quantity_subtract(units, &metre, &inch, &result),
      kelmo_quantity_multiply(units, &metre, 2, &result),
      kelmo_quantity_divide(units, &metre, 2, &result),
      kelmo_quantity_ratio(units, &metre, &inch, &number),
      kelmo_quantity_sum(units, both.data(), both.size(), &result),
      kelmo_quantity_compare(units, &metre, &inch, &order),
      kelmo_quantity_hash(units, &metre, &hash),
      kelmo_quantity_convert(units, both.data(), both.size(), 10001, both.data()),
      kelmo_quantity_round(units, &metre, &number),
      kelmo_quantity_print(units, german, &metre, nullptr, buffer.data(), buffer.size(), nullptr),
      kelmo_quantity_read(units, nullptr, "1.5 in", kZero, nullptr, &result, world.problems.get()),
      kelmo_view_format(german, "q", 1, &argument, 1, buffer.data(), buffer.size(), nullptr,
                        world.problems.get()),
  };
  for (const kelmo_status status : statuses) {
    if (status != KELMO_OK) {
      return status;
    }
  }
  return KELMO_OK;
}

struct Call {
  const char* name;
  void (*before)(World& world);
  kelmo_status (*make)(World& world);
  kelmo_status success;
  // Whether the number of problems in the list, the lost ones included, is that of a call in which
  // nothing fails, whenever the status is that of success.
  bool tells;
};

const Call kTakingMemory[] = {
    {"problems_create", [](World&) {},
     [](World& world) {
       kelmo_problems* made = nullptr;
       const kelmo_status status = kelmo_problems_create(&made);
       EXPECT_EQ(status == KELMO_OK, made != nullptr);
       world.problems.reset(made);
       return status;
     },
     KELMO_OK, false},
    {"loader_create", [](World&) {},
     [](World& world) {
       kelmo_loader* made = nullptr;
       const kelmo_status status = kelmo_loader_create(&made);
       EXPECT_EQ(status == KELMO_OK, made != nullptr);
       world.loader.reset(made);
       return status;
     },
     KELMO_OK, false},
    {"loader_add_memory", [](World&) {}, [](World& world) { return AddMemory(world, 0); }, KELMO_OK,
     true},
    {"loader_add_memory, lenient, with UTF-16", [](World&) {},
     [](World& world) { return AddMemory(world, KELMO_LOAD_LENIENT | KELMO_LOAD_UTF16); }, KELMO_OK,
     true},
    {"loader_add_memory to a language that exists", [](World& world) { world.Load(); },
     [](World& world) {
       return kelmo_loader_add_memory(world.loader.get(), "en\nnew text\nkey.2 again\n", kZero,
                                      "another name of a file, which needs memory", kZero, nullptr,
                                      world.problems.get());
     },
     KELMO_OK, true},
    {"loader_add_file", [](World&) {},
     [](World& world) {
       return kelmo_loader_add_file(world.loader.get(), path.data(), path.size(), nullptr,
                                    world.problems.get());
     },
     KELMO_OK, true},
    {"loader_add_file without the file", [](World&) {},
     [](World& world) {
       return kelmo_loader_add_file(world.loader.get(), "no such file in this folder", kZero,
                                    nullptr, world.problems.get());
     },
     KELMO_CANNOT_READ, true},
    {"loader_add_folder", [](World&) {},
     [](World& world) {
       return kelmo_loader_add_folder(world.loader.get(), folder.data(), folder.size(), nullptr,
                                      world.problems.get());
     },
     KELMO_OK, true},
    {"loader_finish with overrides that stand for nothing",
     [](World& world) {
       world.LoadOverrides();
       world.Load();
     },
     [](World& world) {
       if (world.texts != nullptr) {  // made the first time
         return kelmo_status{KELMO_OK};
       }
       kelmo_texts* made = nullptr;
       const kelmo_status status =
           kelmo_loader_finish(world.loader.get(), &made, world.problems.get());
       EXPECT_EQ(status == KELMO_OK, made != nullptr);
       if (made != nullptr) {
         world.texts.reset(made);
       }
       return status;
     },
     KELMO_OK, true},
    {"view_create", [](World& world) { world.Seal(); },
     [](World& world) { return world.MakeView(); }, KELMO_OK, true},
    {"view_find of a missing key", [](World& world) { world.View(); },
     [](World& world) {
       auto text = Sized<kelmo_text>();
       return kelmo_view_find(world.view.get(), "a key that no language has at all", kZero, nullptr,
                              &text);
     },
     KELMO_NOT_FOUND, false},
    {"view_find of a form of a long key", [](World& world) { world.View(); },
     [](World& world) {
       auto text = Sized<kelmo_text>();
       const kelmo_argument count = kelmo_count_argument(1);
       return kelmo_view_find(world.view.get(), LongKey().data(), LongKey().size(), &count, &text);
     },
     KELMO_NOT_FOUND, false},
    {"view_text of a missing key", [](World& world) { world.View(); },
     [](World& world) {
       constexpr std::string_view kMarked = "[[a key that no language has at all]]";
       const std::string_view key = kMarked.substr(2, kMarked.size() - 4);
       std::size_t size = 0;
       const char* const text = kelmo_view_text(world.view.get(), key.data(), key.size(), &size);
       EXPECT_TRUE(text == key.data() || std::string_view(text, size) == kMarked);
       return kelmo_status{KELMO_OK};
     },
     KELMO_OK, false},
    {"view_format with placeholders that cannot be filled", [](World& world) { world.View(); },
     [](World& world) { return Format(world, "placeholders", world.problems.get()); }, KELMO_OK,
     true},
    {"view_format with problems for the record", [](World& world) { world.View(); },
     [](World& world) { return Format(world, "placeholders", nullptr); }, KELMO_OK, false},
    {"view_format of a missing key", [](World& world) { world.View(); },
     [](World& world) { return Format(world, LongKey().c_str(), nullptr); }, KELMO_NOT_FOUND,
     false},
    {"view_format of a missing key that is not UTF-8", [](World& world) { world.View(); },
     [](World& world) {
       return Format(world, "a key that is not UTF-8 and needs memory \xFF", world.problems.get());
     },
     KELMO_NOT_FOUND, true},
    {"units_loader_create with the built-in units", [](World&) {},
     [](World& world) { return MakeUnitsLoader(world, KELMO_UNITS_BUILT_IN); }, KELMO_OK, false},
    {"units_loader_create with the units after Init", [](World&) {},
     [](World& world) { return MakeUnitsLoader(world, KELMO_UNITS_AFTER_INIT); }, KELMO_OK, false},
    {"units_loader_add", [](World& world) { world.MakeUnitsLoader(); },
     [](World& world) {
       auto unit = Sized<kelmo_unit>();
       unit.code = 10900;
       unit.factor = 1;
       unit.symbol = {"a symbol that is long and needs memory", kZero};
       return kelmo_units_loader_add(world.unitsLoader.get(), &unit, world.problems.get());
     },
     KELMO_OK, true},
    {"units_loader_add of a unit that is not allowed",
     [](World& world) { world.MakeUnitsLoader(); },
     [](World& world) {
       auto unit = Sized<kelmo_unit>();
       unit.code = 10900;
       return kelmo_units_loader_add(world.unitsLoader.get(), &unit, world.problems.get());
     },
     KELMO_INVALID_ARGUMENT, true},
    {"units_loader_add_file", [](World& world) { world.unitsLoader = NewUnitsLoader(); },
     [](World& world) {
       return kelmo_units_loader_add_file(world.unitsLoader.get(), unitsPath.data(),
                                          unitsPath.size(), KELMO_UNITS_FILE, world.problems.get());
     },
     KELMO_OK, true},
    {"units_loader_add_file without the file",
     [](World& world) { world.unitsLoader = NewUnitsLoader(); },
     [](World& world) {
       return kelmo_units_loader_add_file(world.unitsLoader.get(), "no such file in this folder",
                                          kZero, KELMO_UNITS_FILE, world.problems.get());
     },
     KELMO_CANNOT_READ, true},
    {"units_loader_add_memory of four fields",
     [](World& world) { world.unitsLoader = NewUnitsLoader(); },
     [](World& world) {
       return world.LoadUnits(KELMO_UNITS_FOUR_FIELDS,
                              "10001 1 m a_name_that_is_long_and_needs_memory\n"
                              "10002 2 in two words\n10003 x mm millimetre\n",
                              world.problems.get());
     },
     KELMO_OK, true},
    {"units_loader_add_memory of names", [](World& world) { world.MakeUnitsLoader(); },
     [](World& world) {
       return world.LoadUnits(KELMO_UNITS_NAMES,
                              "de\n10002\tZ\tein Name, der lang ist und Speicher braucht\nx\n",
                              world.problems.get());
     },
     KELMO_OK, true},
    {"units_loader_finish", [](World& world) { world.MakeUnitsLoader(); },
     [](World& world) {
       if (world.units != nullptr) {  // made the first time
         return kelmo_status{KELMO_OK};
       }
       kelmo_units* made = nullptr;
       const kelmo_status status =
           kelmo_units_loader_finish(world.unitsLoader.get(), &made, world.problems.get());
       EXPECT_EQ(status == KELMO_OK, made != nullptr);
       world.units.reset(made);
       return status;
     },
     KELMO_OK, true},
    {"units_find_text of an unknown unit", [](World& world) { world.SealUnits(); },
     [](World& world) {
       auto unit = Sized<kelmo_unit>();
       return kelmo_units_find_text(world.units.get(), nullptr, 0,
                                    "a text that is long and needs memory", kZero, &unit,
                                    world.problems.get());
     },
     KELMO_UNKNOWN_UNIT, true},
    {"quantity_read of a text that is not right", [](World& world) { world.SealUnits(); },
     [](World& world) {
       kelmo_quantity quantity = {};
       return kelmo_quantity_read(world.units.get(), nullptr,
                                  "no number, but a text that is long and needs memory", kZero,
                                  nullptr, &quantity, world.problems.get());
     },
     KELMO_INVALID_TEXT, true},
    {"problems_print",
     [](World& world) {
       kelmo_loader_add_file(world.loader.get(), "no such file in this folder", kZero, nullptr,
                             world.problems.get());
     },
     [](World& world) {
       std::array<char, 300> buffer = {};
       return kelmo_problems_print(world.problems.get(), 0, buffer.data(), buffer.size(), nullptr);
     },
     KELMO_OK, false},
};

const Call kTakingNone[] = {
    {"view_find", [](World& world) { world.View(); },
     [](World& world) {
       auto text = Sized<kelmo_text>();
       return kelmo_view_find(world.view.get(), "key.149", kZero, nullptr, &text);
     },
     KELMO_OK, false},
    {"view_text", [](World& world) { world.View(); },
     [](World& world) {
       EXPECT_STREQ(kelmo_view_text(world.view.get(), "key.149", kZero, nullptr), "text");
       return kelmo_status{KELMO_OK};
     },
     KELMO_OK, false},
    {"view_find of a plural form", [](World& world) { world.View(); },
     [](World& world) {
       auto text = Sized<kelmo_text>();
       const kelmo_argument count = kelmo_count_argument(1);
       return kelmo_view_find(world.view.get(), "files", kZero, &count, &text);
     },
     KELMO_OK, false},
    {"view_format", [](World& world) { world.View(); },
     [](World& world) {
       const kelmo_argument count = kelmo_count_argument(5);
       std::array<char, 50> buffer = {};
       return kelmo_view_format(world.view.get(), "files", kZero, &count, 1, buffer.data(),
                                buffer.size(), nullptr, world.problems.get());
     },
     KELMO_OK, true},
    {"texts_entry", [](World& world) { world.Seal(); },
     [](World& world) {
       auto text = Sized<kelmo_text>();
       return kelmo_texts_entry(world.texts.get(), 0, 7, &text);
     },
     KELMO_OK, false},
    {"units and quantities", [](World& world) { world.SealUnits(); }, UseUnits, KELMO_OK, true},
    {"number_print", [](World&) {},
     [](World&) {
       const kelmo_argument number = kelmo_number_argument(1e300, 20);
       std::array<char, 400> buffer = {};
       return kelmo_number_print(nullptr, &number, buffer.data(), buffer.size(), nullptr);
     },
     KELMO_OK, false},
};

class KelmoAllocationFailures : public testing::Test {
 protected:
  KelmoAllocationFailures() {
    folder_.Write(L"a dictionary with a long name.txt", Dictionary());
    path = (folder_.Path() / "a dictionary with a long name.txt").u8string();
    folder = folder_.Path().u8string();
    folder_.Write(L"units with a long name.tsv", kUnits);
    unitsPath = (folder_.Path() / "units with a long name.tsv").u8string();
    german = german_.get();
  }

  // Whether the n-th allocation has failed; if not, the call needs fewer.
  static bool FailOne(const Call& call, std::size_t n, Failing failing, const std::string& entries,
                      std::size_t told) {
    const LeakCheck everythingIsFreed;
    World world;
    call.before(world);
    kelmo_status status = KELMO_OK;
    bool hasFailed = false;
    {
      const FailAllocation failure(n, failing);
      status = call.make(world);
      hasFailed = failure.Happened();
    }
    if (!hasFailed || status != KELMO_OUT_OF_MEMORY) {
      EXPECT_EQ(status, call.success);
      EXPECT_TRUE(!call.tells || world.Told() == told) << world.Told() << " told of " << told;
    }
    if (world.problems == nullptr || world.loader == nullptr) {
      world.Reset();
    }
    EXPECT_EQ(call.make(world), call.success) << "again";
    EXPECT_EQ(EntriesOf(world), entries) << "again";
    return hasFailed;
  }

  static std::size_t FailEach(const Call& call, Failing failing) {
    std::string entries;
    std::size_t told = 0;
    {
      World world;
      call.before(world);
      EXPECT_EQ(call.make(world), call.success);
      told = world.Told();
      entries = EntriesOf(world);
    }
    for (std::size_t n = 1;; ++n) {
      SCOPED_TRACE(testing::Message()
                   << call.name << ": allocation " << n
                   << (failing == Failing::kOnce ? " fails" : " and all later ones fail"));
      if (!FailOne(call, n, failing, entries, told) || HasFailure()) {
        return n - 1;
      }
    }
  }

  const ScratchFolder folder_;
  const Owned<kelmo_view> german_ = ViewWith("de");
};

TEST_F(KelmoAllocationFailures, AreToldAndLeaveEverythingUsable) {
  std::size_t failures = 0;
  for (const Call& call : kTakingMemory) {
    for (const Failing failing : {Failing::kOnce, Failing::kFromThenOn}) {
      const std::size_t failed = FailEach(call, failing);
      ASSERT_FALSE(HasFailure());
      EXPECT_GT(failed, 0U) << call.name << " should allocate memory";
      failures += failed;
    }
  }
  std::cout << failures << " failures in " << std::size(kTakingMemory) << " calls\n";
}

TEST_F(KelmoAllocationFailures, DoNotHappenInCallsThatNeedNoMemory) {
  for (const Call& call : kTakingNone) {
    EXPECT_EQ(FailEach(call, Failing::kOnce), 0U) << call.name;
  }
}

// Misses and problems that the record of a view has no memory for are counted.
TEST_F(KelmoAllocationFailures, OfTheRecordAreCounted) {
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    World world;
    world.View();
    auto text = Sized<kelmo_text>();
    bool hasFailed = false;
    {
      const FailAllocation failure(n, Failing::kOnce);
      kelmo_view_find(world.view.get(), "a key that no language has at all", kZero, nullptr, &text);
      hasFailed = failure.Happened();
    }
    std::size_t lost = 99;
    EXPECT_EQ(kelmo_view_take_problems(world.view.get(), world.problems.get(), &lost), KELMO_OK);
    EXPECT_EQ(lost, hasFailed ? 1U : 0U);
    EXPECT_EQ(kelmo_problems_count(world.problems.get()), hasFailed ? 0U : 1U);
    if (!hasFailed) {
      EXPECT_GT(n, 1U);
      return;
    }
  }
}

// The calls of the C++ face, of which some have no memory for their problems: then it throws what is
// left to say.
TEST_F(KelmoAllocationFailures, AreExceptionsOfTheFace) {
  const auto load = [](const std::string& file) {
    kelmo::Loader loader;
    loader.add_file(file);
    const kelmo::View view(loader.finish(), {"en"});
    view.find(LongKey(), kelmo::count(1));
  };
  const std::string missing = "no such file in this folder";
  for (const std::string& file : {path, missing}) {
    for (const Failing failing : {Failing::kOnce, Failing::kFromThenOn}) {
      bool hasFailed = true;
      for (std::size_t n = 1; hasFailed; ++n) {
        SCOPED_TRACE(n);
        const FailAllocation failure(n, failing);
        try {
          load(file);
          EXPECT_EQ(file, path);
        } catch (const std::bad_alloc&) {
          EXPECT_TRUE(failure.Happened());
        } catch (const kelmo::Error& error) {
          EXPECT_EQ(file, missing);
          EXPECT_EQ(error.status(), KELMO_CANNOT_READ);
        }
        hasFailed = failure.Happened();
      }
    }
  }
}

TEST_F(KelmoAllocationFailures, OfTheListThatTakesTheRecordAreCounted) {
  World world;
  world.View();
  world.Reset();                     // a list with little memory
  constexpr std::size_t kKeys = 10;  // the limit of the view
  auto text = Sized<kelmo_text>();
  for (std::size_t i = 0; i < kKeys; ++i) {
    const std::string key = "a key that no language has: " + std::to_string(i);
    kelmo_view_find(world.view.get(), key.data(), key.size(), nullptr, &text);
  }
  {
    const FailAllocation failure(1, Failing::kFromThenOn);
    EXPECT_EQ(kelmo_view_take_problems(world.view.get(), world.problems.get(), nullptr), KELMO_OK);
  }
  const std::size_t lost = kelmo_problems_lost(world.problems.get());
  EXPECT_GT(lost, 0U);
  EXPECT_EQ(kelmo_problems_count(world.problems.get()) + lost, kKeys);
}

}  // namespace
