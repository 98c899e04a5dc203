#include "lang/commands/help.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "lang/unicode/code_points.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kIndent = 2;
constexpr std::size_t kWidestName = 22;  // a longer one has a line of its own
constexpr std::size_t kNarrowest = 40;

std::string Blanks(std::size_t count) {
  std::string blanks(count, ' ');
  return blanks;
}

// Names and texts in two columns.
std::string Table(const std::vector<HelpRow>& rows, std::size_t width) {
  std::size_t widest = 0;
  for (const HelpRow& row : rows) {
    const std::size_t length = Localize::CountCharacters(row.name);
    widest = length <= kWidestName ? std::max(widest, length) : widest;
  }
  const std::size_t column = kIndent + widest + kIndent;
  std::string table;
  for (const HelpRow& row : rows) {
    const std::size_t length = Localize::CountCharacters(row.name);
    table += Blanks(kIndent) + row.name;
    table += length > widest ? '\n' + Blanks(column) : Blanks(column - kIndent - length);
    table += Wrap(row.text, column, column, width) + '\n';
  }
  return table;
}

std::string Section(const std::string& title, const std::vector<HelpRow>& rows, std::size_t width) {
  return rows.empty() ? std::string() : '\n' + title + '\n' + Table(rows, width);
}

// Text that roff prints as it is.
std::string Roff(std::string_view text) {
  std::string roff;
  for (const char character : text) {
    if (character == '\\') {
      roff += "\\e";
    } else if (character == '-') {
      roff += "\\-";
    } else if (character == '\'') {
      roff += "\\(aq";
    } else if (character == '.' && roff.empty()) {
      roff += "\\&.";
    } else {
      roff += character;
    }
  }
  return roff;
}

std::string RoffRows(const std::vector<HelpRow>& rows) {
  std::string roff;
  for (const HelpRow& row : rows) {
    roff += ".TP\n.B " + Roff(row.name) + '\n' + Roff(row.text) + '\n';
  }
  return roff;
}

std::string Upper(std::string text) {
  for (char& character : text) {
    character =
        character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
  }
  return text;
}

// The titles of a manual page are in capitals. It is made in English only.
std::string RoffTitle(const std::string& title) { return ".SH " + Upper(Roff(title)) + '\n'; }

std::vector<HelpRow> ExitStatus(const Texts& texts) {
  return {{"0", texts.Find("help.status.0")},
          {"1", texts.Find("help.status.1")},
          {"2", texts.Find("help.status.2")}};
}

std::vector<HelpRow> Environment(const Texts& texts) {
  return {{"LC_ALL, LC_MESSAGES, LANG", texts.Find("manual.environment.locale")},
          {"NO_COLOR", texts.Find("manual.environment.no_color")},
          {"TERM", texts.Find("manual.environment.term")}};
}

}  // namespace

std::string Wrap(std::string_view text, std::size_t at, std::size_t indent, std::size_t width) {
  std::string wrapped;
  std::size_t column = at;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, end);
    const std::size_t length = Localize::CountCharacters(word);
    if (!wrapped.empty()) {
      if (column + 1 + length > width) {
        wrapped += '\n' + Blanks(indent);
        column = indent;
      } else {
        wrapped += ' ';
        ++column;
      }
    }
    wrapped += word;
    column += length;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return wrapped;
}

std::string HelpText(const CommandHelp& help, const Texts& texts, unsigned width) {
  const std::size_t columns = std::max<std::size_t>(width, kNarrowest);
  std::string text = Wrap(help.name + ": " + help.description, 0, 0, columns) + '\n';
  if (!help.details.empty()) {
    text += '\n' + Wrap(help.details, 0, 0, columns) + '\n';
  }
  text += '\n' + texts.Find("help.usage") + ' ' + help.usage + '\n';
  if (!help.arguments.empty()) {
    text += '\n' + Table(help.arguments, columns);
  }
  text += Section(texts.Find("help.commands") + ':', help.commands, columns);
  text += Section(texts.Find("help.options") + ':', help.options, columns);
  if (!help.commands.empty()) {
    text += Section(texts.Find("help.status") + ':', ExitStatus(texts), columns);
  }
  text += '\n' + texts.Find("help.examples") + ":\n";
  for (const HelpExample& example : help.examples) {
    constexpr std::size_t kTextIndent = 6;
    text += Blanks(kIndent) + example.command + '\n' + Blanks(kTextIndent) +
            Wrap(example.text, kTextIndent, kTextIndent, columns) + '\n';
  }
  return text;
}

std::string ManPage(const std::vector<CommandHelp>& commands, const Texts& texts,
                    const std::string& version) {
  const CommandHelp& program = commands.front();
  std::string page = R"(.TH KELMO-LANG 1 "" "kelmo-lang )" + version + "\"\n";
  page += RoffTitle(texts.Find("manual.name"));
  page += Roff(program.name) + " \\- " + Roff(program.description) + '\n';
  page += RoffTitle(texts.Find("manual.synopsis"));
  for (const CommandHelp& command : commands) {
    if (command.commands.empty()) {
      page += Roff(command.usage) + "\n.br\n";
    }
  }
  page += RoffTitle(texts.Find("manual.description"));
  page += Roff(program.details) + '\n' + RoffTitle(texts.Find("help.options")) +
          RoffRows(program.options) + RoffTitle(texts.Find("help.commands"));
  for (const CommandHelp& command : commands) {
    if (command.commands.empty()) {
      std::vector<HelpRow> options = command.options;
      options.erase(options.begin());  // that for help: it stands among those of the program
      page += ".SS " + Roff(command.name) + '\n' + Roff(command.description) + ".\n";
      page += command.details.empty() ? "" : ".PP\n" + Roff(command.details) + '\n';
      page += RoffRows(command.arguments) + RoffRows(options);
    }
  }
  page += RoffTitle(texts.Find("help.status")) + RoffRows(ExitStatus(texts));
  page += RoffTitle(texts.Find("manual.environment")) + RoffRows(Environment(texts));
  page += RoffTitle(texts.Find("help.examples"));
  for (const CommandHelp& command : commands) {
    for (const HelpExample& example : command.examples) {
      page += ".TP\n.B " + Roff(example.command) + '\n' + Roff(example.text) + '\n';
    }
  }
  return page;
}

}  // namespace KelmoLibs::Lang
