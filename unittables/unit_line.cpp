#include "unittables/unit_line.h"

#include <algorithm>
#include <cwchar>
#include <limits>

#include "platform/files.h"

namespace KelmoLibs::Localize {
namespace {

constexpr std::wstring_view kComment = L"//";
constexpr int kDecimal = 10;

bool IsSeparator(wchar_t c) noexcept { return c == L' ' || c == L'\t'; }

// The system is not asked about ASCII, of which each says the same.
bool IsKept(wchar_t c) noexcept {
  if (static_cast<char32_t>(c) <= 0x7F) {
    return (c >= L' ' && c <= L'~') || c == L'\t';
  }
  return IsGraphic(c) || IsBlank(c);
}

// The comment first: most of its characters are of another script, and none becomes a part of a "//".
void Clean(std::wstring& line) {
  line.resize(std::min(line.size(), line.find(kComment)));
  const auto isDropped = [](wchar_t c) { return !IsKept(c); };
  std::replace_if(line.begin(), line.end(), isDropped, L' ');
}

}  // namespace

std::vector<std::wstring_view> SplitText(std::wstring_view text, std::wstring_view delimiter) {
  constexpr std::size_t kFewPieces = 16;
  std::vector<std::wstring_view> pieces;
  pieces.reserve(kFewPieces);
  std::size_t start = 0;
  for (std::size_t end = 0; (end = text.find(delimiter, start)) != std::wstring_view::npos;
       start = end + delimiter.size()) {
    pieces.push_back(text.substr(start, end - start));
  }
  pieces.push_back(text.substr(start));
  return pieces;
}

// The words behind the first one of the last field become fields as well, and that stays: it keeps the
// unit "square meter" of the default table out of the catalogue. unit_line_test.cpp and
// default_table_test.cpp hold it.
std::vector<std::wstring_view> SplitUnitLine(std::wstring& line, std::int32_t count,
                                             std::size_t most) {
  constexpr std::size_t kFewFields = 8;
  Clean(line);
  std::vector<std::wstring_view> fields;
  const auto found = [&fields] { return static_cast<std::int64_t>(fields.size()); };
  const auto lineEnd = line.end();
  auto start = std::find_if_not(line.begin(), lineEnd, IsSeparator);
  fields.reserve(start != lineEnd ? std::min(most, kFewFields) : 0);
  while (start != lineEnd && fields.size() < most) {
    const auto end = std::find_if(start, lineEnd, IsSeparator);
    const auto next = std::find_if_not(end, lineEnd, IsSeparator);
    const bool takesTheRest = found() + 1 >= count;
    const auto fieldEnd = takesTheRest ? lineEnd : end;
    fields.emplace_back(&*start, static_cast<std::size_t>(fieldEnd - start));
    // Of the last field, the zero that the string has at its end itself.
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
  // A long, which has 32 bits on Windows and 64 on Linux.
  const auto number = std::wcstol(field, nullptr, kDecimal);
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

double NumberField(const wchar_t* field) { return std::wcstod(field, nullptr); }

}  // namespace KelmoLibs::Localize
