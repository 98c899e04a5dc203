// The keys of plural forms.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace KelmoLibs::Host {

/// A key with the suffix of a plural form behind it. Usual keys take no memory. A std::pmr::string
/// would be shorter, but LLVM 14 has none.
class FormKey {
 public:
  explicit FormKey(std::string_view key) noexcept : key_(key) {
    key.substr(0, usual_.size()).copy(usual_.data(), usual_.size());
  }

  /// Valid until the next call. Throws std::bad_alloc, but only if the key and the suffix have more than
  /// 256 bytes together.
  std::string_view With(std::string_view mark, std::string_view form) {
    const std::size_t size = key_.size() + mark.size() + form.size();
    if (size > usual_.size()) {
      long_.assign(key_).append(mark).append(form);
      return long_;
    }
    mark.copy(usual_.data() + key_.size(), mark.size());
    form.copy(usual_.data() + key_.size() + mark.size(), form.size());
    return {usual_.data(), size};
  }

 private:
  static constexpr std::size_t kUsualKey = 256;
  static constexpr std::size_t kUsualSuffix = 31;

  std::string_view key_;
  std::array<char, kUsualKey + kUsualSuffix> usual_;
  std::string long_;
};

}  // namespace KelmoLibs::Host
