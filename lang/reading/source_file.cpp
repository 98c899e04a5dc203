#include "lang/reading/source_file.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

#include "lang/unicode/code_points.h"

namespace KelmoLibs::Lang {

namespace {

// Lines that are longer have checkpoints at this distance.
constexpr std::size_t kCheckpointDistance = std::size_t{64} * 1024;

// The last byte at or before `at` that is part of no code point that starts before it.
std::size_t CodePointStart(std::string_view bytes, std::size_t at) noexcept {
  constexpr std::size_t kMostContinuations = 3;
  for (std::size_t back = 0; back <= kMostContinuations; ++back) {
    if (!IsContinuation(bytes[at - back])) {
      return at - back;
    }
  }
  return at;  // no code point has so many bytes
}

}  // namespace

SourceFile::SourceFile(std::string name, std::filesystem::path path, std::string raw)
    : name_(std::move(name)),
      path_(std::move(path)),
      raw_(std::move(raw)),
      utf16_(FindUtf16(raw_)) {
  if (utf16_ != Utf16::kNo) {
    decoded_ = Utf8FromUtf16(raw_, utf16_ == Utf16::kBigEndian);
  }
  FindLines();
}

void SourceFile::FindLines() {
  const std::string_view bytes = Bytes();
  const bool hasLf = bytes.find('\n') != std::string_view::npos;
  lineEnd_ = !hasLf && bytes.find('\r') != std::string_view::npos ? LineEnd::kCr : LineEnd::kLf;
  const char end = lineEnd_ == LineEnd::kCr ? '\r' : '\n';
  // A vector that grows would need three times the memory for a moment.
  lineStarts_.reserve(static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), end)) + 1);
  for (std::size_t start = 0; start < bytes.size();) {
    lineStarts_.push_back(start);
    const std::size_t found = bytes.find(end, start);
    const std::size_t next = found == std::string_view::npos ? bytes.size() : found + 1;
    AddCheckpoints(start, next);
    start = next;
  }
}

void SourceFile::AddCheckpoints(std::size_t start, std::size_t end) {
  std::size_t before = 0;
  while (end - start > kCheckpointDistance) {
    const std::size_t next = CodePointStart(Bytes(), start + kCheckpointDistance);
    before += Localize::CountCharacters(Bytes().substr(start, next - start));
    checkpoints_.push_back({next, before});
    start = next;
  }
}

std::uint32_t SourceFile::CountBetween(std::size_t start, std::size_t end) const noexcept {
  const std::string_view bytes = Bytes();
  const auto first = std::lower_bound(
      checkpoints_.begin(), checkpoints_.end(), start,
      [](const Checkpoint& checkpoint, std::size_t offset) { return checkpoint.offset < offset; });
  const auto behind = std::upper_bound(
      first, checkpoints_.end(), end,
      [](std::size_t offset, const Checkpoint& checkpoint) { return offset < checkpoint.offset; });
  if (first == behind) {
    return Localize::CountCharacters(bytes.substr(start, end - start));
  }
  const Checkpoint& last = *std::prev(behind);
  return Localize::CountCharacters(bytes.substr(start, first->offset - start)) +
         static_cast<std::uint32_t>(last.before - first->before) +
         Localize::CountCharacters(bytes.substr(last.offset, end - last.offset));
}

std::string_view SourceFile::Line(std::uint32_t number) const noexcept {
  const std::string_view bytes = Bytes();
  const std::size_t start = lineStarts_[number - 1];
  std::size_t end = number < lineStarts_.size() ? lineStarts_[number] : bytes.size();
  if (end > start && bytes[end - 1] == (lineEnd_ == LineEnd::kCr ? '\r' : '\n')) {
    --end;
    if (lineEnd_ == LineEnd::kLf && end > start && bytes[end - 1] == '\r') {
      --end;
    }
  }
  return bytes.substr(start, end - start);
}

std::uint32_t SourceFile::LineOf(const char* position) const noexcept {
  const auto offset = static_cast<std::size_t>(position - Bytes().data());
  const auto behind = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset);
  return static_cast<std::uint32_t>(behind - lineStarts_.begin());
}

Place SourceFile::PlaceOf(std::string_view part) const noexcept {
  const std::string_view bytes = Bytes();
  const std::less<> isBefore;
  if (isBefore(part.data(), bytes.data()) ||
      isBefore(bytes.data() + bytes.size(), part.data() + part.size())) {
    return {};
  }
  const std::uint32_t line = LineOf(part.data());
  if (line == 0) {  // an empty file
    return {};
  }
  const std::size_t lineStart = lineStarts_[line - 1];
  const auto offset = static_cast<std::size_t>(part.data() - bytes.data());
  const std::size_t end =
      std::max(offset, std::min(offset + part.size(), lineStart + Line(line).size()));
  return {0, line, CountBetween(lineStart, offset) + 1, CountBetween(offset, end), offset};
}

}  // namespace KelmoLibs::Lang
