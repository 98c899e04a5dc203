#include "lang/reading/dictionary_file.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "dictionary/dictionary_line.h"
#include "lang/unicode/byte_order_mark.h"

namespace KelmoLibs::Lang {
namespace {

using Localize::DictionaryLine;
using Localize::SplitDictionaryLine;

// A line without a separator has its empty text at its end, so that every text has a place.
Entry SplitLine(std::string_view line) noexcept {
  const DictionaryLine fields = SplitDictionaryLine(line);
  return {fields.key, fields.text.data() != nullptr ? fields.text : line.substr(line.size())};
}

}  // namespace

DictionaryFile::DictionaryFile(std::string name, std::filesystem::path path, std::string raw)
    : source_(std::move(name), std::move(path), std::move(raw)) {
  ReadAsLibrary();
  ReadLost();
}

void DictionaryFile::ReadAsLibrary() {
  const std::string_view raw = source_.Raw();
  end_ = EndOfReading(raw);
  if (source_.EncodedAsUtf16() == Utf16::kNo) {
    entries_.reserve(source_.LineOf(raw.data() + end_.at));
  }
  WindowsLines lines(raw);
  while (const std::optional<std::string_view> line = lines.Next()) {
    const Entry fields = SplitLine(*line);
    if (!hasHeader_) {
      hasHeader_ = true;
      id_ = fields.key;
      displayName_ = fields.text;
    } else if (!line->empty()) {
      entries_.push_back(fields);
    }
  }
}

void DictionaryFile::ReadLost() {
  intendedId_ = WithoutByteOrderMark(id_);
  const bool isWholeFileLost =
      source_.EncodedAsUtf16() != Utf16::kNo || source_.LineEnds() == LineEnd::kCr || !hasHeader_;
  if (!isWholeFileLost && end_.stop == Stop::kEndOfFile) {
    return;
  }
  const std::string_view bytes = source_.Bytes();
  std::uint32_t line = 1;
  if (!isWholeFileLost) {
    line = source_.LineOf(bytes.data() + end_.at) + 1;
  } else if (source_.LineCount() > 0) {
    intendedId_ = SplitDictionaryLine(WithoutByteOrderMark(source_.Line(line++))).key;
  }
  lostEntries_.reserve(source_.LineCount() - std::min(source_.LineCount(), line - 1));
  for (; line <= source_.LineCount(); ++line) {
    const std::string_view lost = source_.Line(line);
    if (!lost.empty()) {
      lostEntries_.push_back(SplitLine(lost));
    }
  }
}

}  // namespace KelmoLibs::Lang
