#include "unittables/unit_line.h"

#include <algorithm>
#include <cwchar>
#include <limits>

#include "platform/characters.h"

namespace KelmoLibs::Localize {
namespace {

constexpr std::wstring_view kComment = L"//";
constexpr int kDecimal = 10;

bool IsSeparator(wchar_t c) noexcept { return c == L' ' || c == L'\t'; }

// ASCII is the same in all systems and locales, so the system is not asked.
bool IsKept(wchar_t c) noexcept {
  if (static_cast<char32_t>(c) <= 0x7F) {
    return (c >= L' ' && c <= L'~') || c == L'\t';
  }
  return IsGraphic(c) || IsBlank(c);
}

// Removes the comment first: it often has many characters beyond ASCII. No replaced character can
// become part of a "//".
void Clean(std::wstring& line) {
  line.resize(std::min(line.size(), line.find(kComment)));
  const auto isDropped = [](wchar_t c) { return !IsKept(c); };
  std::replace_if(line.begin(), line.end(), isDropped, L' ');
}

}  // namespace

std::vector<std::wstring_view> SplitText(std::wstring_view text, std::wstring_view delimiter) {
  constexpr std::size_t kInitialCapacity = 16;
  std::vector<std::wstring_view> parts;
  parts.reserve(kInitialCapacity);
  std::size_t start = 0;
  for (std::size_t end = 0; (end = text.find(delimiter, start)) != std::wstring_view::npos;
       start = end + delimiter.size()) {
    parts.push_back(text.substr(start, end - start));
  }
  parts.push_back(text.substr(start));
  return parts;
}

// The further words of the last field become fields too. This must stay: it keeps the unit "square
// meter" of the default table out of the catalogue (unit_line_test.cpp, default_table_test.cpp).
std::vector<std::wstring_view> SplitUnitLine(std::wstring& line, std::int32_t count,
                                             std::size_t maxFields) {
  constexpr std::size_t kInitialCapacity = 8;
  Clean(line);
  std::vector<std::wstring_view> fields;
  const auto found = [&fields] { return static_cast<std::int64_t>(fields.size()); };
  const auto lineEnd = line.end();
  auto start = std::find_if_not(line.begin(), lineEnd, IsSeparator);
  fields.reserve(start != lineEnd ? std::min(maxFields, kInitialCapacity) : 0);
  while (start != lineEnd && fields.size() < maxFields) {
    const auto end = std::find_if(start, lineEnd, IsSeparator);
    const auto next = std::find_if_not(end, lineEnd, IsSeparator);
    const bool reachesLineEnd = found() + 1 >= count;
    const auto fieldEnd = reachesLineEnd ? lineEnd : end;
    fields.emplace_back(&*start, static_cast<std::size_t>(fieldEnd - start));
    // For the last field, this overwrites the terminating zero of the string with a zero.
    line[static_cast<std::size_t>(fieldEnd - line.begin())] = L'\0';
    start = next;
  }
  if (found() < count) {
    fields.clear();
  }
  return fields;
}

std::int32_t IntegerField(const wchar_t* field) {
  using Limits = std::numeric_limits<std::int32_t>;
  // wcstol returns a long: 32 bits on Windows, 64 bits on Linux.
  const auto number = std::wcstol(field, nullptr, kDecimal);
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

double NumberField(const wchar_t* field) { return std::wcstod(field, nullptr); }

}  // namespace KelmoLibs::Localize
