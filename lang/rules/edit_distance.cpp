// Tested by edit_distance_test.cpp.
#include "lang/rules/edit_distance.h"

#include <algorithm>
#include <vector>

namespace KelmoLibs::Lang {

std::size_t EditDistance(std::string_view a, std::string_view b, std::size_t limit) {
  const std::size_t lengths = a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
  if (lengths > limit) {
    return limit + 1;
  }
  std::vector<std::size_t> beforeLast(b.size() + 1);
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) {
    last[j] = j;
  }
  for (std::size_t i = 1; i <= a.size(); ++i) {
    // Places that are farther from the diagonal have greater distances.
    const std::size_t first = i > limit ? i - limit : 1;
    const std::size_t end = std::min(b.size(), i + limit);
    row[first - 1] = first == 1 ? i : limit + 1;
    if (end < b.size()) {
      row[end + 1] = limit + 1;
    }
    for (std::size_t j = first; j <= end; ++j) {
      const bool isEqual = a[i - 1] == b[j - 1];
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (isEqual ? 0 : 1)});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        row[j] = std::min(row[j], beforeLast[j - 2] + 1);
      }
    }
    beforeLast.swap(last);
    last.swap(row);
  }
  return last[b.size()];
}

bool IsOneMistake(std::string_view a, std::string_view b) noexcept {
  while (!a.empty() && !b.empty() && a.front() == b.front()) {
    a.remove_prefix(1);
    b.remove_prefix(1);
  }
  while (!a.empty() && !b.empty() && a.back() == b.back()) {
    a.remove_suffix(1);
    b.remove_suffix(1);
  }
  const bool areSwapped = a.size() == 2 && b.size() == 2 && a[0] == b[1] && a[1] == b[0];
  return areSwapped || (a.size() <= 1 && b.size() <= 1);
}

}  // namespace KelmoLibs::Lang
