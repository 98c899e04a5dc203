// A text file that comes in pieces of any length: the lines are those of the whole.
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

// Gives one byte, two, three and so on up to as many as are told, and then one again.
class PieceSource final : public ByteSource {
 public:
  PieceSource(std::string_view bytes, std::size_t longest, std::size_t sizeHint)
      : bytes_(bytes), longest_(longest), sizeHint_(sizeHint) {}

  std::size_t Read(char* buffer, std::size_t size) override {
    piece_ = piece_ % longest_ + 1;
    const std::size_t count = bytes_.copy(buffer, std::min(size, piece_));
    bytes_.remove_prefix(count);
    return count;
  }

  std::size_t SizeHint() const noexcept override { return sizeHint_; }

 private:
  std::string_view bytes_;
  std::size_t longest_;
  std::size_t sizeHint_;
  std::size_t piece_ = 0;
};

}  // namespace

// The first byte says how long the pieces are, the second what the source tells of its size.
void CheckWith(std::string_view bytes) {
  if (bytes.size() < 2) {
    return;
  }
  const std::size_t longest = std::size_t{1} + static_cast<unsigned char>(bytes[0]);
  const std::size_t sizeHint = static_cast<unsigned char>(bytes[1]);
  bytes.remove_prefix(2);
  CrLfSource source(std::make_unique<PieceSource>(bytes, longest, sizeHint));
  LineReader reader(source);
  for (const std::wstring& expected : model::LinesOf(std::string(bytes))) {
    const std::optional<std::string_view> line = reader.Next();
    if (!line || *line != EncodeUtf8(expected)) {
      throw Disagreement("a line");
    }
  }
  if (reader.Next()) {
    throw Disagreement("a line too many");
  }
}
