#include <CLI/CLI.hpp>
#include <optional>

#include "lang/commands/lint.h"

int main(int argc, char** argv) {
  using namespace KelmoLibs::Lang;
  CLI::App app("kelmo-lang");
  app.require_subcommand(1);
  LintOptions lint;
  CLI::App* const lintCommand = app.add_subcommand("lint");
  lintCommand->add_option("paths", lint.paths);
  lintCommand->add_option("--base", lint.base);
  CLI11_PARSE(app, argc, argv);
  return Lint(lint);
}
