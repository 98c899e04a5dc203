// The program: runs the command that the arguments name, and prints its answer.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "lang/commands/command_line.h"
#include "lang/commands/page.h"
#include "lang/report/progress_bar.h"
#include "platform/arguments.h"
#include "platform/console.h"
#include "platform/desktop.h"
#include "platform/system_languages.h"

namespace {

using namespace KelmoLibs::Lang;

constexpr unsigned kWidthOfFiles = 80;

// "auto": on a terminal that can show them, unless the user does not want any.
bool WantsColours(const std::string& option) {
  const char* const noColours = std::getenv("NO_COLOR");
  const bool isUnwanted = noColours != nullptr && *noColours != '\0';
  if (option == "never" || (option == "auto" && isUnwanted)) {
    return false;
  }
  return EnableColours(Stream::kOutput) || option == "always";
}

// The first language of the user that the tool has; empty if it has none of them.
std::string UserLanguage() {
  const std::vector<std::string_view> known = TextLanguages();
  for (const std::string& id : KelmoLibs::Localize::SystemLanguages()) {
    std::string language = id.substr(0, id.find('-'));
    if (std::find(known.begin(), known.end(), language) != known.end()) {
      return language;
    }
  }
  return {};
}

struct Run {
  const Texts& texts;

  int operator()(const Answer& answer) const {
    const bool isWritten = Write(Stream::kOutput, answer.output);
    const std::string more = isWritten ? "" : LineOf({"problem.output", {}}, texts);
    return Write(Stream::kError, answer.error + more) && isWritten ? answer.status : kStatusWrong;
  }
  int operator()(const FixOptions& options) const { return (*this)(Fix(options, texts)); }
  int operator()(const IgnoreOptions& options) const { return (*this)(Ignore(options, texts)); }
  int operator()(const LintOptions& options) const {
    TextStyle style;
    style.hasColours = WantsColours(options.color);
    style.width = TerminalWidth(Stream::kOutput).value_or(style.width);
    std::optional<ProgressBar> bar;
    std::function<void(double)> progress;
    if (IsTerminal(Stream::kError)) {
      bar.emplace([](std::string_view line) { Write(Stream::kError, line); });
      progress = [&bar](double share) { bar->Show(share); };
    }
    const Answer answer = Lint(options, texts, style, progress);
    bar.reset();
    return (*this)(answer);
  }
  int operator()(const RulesOptions& options) const {
    return (*this)(Rules(options, texts, TerminalWidth(Stream::kOutput).value_or(kWidthOfFiles)));
  }
  int operator()(const ShowOptions& options) const { return (*this)(Show(options, texts)); }
  int operator()(const UnitsListOptions& /*options*/) const { return (*this)(ListUnits(texts)); }
  int operator()(const UnitsExplainOptions& options) const {
    return (*this)(ExplainUnit(options, texts));
  }
};

int RunProgram(int argc, char** argv) {
  const std::vector<std::string> arguments = ProgramArguments(argc, argv);
  const std::optional<Desktop> desktop = StartedFromDesktop();
  if (desktop && AreDropped(arguments)) {
    return ShowPage(arguments, *desktop, Texts(UserLanguage()));
  }
  const CommandLine line = ParseCommandLine(arguments, UserLanguage(),
                                            TerminalWidth(Stream::kOutput).value_or(kWidthOfFiles));
  const Texts texts(line.language);
  return std::visit(Run{texts}, line.command);
}

// There is no memory for a translation.
void SayNoMemory() { (void)std::fputs("kelmo-lang: not enough memory\n", stderr); }

}  // namespace

int main(int argc, char** argv) {
  try {
    return RunProgram(argc, argv);
  } catch (const std::bad_alloc&) {
    SayNoMemory();
  } catch (const std::length_error&) {  // a file that is larger than the memory of any computer
    SayNoMemory();
  } catch (const std::exception& error) {
    (void)std::fprintf(stderr, "kelmo-lang: %s\n", error.what());
  }
  return kStatusWrong;
}
