// Text mode for systems whose runtime has none, such as Linux: replaces CR LF by LF. Every other CR
// stays.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>

#include "text/byte_source.h"

namespace KelmoLibs::Localize {

class CrLfSource final : public ByteSource {
 public:
  /// Precondition: `bytes` is not null.
  explicit CrLfSource(std::unique_ptr<ByteSource> bytes) noexcept;

  std::size_t Read(char* buffer, std::size_t size) override;
  std::size_t SizeHint() const noexcept override;

 private:
  std::size_t ReadBytes(char* buffer, std::size_t size);

  std::unique_ptr<ByteSource> bytes_;
  std::optional<char> pendingByte_;  // was read behind a CR; the next Read returns it
  bool ended_ = false;
};

}  // namespace KelmoLibs::Localize
