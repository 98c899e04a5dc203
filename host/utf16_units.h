// UTF-8 as UTF-16 with units of a fixed size: wchar_t has 16 bits on Windows only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace KelmoLibs::Host {

/// Number of code units that EncodeUtf16 writes. Precondition: `wellFormed` is UTF-8.
std::size_t Utf16Length(std::string_view wellFormed) noexcept;

/// Writes `wellFormed` as UTF-16 to `units`, which has room for Utf16Length(wellFormed), and returns
/// the end. Precondition: `wellFormed` is UTF-8.
std::uint16_t* EncodeUtf16(std::string_view wellFormed, std::uint16_t* units) noexcept;

}  // namespace KelmoLibs::Host
