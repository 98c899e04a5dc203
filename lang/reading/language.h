// What the id of a dictionary says about its language.
#pragma once

#include <string>
#include <string_view>

namespace KelmoLibs::Lang {

/// The parts of an id such as "de", "pt-BR" or "zh-Hant-TW"; "_" separates them as "-" does. An id
/// that does not begin with two or three Latin letters names no language: all parts are empty.
struct Language {
  std::string primary;  // lower case: "zh"
  std::string script;   // "Hant"
  std::string region;   // "TW"
};

Language LanguageOf(std::string_view id);

/// Whether the primary language `primary`, which may be empty, is one of `languages`: " ja ko zh ".
bool IsOneOfLanguages(std::string_view primary, std::string_view languages);

}  // namespace KelmoLibs::Lang
