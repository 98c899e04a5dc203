// The sheet of a pump in two languages, with all problems: kelmo in C++.
//
//     pump_sheet FOLDER
#include <iostream>
#include <kelmo/kelmo.hpp>

namespace {

void PrintSheet(const kelmo::View& view) {
  using kelmo::arg;
  std::cout << view.tr("app.title") << '\n'
            << view.tr("app.language", arg("name", view.texts().languages().at(0).name)) << '\n'
            << view.tr("sheet.pump", "NP 50-200") << '\n'
            << view.tr("sheet.customer", arg("name", "Anna Berg"), arg("city", "Åbo")) << '\n'
            << view.tr("sheet.stages", kelmo::count(3)) << '\n'
            << view.tr("sheet.speed", 2900) << '\n'
            << view.tr("sheet.efficiency", 78.46) << '\n'
            << view.tr("sheet.motor", arg("power", 7.5), arg("poles", 2)) << '\n'
            << view.tr("sheet.seal", "EPDM") << '\n'
            << view.tr("sheet.flow", arg("flow", 52.5), arg("head", 48)) << '\n'
            << view.tr("sheet.page", 1, 2) << '\n'
            << view.tr("sheet.weight", 84.5) << '\n';
}

}  // namespace

int main(int count, char** arguments) {
  try {
    kelmo::Problems problems;
    kelmo::Loader loader;
    loader.add_folder(count > 1 ? arguments[1] : "pump_sheet", problems);
    const kelmo::Texts texts = loader.finish();
    for (const kelmo::Language& language : texts.languages()) {
      kelmo::ViewOptions options;
      options.languages = {std::string(language.id), "en"};
      options.problem_limit = 100;
      const kelmo::View view(texts, options, problems);
      PrintSheet(view);
      view.take_problems(problems);
    }
    for (const kelmo::Problem& problem : problems) {
      std::cerr << problem.text << '\n';
    }
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
