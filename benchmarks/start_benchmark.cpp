// The cost of starting: whole processes that load a catalogue and print one of its texts, and the
// start of the library alone.
#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "benchmarks/support/catalogue.h"
#include "benchmarks/support/child_program.h"
#include "benchmarks/support/run_benchmarks.h"
#include "benchmarks/support/scratch_folder.h"
#include "kelmo_localizer.h"
#include "tests/support/encode_utf8.h"

#ifdef KELMO_HAS_GETTEXT
#include "benchmarks/support/gettext_catalogue.h"
#endif

namespace benchmarks {
namespace {

constexpr std::size_t kEntries = 1000;
constexpr std::size_t kShownEntry = 500;

using Command = std::vector<std::string>;

void CheckHost(const Command& command, const std::string& shownText) {
  const std::filesystem::path output = ScratchFolder() / "output.txt";
  Require(RunProgram(command, output) == 0, ("failed: " + command[0]).c_str());
  std::ifstream file(output, std::ios::binary);
  const std::string printed((std::istreambuf_iterator<char>(file)), {});
  Require(printed == "host: " + shownText + "\n", (command[0] + " printed " + printed).c_str());
}

void RegisterHost(const std::string& subject, const Command& command,
                  const std::string& shownText) {
  CheckHost(command, shownText);
  const std::string name = "start/whole_process/" + subject;
  benchmark::RegisterBenchmark(name.c_str(), [command](benchmark::State& state) {
    for ([[maybe_unused]] const auto iteration : state) {
      Require(RunProgram(command) == 0, "a host has failed");
    }
  })->UseRealTime();
}

void RegisterInit() {
  const std::filesystem::path emptyFolder = ScratchFolder() / "empty";
  std::filesystem::create_directory(emptyFolder);
  benchmark::RegisterBenchmark("start/init0/kelmo",
                               [folder = emptyFolder.wstring()](benchmark::State& state) {
                                 for ([[maybe_unused]] const auto iteration : state) {
                                   benchmark::DoNotOptimize(Init0(folder.c_str()));
                                 }
                               });
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  using namespace benchmarks;
  const std::filesystem::path& folder = ScratchFolder();
  const std::filesystem::path programs =
      std::filesystem::read_symlink("/proc/self/exe").parent_path();
  const Catalogue catalogue = MakeCatalogue(Language::kGerman, kEntries);
  const std::string key = EncodeUtf8(catalogue[kShownEntry].key);
  const std::string text = EncodeUtf8(catalogue[kShownEntry].text);
  WriteDictionary(folder / "de.txt", "de", catalogue);
  const bool hasLocale = MakeGermanLocale();
  // All hosts get the same environment.
  ::setenv("LC_ALL", "de_DE.UTF-8", 1);
  ::unsetenv("LANGUAGE");

  RegisterHost("no_library", {programs / "bare_host", text}, text);
  RegisterHost("kelmo", {programs / "kelmo_host", folder, key}, text);
  RegisterHost(
      "kelmo_loaded_at_run_time",
      {programs / "kelmo_loading_host", folder, key, programs / "libkelmo_Mestrel_Localizer.so"},
      text);
#ifdef KELMO_HAS_GETTEXT
  if (hasLocale) {
    WriteGettextCatalogue(folder, "texts", catalogue);
    RegisterHost("gettext", {programs / "gettext_host", folder, key}, text);
  }
#endif
  if (!hasLocale) {
    (void)std::fputs("no localedef: gettext is left out\n", stderr);
  }
  RegisterInit();
  return RunBenchmarks(argc, argv);
}
