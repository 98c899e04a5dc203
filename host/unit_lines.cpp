#include "host/unit_lines.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "text/utf8_characters.h"

namespace KelmoLibs::Host {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool SeparatesWords(char c) noexcept {
  return static_cast<unsigned char>(c) <= 0x20 || c == '\x7F';
}

std::uint32_t ColumnOf(std::string_view line, std::size_t offset) noexcept {
  return static_cast<std::uint32_t>(Localize::CountWellFormed(line.substr(0, offset))) + 1;
}

// The columns of rising offsets. Counting each from the start would take a long line hours.
class ColumnCounter {
 public:
  explicit ColumnCounter(std::string_view line) noexcept : line_(line) {}

  std::uint32_t At(std::size_t offset) noexcept {
    column_ += static_cast<std::uint32_t>(
        Localize::CountWellFormed(line_.substr(offset_, offset - offset_)));
    offset_ = offset;
    return column_;
  }

 private:
  std::string_view line_;
  std::size_t offset_ = 0;
  std::uint32_t column_ = 1;
};

}  // namespace

UnitLines::UnitLines(std::string_view bytes, std::string_view fileName,
                     ProblemList* problems) noexcept
    : rest_(bytes), fileName_(fileName), problems_(problems) {
  if (rest_.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
    rest_.remove_prefix(kByteOrderMark.size());
  }
}

std::optional<std::string_view> UnitLines::First() noexcept {
  return rest_.empty() ? std::nullopt : Take();
}

std::optional<std::string_view> UnitLines::Next() noexcept {
  while (!rest_.empty()) {
    if (const auto line = Take()) {
      return line;
    }
  }
  return std::nullopt;
}

std::optional<std::string_view> UnitLines::Take() noexcept {
  ++number_;
  const std::size_t end = rest_.find('\n');
  std::string_view line = rest_.substr(0, end);
  rest_.remove_prefix(std::min(line.size() + 1, rest_.size()));
  while (!line.empty() && line.back() == '\r') {  // the first library exports two in each line
    line.remove_suffix(1);
  }
  if (const std::size_t carriageReturn = line.find('\r');
      carriageReturn != std::string_view::npos) {
    TellFault("a CR without an LF ends no line", ColumnOf(line, carriageReturn));
    return std::nullopt;
  }
  const std::size_t valid = Localize::WellFormedUtf8Length(line);
  if (valid == line.size()) {
    return line;
  }
  TellFault("the line is not UTF-8", ColumnOf(line, valid));
  return std::nullopt;
}

void UnitLines::Tell(ProblemCode code, ProblemSeverity severity, std::uint32_t column,
                     std::string_view detail) const noexcept {
  if (problems_ != nullptr) {
    problems_->Append([&] {
      Problem problem;
      problem.code = code;
      problem.severity = severity;
      problem.line = number_;
      problem.column = column;
      problem.file = fileName_;
      problem.detail = detail;
      return problem;
    });
  }
}

bool UnitLines::IsNew(std::int32_t code) {
  if (codes_.insert(code).second) {
    return true;
  }
  Tell(ProblemCode::kUnitRepeated, ProblemSeverity::kError, 1, std::to_string(code));
  return false;
}

std::vector<UnitField> SplitAtTabs(std::string_view line) {
  std::vector<UnitField> fields;
  ColumnCounter columns(line);
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = std::min(line.find('\t', start), line.size());
    std::size_t first = start;
    std::size_t last = end;
    while (first < last && line[first] == ' ') {
      ++first;
    }
    while (first < last && line[last - 1] == ' ') {
      --last;
    }
    fields.push_back({line.substr(first, last - first), columns.At(first)});
    if (end == line.size()) {
      return fields;
    }
    start = end + 1;
  }
}

std::vector<UnitField> SplitIntoWords(std::string_view line) {
  std::vector<UnitField> words;
  ColumnCounter columns(line);
  const char* const end = line.data() + line.size();
  const char* start = std::find_if_not(line.data(), end, SeparatesWords);
  while (start != end) {
    const char* const wordEnd = std::find_if(start, end, SeparatesWords);
    const auto offset = static_cast<std::size_t>(start - line.data());
    words.push_back(
        {line.substr(offset, static_cast<std::size_t>(wordEnd - start)), columns.At(offset)});
    start = std::find_if_not(wordEnd, end, SeparatesWords);
  }
  return words;
}

std::string_view WithoutComment(std::string_view line) noexcept {
  return line.substr(0, line.find("//"));
}

std::optional<std::int32_t> ReadCode(std::string_view text) noexcept {
  std::int32_t code = 0;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, code);
  return read.ec == std::errc() && read.ptr == end ? std::optional(code) : std::nullopt;
}

}  // namespace KelmoLibs::Host
