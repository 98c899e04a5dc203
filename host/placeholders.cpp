// placeholders_test.cpp covers the rules.
#include "host/placeholders.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <variant>

#include "host/number_spec.h"
#include "host/number_text.h"
#include "host/quantity_text.h"
#include "text/ascii_digit.h"
#include "text/utf8_characters.h"

namespace KelmoLibs::Host {
namespace {

constexpr std::string_view kCountName = "count";
constexpr std::size_t kNowhere = std::string_view::npos;
// In one literal: compilers warn of an isolate without its end.
constexpr std::string_view kIsolates = "\u2068\u2069";
constexpr std::string_view kFirstStrongIsolate = kIsolates.substr(0, 3);
constexpr std::string_view kPopDirectionalIsolate = kIsolates.substr(3);
constexpr std::size_t kTooLarge = kNowhere / 16;  // no call has so many arguments

bool IsInName(char c) noexcept {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || Localize::IsAsciiDigit(c) ||
         c == '_' || c == '-' || c == '.' || static_cast<unsigned char>(c) >= 0x80;
}

std::size_t AppendDigit(std::size_t number, char digit) noexcept {
  return std::min(10 * number + static_cast<std::size_t>(digit - '0'), kTooLarge);
}

struct Placeholder {
  std::string_view whole;  // as it stands in the text
  std::string_view name;   // empty: `position` counts
  std::string_view spec;
  std::size_t position = kNowhere;
};

// Precondition: `text` begins with `{`.
bool ReadBraced(std::string_view text, Placeholder& found) noexcept {
  std::size_t end = 1;
  if (end < text.size() && Localize::IsAsciiDigit(text[end])) {
    found.position = 0;
    do {
      found.position = AppendDigit(found.position, text[end]);
      ++end;
    } while (end < text.size() && Localize::IsAsciiDigit(text[end]));
  } else {
    while (end < text.size() && IsInName(text[end])) {
      ++end;
    }
    found.name = text.substr(1, end - 1);
  }
  if (end == 1 || end == text.size()) {
    return false;
  }
  if (text[end] == ':') {
    const std::size_t begin = ++end;
    while (end < text.size() && text[end] != '{' && text[end] != '}') {
      ++end;
    }
    if (end == text.size()) {
      return false;
    }
    found.spec = text.substr(begin, end - begin);
  }
  found.whole = text.substr(0, end + 1);
  return text[end] == '}';
}

// Precondition: `text` begins with `%`.
bool ReadPercent(std::string_view text, Placeholder& found) noexcept {
  if (text.size() < 2 || !Localize::IsAsciiDigit(text[1]) || text[1] == '0') {
    return false;
  }
  const bool hasTwoDigits = text.size() > 2 && Localize::IsAsciiDigit(text[2]);
  const std::size_t number = AppendDigit(0, text[1]);
  found.position = (hasTwoDigits ? AppendDigit(number, text[2]) : number) - 1;
  found.whole = text.substr(0, hasTwoDigits ? 3 : 2);
  return true;
}

// What a person recognises of a text that is no placeholder: up to its brace, if that is near.
std::string_view StartOf(std::string_view text) noexcept {
  constexpr std::size_t kLongest = 24;
  std::size_t end = text.substr(0, kLongest).find('}') + 1;  // npos + 1 is 0
  if (end == 0) {
    end = std::min(text.size(), kLongest);
    while (end < text.size() && Localize::IsContinuation(text[end])) {
      --end;
    }
  }
  return text.substr(0, end);
}

// The next places of a character, each found once.
class Search {
 public:
  Search(std::string_view text, char wanted) noexcept : text_(text), wanted_(wanted) {}

  std::size_t From(std::size_t begin) noexcept {
    if (next_ < begin) {  // never if it is kNowhere
      next_ = text_.find(wanted_, begin);
    }
    return next_;
  }

 private:
  std::string_view text_;
  char wanted_;
  std::size_t next_ = text_.find(wanted_);
};

class Filler {
 public:
  Filler(const Arguments& arguments, const FillOptions& options, const Cldr::NumberFormat& format,
         TextSink& sink, FaultListener* listener) noexcept
      : arguments_(arguments),
        options_(options),
        format_(format),
        sink_(sink),
        listener_(listener) {}

  void Fill(std::string_view text) noexcept {
    Search braces(text, '{');
    Search percents(options_.hasPercent ? text : std::string_view(), '%');
    std::size_t written = 0;
    std::size_t next = 0;
    for (;;) {
      next = std::min(braces.From(next), percents.From(next));
      if (next == kNowhere) {
        AppendPlain(text.substr(written));
        return;
      }
      const std::string_view rest = text.substr(next);
      const std::string_view before = text.substr(written, next - written);
      if (rest.front() == '{' && rest.size() > 1 && rest[1] == '{') {
        AppendPlain(before);
        sink_.Append("{");
        next += 2;
        written = next;
        continue;
      }
      Placeholder placeholder;
      std::optional<FaultReason> fault;
      if (rest.front() == '%') {
        if (!ReadPercent(rest, placeholder)) {
          ++next;
          continue;
        }
      } else if (!ReadBraced(rest, placeholder)) {
        placeholder.whole = rest.substr(0, 1);
        fault = FaultReason::kNoPlaceholder;
      }
      AppendPlain(before);
      fault = fault ? fault : FillOne(placeholder);
      if (fault) {
        Tell(*fault == FaultReason::kNoPlaceholder ? StartOf(rest) : placeholder.whole, *fault);
        sink_.Append(placeholder.whole);
      }
      next += placeholder.whole.size();
      written = next;
    }
  }

 private:
  // Text between placeholders.
  void AppendPlain(std::string_view text) noexcept {
    constexpr std::string_view kEscapedEnd = "}}";
    std::size_t end = text.find(kEscapedEnd);
    while (end != kNowhere) {
      sink_.Append(text.substr(0, end + 1));
      text.remove_prefix(end + kEscapedEnd.size());
      end = text.find(kEscapedEnd);
    }
    sink_.Append(text);
  }

  // Writes the argument; writes nothing if the placeholder cannot be filled.
  std::optional<FaultReason> FillOne(const Placeholder& placeholder) noexcept {
    const Argument* const argument = Find(placeholder);
    if (argument == nullptr) {
      return placeholder.position == kNowhere ? FaultReason::kNoName : FaultReason::kNoPosition;
    }
    const auto* const text = std::get_if<std::string_view>(&argument->value);
    if (text != nullptr && !Localize::IsUtf8(*text)) {
      return FaultReason::kNotUtf8;
    }
    NumberSpec spec;
    if (!placeholder.spec.empty()) {
      if (const auto fault = ReadSpec(placeholder.spec, *argument, spec)) {
        return fault;
      }
    }
    if (options_.isIsolating) {
      sink_.Append(kFirstStrongIsolate);
    }
    if (text != nullptr) {
      sink_.Append(*text);
    } else if (const auto* const quantity = std::get_if<QuantityArgument>(&argument->value)) {
      Write(*quantity, placeholder.spec.empty() ? nullptr : &spec);
    } else {
      WriteNumber(*argument, spec, format_, sink_);
    }
    if (options_.isIsolating) {
      sink_.Append(kPopDirectionalIsolate);
    }
    return std::nullopt;
  }

  // The C functions have checked that the units know the quantity.
  void Write(const QuantityArgument& argument, const NumberSpec* spec) noexcept {
    QuantityStyle style;
    style.hasAllDigits = true;
    style.spec = spec;
    WriteQuantity(*argument.units,
                  options_.languages != nullptr ? *options_.languages : kNoLanguages,
                  *argument.quantity, style, format_, sink_);
  }

  const Argument* Find(const Placeholder& placeholder) const noexcept {
    if (placeholder.position != kNowhere) {
      return placeholder.position < arguments_.size ? arguments_.data + placeholder.position
                                                    : nullptr;
    }
    const Argument* const end = arguments_.data + arguments_.size;
    const Argument* const found = std::find_if(
        arguments_.data, end,
        [&placeholder](const Argument& argument) { return argument.name == placeholder.name; });
    if (found != end) {
      return found;
    }
    const Argument* const count = std::find_if(
        arguments_.data, end, [](const Argument& argument) { return argument.isCount; });
    return placeholder.name == kCountName && count != end ? count : nullptr;
  }

  static std::optional<FaultReason> ReadSpec(std::string_view text, const Argument& argument,
                                             NumberSpec& spec) noexcept {
    if (argument.IsText()) {
      return FaultReason::kFormatOfText;
    }
    switch (ReadNumberSpec(text, spec)) {
      case SpecError::kUnknown:
        return FaultReason::kUnknownFormat;
      case SpecError::kWidth:
        return FaultReason::kWidth;
      case SpecError::kDecimals:
        return FaultReason::kDecimals;
      case SpecError::kNone:
        break;
    }
    if (!Fits(spec, argument)) {
      return FaultReason::kOnlyIntegers;
    }
    return std::nullopt;
  }

  void Tell(std::string_view placeholder, FaultReason reason) noexcept {
    if (listener_ != nullptr) {
      listener_->Tell({placeholder, reason});
    }
  }

  const Arguments& arguments_;
  const FillOptions& options_;
  const Cldr::NumberFormat& format_;
  TextSink& sink_;
  FaultListener* listener_;
};

// The name or the digits in a placeholder.
std::string_view NameIn(std::string_view placeholder) noexcept {
  std::size_t end = 1;
  while (end < placeholder.size() && IsInName(placeholder[end])) {
    ++end;
  }
  return placeholder.substr(1, end - 1);
}

}  // namespace

std::string Describe(const PlaceholderFault& fault) {
  std::string text(fault.placeholder);
  const std::string_view name = NameIn(fault.placeholder);
  switch (fault.reason) {
    case FaultReason::kNoPosition:
      return text.append(": there is no argument ").append(name);
    case FaultReason::kNoName:
      return text.append(": there is no argument with the name ").append(name);
    case FaultReason::kUnknownFormat:
      return text.append(": this is no format of numbers");
    case FaultReason::kFormatOfText:
      return text.append(": the argument is a text, and only numbers have a format");
    case FaultReason::kWidth:
      return text.append(": the width is larger than ").append(std::to_string(kMaxWidth));
    case FaultReason::kDecimals:
      return text.append(": there are more decimals than ").append(std::to_string(kMaxDecimals));
    case FaultReason::kOnlyIntegers:
      return text.append(": d is for integers, without decimals");
    case FaultReason::kNotUtf8:
      return text.append(": the argument is a text that is not UTF-8");
    case FaultReason::kNoPlaceholder:
      break;
  }
  return text.append(": this is no placeholder; a brace that is text is written {{");
}

void FillPlaceholders(std::string_view text, const Arguments& arguments, const FillOptions& options,
                      const Cldr::NumberFormat& format, TextSink& sink,
                      FaultListener* listener) noexcept {
  Filler(arguments, options, format, sink, listener).Fill(text);
}

}  // namespace KelmoLibs::Host
