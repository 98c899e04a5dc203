// The bytes of a file in memory, as the Windows library reads them.
#pragma once

#include <cstddef>
#include <string_view>

#include "text/byte_source.h"

namespace KelmoLibs::Lang {

/// Text mode of the Windows runtime: 0x1A ends the file, CR LF is read as LF.
class WindowsText final : public Localize::ByteSource {
 public:
  /// `bytes` outlive the source.
  explicit WindowsText(std::string_view bytes) noexcept
      : bytes_(bytes.substr(0, bytes.find('\x1A'))) {}

  std::size_t Read(char* buffer, std::size_t size) override;
  std::size_t SizeHint() const noexcept override { return bytes_.size(); }

 private:
  std::string_view bytes_;
  std::size_t position_ = 0;
};

}  // namespace KelmoLibs::Lang
