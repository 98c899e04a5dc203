#include "lang/report/visible_text.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "lang/unicode/code_points.h"
#include "lang/unicode/display_width.h"
#include "lang/unicode/hex.h"
#include "text/utf8.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::string_view kCut = u8"…";
constexpr std::size_t kLongestCharacter = 4;

// The next character of a text, or its next byte if that is not UTF-8.
struct Unit {
  std::string_view bytes;
  char32_t character = 0;
  bool isCharacter = false;
};

// Takes the first unit off `text`, which is not empty.
Unit TakeUnit(std::string_view& text) noexcept {
  const CodePoint first = FirstCodePoint(text);
  const std::string_view bytes = text.substr(0, first.length);
  const bool isCharacter = first.value < 0x80 || Localize::IsUtf8(bytes);
  const Unit unit =
      isCharacter ? Unit{bytes, first.value, true} : Unit{text.substr(0, 1), 0, false};
  text.remove_prefix(unit.bytes.size());
  return unit;
}

void AppendByte(const Unit& unit, std::string& text) {
  text += '<';
  AppendHex(static_cast<unsigned char>(unit.bytes.front()), 2, text);
  text += '>';
}

void AppendVisible(const Unit& unit, std::string& text) {
  if (!unit.isCharacter) {
    AppendByte(unit, text);
  } else if (unit.character == U'\t') {
    text += u8"→";
  } else if (IsInvisible(unit.character)) {
    text.append("<").append(CodePointName(unit.character)).append(">");
  } else {
    text += unit.bytes;
  }
}

// A unit as it is shown.
struct Cell {
  std::string text;
  unsigned width = 0;
};

void AppendCell(std::string_view& text, std::vector<Cell>& cells) {
  Cell& cell = cells.emplace_back();
  AppendVisible(TakeUnit(text), cell.text);
  cell.width = WidthOf(cell.text);
}

// The first byte in [offset - bytes, offset] that begins a character.
std::size_t StepBack(std::string_view line, std::size_t offset, std::size_t bytes) noexcept {
  std::size_t start = offset - std::min(offset, bytes);
  if (start > 0) {
    for (std::size_t i = 1; i < kLongestCharacter && start < offset && IsContinuation(line[start]);
         ++i) {
      ++start;
    }
  }
  return start;
}

unsigned Sum(const std::vector<Cell>& cells, std::size_t first, std::size_t last) noexcept {
  unsigned width = 0;
  for (std::size_t i = first; i < last; ++i) {
    width += cells[i].width;
  }
  return width;
}

}  // namespace

std::string VisibleText(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    AppendVisible(TakeUnit(bytes), text);
  }
  return text;
}

std::string WellFormedText(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const Unit unit = TakeUnit(bytes);
    if (unit.isCharacter) {
      text += unit.bytes;
    } else {
      AppendByte(unit, text);
    }
  }
  return text;
}

std::string_view TakeCharacter(std::string_view& bytes) noexcept { return TakeUnit(bytes).bytes; }

unsigned WidthOf(std::string_view text) {
  unsigned width = 0;
  while (!text.empty()) {
    width += DisplayWidth(TakeUnit(text).character);
  }
  return width;
}

Excerpt ExcerptOf(std::string_view line, std::size_t offset, std::uint32_t length, unsigned width) {
  std::vector<Cell> cells;
  const std::size_t start = StepBack(line, offset, kLongestCharacter * width);
  for (std::string_view before = line.substr(start, offset - start); !before.empty();) {
    AppendCell(before, cells);
  }
  const std::size_t mark = cells.size();
  // Marks have no width: the limit of characters ends a long row of them.
  std::string_view behind = line.substr(offset);
  for (unsigned used = 0; !behind.empty() && used <= width && (cells.size() - mark) / 2 <= width;
       used += cells.back().width) {
    AppendCell(behind, cells);
  }
  const std::size_t markEnd = std::min<std::size_t>(cells.size(), mark + length);

  // The line from its start, if the mark is seen then. If not, the part in front of the mark gets
  // half of the room that the mark leaves, and all that is left goes to the part behind it.
  std::size_t first = 0;
  const bool isWhole = start == 0 && behind.empty() && Sum(cells, 0, cells.size()) <= width;
  if (!isWhole && (start > 0 || Sum(cells, 0, markEnd) + 1 > width)) {
    const unsigned marked = std::min(Sum(cells, mark, markEnd), width / 2);
    const unsigned room = (width - marked) / 2;
    first = mark;
    for (unsigned used = 1; first > 0 && used + cells[first - 1].width <= room; --first) {
      used += cells[first - 1].width;
    }
    while (first < mark && cells[first].width == 0) {
      ++first;  // a mark without its letter
    }
  }

  Excerpt excerpt;
  const bool isCutBefore = first > 0 || start > 0;
  if (isCutBefore) {
    excerpt.text = kCut;
  }
  unsigned used = isCutBefore ? 1 : 0;
  excerpt.markStart = used + Sum(cells, first, mark);
  std::size_t next = first;
  for (; next < cells.size(); ++next) {
    const bool isLast = next + 1 == cells.size() && behind.empty();
    if (!isWhole && used + cells[next].width + (isLast ? 0 : 1) > width) {
      break;
    }
    excerpt.text += cells[next].text;
    used += cells[next].width;
  }
  if (next < cells.size() || !behind.empty()) {
    excerpt.text += kCut;
  }
  excerpt.markWidth = std::max(1U, Sum(cells, mark, std::max(mark, std::min(next, markEnd))));
  return excerpt;
}

}  // namespace KelmoLibs::Lang
