// The help of the commands, as text for a terminal and as a manual page.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {

/// `text` in lines of at most `width` columns, broken at spaces; from the second line on with `indent`
/// spaces in front. The first line begins in column `at`.
std::string Wrap(std::string_view text, std::size_t at, std::size_t indent, std::size_t width);

/// A command, an argument or an option: how it is written, and the text about it.
struct HelpRow {
  std::string name;  // "--base FILE"
  std::string text;
};

struct HelpExample {
  std::string command;
  std::string text;
};

/// The help of one command. All but its name are texts in the language of the user.
struct CommandHelp {
  std::string name;  // "kelmo-lang lint"
  std::string description;
  std::string details;  // whole sentences; may be empty
  std::string usage;
  std::vector<HelpRow> commands;
  std::vector<HelpRow> arguments;
  std::vector<HelpRow> options;
  std::vector<HelpExample> examples;
};

/// For a terminal of `width` columns.
std::string HelpText(const CommandHelp& help, const Texts& texts, unsigned width);

/// The manual page of the program in the language of man pages, roff. The first help is that of the
/// program itself.
std::string ManPage(const std::vector<CommandHelp>& commands, const Texts& texts,
                    const std::string& version);

}  // namespace KelmoLibs::Lang
