// The sheet of a pump in two languages, then all problems. Run it in the folder examples.
#include <iostream>
#include <kelmo/kelmo.hpp>

using kelmo::arg;

static void PrintSheet(const kelmo::View& view, const kelmo::Language& language) {
  std::cout << view.tr("app.title") << '\n'
            << view.tr("app.language", arg("name", language.name)) << '\n'
            << view.tr("sheet.pump", "NP 50-200") << '\n'
            << view.tr("sheet.customer", arg("name", "Anna Berg"), arg("city", "Åbo")) << '\n'
            << view.tr("sheet.stages", kelmo::count(3)) << '\n'
            << view.tr("sheet.speed", 2900) << '\n'
            << view.tr("sheet.efficiency", 78.46) << '\n'
            << view.tr("sheet.motor", arg("power", 7.5), arg("poles", 2)) << '\n'
            << view.tr("sheet.seal", "EPDM") << '\n'
            << view.tr("sheet.flow", arg("flow", 52.5), arg("head", 48)) << '\n'
            << view.tr("sheet.page", 1, 2) << '\n'
            << view.tr("sheet.weight", 84.5) << "\n\n";
}

int main() try {
  kelmo::Problems problems;
  kelmo::Loader loader;
  loader.add_folder("pump_sheet", problems);
  const kelmo::Texts texts = loader.finish(problems);
  for (const kelmo::Language& language : texts.languages()) {  // at run time, a user's choice
    kelmo::ViewOptions options;
    options.languages = {std::string(language.id), "en"};
    options.problem_limit = 100;  // records missing keys
    const kelmo::View view(texts, options, problems);
    PrintSheet(view, language);
    view.take_problems(problems);
  }
  for (const kelmo::Problem& problem : problems) {
    std::cout << problem.text << '\n';
  }
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
