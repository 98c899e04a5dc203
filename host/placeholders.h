// Texts with placeholders.
#pragma once

#include <string>
#include <string_view>

#include "cldr/number_format.h"
#include "host/argument.h"
#include "host/text_sink.h"
#include "host/unit_set.h"

namespace KelmoLibs::Host {

enum class FaultReason {
  kNoPosition,     // fewer arguments
  kNoName,         // no argument has the name
  kUnknownFormat,  // not a format of numbers
  kFormatOfText,   // texts have no format
  kWidth,          // larger than kMaxWidth
  kDecimals,       // more than kMaxDecimals
  kOnlyIntegers,   // `d` for a double, or with decimals
  kNotUtf8,        // the argument is a text that is not UTF-8
  kNoPlaceholder   // a brace with something else behind it
};

/// A placeholder that cannot be filled. `placeholder` is part of the text.
struct PlaceholderFault {
  std::string_view placeholder;
  FaultReason reason;
};

/// The fault in English: `{7}: there is no argument 7`.
std::string Describe(const PlaceholderFault& fault);

/// Gets the faults of a text in their order.
class FaultListener {
 public:
  virtual ~FaultListener() = default;
  virtual void Tell(const PlaceholderFault& fault) noexcept = 0;
};

struct FillOptions {
  bool hasPercent = false;                   // %1 to %99 are placeholders too
  bool isIsolating = false;                  // filled arguments stand between U+2068 and U+2069
  const LanguageChain* languages = nullptr;  // of the symbols of units; null: those of the units
};

/// Writes `text` with its placeholders filled, in one pass: arguments are not searched.
///
///  - `{0}` stands for the argument at that position, and `{name}` for the first argument with that
///    name. A name has letters, digits, `_`, `-`, `.` and characters beyond ASCII, and does not begin
///    with a digit. Behind a colon is the format of a number: see ReadNumberSpec.
///    `{count}` stands for the count, if no argument has that name.
///  - A quantity is written with its symbol. It has the digits that its tolerance justifies, or all
///    of them; with a format, it has those that the format says.
///  - With hasPercent, `%1` to `%99` stand for the arguments at the positions 0 to 98. A digit that
///    follows `%1` to `%9` belongs to the number.
///  - `{{` stands for `{`, and `}}` for `}`. A `}` alone is plain text, and so is every other `%`.
///  - A `{` with something else behind it, such as in `{ }` or `{0`, is a fault.
///  - A placeholder that cannot be filled stays as it stands; `listener`, unless it is null, is told.
///
/// Takes no memory. Precondition: `text` is UTF-8.
void FillPlaceholders(std::string_view text, const Arguments& arguments, const FillOptions& options,
                      const Cldr::NumberFormat& format, TextSink& sink,
                      FaultListener* listener) noexcept;

}  // namespace KelmoLibs::Host
