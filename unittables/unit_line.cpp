#include "unittables/unit_line.h"

#include <algorithm>
#include <cwchar>
#include <limits>
#include <utility>

#include "frame/platform.h"

namespace KelmoLibs::Localize {
namespace {

constexpr std::wstring_view kSeparators = L" \t";
constexpr std::wstring_view kComment = L"//";
constexpr int kDecimal = 10;

}  // namespace

std::vector<std::wstring_view> SplitText(std::wstring_view text, std::wstring_view delimiter) {
  std::vector<std::wstring_view> pieces;
  std::size_t start = 0;
  for (std::size_t end = 0; (end = text.find(delimiter, start)) != std::wstring_view::npos;
       start = end + delimiter.size()) {
    pieces.push_back(text.substr(start, end - start));
  }
  pieces.push_back(text.substr(start));
  return pieces;
}

std::wstring CleanUnitLine(std::wstring line) {
  const auto isOther = [](wchar_t c) { return !IsGraphic(c) && !IsBlank(c); };
  std::replace_if(line.begin(), line.end(), isOther, L' ');
  line.resize(std::min(line.size(), line.find(kComment)));
  return line;
}

// That the scan goes on behind the field that took the rest stays: tables are read by it. A unit
// "square meter" is no row of the default table; unit_line_test.cpp and default_table_test.cpp pin
// it.
std::vector<std::wstring_view> UnitFields(std::wstring_view cleaned, std::int32_t count,
                                          std::size_t most) {
  std::vector<std::wstring_view> fields;
  const auto found = [&fields] { return static_cast<std::int64_t>(fields.size()); };
  std::size_t start = cleaned.find_first_not_of(kSeparators);
  while (start != std::wstring_view::npos && fields.size() < most) {
    const std::size_t end = cleaned.find_first_of(kSeparators, start);
    const bool takesTheRest = found() + 1 >= count;
    fields.push_back(cleaned.substr(start, takesTheRest ? std::wstring_view::npos : end - start));
    start = cleaned.find_first_not_of(kSeparators, end);
  }
  if (found() < count) {
    fields.clear();
  }
  return fields;
}

std::vector<std::wstring> SplitUnitLine(std::wstring line, std::int32_t count) {
  const std::wstring cleaned = CleanUnitLine(std::move(line));
  const std::vector<std::wstring_view> fields = UnitFields(cleaned, count, SIZE_MAX);
  return {fields.begin(), fields.end()};
}

// Both take a copy: behind its field a line goes on, and to the runtime a blank of another script
// may be white space that leads to the next number.

std::int32_t IntegerField(std::wstring_view field) {
  using Limits = std::numeric_limits<std::int32_t>;
  // A long, which has 32 bits on Windows and 64 on Linux.
  const auto number = std::wcstol(std::wstring(field).c_str(), nullptr, kDecimal);
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

double NumberField(std::wstring_view field) {
  return std::wcstod(std::wstring(field).c_str(), nullptr);
}

}  // namespace KelmoLibs::Localize
