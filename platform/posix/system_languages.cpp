#include "platform/system_languages.h"

#include <algorithm>
#include <string_view>

#include "platform/posix/locale_variables.h"
#include "text/locale_name.h"

namespace KelmoLibs::Localize {
namespace {

void Add(std::string_view locale, std::vector<std::string>& ids) {
  std::string id = LanguageOfLocale(locale);
  if (!id.empty() && std::find(ids.begin(), ids.end(), id) == ids.end()) {
    ids.push_back(std::move(id));
  }
}

}  // namespace

std::vector<std::string> SystemLanguages() {
  const std::string_view locale = LocaleOfUser("LC_MESSAGES");
  if (locale == "C" || locale == "POSIX") {
    return {};  // the program shall not translate
  }
  std::vector<std::string> ids;
  for (std::string_view rest = VariableOfEnvironment("LANGUAGE"); !rest.empty();) {
    const std::size_t length = std::min(rest.find(':'), rest.size());
    Add(rest.substr(0, length), ids);
    rest.remove_prefix(std::min(length + 1, rest.size()));
  }
  Add(locale, ids);
  return ids;
}

}  // namespace KelmoLibs::Localize
