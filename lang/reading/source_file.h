// The bytes of one file, its lines, and places in it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "lang/unicode/utf16.h"

namespace KelmoLibs::Lang {

/// A place as editors show it. Lines and columns count from 1; columns and lengths are code points,
/// and a byte that is not UTF-8 counts as one. Line 0: the file as a whole.
struct Place {
  std::uint32_t file = 0;  // index in Workspace::files
  std::uint32_t line = 0;
  std::uint32_t column = 0;
  std::uint32_t length = 0;
  std::size_t offset = 0;  // in bytes, in SourceFile::Bytes()
};

enum class LineEnd : std::uint8_t { kLf, kCr };  // CR LF is kLf

/// A file in memory. It does not move: entries are views into it.
class SourceFile {
 public:
  /// `name` is the name that findings show, in UTF-8. `raw` are the bytes of the file.
  SourceFile(std::string name, std::filesystem::path path, std::string raw);
  SourceFile(const SourceFile&) = delete;
  SourceFile& operator=(const SourceFile&) = delete;

  const std::string& Name() const noexcept { return name_; }
  const std::filesystem::path& Path() const noexcept { return path_; }

  /// The bytes of the file.
  const std::string& Raw() const noexcept { return raw_; }

  /// The bytes that people see: those of the file, or their translation to UTF-8 if it is UTF-16.
  std::string_view Bytes() const noexcept { return utf16_ == Utf16::kNo ? raw_ : decoded_; }

  /// kNo unless the file is UTF-16 (FindUtf16).
  Utf16 EncodedAsUtf16() const noexcept { return utf16_; }

  /// kCr only if the file has CRs and no LF.
  LineEnd LineEnds() const noexcept { return lineEnd_; }

  std::uint32_t LineCount() const noexcept {
    return static_cast<std::uint32_t>(lineStarts_.size());
  }

  /// Line `number` of Bytes(), from 1, without its line end.
  std::string_view Line(std::uint32_t number) const noexcept;

  /// The line of the byte at `position`, a pointer into Bytes() or to its end. O(log n).
  std::uint32_t LineOf(const char* position) const noexcept;

  /// The place of `part`, a view into Bytes(). Its length ends with the line. Not slower in a long
  /// line. A view into anything else, such as Raw() of a file in UTF-16, gives the file as a whole.
  Place PlaceOf(std::string_view part) const noexcept;

 private:
  // A byte of a long line at which a code point starts, and the code points of the line before it.
  struct Checkpoint {
    std::size_t offset;
    std::size_t before;
  };

  void FindLines();
  void AddCheckpoints(std::size_t start, std::size_t end);

  // The code points between two bytes of a line.
  std::uint32_t CountBetween(std::size_t start, std::size_t end) const noexcept;

  std::string name_;
  std::filesystem::path path_;
  std::string raw_;
  std::string decoded_;
  Utf16 utf16_ = Utf16::kNo;
  LineEnd lineEnd_ = LineEnd::kLf;
  std::vector<std::size_t> lineStarts_;
  std::vector<Checkpoint> checkpoints_;  // by offset
};

}  // namespace KelmoLibs::Lang
