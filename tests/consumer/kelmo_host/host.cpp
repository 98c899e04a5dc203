// The host of host.c in C++, with the containers and the exceptions of its own C++ library.
#include <exception>
#include <filesystem>
#include <iostream>
#include <kelmo/kelmo.hpp>
#include <optional>
#include <stdexcept>
#include <string>

namespace {

std::string Found(const kelmo::View& view, const std::string& key) {
  const std::optional<kelmo::Text> text = view.find(key);
  if (!text) {
    throw std::runtime_error(kelmo_status_name(KELMO_NOT_FOUND));
  }
  return std::string(text->text) + " (" + std::string(text->file) + ":" +
         std::to_string(text->line) + ")";
}

void Run() {
  kelmo::Problems problems;
  kelmo::Loader loader;
  loader.add_memory(
      "en English\npump.start\tStart\npump.start\tGo\npump.stop\tStop\n"
      "pump.log\tWritten to {0}/{1}\n",
      "en.txt", problems);
  loader.add_memory("de Deutsch\npump.start\t\303\226ffnen\n", "de.txt", problems);
  kelmo::ViewOptions options;
  options.languages = {"de", "fr", "en"};
  options.problem_limit = 10;
  const kelmo::View view(loader.finish(problems), options, problems);

  for (const char* const key : {"pump.start", "pump.stop", "pump.clean"}) {
    try {
      const std::string found = Found(view, key);
      std::cout << key << ": " << found << '\n';
    } catch (const std::runtime_error& error) {
      std::cout << key << ": " << error.what() << '\n';
    }
  }
  // In C++20 both are of char8_t.
  std::cout << view.tr("pump.log", u8"logs", std::filesystem::path("pump.txt").u8string()) << '\n';
  view.take_problems(problems);
  for (const kelmo::Problem& problem : problems) {
    std::cout << problem.text << '\n';
  }
}

}  // namespace

int main() {
  try {
    Run();
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
