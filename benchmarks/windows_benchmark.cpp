// The cost of the DLL for a host on Windows, beside that of the standard library's containers in
// the host itself: nanoseconds for one operation, the minimum of interleaved rounds.
//
//   windows_benchmark [ROUNDS]
#include <windows.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cwchar>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "benchmarks/support/catalogue.h"
#include "benchmarks/support/require.h"
#include "benchmarks/support/scratch_folder.h"
#include "kelmo_localizer.h"
#include "tests/support/random_numbers.h"

namespace benchmarks {
namespace {

using KelmoLibs::Localize::Phyval::Double;

constexpr int kDefaultRounds = 15;
constexpr std::size_t kOperations = 100000;  // of a batch, except for loads
constexpr std::size_t kLoadedEntries = 10000;
constexpr std::size_t kOperands = 256;

// Stores to these keep the compiler from removing the operations.
const volatile void* volatile usedAddress = nullptr;
volatile double usedNumber = 0;

struct Row {
  std::string name;
  std::size_t operations;
  std::function<void()> prepare;  // not timed
  std::function<void()> run;
  double nanoseconds = std::numeric_limits<double>::infinity();
};

struct Containers {
  Catalogue entries;  // shuffled
  std::map<std::wstring, std::wstring> sorted;
  std::unordered_map<std::wstring, std::wstring> hashed;
};

std::wstring Wide(std::string_view bytes) {
  const auto length = static_cast<int>(bytes.size());
  std::wstring text(bytes.size(), L'\0');
  text.resize(static_cast<std::size_t>(::MultiByteToWideChar(
      CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), length, text.data(), length)));
  return text;
}

Containers MakeContainers(std::size_t size) {
  Containers containers;
  containers.entries = MakeCatalogue(Language::kGerman, size);
  for (const Entry& entry : containers.entries) {
    containers.sorted.emplace(entry.key, entry.text);
    containers.hashed.emplace(entry.key, entry.text);
  }
  std::mt19937_64 random = MakeRandomNumbers();
  std::shuffle(containers.entries.begin(), containers.entries.end(), random);
  return containers;
}

// The simplest host without the library: it reads the whole file and decodes its lines into a map.
std::map<std::wstring, std::wstring> ReadIntoMap(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), {});
  std::map<std::wstring, std::wstring> texts;
  std::size_t begin = bytes.find('\n') + 1;
  while (begin < bytes.size()) {
    const std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
    const std::string_view line(bytes.data() + begin, end - begin);
    const std::size_t tab = std::min(line.find('\t'), line.size());
    texts.emplace(Wide(line.substr(0, tab)), Wide(line.substr(std::min(tab + 1, line.size()))));
    begin = end + 1;
  }
  return texts;
}

void Load(const char* fileName) {
  const std::filesystem::path file = ScratchFolder() / fileName;
  Require(
      LoadDictionary(file.parent_path().wstring().c_str(), file.filename().wstring().c_str()) >= 0,
      "a dictionary was not loaded");
}

void AddLookups(std::vector<Row>& rows, const Containers& containers) {
  const std::string id = std::to_string(containers.entries.size());
  WriteDictionary(ScratchFolder() / "lookup.txt", id, containers.entries);
  Load("lookup.txt");
  for (const auto& [key, text] : containers.entries) {
    Require(LANG(key.c_str()) == text, "LANG is wrong");
    Require(containers.sorted.at(key) == text && containers.hashed.at(key) == text,
            "a map is wrong");
  }
  Require(GetErrorsCount() == 0, "a load gave messages");

  const auto use = [id] { UseLanguage(Wide(id).c_str()); };
  const auto forAllKeys = [&containers](auto operation) {
    return [&containers, operation] {
      for (std::size_t done = 0; done < kOperations; done += containers.entries.size()) {
        for (const Entry& entry : containers.entries) {
          usedAddress = operation(entry.key);
        }
      }
    };
  };
  rows.push_back({"windows/shuffled/kelmo/" + id, kOperations, use,
                  forAllKeys([](const std::wstring& key) { return LANG(key.c_str()); })});
  rows.push_back({"windows/shuffled/std_map/" + id, kOperations, nullptr,
                  forAllKeys([&containers](const std::wstring& key) {
                    return containers.sorted.find(key)->second.c_str();
                  })});
  rows.push_back({"windows/shuffled/std_unordered_map/" + id, kOperations, nullptr,
                  forAllKeys([&containers](const std::wstring& key) {
                    return containers.hashed.find(key)->second.c_str();
                  })});
}

template <class Operation>
void AddRepeated(std::vector<Row>& rows, const std::string& name, Operation operation,
                 const std::function<void()>& prepare = nullptr) {
  rows.push_back({name, kOperations, prepare, [operation] {
                    for (std::size_t i = 0; i < kOperations; ++i) {
                      operation(i % kOperands);
                    }
                  }});
}

void AddMisses(std::vector<Row>& rows, const Containers& containers) {
  const std::string entries = std::to_string(containers.entries.size());
  const auto use = [entries] { UseLanguage(Wide(entries).c_str()); };
  use();
  static const std::wstring missing = MakeMissingKeys(1).front();
  const std::int64_t before = GetErrorsCount();
  Require(*LANG(missing.c_str()) == L'\0' && *LANG(missing.c_str()) == L'\0',
          "a missing key was found");
  Require(GetErrorsCount() == before + 1, "a missing key was not listed exactly once");
  AddRepeated(
      rows, "windows/miss/kelmo/" + entries,
      [](std::size_t) { usedAddress = LANG(missing.c_str()); }, use);
  AddRepeated(rows, "windows/miss/std_map/" + entries, [&containers](std::size_t) {
    const auto found = containers.sorted.find(missing);
    usedAddress = found == containers.sorted.end() ? nullptr : found->second.c_str();
  });
  AddRepeated(rows, "windows/miss/std_unordered_map/" + entries, [&containers](std::size_t) {
    const auto found = containers.hashed.find(missing);
    usedAddress = found == containers.hashed.end() ? nullptr : found->second.c_str();
  });
}

// Each load fills a new dictionary: the file gets another id before it.
void AddLoads(std::vector<Row>& rows) {
  static const Catalogue catalogue = MakeCatalogue(Language::kGerman, kLoadedEntries);
  const std::filesystem::path file = ScratchFolder() / "load.txt";
  const auto write = [file, round = 0]() mutable {
    WriteDictionary(file, "load" + std::to_string(round++), catalogue);
  };
  WriteDictionary(file, "check", catalogue);
  ClearErrors();
  Load("load.txt");
  Require(GetErrorsCount() == 0, "a load gave messages");
  const std::map<std::wstring, std::wstring> texts = ReadIntoMap(file);
  Require(texts.size() == kLoadedEntries, "a map lacks entries");
  for (const auto& [key, text] : catalogue) {
    Require(LANG(key.c_str()) == text && texts.at(key) == text, "a text was loaded wrongly");
  }
  const std::string entries = std::to_string(kLoadedEntries);
  rows.push_back(
      {"windows/load/kelmo/" + entries, kLoadedEntries, write, [] { Load("load.txt"); }});
  // The library keeps its texts. So the time to free those of the map does not count either.
  const auto kept = std::make_shared<std::map<std::wstring, std::wstring>>();
  rows.push_back({"windows/load/std_map/" + entries, kLoadedEntries, [kept] { kept->clear(); },
                  [file, kept] { *kept = ReadIntoMap(file); }});
}

std::wstring PrintedByToChars(double rounded, int decimals) {
  std::array<char, 64> digits = {};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), rounded,
                                 std::chars_format::fixed, decimals);
  std::wstring text(digits.data(), end.ptr);
  std::replace(text.begin(), text.end(), L'.', L',');
  return text;
}

void AddValues(std::vector<Row>& rows) {
  static std::vector<Double> meters;
  static std::vector<Double> inches;
  static std::vector<std::pair<double, int>> rounded;
  constexpr std::array<double, 7> kTolerances = {1, 0.1, 0.01, 0.001, 0.0001, 0.00001, 0.000001};
  RandomNumbers random(1);
  const auto number = [&random] { return 1000000 * random.Fraction(); };
  for (std::size_t i = 0; i < kOperands; ++i) {
    const std::size_t decimals = i % kTolerances.size();
    Double& meter = meters.emplace_back(number(), kTolerances[decimals], 0, 10001);
    Double& inch = inches.emplace_back(number(), 0.1, 0, 10002);
    const auto& print = rounded.emplace_back(meter.Return(), static_cast<int>(decimals));
    Require((meter + inch).value == meter.value + 0.0273 * inch.value, "add is wrong");

    std::array<wchar_t, 64> text = {};
    (void)std::swprintf(text.data(), text.size(), L"%.*f", print.second, meter.value);
    std::replace(text.begin(), text.end(), L'.', L',');
    Require(meter.to_string(L',') == text.data(), "to_string(L',') is wrong");
    Require(PrintedByToChars(print.first, print.second) == text.data(), "to_chars is wrong");
  }
  AddRepeated(rows, "windows/add/kelmo",
              [](std::size_t i) { usedNumber = (meters[i] + inches[i]).value; });
  AddRepeated(rows, "windows/separator/kelmo", [](std::size_t i) {
    const std::wstring text = meters[i].to_string(L',');
    usedAddress = text.data();
  });
  AddRepeated(rows, "windows/separator/std_to_chars", [](std::size_t i) {
    const std::wstring text = PrintedByToChars(rounded[i].first, rounded[i].second);
    usedAddress = text.data();
  });
}

void Measure(std::vector<Row>& rows, int rounds) {
  using Clock = std::chrono::steady_clock;
  for (int round = 0; round < rounds; ++round) {
    for (Row& row : rows) {
      if (row.prepare) {
        row.prepare();
      }
      const Clock::time_point start = Clock::now();
      row.run();
      const std::chrono::duration<double, std::nano> time = Clock::now() - start;
      row.nanoseconds =
          std::min(row.nanoseconds, time.count() / static_cast<double>(row.operations));
    }
  }
}

int Run(int rounds) {
  Init0(ScratchFolder().wstring().c_str());
  std::vector<Row> rows;
  const Containers smallTexts = MakeContainers(1000);
  const Containers largeTexts = MakeContainers(100000);
  AddLookups(rows, smallTexts);
  AddLookups(rows, largeTexts);
  AddMisses(rows, largeTexts);
  AddLoads(rows);
  AddValues(rows);
  Measure(rows, rounds);
  std::printf("%-44s %12s\n", "", "nanoseconds");
  for (const Row& row : rows) {
    std::printf("%-44s %12.1f\n", row.name.c_str(), row.nanoseconds);
  }
  return 0;
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  try {
    return Run(argc > 1 ? std::max(1, std::stoi(argv[1])) : kDefaultRounds);
  } catch (const std::exception& failure) {
    (void)std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
}
