// Rules of the bytes of a file: where the library stops reading, its encoding, byte-order marks and
// line ends. They run first: what they find explains most of what other rules would say.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lang/rules/check.h"
#include "lang/rules/encoding_mend.h"
#include "lang/rules/fix_command.h"
#include "lang/rules/line_kind.h"
#include "lang/unicode/ascii.h"
#include "lang/unicode/byte_order_mark.h"
#include "lang/unicode/code_page_guess.h"
#include "lang/unicode/code_points.h"
#include "text/utf8.h"

namespace KelmoLibs::Lang {
namespace {

constexpr char kControlZ = '\x1A';

// The keys that nobody gets because the library stops reading.
struct Loss {
  std::size_t keys = 0;
  std::uint32_t firstLine = 0;
  std::uint32_t lastLine = 0;
};

Loss LossOf(const FileCheck& check) {
  const SourceFile& source = check.Source();
  Loss loss;
  const auto lose = [&loss](std::uint32_t line) {
    loss.firstLine = loss.keys == 0 ? line : loss.firstLine;
    loss.lastLine = line;
    ++loss.keys;
  };
  const std::vector<Entry>& lost = check.File().LostEntries();
  if (source.EncodedAsUtf16() == Utf16::kNo && check.File().HasHeader() &&
      check.File().StopsBecause() != Stop::kEndOfFile) {
    const char* const stop = source.Raw().data() + check.File().StopsAt();
    const std::uint32_t line = source.LineOf(stop);
    // A byte 0x1A alone in a line is no key.
    if (source.Line(line).data() == stop && source.Line(line) != std::string_view(&kControlZ, 1)) {
      lose(line);
    }
  }
  if (!lost.empty()) {
    const std::size_t before = loss.keys;
    lose(source.LineOf(lost.front().key.data()));
    loss.lastLine = source.LineOf(lost.back().key.data());
    loss.keys = before + lost.size();
  }
  return loss;
}

// The sentence `key`, with what is lost if something is.
Sentence WithLoss(const std::string& key, const Loss& loss) {
  if (loss.keys == 0) {
    return {key, {}};
  }
  return {
      key + ".lost.#",
      {std::to_string(loss.keys), std::to_string(loss.firstLine), std::to_string(loss.lastLine)}};
}

// Which part of its line the library loses first.
std::string CutPart(const FileCheck& check) {
  const SourceFile& source = check.Source();
  const char* const stop = source.Raw().data() + check.File().StopsAt();
  if (!check.File().HasHeader()) {
    return "file";
  }
  const std::uint32_t line = source.LineOf(stop);
  if (line == 1) {
    return "header";
  }
  const std::string_view before =
      source.Line(line).substr(0, static_cast<std::size_t>(stop - source.Line(line).data()));
  return before.empty()                                          ? "line"
         : before.find_first_of(" \t") == std::string_view::npos ? "key"
                                                                 : "text";
}

// The lines of a file that are not UTF-8.
struct FaultyLines {
  std::string_view firstFault;  // the bytes beyond ASCII at the first fault
  std::size_t count = 0;
  std::string_view second;                // the fault in the next line
  std::vector<std::string_view> samples;  // the first of the lines
};

struct Faults {
  FaultyLines inCodePage;
  FaultyLines damaged;  // UTF-8 with damaged letters
};

// Whether `bytes` begins with the first bytes of a letter, and nothing stands behind them.
bool IsCutLetter(std::string_view bytes) noexcept {
  const auto first = static_cast<unsigned char>(bytes.front());
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  return first >= 0xC2 && first <= 0xF4 && bytes.size() < length &&
         std::all_of(bytes.begin() + 1, bytes.end(), [](char c) { return IsContinuation(c); });
}

// Whether the fault at `position` is the only one: the file ends within a letter. It has other
// letters beyond ASCII, so that the last bytes are no letter of a code page.
bool IsCutFile(std::string_view bytes, std::size_t position) noexcept {
  return IsCutLetter(bytes.substr(position)) && !IsAscii(bytes.substr(0, position));
}

Faults FindFaults(FileCheck& check) {
  constexpr std::size_t kSampleBytes = 1U << 16U;
  const SourceFile& source = check.Source();
  const std::string_view bytes = source.Bytes();
  Faults faults;
  std::size_t sampled = 0;
  for (std::size_t position = 0;;) {
    position += Localize::WellFormedUtf8Length(bytes.substr(position));
    if (position >= bytes.size()) {
      return faults;
    }
    const std::uint32_t number = source.LineOf(bytes.data() + position);
    const std::string_view line = source.Line(number);
    check.Explain(number);
    const bool isFirst = faults.damaged.count + faults.inCodePage.count == 0;
    const bool isDamaged = (isFirst && IsCutFile(bytes, position)) || IsDamagedUtf8(line);
    FaultyLines& lines = isDamaged ? faults.damaged : faults.inCodePage;
    const std::string_view fault = BytesBeyondAscii(bytes.substr(position));
    if (++lines.count == 1) {
      lines.firstFault = fault;
    } else if (lines.count == 2) {
      lines.second = fault;
    }
    if (sampled < kSampleBytes) {
      lines.samples.push_back(line.substr(0, kSampleBytes));
      sampled += lines.samples.back().size();
    }
    position = static_cast<std::size_t>(line.data() + line.size() - bytes.data());
  }
}

void AddFurtherLines(const FileCheck& check, const FaultyLines& lines, Finding& finding) {
  if (lines.count > 1) {
    finding.related.push_back({check.PlaceIn(check.FileIndex(), lines.second),
                               {"encoding.further.#", {std::to_string(lines.count - 1)}}});
  }
}

void AddDamageMend(const FileCheck& check, const FaultyLines& lines, Finding& finding) {
  AddFurtherLines(check, lines, finding);
  const std::string_view bytes = check.Source().Bytes();
  const bool isEnd =
      lines.firstFault.data() + lines.firstFault.size() == bytes.data() + bytes.size();
  finding.hint = {isEnd ? "encoding.end_missing" : "encoding.damaged", {}};
  finding.mend = {isEnd ? "encoding.mend.end_missing" : "encoding.mend.damaged", {}};
}

// Lines in an encoding that is not known may look like damaged UTF-8 by chance. They belong to the
// others, if these are not fewer.
void JoinLinesOfUnknownEncoding(const FileCheck& check, Faults& faults) {
  FaultyLines& lines = faults.inCodePage;
  if (faults.damaged.count == 0 || lines.count < faults.damaged.count ||
      GuessCodePage(lines.samples, check.FileLanguage().primary)) {
    return;
  }
  std::vector<std::string_view> places = {lines.firstFault, faults.damaged.firstFault};
  for (const FaultyLines* const some : {&lines, &faults.damaged}) {
    if (some->count > 1) {
      places.push_back(some->second);
    }
  }
  std::sort(places.begin(), places.end(),
            [](std::string_view a, std::string_view b) { return a.data() < b.data(); });
  lines.firstFault = places[0];
  lines.second = places[1];
  lines.count += faults.damaged.count;
  faults.damaged = {};
}

void CheckUtf8(FileCheck& check) {
  Faults faults = FindFaults(check);
  JoinLinesOfUnknownEncoding(check, faults);
  if (faults.inCodePage.count + faults.damaged.count == 0) {
    return;
  }
  const auto isFirst = [](const FaultyLines& lines, const FaultyLines& others) {
    return lines.count > 0 &&
           (others.count == 0 || lines.firstFault.data() < others.firstFault.data());
  };
  const bool isCodePageFirst = isFirst(faults.inCodePage, faults.damaged);
  const FaultyLines& first = isCodePageFirst ? faults.inCodePage : faults.damaged;
  const FaultyLines& others = isCodePageFirst ? faults.damaged : faults.inCodePage;
  const bool isStop = check.File().StopsBecause() == Stop::kNotUtf8;
  Finding& finding = check.Add(RuleId::kEncoding, Severity::kError, first.firstFault, "",
                               isStop ? WithLoss("encoding.cut." + CutPart(check), LossOf(check))
                                      : Sentence{"encoding.further_stop", {}});
  if (isCodePageFirst) {
    AddFurtherLines(check, first, finding);
    AddCodePageMend(check.Source(), first.samples, first.firstFault, check.FileLanguage().primary,
                    finding);
  } else {
    AddDamageMend(check, first, finding);
  }
  if (others.count > 0) {
    finding.related.push_back(
        {check.PlaceIn(check.FileIndex(), others.firstFault),
         {isCodePageFirst ? "encoding.also_damaged" : "encoding.also_code_page", {}}});
  }
}

void CheckUtf16(FileCheck& check) {
  const std::string_view line =
      check.Source().LineCount() > 0 ? check.Source().Line(1) : std::string_view();
  const Sentence message = WithLoss("encoding.utf16", LossOf(check));
  Finding& finding = line.empty()
                         ? check.AddToFile(RuleId::kEncoding, Severity::kError, message)
                         : check.Add(RuleId::kEncoding, Severity::kError, line, "", message);
  AddUtf16Mend(check.Source(), finding);
  check.Explain(1);
}

void CheckControlZ(FileCheck& check) {
  const std::string_view bytes = check.Source().Bytes();
  const std::size_t position = bytes.find(kControlZ);
  if (position == std::string_view::npos) {
    return;
  }
  const std::uint32_t line = check.Source().LineOf(bytes.data() + position);
  const std::string_view where = bytes.substr(position, 1);
  const bool isStop = check.File().StopsBecause() == Stop::kControlZ;
  if (!isStop && check.IsExplained(line)) {
    return;
  }
  const Loss loss = isStop ? LossOf(check) : Loss();
  const bool isLineAlone = check.Source().Line(line) == where;
  // Old editors end each file with this byte, and Windows drops it.
  const bool isHarmless = loss.keys == 0 && isLineAlone && isStop;
  Finding& finding = check.Add(RuleId::kControlCharacter,
                               isHarmless ? Severity::kWarning : Severity::kError, where, "",
                               !isStop      ? Sentence{"control-character.further_stop", {}}
                               : isHarmless ? Sentence{"control-character.file_end", {}}
                                            : WithLoss("control-character.stop", loss));
  finding.mend = {"control-character.mend", {}};
  check.Explain(line);
}

// A mark in front of the id or of a key. Behind them it is an invisible character like others.
void CheckByteOrderMarks(FileCheck& check) {
  const SourceFile& source = check.Source();
  const std::string_view bytes = source.Bytes();
  for (std::size_t position = bytes.find(kByteOrderMark); position != std::string_view::npos;
       position = bytes.find(kByteOrderMark, position + 1)) {
    const char* const mark = bytes.data() + position;
    const std::uint32_t number = source.LineOf(mark);
    const std::string_view line = source.Line(number);
    if (line.data() != mark || check.IsExplained(number)) {
      continue;
    }
    check.Explain(number);
    const std::string_view rest = WithoutByteOrderMarks(line);
    const std::string_view name = rest.substr(0, rest.find_first_of(" \t"));
    Finding& finding = check.Add(
        RuleId::kByteOrderMark, Severity::kError, line.substr(0, line.size() - rest.size()),
        number == 1 ? "" : name,
        {number == 1 ? "byte-order-mark.file" : "byte-order-mark.key", {std::string(name)}});
    finding.mendCommand = FixCommand("", source.Name());
  }
}

void CheckCrLines(FileCheck& check) {
  const SourceFile& source = check.Source();
  const std::size_t end = source.Bytes().find('\r');
  const std::size_t keys = check.File().LostEntries().size();
  Finding& finding = check.Add(RuleId::kLineEnd, Severity::kError, source.Bytes().substr(end, 1),
                               "", {"line-end.cr.#", {std::to_string(keys)}});
  finding.mendCommand = FixCommand("", source.Name());
  check.Explain(1);
}

// Whether a key or the id of the line ends with a CR: there is no blank that ends it before.
bool IsInKey(std::string_view line) noexcept {
  return line.find_first_of(" \t") == std::string_view::npos;
}

// Whether `rest`, which begins with `key`, was an entry of its own before its line end was damaged.
bool IsLikelyEntry(const FileCheck& check, std::string_view rest, std::string_view key) {
  return rest.substr(key.size(), 1) == "\t" ||
         (rest.size() > key.size() && key.find_first_of("._") != std::string_view::npos) ||
         check.FindInBase(key);
}

// CRs in lines that end with LF.
void CheckSingleCrs(FileCheck& check) {
  const SourceFile& source = check.Source();
  const std::string_view bytes = source.Bytes();
  std::size_t doubled = 0;  // lines that end with CR CR LF
  std::string_view firstDoubled;
  bool isKeyHurt = false;
  for (std::size_t position = bytes.find('\r'); position != std::string_view::npos;
       position = bytes.find('\r', position + 1)) {
    const std::string_view next = bytes.substr(position + 1, 1);
    if (next == "\n") {
      continue;
    }
    const std::uint32_t number = source.LineOf(bytes.data() + position);
    const std::string_view line = source.Line(number);
    const auto column = static_cast<std::size_t>(bytes.data() + position - line.data());
    const std::size_t behind = line.find_first_not_of('\r', column);
    position = static_cast<std::size_t>(line.data() - bytes.data()) +
               std::min(behind, line.size()) - 1;  // one of several CRs is enough
    if (check.IsExplained(number)) {
      continue;
    }
    const std::string_view where = line.substr(column, 1);
    if (behind == std::string_view::npos && next.empty() && !IsInKey(line)) {
      continue;  // the library drops it
    }
    if (behind == std::string_view::npos) {
      firstDoubled = doubled == 0 ? where : firstDoubled;
      ++doubled;
      if (IsInKey(line)) {
        isKeyHurt = true;
        check.Explain(number);
      }
      continue;
    }
    const std::string_view rest = line.substr(behind);
    const std::string_view key = rest.substr(0, rest.find_first_of(" \t\r"));
    const bool isEntry = IsLikelyEntry(check, rest, key);
    Finding& finding = check.Add(RuleId::kLineEnd, Severity::kError, where,
                                 line.substr(0, line.find_first_of(" \t\r")),
                                 isEntry ? Sentence{"line-end.lost_entry", {std::string(key)}}
                                         : Sentence{"line-end.inside", {}});
    finding.mend = {"line-end.mend", {}};
    if (isEntry) {
      check.ExplainKey(key);
    }
    check.Explain(number);
  }
  if (doubled > 0) {
    Finding& finding = check.Add(
        RuleId::kLineEnd, isKeyHurt ? Severity::kError : Severity::kWarning, firstDoubled, "",
        {isKeyHurt ? "line-end.doubled_key.#" : "line-end.doubled.#", {std::to_string(doubled)}});
    finding.mend = {"line-end.mend_doubled", {}};
  }
}

}  // namespace

void CheckEncoding(FileCheck& check) {
  if (check.Source().EncodedAsUtf16() != Utf16::kNo) {
    CheckUtf16(check);
  } else {
    CheckUtf8(check);
  }
  CheckControlZ(check);
  CheckByteOrderMarks(check);
  if (check.Source().LineEnds() == LineEnd::kCr) {
    CheckCrLines(check);
  } else {
    CheckSingleCrs(check);
  }
}

}  // namespace KelmoLibs::Lang
