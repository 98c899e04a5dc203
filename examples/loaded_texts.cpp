#define KELMO_RUNTIME_IMPLEMENTATION  // in one source of the program
#include <kelmo/kelmo_runtime.h>      // in the place of kelmo.h, and before kelmo.hpp

#include <iostream>
#include <kelmo/kelmo.hpp>

int main() try {
  char reason[256];
  if (kelmo_runtime_open(KELMO_RUNTIME_FILE, reason, sizeof reason) != KELMO_OK) {
    std::cout << "The program runs without texts: " << reason << '\n';
    return 1;
  }
  kelmo::Loader loader;
  loader.add_folder("texts");
  const kelmo::View view(loader.finish(), {"de", "en"});
  std::cout << view.tr("pump.start") << '\n';
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
