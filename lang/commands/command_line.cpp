// The only source that includes CLI11, which takes long to compile. CLI11 splits the arguments; all
// sentences come from the texts of the tool: the descriptions that CLI11 keeps are keys of texts.
// Tested by command_line_test.cpp.
#include "lang/commands/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "lang/commands/help.h"
#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {
namespace {

constexpr const char* kProgram = "kelmo-lang";

// CLI11 takes "[a,b]" for a list of values, but it may be the name of a folder. This byte in front
// of it, which no argument begins with, hides the bracket from CLI11.
constexpr char kHidden = '\x01';

std::string HideBracket(const std::string& argument) {
  return !argument.empty() && argument.front() == '[' ? kHidden + argument : argument;
}

std::string ShowBracket(std::string argument) {
  if (!argument.empty() && argument.front() == kHidden) {
    argument.erase(0, 1);
  }
  return argument;
}

// What CLI11 cannot check so that the complaint is one of our texts.
struct Checks {
  std::vector<std::pair<CLI::Option*, std::vector<std::string>>> choices;  // and their values
  std::vector<std::pair<CLI::App*, CLI::Option*>> required;  // arguments that a command needs
};

// A command, or the program itself, while it is described to CLI11.
class Command {
 public:
  // `key` begins the keys of its texts: "help.lint" those of lint.
  Command(CLI::App& app, std::string key, Checks& checks)
      : app_(app), key_(std::move(key)), checks_(checks) {
    app_.set_help_flag("-h,--help", "help.option.help");
    app_.allow_windows_style_options(false);  // "/texts" is a path, on all systems
    app_.footer(key_);
  }

  Command Sub(const std::string& name) {
    const std::string key = key_ + '.' + name;
    Command command(*app_.add_subcommand(name, key + ".description"), key, checks_);
    command.app_.fallthrough();  // --lang may also stand behind the command
    app_.require_subcommand(0, 1);
    return command;
  }

  void Flag(const std::string& name, bool& target) {
    app_.add_flag("--" + name, target, key_ + '.' + name)->disable_flag_override();
  }

  // An option with a value; the last one counts. `value` says what it is: "file".
  template <class Target>
  CLI::Option* Value(const std::string& name, Target& target, const std::string& value) {
    return Prepare(app_.add_option("--" + name, target, key_ + '.' + name), value)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  }

  // An option that may be given several times, each time with one value.
  void Each(const std::string& name, std::vector<std::string>& target, const std::string& value) {
    Prepare(app_.add_option("--" + name, target, key_ + '.' + name), value)
        ->allow_extra_args(false);
  }

  // An option with few possible values.
  template <class Target>
  void Choice(const std::string& name, Target& target, const std::vector<std::string>& values) {
    checks_.choices.emplace_back(Value(name, target, CLI::detail::join(values, "|")), values);
  }

  // A positional argument; all that are left if the target is a vector.
  template <class Target>
  void Argument(const std::string& name, Target& target) {
    Prepare(app_.add_option(name, target, key_ + '.' + name), name);
  }
  template <class Target>
  void RequiredArgument(const std::string& name, Target& target) {
    Argument(name, target);
    checks_.required.emplace_back(&app_, app_.get_option(name));
  }

 private:
  static CLI::Option* Prepare(CLI::Option* option, const std::string& value) {
    return option->type_name(value)->transform(ShowBracket, "");
  }

  CLI::App& app_;
  std::string key_;
  Checks& checks_;
};

struct AllOptions {
  std::string language;
  bool isVersion = false;
  bool isManPage = false;
  FixOptions fix;
  IgnoreOptions ignore;
  LintOptions lint;
  RulesOptions rules;
  ShowOptions show;
  UnitsExplainOptions explain;
};

std::vector<std::string> Languages() {
  std::vector<std::string> languages;
  for (const std::string_view language : TextLanguages()) {
    languages.emplace_back(language);
  }
  return languages;
}

void Describe(CLI::App& app, AllOptions& options, Checks& checks) {
  Command program(app, "help", checks);
  program.Choice("lang", options.language, Languages());
  program.Flag("version", options.isVersion);
  program.Flag("man-page", options.isManPage);

  Command lint = program.Sub("lint");
  lint.Argument("path", options.lint.paths);
  lint.Value("base", options.lint.base, "file");
  lint.Value("html", options.lint.html, "file");
  lint.Choice("format", options.lint.format, {"text", "json", "sarif", "github"});
  lint.Choice("fail-on", options.lint.failOn, {"error", "warning", "note", "never"});
  lint.Flag("release", options.lint.isRelease);
  lint.Flag("all", options.lint.showsAll);
  lint.Each("rule", options.lint.rules, "rule_level");
  lint.Value("baseline", options.lint.baseline, "file");
  lint.Value("explain", options.lint.explained, "rule");
  lint.Choice("color", options.lint.color, {"auto", "always", "never"});

  Command ignore = program.Sub("ignore");
  ignore.RequiredArgument("file", options.ignore.file);
  ignore.RequiredArgument("key", options.ignore.key);
  ignore.RequiredArgument("rule", options.ignore.rule);
  ignore.Value("reason", options.ignore.reason, "text");

  Command rules = program.Sub("rules");
  rules.Argument("rule", options.rules.rule);

  Command fix = program.Sub("fix");
  fix.RequiredArgument("path", options.fix.paths);
  fix.Value("from", options.fix.from, "encoding");
  fix.Flag("diff", options.fix.isDiff);
  fix.Flag("force", options.fix.isForced);

  Command show = program.Sub("show");
  show.RequiredArgument("path", options.show.path);
  show.Argument("key", options.show.key);

  Command units = program.Sub("units");
  units.Sub("list");
  units.Sub("explain").RequiredArgument("code", options.explain.code);
}

// The innermost command that was given.
const CLI::App& Given(const CLI::App& app) {
  const CLI::App* given = &app;
  while (!given->get_subcommands().empty()) {
    given = given->get_subcommands().front();
  }
  return *given;
}

// "kelmo-lang units list"
std::string NameOf(const CLI::App& app) {
  std::string name;
  for (const CLI::App* part = &app; part->get_parent() != nullptr; part = part->get_parent()) {
    name.insert(0, ' ' + part->get_name());
  }
  return kProgram + name;
}

// The word for a value in the help: "FILE". Lists of possible values are no words.
std::string ValueName(const CLI::Option& option, const Texts& texts) {
  const std::string value = option.get_type_name();
  return value.find('|') != std::string::npos ? value : texts.Find("help.value." + value);
}

bool IsList(const CLI::Option& option) { return option.get_items_expected_max() > 1; }

std::string RowName(const CLI::Option& option, const Texts& texts) {
  if (option.get_positional()) {
    return ValueName(option, texts) + (IsList(option) ? "..." : "");
  }
  std::string name;
  for (const std::string& shortName : option.get_snames()) {
    name += '-' + shortName + ", ";
  }
  name += "--" + option.get_lnames().front();
  return option.get_items_expected_max() > 0 ? name + ' ' + ValueName(option, texts) : name;
}

std::string Usage(const CLI::App& app, const Checks& checks, const Texts& texts) {
  std::string usage = NameOf(app) + " [" + texts.Find("help.value.option") + "...]";
  if (!app.get_subcommands({}).empty()) {
    return usage + ' ' + texts.Find("help.value.command");
  }
  for (const CLI::Option* const option : app.get_options()) {
    if (option->get_positional()) {
      const bool isRequired =
          std::any_of(checks.required.begin(), checks.required.end(),
                      [option](const auto& required) { return required.second == option; });
      const std::string name = RowName(*option, texts);
      usage += isRequired ? ' ' + name : " [" + name + ']';
    }
  }
  return usage;
}

CommandHelp HelpOf(const CLI::App& app, const Checks& checks, const Texts& texts) {
  const std::string key = app.get_footer();
  CommandHelp help;
  help.name = NameOf(app);
  help.description = texts.Find(key + ".description");
  help.details = texts.Find(key + ".details");
  help.usage = Usage(app, checks, texts);
  for (const CLI::App* const command : app.get_subcommands({})) {
    help.commands.push_back({command->get_name(), texts.Find(command->get_description())});
  }
  for (const CLI::Option* const option : app.get_options()) {
    (option->get_positional() ? help.arguments : help.options)
        .push_back({RowName(*option, texts), texts.Find(option->get_description())});
  }
  for (const char* const number : {"1", "2"}) {
    const std::string example = key + ".example." + number;
    help.examples.push_back({texts.Find(example + ".command"), texts.Find(example + ".text")});
  }
  return help;
}

// The help of the program and of all its commands, each before those in it.
std::vector<CommandHelp> AllHelps(const CLI::App& program, const Checks& checks,
                                  const Texts& texts) {
  std::vector<CommandHelp> helps;
  std::vector<const CLI::App*> left = {&program};  // the next one is the last
  while (!left.empty()) {
    const CLI::App& app = *left.back();
    left.pop_back();
    helps.push_back(HelpOf(app, checks, texts));
    const auto commands = app.get_subcommands({});
    left.insert(left.end(), commands.rbegin(), commands.rend());
  }
  return helps;
}

// The sentence about an error of CLI11. Its classes do not tell the name of the option, but their
// texts begin with it.
Sentence SentenceOf(const CLI::ParseError& error, const CLI::App& command, const CLI::App& app) {
  const std::string what = error.what();
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
    const std::string extra = ShowBracket(app.remaining(true).front());
    const bool isOption = extra.size() > 1 && extra.front() == '-';
    const bool isCommand = !isOption && !command.get_subcommands({}).empty();
    return {isOption ? "usage.option" : isCommand ? "usage.command" : "usage.surplus", {extra}};
  }
  const std::string name = what.substr(0, what.find_first_of(": "));
  const bool isFlag = name.front() != '-';  // "version was given a disallowed flag override"
  return isFlag ? Sentence{"usage.no_value", {"--" + name}} : Sentence{"usage.value", {name}};
}

std::optional<Sentence> Complaint(const CLI::App& command, const Checks& checks,
                                  const Texts& texts) {
  for (const auto& [option, values] : checks.choices) {
    if (option->count() > 0) {
      const std::string value = ShowBracket(option->results().back());
      if (std::find(values.begin(), values.end(), value) == values.end()) {
        return Sentence{"usage.choice",
                        {option->get_name(), value, CLI::detail::join(values, ", ")}};
      }
    }
  }
  for (const auto& [app, option] : checks.required) {
    if (app == &command && option->count() == 0) {
      return Sentence{"usage.missing", {ValueName(*option, texts)}};
    }
  }
  return std::nullopt;
}

// The language of the messages, before CLI11 has read the arguments.
std::string LanguageOfMessages(const std::vector<std::string>& arguments,
                               const std::string& userLanguage) {
  constexpr std::string_view kOption = "--lang";
  std::string wanted = userLanguage;
  for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
    if (arguments[i] == kOption && i + 1 < arguments.size()) {
      wanted = arguments[i + 1];
    } else if (arguments[i].rfind(std::string(kOption) + '=', 0) == 0) {
      wanted = arguments[i].substr(kOption.size() + 1);
    }
  }
  const std::vector<std::string_view> languages = TextLanguages();
  const bool isKnown = std::find(languages.begin(), languages.end(), wanted) != languages.end();
  return isKnown ? wanted : "en";
}

// The first option with an empty value, "--base="; the end if there is none.
std::vector<std::string>::const_iterator FindEmptyValue(const std::vector<std::string>& arguments) {
  const auto optionsEnd = std::find(arguments.begin(), arguments.end(), "--");
  const auto found = std::find_if(arguments.begin(), optionsEnd, [](const std::string& argument) {
    return argument.rfind("--", 0) == 0 && argument.find('=') == argument.size() - 1;
  });
  return found != optionsEnd ? found : arguments.end();
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& arguments,
                             const std::string& userLanguage, unsigned width) {
  const std::string language = LanguageOfMessages(arguments, userLanguage);
  const Texts texts(language);
  AllOptions options;
  Checks checks;
  CLI::App app;
  Describe(app, options, checks);
  const auto help = [&](const CLI::App& command) {
    return HelpText(HelpOf(command, checks, texts), texts, width);
  };

  // CLI11 would take the argument behind "--base=" for its value; without one, it complains.
  const auto emptyValue = FindEmptyValue(arguments);
  const auto end = emptyValue != arguments.end() ? std::next(emptyValue) : emptyValue;
  std::vector<std::string> reversed;  // as CLI11 wants them
  std::transform(std::make_reverse_iterator(end), arguments.rend(), std::back_inserter(reversed),
                 HideBracket);
  try {
    app.parse(std::move(reversed));
  } catch (const CLI::CallForHelp&) {
    return {language, Answer{0, help(Given(app)), ""}};
  } catch (const CLI::ParseError& error) {
    const CLI::App& command = Given(app);
    return {language, WrongUse(NameOf(command), SentenceOf(error, command, app), texts)};
  }
  const CLI::App& command = Given(app);
  if (emptyValue != arguments.end()) {  // of a flag
    const std::string name = emptyValue->substr(0, emptyValue->size() - 1);
    return {language, WrongUse(NameOf(command), {"usage.no_value", {name}}, texts)};
  }
  if (const std::optional<Sentence> complaint = Complaint(command, checks, texts)) {
    return {language, WrongUse(NameOf(command), *complaint, texts)};
  }
  if (options.isVersion) {
    return {language, Answer{0, std::string(kProgram) + " " KELMO_LANG_VERSION "\n", ""}};
  }
  if (options.isManPage) {
    const std::vector<CommandHelp> helps = AllHelps(app, checks, texts);
    return {language, Answer{0, ManPage(helps, texts, KELMO_LANG_VERSION), ""}};
  }
  if (!command.get_subcommands({}).empty()) {  // a command is missing
    return {language, Answer{kStatusWrong, "", help(command)}};
  }
  if (command.get_name() == "ignore") {
    return {language, options.ignore};
  }
  if (command.get_name() == "rules") {
    return {language, options.rules};
  }
  if (command.get_name() == "fix") {
    return {language, options.fix};
  }
  if (app.got_subcommand("show")) {
    return {language, options.show};
  }
  if (app.got_subcommand("units")) {
    return command.get_name() == "list" ? CommandLine{language, UnitsListOptions{}}
                                        : CommandLine{language, options.explain};
  }
  return {language, options.lint};
}

}  // namespace KelmoLibs::Lang
