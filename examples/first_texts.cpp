#include <iostream>
#include <kelmo/kelmo.hpp>

int main() try {
  kelmo::Loader loader;
  loader.add_folder("texts");
  const kelmo::View view(loader.finish(), {"de", "en"});  // English where German lacks a text

  std::cout << view.tr("pump.start") << '\n'
            << view.tr("pump.flow", kelmo::arg("flow", 52), kelmo::arg("head", 48)) << '\n'
            << view.tr("alarms", kelmo::count(3)) << '\n'
            << view.tr("pump.service", "2031-05-17") << '\n';
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
