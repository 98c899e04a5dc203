#include "platform/system_languages.h"

#include <windows.h>

#include <algorithm>
#include <string_view>

#include "platform/windows/wide_text.h"

namespace KelmoLibs::Localize {

std::vector<std::string> SystemLanguages() {
  ULONG count = 0;
  ULONG size = 0;
  std::wstring names;  // each with a zero behind it, and one behind the last
  if (::GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, nullptr, &size) != 0) {
    names.resize(size);
  }
  if (::GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, names.data(), &size) == 0) {
    return {};
  }
  std::vector<std::string> ids;
  for (std::wstring_view rest(names); !rest.empty() && rest.front() != 0;) {
    const std::size_t length = std::min(rest.find(L'\0'), rest.size());
    std::string id = Utf8Of(rest.substr(0, length));
    if (std::find(ids.begin(), ids.end(), id) == ids.end()) {
      ids.push_back(std::move(id));
    }
    rest.remove_prefix(std::min(length + 1, rest.size()));
  }
  return ids;
}

}  // namespace KelmoLibs::Localize
