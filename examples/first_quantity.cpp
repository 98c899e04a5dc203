#include <iostream>
#include <kelmo/kelmo.hpp>

int main() try {
  constexpr int kKilopascal = 17003;  // its code in the file
  kelmo::UnitsLoader loader;
  loader.add_file("../units/engineering.txt");
  const kelmo::Units units = loader.finish();

  const kelmo::Quantity pressure = units.read("12.5 bar");
  std::cout << pressure << " = " << pressure.to(kKilopascal) << '\n';
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
