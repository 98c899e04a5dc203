#include "lang/rules/split_key.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace KelmoLibs::Lang {

FoundEntry FindSplitKey(const FileCheck& check, const Entry& entry) {
  constexpr std::size_t kLongest = 200;
  if (check.Base() == nullptr || entry.key.empty() || entry.text.empty()) {
    return {};
  }
  const std::size_t end = std::min(entry.text.find_first_of(" \t"), entry.text.size());
  if (end == 0 || entry.key.size() + end > kLongest) {
    return {};
  }
  // A key of the base may stand before a text of several words. Before a tab there is no text.
  const bool isBeforeTab = end < entry.text.size() && entry.text[end] == '\t';
  if (!isBeforeTab && check.Base()->Find(entry.key)) {
    return {};
  }
  std::string key(entry.key);
  for (const std::string_view joint : {"", ".", "_", "-"}) {
    key.resize(entry.key.size());
    key += joint;
    key += entry.text.substr(0, end);
    if (const FoundEntry base = check.Base()->Find(key)) {
      return check.Merged().Find(key) ? FoundEntry{} : base;
    }
  }
  return {};
}

}  // namespace KelmoLibs::Lang
