#include "host/c_arguments.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>

#include "host/c_objects.h"
#include "host/number_spec.h"
#include "host/quantity.h"
#include "text/utf8_characters.h"

namespace KelmoLibs::Host {
namespace {

static_assert(kShortest == KELMO_SHORTEST && kMaxDecimals == KELMO_MAX_DECIMALS);
static_assert(std::is_trivially_destructible_v<Argument>, "the array does not destroy them");

kelmo_status TakeText(const kelmo_string& given, std::string_view& taken) noexcept {
  if (!IsString(given.data, given.size)) {
    return KELMO_INVALID_ARGUMENT;
  }
  taken = StringOf(given.data, given.size);
  return KELMO_OK;
}

template <std::size_t size>
kelmo_status TakeMark(const char (&given)[size], std::string_view& taken) noexcept {
  const char* const end = std::find(given, given + size, '\0');
  if (end == given + size) {
    return KELMO_INVALID_ARGUMENT;
  }
  if (end != given) {
    taken = {given, static_cast<std::size_t>(end - given)};
  }
  return Localize::IsUtf8(taken) ? KELMO_OK : KELMO_INVALID_UTF8;
}

// A count is a number.
kelmo_status TakeValue(const kelmo_string& given, Argument& taken) noexcept {
  std::string_view text;
  const kelmo_status status = taken.isCount ? KELMO_INVALID_ARGUMENT : TakeText(given, text);
  taken.value = Argument::Value(text);
  return status;
}

// A quantity that its units know. It chooses no plural form: which number would it be?
kelmo_status TakeQuantity(const kelmo_argument& given, Argument& taken) noexcept {
  constexpr std::size_t kEnd = offsetof(kelmo_argument, quantity) + sizeof(void*);
  if (given.size < kEnd || taken.isCount || given.units == nullptr || given.quantity == nullptr) {
    return KELMO_INVALID_ARGUMENT;
  }
  taken.value = Argument::Value(QuantityArgument{&given.units->set, given.quantity});
  const UnitRow* unit = nullptr;
  return TakeUnit(given.units->set, *given.quantity, unit);
}

// Whether ten characters begin there, for a character that is not 0.
bool IsZeroDigit(std::uint32_t character) noexcept {
  constexpr std::uint32_t kNine = 9;
  return character < 0xD800 - kNine || (character > 0xDFFF && character <= 0x10FFFF - kNine);
}

}  // namespace

kelmo_status TakeArgument(const kelmo_argument& given, Argument& taken) noexcept {
  if (given.is_count != 0 && given.is_count != 1) {
    return KELMO_INVALID_ARGUMENT;
  }
  taken.isCount = given.is_count != 0;
  if (const kelmo_status status = TakeText(given.name, taken.name); status != KELMO_OK) {
    return status;
  }
  switch (given.type) {
    case KELMO_ARGUMENT_TEXT:
      return TakeValue(given.text, taken);
    case KELMO_ARGUMENT_INTEGER:
      taken.value = Argument::Value(given.integer);
      return KELMO_OK;
    case KELMO_ARGUMENT_UNSIGNED:
      taken.value = Argument::Value(static_cast<std::uint64_t>(given.integer));
      return KELMO_OK;
    case KELMO_ARGUMENT_FLOAT:
    case KELMO_ARGUMENT_NUMBER:
      taken.isFloat = given.type == KELMO_ARGUMENT_FLOAT &&
                      std::fabs(given.number) <= std::numeric_limits<float>::max();
      taken.value = Argument::Value(given.number);
      taken.decimals = given.decimals;
      return given.decimals >= KELMO_SHORTEST && given.decimals <= KELMO_MAX_DECIMALS
                 ? KELMO_OK
                 : KELMO_INVALID_ARGUMENT;
    case KELMO_ARGUMENT_QUANTITY:
      return TakeQuantity(given, taken);
    default:
      return KELMO_INVALID_ARGUMENT;
  }
}

kelmo_status ArgumentArray::Take(const kelmo_argument* given, std::size_t count) {
  if (count == 0) {
    return KELMO_OK;
  }
  if (!IsLargeEnough(given) || given->size % alignof(kelmo_argument) != 0 ||
      count > std::numeric_limits<std::size_t>::max() /
                  std::max(sizeof(Argument), std::size_t{given->size})) {
    return KELMO_INVALID_ARGUMENT;
  }
  const std::uint32_t stride = given->size;
  std::byte* storage = inPlace_.data();
  if (count > kInPlace) {
    more_ = std::make_unique<std::byte[]>(count * sizeof(Argument));
    storage = more_.get();
  }
  for (std::size_t i = 0; i < count; ++i) {
    const auto& current = *reinterpret_cast<const kelmo_argument*>(
        reinterpret_cast<const std::byte*>(given) + i * stride);
    if (current.size != stride) {
      return KELMO_INVALID_ARGUMENT;
    }
    auto* const taken = new (storage + i * sizeof(Argument)) Argument;  // NOLINT(*-owning-memory)
    if (const kelmo_status status = TakeArgument(current, *taken); status != KELMO_OK) {
      return status;
    }
    if (taken->isCount) {
      if (count_ != nullptr) {
        return KELMO_INVALID_ARGUMENT;
      }
      count_ = taken;
    }
  }
  all_ = {reinterpret_cast<const Argument*>(storage), count};
  return KELMO_OK;
}

kelmo_status TakeNumberFormat(const kelmo_number_format& given,
                              Cldr::NumberFormat& taken) noexcept {
  taken = {};
  if (!IsLargeEnough(&given)) {
    return KELMO_INVALID_ARGUMENT;
  }
  const std::uint32_t zero = given.zero_digit != 0 ? given.zero_digit : U'0';
  if (given.is_grouped > 1 || !IsZeroDigit(zero)) {
    return KELMO_INVALID_ARGUMENT;
  }
  taken.zeroDigit = zero;
  taken.isGrouped = given.is_grouped != 0;
  taken.groupSize = given.group_size;
  taken.furtherGroupSize =
      given.further_group_size != 0 ? given.further_group_size : given.group_size;
  taken.minimumFirstGroup = std::max<std::uint32_t>(given.minimum_first_group, 1);
  for (const kelmo_status status :
       {TakeMark(given.decimal_mark, taken.decimalMark),
        TakeMark(given.group_mark, taken.groupMark), TakeMark(given.minus_sign, taken.minusSign)}) {
    if (status != KELMO_OK) {
      return status;
    }
  }
  return KELMO_OK;
}

}  // namespace KelmoLibs::Host
