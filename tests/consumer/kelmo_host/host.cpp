// The host of host.c in C++, with the containers and the exceptions of its own C++ library.
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "kelmo/kelmo.h"

namespace {

void Check(kelmo_status status) {
  if (status != KELMO_OK) {
    throw std::runtime_error(kelmo_status_name(status));
  }
}

using Loader = std::unique_ptr<kelmo_loader, decltype(&kelmo_loader_destroy)>;
using Problems = std::unique_ptr<kelmo_problems, decltype(&kelmo_problems_destroy)>;
using Texts = std::unique_ptr<kelmo_texts, decltype(&kelmo_texts_release)>;
using View = std::unique_ptr<kelmo_view, decltype(&kelmo_view_release)>;

// Makes an object of the library, and owns it.
template <class Object, class Maker>
Object* Made(Maker make) {
  Object* made = nullptr;
  Check(make(&made));
  return made;
}

void Add(kelmo_loader* loader, const std::string& dictionary, const std::string& name,
         kelmo_problems* problems) {
  Check(kelmo_loader_add_memory(loader, dictionary.data(), dictionary.size(), name.data(),
                                name.size(), nullptr, problems));
}

std::string Found(const kelmo_view* view, const std::string& key) {
  kelmo_text text = {};
  text.size = sizeof text;
  Check(kelmo_view_find(view, key.data(), key.size(), nullptr, &text));
  return std::string(text.utf8, text.utf8_size) + " (" +
         std::string(text.file.data, text.file.size) + ":" + std::to_string(text.line) + ")";
}

std::vector<std::string> Lines(const kelmo_problems* problems) {
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < kelmo_problems_count(problems); ++i) {
    std::size_t size = 0;
    Check(kelmo_problems_print(problems, i, nullptr, 0, &size));
    std::string line(size + 1, '\0');
    Check(kelmo_problems_print(problems, i, line.data(), line.size(), nullptr));
    line.pop_back();  // the zero
    lines.push_back(std::move(line));
  }
  return lines;
}

void Run() {
  const Problems problems(Made<kelmo_problems>(kelmo_problems_create), kelmo_problems_destroy);
  const Loader loader(Made<kelmo_loader>(kelmo_loader_create), kelmo_loader_destroy);
  Add(loader.get(), "en English\npump.start\tStart\npump.start\tGo\npump.stop\tStop\n", "en.txt",
      problems.get());
  Add(loader.get(), "de Deutsch\npump.start\t\303\226ffnen\n", "de.txt", problems.get());
  Texts texts(Made<kelmo_texts>(
                  [&](kelmo_texts** made) { return kelmo_loader_finish(loader.get(), made); }),
              kelmo_texts_release);

  const kelmo_string languages[] = {{"de", 2}, {"fr", 2}, {"en", 2}};
  kelmo_view_options options = {};
  options.size = sizeof options;
  options.languages = languages;
  options.language_count = 3;
  options.problem_limit = 10;
  const View view(Made<kelmo_view>([&](kelmo_view** made) {
                    return kelmo_view_create(texts.get(), &options, made, problems.get());
                  }),
                  kelmo_view_release);
  texts.reset();  // the view owns them too

  for (const char* const key : {"pump.start", "pump.stop", "pump.clean"}) {
    try {
      const std::string found = Found(view.get(), key);
      std::cout << key << ": " << found << '\n';
    } catch (const std::runtime_error& error) {
      std::cout << key << ": " << error.what() << '\n';
    }
  }
  Check(kelmo_view_take_problems(view.get(), problems.get(), nullptr));
  for (const std::string& line : Lines(problems.get())) {
    std::cout << line << '\n';
  }
}

}  // namespace

int main() try { Run(); } catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
