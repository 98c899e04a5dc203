// Cuts the bytes of a UTF-8 text file into lines: the reading rule that every text file of the
// library shares.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

#include "text/byte_source.h"

namespace KelmoLibs::Localize {

/// Lines are the stretches between LF bytes, the LF left out; a last line needs none. A byte-order
/// mark and NUL are characters like any other. Bytes that are not well-formed UTF-8 end the text:
/// the characters in front of them in their line, if any, are the last line.
///
/// Holds the line at hand and what was read ahead of it: a small source whole, of a large one a
/// piece, or as much as its longest line needs; at no time more than twice the source's bytes.
class LineReader {
 public:
  /// `source` must outlive the reader.
  explicit LineReader(ByteSource& source);

  /// The next line, well-formed and valid until the next call; nothing at the end.
  std::optional<std::string_view> Next();

 private:
  bool Fill();
  void MakeRoom();

  ByteSource& source_;
  std::size_t capacity_;
  std::unique_ptr<char[]> buffer_;
  // 0 <= begin_ <= scanned_ <= valid_ <= end_ <= capacity_
  std::size_t begin_ = 0;    // first byte not yet handed out
  std::size_t scanned_ = 0;  // no LF between begin_ and here
  std::size_t valid_ = 0;    // well-formed up to here; what follows may be the front of a character
  std::size_t end_ = 0;      // bytes read up to here
  bool ended_ = false;
};

}  // namespace KelmoLibs::Localize
