// Shows a text in the language of the user, or else in English. Run it in the folder examples.
#include <iostream>
#include <kelmo/kelmo.hpp>
#include <string>
#include <vector>

int main() try {
  kelmo::Loader loader;
  loader.add_folder("texts");
  const kelmo::Texts texts = loader.finish();
  const std::vector<std::string> languages = kelmo::languages_for_user(texts, "en");
  const kelmo::View view(texts, languages);
  for (const std::string& id : languages) {
    std::cout << id << '\n';
  }
  std::cout << view.tr("pump.start") << '\n';
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
