// Splits the bytes of a UTF-8 text file into lines. All text files of the library are read by these
// rules.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

#include "text/byte_source.h"

namespace KelmoLibs::Localize {

/// An LF ends a line and is not part of it; the last line may have no LF. A byte-order mark and NUL
/// are characters like any other. The first byte that is not part of well-formed UTF-8 ends the
/// text: the characters before it in its line, if any, are the last line.
///
/// Memory: a small source is read whole, a large one in chunks; the buffer grows for a line that is
/// longer than a chunk. It never takes more than twice the bytes of the source, if SizeHint is
/// right.
class LineReader {
 public:
  /// Precondition: `source` outlives the reader.
  explicit LineReader(ByteSource& source);

  /// The next line, which is well-formed UTF-8 and valid until the next call. Nothing at the end of
  /// the text.
  std::optional<std::string_view> Next();

 private:
  bool Fill();
  void CompactOrGrow();

  ByteSource& source_;
  std::size_t capacity_;
  std::unique_ptr<char[]> buffer_;
  // 0 <= begin_ <= scanned_ <= valid_ <= end_ <= capacity_
  std::size_t begin_ = 0;    // first byte that Next has not returned yet
  std::size_t scanned_ = 0;  // no LF between begin_ and here
  std::size_t valid_ = 0;    // well-formed up to here; the start of a character may follow
  std::size_t end_ = 0;      // bytes read up to here
  bool ended_ = false;
};

}  // namespace KelmoLibs::Localize
