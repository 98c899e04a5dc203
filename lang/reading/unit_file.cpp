#include "lang/reading/unit_file.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "lang/unicode/utf8_from_wide.h"
#include "lang/unicode/windows_characters.h"
#include "text/utf8.h"
#include "unittables/default_table.h"
#include "unittables/unit_line.h"

namespace KelmoLibs::Lang {
namespace {

using Localize::SplitUnitLine;

constexpr std::size_t kHeaderFields = 2;
constexpr std::size_t kUnitFields = 3;
constexpr std::size_t kDefaultFields = 4;
constexpr std::size_t kLongestCharacter = 4;  // bytes of a character beyond U+FFFF

// The length of the character that begins with `byte`, in well-formed UTF-8.
std::size_t CharacterLength(char byte) noexcept {
  const auto lead = static_cast<unsigned char>(byte);
  return lead < 0x80U ? 1 : lead < 0xE0U ? 2 : lead < 0xF0U ? 3 : kLongestCharacter;
}

std::size_t CodeUnits(char byte) noexcept {
  return CharacterLength(byte) == kLongestCharacter ? 2 : 1;
}

// The line as the library on Windows has it: one wchar_t for each UTF-16 code unit, and a space for
// each one that it does not keep. The splitter of the library does the same with the characters
// that this system does not keep.
std::wstring WindowsLine(std::string_view line) {
  std::wstring units;
  units.reserve(line.size());
  while (!line.empty()) {
    const std::size_t length = CharacterLength(line.front());
    if (length == kLongestCharacter) {
      units += L"  ";  // two surrogates
    } else {
      std::array<wchar_t, kLongestCharacter> unit = {};
      Localize::DecodeUtf8(line.substr(0, length), unit.data());
      units += IsKeptByWindows(unit[0]) ? unit[0] : L' ';
    }
    line.remove_prefix(length);
  }
  return units;
}

// Turns ranges of the code units of a line, in ascending order, into views of the line.
class Mapper {
 public:
  explicit Mapper(std::string_view line) noexcept : rest_(line) {}

  std::string_view Map(std::size_t start, std::size_t length) noexcept {
    Skip(start);
    const char* const first = rest_.data();
    Skip(start + length);
    return {first, static_cast<std::size_t>(rest_.data() - first)};
  }

 private:
  void Skip(std::size_t units) noexcept {
    while (units_ < units && !rest_.empty()) {
      units_ += CodeUnits(rest_.front());
      rest_.remove_prefix(CharacterLength(rest_.front()));
    }
  }

  std::string_view rest_;
  std::size_t units_ = 0;
};

}  // namespace

UnitFile::UnitFile(std::string name, std::filesystem::path path, std::string raw)
    : source_(std::move(name), std::move(path), std::move(raw)), end_(EndOfReading(source_.Raw())) {
  WindowsLines lines(source_.Raw());
  std::uint32_t number = 0;
  while (const std::optional<std::string_view> line = lines.Next()) {
    if (++number == 1) {
      ReadHeader(*line);
    } else if (!line->empty()) {
      ReadUnit(number, *line);
    }
  }
  FindUnits();
}

void UnitFile::ReadHeader(std::string_view line) {
  headerLine_ = line;
  std::wstring copy = WindowsLine(line);
  // One field asked for, so that a line with too few has its fields too. The first ends with the
  // line; the others show their number.
  const auto words = SplitUnitLine(copy, 1, kHeaderFields + 1);
  header_ = words.empty()                   ? UnitHeader::kEmpty
            : words.size() < kHeaderFields  ? UnitHeader::kTooFew
            : words.size() == kHeaderFields ? UnitHeader::kWhole
                                            : UnitHeader::kTooMany;
  copy = WindowsLine(line);
  const auto fields = SplitUnitLine(copy, kHeaderFields, kHeaderFields + 1);
  if (!fields.empty()) {
    languageKey_ = Mapper(line).Map(static_cast<std::size_t>(fields[0].data() - copy.data()),
                                    fields[0].size());
  }
}

void UnitFile::ReadUnit(std::uint32_t number, std::string_view line) {
  std::wstring copy = WindowsLine(line);
  const auto fields = SplitUnitLine(copy, kUnitFields, kUnitFields);
  if (fields.empty()) {
    dropped_.push_back(line);
    return;
  }
  Mapper mapper(line);
  const auto map = [&](std::wstring_view field) {
    return mapper.Map(static_cast<std::size_t>(field.data() - copy.data()), field.size());
  };
  const std::string_view code = map(fields[0]);
  const std::string_view symbol = map(fields[1]);
  lines_.push_back({number, WindowsIntegerField(fields[0].data()), code, symbol, map(fields[2])});
}

void UnitFile::FindUnits() {
  units_.resize(lines_.size());
  for (std::uint32_t i = 0; i < units_.size(); ++i) {
    units_[i] = i;
  }
  std::sort(units_.begin(), units_.end(), [this](std::uint32_t left, std::uint32_t right) {
    return std::pair(lines_[left].code, left) < std::pair(lines_[right].code, right);
  });
  const auto isSameCode = [this](std::uint32_t left, std::uint32_t right) {
    return lines_[left].code == lines_[right].code;
  };
  units_.erase(std::unique(units_.begin(), units_.end(), isSameCode), units_.end());
}

const UnitLine* UnitFile::Find(std::int32_t code) const noexcept {
  const auto found = std::lower_bound(
      units_.begin(), units_.end(), code,
      [this](std::uint32_t unit, std::int32_t wanted) { return lines_[unit].code < wanted; });
  return found != units_.end() && lines_[*found].code == code ? &lines_[*found] : nullptr;
}

void UnitFile::AppendMessages(std::wstring_view path, Localize::ErrorList& messages) const {
  if (header_ != UnitHeader::kWhole) {
    messages.Append(Localize::UnitTableNotFoundMessage(path));
    return;
  }
  for (const std::string_view line : dropped_) {
    messages.Append(Localize::UnitLineMessage(Localize::DecodeUtf8(line), path));
  }
}

std::string TextAsRead(std::string_view field) { return Utf8FromWide(WindowsLine(field)); }

std::vector<DefaultUnitLine> ReadDefaultUnitLines(std::string_view bytes) {
  std::vector<DefaultUnitLine> lines;
  const std::wstring text = Localize::DecodeUnitTable(bytes);
  for (const std::wstring_view line : Localize::SplitText(text, L"\n")) {
    std::wstring copy(line);
    const auto fields = SplitUnitLine(copy, kDefaultFields, kDefaultFields + 1);
    lines.push_back({std::wstring(line.substr(0, line.find(L'\r'))),
                     {fields.begin(), fields.end()},
                     fields.empty() ? 0 : Localize::IntegerField(fields[0].data())});
  }
  return lines;
}

}  // namespace KelmoLibs::Lang
