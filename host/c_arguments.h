// Checks what the C functions get, and makes the core's types of it.
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

#include "cldr/number_format.h"
#include "host/argument.h"
#include "kelmo/kelmo.h"

namespace KelmoLibs::Host {

/// The size of a struct of kelmo.h in the first version, up to the end of its last field: a host may
/// have been made for that version. When a struct grows, its size here stays, and functions that
/// write it look at the size that the host has set.
template <class Struct>
constexpr std::size_t kFirstSize = 0;
template <>
inline constexpr std::size_t kFirstSize<kelmo_problem> = offsetof(kelmo_problem, detail) +
                                                         sizeof(kelmo_problem::detail);
template <>
inline constexpr std::size_t kFirstSize<kelmo_load_options> = offsetof(kelmo_load_options, flags) +
                                                              sizeof(kelmo_load_options::flags);
template <>
inline constexpr std::size_t kFirstSize<kelmo_language> = offsetof(kelmo_language, entry_count) +
                                                          sizeof(kelmo_language::entry_count);
template <>
inline constexpr std::size_t kFirstSize<kelmo_text> = offsetof(kelmo_text, file) +
                                                      sizeof(kelmo_text::file);
template <>
inline constexpr std::size_t kFirstSize<kelmo_number_format> =
    offsetof(kelmo_number_format, minus_sign) + sizeof(kelmo_number_format::minus_sign);
template <>
inline constexpr std::size_t kFirstSize<kelmo_argument> = offsetof(kelmo_argument, number) +
                                                          sizeof(kelmo_argument::number);
template <>
inline constexpr std::size_t kFirstSize<kelmo_view_options> = offsetof(kelmo_view_options,
                                                                       numbers) +
                                                              sizeof(kelmo_view_options::numbers);

template <>
inline constexpr std::size_t kFirstSize<kelmo_unit> = offsetof(kelmo_unit, name) +
                                                      sizeof(kelmo_unit::name);
template <>
inline constexpr std::size_t kFirstSize<kelmo_print_options> = offsetof(kelmo_print_options,
                                                                        numbers) +
                                                               sizeof(kelmo_print_options::numbers);
template <>
inline constexpr std::size_t kFirstSize<kelmo_read_options> = offsetof(kelmo_read_options,
                                                                       numbers) +
                                                              sizeof(kelmo_read_options::numbers);
static_assert(sizeof(kelmo_quantity) == 32, "its layout is part of files and of other languages");

/// Whether a struct of the host has all fields of the first version.
template <class Struct>
bool IsLargeEnough(const Struct* given) noexcept {
  static_assert(kFirstSize<Struct> != 0, "its size in the first version is missing");
  return given != nullptr && given->size >= kFirstSize<Struct>;
}

/// Whether a string argument is allowed.
inline bool IsString(const char* data, std::size_t size) noexcept {
  return data != nullptr || size == 0;
}

/// A string argument that is allowed.
inline std::string_view StringOf(const char* data, std::size_t size) noexcept {
  return {data, size == KELMO_ZERO_TERMINATED ? std::strlen(data) : size};
}

/// The arguments of a call, checked.
class ArgumentArray {
 public:
  ArgumentArray() = default;
  ArgumentArray(const ArgumentArray&) = delete;
  ArgumentArray& operator=(const ArgumentArray&) = delete;
  ~ArgumentArray() = default;

  /// Precondition: it is called once. More than kInPlace arguments take memory: throws
  /// std::bad_alloc.
  kelmo_status Take(const kelmo_argument* given, std::size_t count);

  Arguments All() const noexcept { return all_; }

  /// The argument that chooses the plural form, or null.
  const Argument* Count() const noexcept { return count_; }

  static constexpr std::size_t kInPlace = 16;

 private:
  alignas(Argument) std::array<std::byte, kInPlace * sizeof(Argument)> inPlace_;
  std::unique_ptr<std::byte[]> more_;
  Arguments all_;
  const Argument* count_ = nullptr;
};

/// Takes one argument, which must be allowed. KELMO_OK or KELMO_INVALID_ARGUMENT.
kelmo_status TakeArgument(const kelmo_argument& given, Argument& taken) noexcept;

/// Takes a number format. Its texts stay those of `given`. Empty texts, and a 0 as the digit and as
/// further_group_size and minimum_first_group, have their default. KELMO_OK, KELMO_INVALID_ARGUMENT
/// or KELMO_INVALID_UTF8.
kelmo_status TakeNumberFormat(const kelmo_number_format& given, Cldr::NumberFormat& taken) noexcept;

}  // namespace KelmoLibs::Host
