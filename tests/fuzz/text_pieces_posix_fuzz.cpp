// Reads a text file in chunks of many lengths: the lines are those of the whole file.
#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/fuzz/fuzz_target.h"
#include "tests/model/disagreement.h"
#include "tests/model/model.h"
#include "tests/support/encode_utf8.h"
#include "text/crlf_source.h"
#include "text/line_reader.h"

using namespace KelmoLibs::Localize;

namespace {

// Chunks of 1, 2, 3 and so on up to `maxChunk` bytes, then again from 1.
class ChunkSource final : public ByteSource {
 public:
  ChunkSource(std::string_view bytes, std::size_t maxChunk, std::size_t sizeHint)
      : bytes_(bytes), maxChunk_(maxChunk), sizeHint_(sizeHint) {}

  std::size_t Read(char* buffer, std::size_t size) override {
    chunk_ = chunk_ % maxChunk_ + 1;
    const std::size_t count = bytes_.copy(buffer, std::min(size, chunk_));
    bytes_.remove_prefix(count);
    return count;
  }

  std::size_t SizeHint() const noexcept override { return sizeHint_; }

 private:
  std::string_view bytes_;
  std::size_t maxChunk_;
  std::size_t sizeHint_;
  std::size_t chunk_ = 0;
};

}  // namespace

// The first byte is the length of the largest chunk minus one, the second the source's size hint.
void CheckWith(std::string_view bytes) {
  if (bytes.size() < 2) {
    return;
  }
  const std::size_t maxChunk = std::size_t{1} + static_cast<unsigned char>(bytes[0]);
  const std::size_t sizeHint = static_cast<unsigned char>(bytes[1]);
  bytes.remove_prefix(2);
  CrLfSource source(std::make_unique<ChunkSource>(bytes, maxChunk, sizeHint));
  LineReader reader(source);
  for (const std::wstring& expected : model::LinesOf(std::string(bytes))) {
    const std::optional<std::string_view> line = reader.Next();
    if (!line || *line != EncodeUtf8(expected)) {
      throw Disagreement("a line");
    }
  }
  if (reader.Next()) {
    throw Disagreement("the number of lines");
  }
}
