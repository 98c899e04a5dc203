#include <string>
#include <variant>
#include <vector>

#include "lang/commands/command_line.h"
#include "platform/arguments.h"
#include "platform/console.h"
#include "platform/user_language.h"

namespace {

using namespace KelmoLibs::Lang;

constexpr unsigned kWidthOfFiles = 80;

struct Run {
  const Texts& texts;

  int operator()(const Answer& answer) const {
    const bool isWritten =
        Write(Stream::kOutput, answer.output) && Write(Stream::kError, answer.error);
    return isWritten ? answer.status : 2;
  }
  int operator()(const LintOptions& options) const { return Lint(options, texts); }
};

}  // namespace

int main(int argc, char** argv) {
  const CommandLine line = ParseCommandLine(ProgramArguments(argc, argv), UserLanguage(),
                                            TerminalWidth(Stream::kOutput).value_or(kWidthOfFiles));
  const Texts texts(line.language);
  return std::visit(Run{texts}, line.command);
}
