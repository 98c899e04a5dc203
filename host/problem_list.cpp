#include "host/problem_list.h"

#include <array>

namespace KelmoLibs::Host {
namespace {

constexpr std::array<std::string_view, 3> kSeverityNames = {"note", "warning", "error"};

// Bytes of the character at the start of `text` if it is a control character or ends a line; else 0.
std::size_t ControlLength(std::string_view text) noexcept {
  const auto byteAt = [text](std::size_t index) {
    return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
  };
  if (byteAt(0) < 0x20 || byteAt(0) == 0x7F) {
    return 1;
  }
  if (byteAt(0) == 0xC2 && byteAt(1) >= 0x80 && byteAt(1) < 0xA0) {
    return 2;  // U+0080 to U+009F: some terminals obey them
  }
  const std::string_view start = text.substr(0, 3);
  return start == "\u2028" || start == "\u2029" ? 3 : 0;  // separators of lines and paragraphs
}

// Keys and names of files may have any character: a problem stays one line, and ends nowhere early.
std::string WithVisibleControls(std::string_view line) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string visible;
  visible.reserve(line.size());
  while (!line.empty()) {
    const std::size_t length = ControlLength(line);
    for (const char c : line.substr(0, length)) {
      const auto byte = static_cast<unsigned char>(c);
      visible.append("\\x").append({kHex[byte >> 4U], kHex[byte & 0xFU]});
    }
    visible += line.substr(0, length == 0 ? 1 : 0);
    line.remove_prefix(length == 0 ? 1 : length);
  }
  return visible;
}

void AppendDetail(std::string_view label, std::string_view value, std::string& line) {
  if (!value.empty()) {
    line += " (";
    line += label;
    line += " \"";
    line += value;
    line += "\")";
  }
}

// Whether the key of a problem is the code of a unit.
bool IsOfUnit(ProblemCode code) noexcept {
  return code >= ProblemCode::kUnit && code <= ProblemCode::kNameOfNoUnit;
}

}  // namespace

std::string_view SentenceOf(ProblemCode code) noexcept {
  switch (code) {
    case ProblemCode::kKeyRepeated:
      return "EL101. Key already declared.";
    case ProblemCode::kCannotRead:
      return "EL111. Dictionary file not found";
    case ProblemCode::kUnknownLanguage:
      return "EL112. Dictionary not found";
    case ProblemCode::kKeyMissing:
      return "EL121. Key not found in dictionary";
    case ProblemCode::kNotUtf8:
      return "Bytes that are not UTF-8 are dropped";
    case ProblemCode::kByteOrderMark:
      return "A byte-order mark stands in front of the id of the language";
    case ProblemCode::kEmptyFile:
      return "The file is empty";
    case ProblemCode::kControlZ:
      return "A byte 0x1A ends the text";
    case ProblemCode::kLineBreak:
      return "A backslash and an n are read as a line break";
    case ProblemCode::kNoLanguageId:
      return "The first line does not begin with the id of a language";
    case ProblemCode::kEmptyFolder:
      return "The folder has no dictionary";
    case ProblemCode::kNoLanguage:
      return "The view has no language";
    case ProblemCode::kOverridesNothing:
      return "The text overrides no other text";
    case ProblemCode::kPlaceholder:
      return "A placeholder cannot be filled";
    case ProblemCode::kUnit:
      return "A unit is dropped";
    case ProblemCode::kUnitRepeated:
      return "The code is repeated: the first line with it counts";
    case ProblemCode::kUnitDropped:
      return "A line is dropped, as the first library drops it";
    case ProblemCode::kUnitNoFactor:
      return "The factor of a unit is 0: arithmetic and conversion give NaN";
    case ProblemCode::kUnitDifference:
      return "A unit of points is dropped";
    case ProblemCode::kNameOfNoUnit:
      return "A name belongs to no unit";
    case ProblemCode::kCannotReadUnits:
      return "The file of units cannot be read";
    case ProblemCode::kNoNumber:
      return "A number is missing";
    case ProblemCode::kDecimalMark:
      return "The decimal mark is another one";
    case ProblemCode::kGroups:
      return "The digits are not grouped in this way";
    case ProblemCode::kNumberRange:
      return "The number is too large, too small or too long";
    case ProblemCode::kNoUnit:
      return "A unit is missing";
    case ProblemCode::kUnknownUnit:
      return "The unit is not known";
    case ProblemCode::kAmbiguousUnit:
      return "The unit is ambiguous";
    case ProblemCode::kOtherKind:
      break;
  }
  return "The unit is one of another quantity";
}

std::string Print(const Problem& problem) {
  std::string line;
  if (!problem.file.empty()) {
    line += problem.file;
    if (problem.line != 0) {
      line += ':' + std::to_string(problem.line);
    }
    if (problem.column != 0) {
      line += ':' + std::to_string(problem.column);
    }
    line += ": ";
  } else if (problem.column != 0) {  // of a text that a user has typed
    line += "column " + std::to_string(problem.column) + ": ";
  }
  line += kSeverityNames[static_cast<std::size_t>(problem.severity)];
  line += ": ";
  line += SentenceOf(problem.code);
  if (!problem.detail.empty()) {
    line += line.back() == '.' ? " (" + problem.detail + ")" : ": " + problem.detail;
  }
  AppendDetail(IsOfUnit(problem.code) ? "unit" : "key", problem.key, line);
  AppendDetail("language", problem.language, line);
  return WithVisibleControls(line);
}

}  // namespace KelmoLibs::Host
