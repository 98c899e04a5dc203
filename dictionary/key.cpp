#include "dictionary/key.h"

#include <optional>

#include "frame/utf8.h"

namespace KelmoLibs::Localize {

// The bytes are written as far as the key needs them.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
AnyKey::AnyKey(std::wstring_view text) noexcept {
  const std::optional<std::size_t> length = WriteUtf8(text, bytes_.data(), bytes_.size());
  isHashed_ = length.has_value();
  length_ = length.value_or(0);
  hash_ = isHashed_ ? HashBytes({bytes_.data(), length_}) : HashText(text);
}

}  // namespace KelmoLibs::Localize
