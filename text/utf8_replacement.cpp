#include "text/utf8_replacement.h"

#include "text/utf8.h"

namespace KelmoLibs::Localize {

std::string ReplaceInvalidUtf8(std::string_view bytes) {
  constexpr std::string_view kReplacement = "\uFFFD";
  std::string mended;
  for (;;) {
    const std::size_t valid = WellFormedUtf8Length(bytes);
    mended.append(bytes.substr(0, valid));
    if (valid == bytes.size()) {
      return mended;
    }
    mended += kReplacement;
    bytes.remove_prefix(valid + 1);
  }
}

}  // namespace KelmoLibs::Localize
