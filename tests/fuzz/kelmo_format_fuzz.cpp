// Fills any text with any arguments: the result and the faults are those of a plain reference, and
// buffers of every size get whole characters.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/number_text.h"
#include "host/placeholders.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/model/disagreement.h"
#include "tests/support/random_numbers.h"
#include "text/utf8.h"

namespace {

using namespace KelmoLibs::Host;
using KelmoLibs::Cldr::NumberFormat;

constexpr std::size_t kChoices = 32;  // bytes that choose the arguments; the text follows
constexpr int kMaxArguments = 5;

constexpr std::array<std::string_view, 5> kNames = {"", "a", "name", "\u00E4.b-c_1", "a1"};
constexpr std::string_view kNotUtf8 = "not \xFF";
constexpr std::array<std::string_view, 7> kTexts = {"",   "x",          "{0}",   "%1{a}",
                                                    "{{", "\U0001F600", kNotUtf8};
constexpr std::array<std::string_view, 4> kMarks = {".", ",", "\u066B", "\u00A0'"};

const std::string kIsolates = "\u2068\u2069";  // three bytes each

struct Input {
  std::string text;
  std::vector<Argument> arguments;
  FillOptions options;
  NumberFormat format;
};

struct Fault {
  std::string placeholder;
  FaultReason reason;

  bool operator==(const Fault& other) const {
    return placeholder == other.placeholder && reason == other.reason;
  }
};

class Faults final : public FaultListener {
 public:
  void Tell(const PlaceholderFault& fault) noexcept override {
    all.push_back({std::string(fault.placeholder), fault.reason});
    isDescribed = isDescribed && Describe(fault).find(fault.placeholder) == 0;
  }

  std::vector<Fault> all;
  bool isDescribed = true;
};

Argument AnyArgument(RandomNumbers& random) {
  Argument argument;
  argument.name = AnyOf(random, kNames);
  switch (random.Below(4)) {
    case 0:
      argument.value = AnyOf(random, kTexts);
      break;
    case 1:
      argument.value = static_cast<std::int64_t>(random.Bits()) >> random.Below(64);
      break;
    case 2:
      argument.value = random.Bits() >> static_cast<unsigned>(random.Below(64));
      break;
    default:
      argument.value = NumberOf(random.Bits());
      argument.decimals = random.Below(kMaxDecimals + 2) - 1;
  }
  return argument;
}

NumberFormat AnyFormat(RandomNumbers& random) {
  constexpr std::array<char32_t, 3> kZeroes = {U'0', U'\u0966', U'\U0001E950'};
  NumberFormat format;
  format.isGrouped = random.Below(2) == 0;
  format.groupSize = static_cast<std::uint32_t>(random.Below(5));
  format.furtherGroupSize = static_cast<std::uint32_t>(1 + random.Below(4));
  format.minimumFirstGroup = static_cast<std::uint32_t>(1 + random.Below(3));
  format.zeroDigit = AnyOf(random, kZeroes);
  format.decimalMark = AnyOf(random, kMarks);
  format.groupMark = AnyOf(random, kMarks);
  return format;
}

std::string WithoutFaults(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const std::size_t valid = KelmoLibs::Localize::WellFormedUtf8Length(bytes);
    text += bytes.substr(0, valid);
    bytes.remove_prefix(std::min(valid + 1, bytes.size()));
  }
  return text;
}

Input InputOf(std::string_view bytes) {
  RandomNumbers random(bytes.substr(0, kChoices));
  Input input;
  input.options.hasPercent = random.Below(2) == 0;
  input.options.isIsolating = random.Below(4) == 0;
  if (random.Below(2) == 0) {
    input.format = AnyFormat(random);
  }
  for (int i = random.Below(kMaxArguments + 1); i > 0; --i) {
    input.arguments.push_back(AnyArgument(random));
  }
  input.text = WithoutFaults(bytes.substr(std::min(bytes.size(), kChoices)));
  return input;
}

// ---- The reference: looks for the end of a placeholder first.

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsName(const std::string& name) {
  const std::string others = "_-.";
  return !name.empty() && !IsDigit(name[0]) && std::all_of(name.begin(), name.end(), [&](char c) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    return isLetter || IsDigit(c) || others.find(c) != std::string::npos ||
           static_cast<unsigned char>(c) >= 0x80;
  });
}

bool IsPosition(const std::string& name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), IsDigit);
}

// Up to its brace, or 24 bytes without the character that they cut.
std::string StartOf(const std::string& text) {
  const std::string start = text.substr(0, 24);
  const std::size_t brace = start.find('}');
  if (brace != std::string::npos) {
    return start.substr(0, brace + 1);
  }
  return start.substr(0, KelmoLibs::Localize::WellFormedUtf8Length(start));
}

class Reference {
 public:
  explicit Reference(const Input& input) : input_(input) {
    const std::string& text = input.text;
    std::size_t i = 0;
    while (i < text.size()) {
      std::size_t length = 0;
      if (text[i] == '{') {
        length = Braced(text, i);
        if (length == 0) {
          faults.push_back({StartOf(text.substr(i)), FaultReason::kNoPlaceholder});
        }
      } else if (text[i] == '%') {
        length = Percent(text, i);
      } else if (text.compare(i, 2, "}}") == 0) {
        filled += '}';
        length = 2;
      }
      if (length == 0) {
        filled += text[i];
      }
      i += std::max<std::size_t>(length, 1);
    }
  }

  std::string filled;
  std::vector<Fault> faults;

 private:
  // The functions return the length of the placeholder that they have written, or 0.
  std::size_t Braced(const std::string& text, std::size_t begin) {
    if (text.compare(begin, 2, "{{") == 0) {
      filled += '{';
      return 2;
    }
    const std::size_t end = text.find_first_of("{}", begin + 1);
    if (end == std::string::npos || text[end] == '{') {
      return 0;
    }
    const std::string whole = text.substr(begin, end + 1 - begin);
    const std::string inside = whole.substr(1, whole.size() - 2);
    const std::size_t colon = inside.find(':');
    const std::string name = inside.substr(0, colon);
    const std::string spec = colon != std::string::npos ? inside.substr(colon + 1) : "";
    if (IsPosition(name)) {
      const std::size_t firstDigit = std::min(name.find_first_not_of('0'), name.size() - 1);
      const std::string digits = name.substr(firstDigit);
      Fill(whole, digits.size() > 3 ? input_.arguments.size() : std::stoul(digits), spec,
           FaultReason::kNoPosition);
    } else if (IsName(name)) {
      std::size_t position = 0;
      while (position < input_.arguments.size() && input_.arguments[position].name != name) {
        ++position;
      }
      Fill(whole, position, spec, FaultReason::kNoName);
    } else {
      return 0;
    }
    return whole.size();
  }

  std::size_t Percent(const std::string& text, std::size_t begin) {
    const std::string next = text.substr(begin + 1, 2);
    if (!input_.options.hasPercent || next.empty() || !IsDigit(next[0]) || next[0] == '0') {
      return 0;
    }
    const std::string digits = next.size() == 2 && IsDigit(next[1]) ? next : next.substr(0, 1);
    Fill('%' + digits, std::stoul(digits) - 1, "", FaultReason::kNoPosition);
    return 1 + digits.size();
  }

  void Fill(const std::string& whole, std::size_t position, const std::string& spec,
            FaultReason ifMissing) {
    if (position >= input_.arguments.size()) {
      AddFault(whole, ifMissing);
      return;
    }
    const Argument& argument = input_.arguments[position];
    std::string text;
    if (const auto* const given = std::get_if<std::string_view>(&argument.value)) {
      if (*given == kNotUtf8 || !spec.empty()) {
        AddFault(whole, *given == kNotUtf8 ? FaultReason::kNotUtf8 : FaultReason::kFormatOfText);
        return;
      }
      text = *given;
    } else if (!Write(whole, argument, spec, text)) {
      return;
    }
    filled +=
        input_.options.isIsolating ? kIsolates.substr(0, 3) + text + kIsolates.substr(3) : text;
  }

  bool Write(const std::string& whole, const Argument& number, const std::string& text,
             std::string& result) {
    NumberSpec spec;
    switch (ReadNumberSpec(text, spec)) {
      case SpecError::kUnknown:
        return AddFault(whole, FaultReason::kUnknownFormat);
      case SpecError::kWidth:
        return AddFault(whole, FaultReason::kWidth);
      case SpecError::kDecimals:
        return AddFault(whole, FaultReason::kDecimals);
      case SpecError::kNone:
        break;
    }
    if (!Fits(spec, number)) {
      return AddFault(whole, FaultReason::kOnlyIntegers);
    }
    result.resize(8000);
    TextSink sink(result.data(), result.size());
    WriteNumber(number, spec, input_.format, sink);
    result.resize(sink.Finish());
    return true;
  }

  bool AddFault(const std::string& placeholder, FaultReason reason) {
    filled += placeholder;
    faults.push_back({placeholder, reason});
    return false;
  }

  const Input& input_;
};

// ---- The comparison

void Require(bool isTrue, const char* what) {
  if (!isTrue) {
    throw Disagreement(what);
  }
}

void CheckCut(const Input& input, const std::string& whole, std::size_t capacity) {
  std::vector<char> buffer(capacity + 1, '#');
  TextSink sink(capacity != 0 ? buffer.data() : nullptr, capacity);
  FillPlaceholders(input.text, {input.arguments.data(), input.arguments.size()}, input.options,
                   input.format, sink, nullptr);
  Require(sink.Finish() == whole.size(), "the size of a text that is cut");
  Require(buffer[capacity] == '#', "the byte behind the buffer");
  if (capacity != 0) {
    std::size_t end = std::min(capacity - 1, whole.size());
    while (end < whole.size() && (static_cast<unsigned char>(whole[end]) & 0xC0U) == 0x80U) {
      --end;
    }
    Require(
        std::equal(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(end), buffer.begin()),
        "a text that is cut");
    Require(buffer[end] == '\0', "the zero behind a text that is cut");
  }
}

}  // namespace

void CheckWith(std::string_view bytes) {
  const Input input = InputOf(bytes);
  const Reference expected(input);
  std::string buffer(expected.filled.size() + 1, '#');
  TextSink sink(buffer.data(), buffer.size());
  Faults faults;
  FillPlaceholders(input.text, {input.arguments.data(), input.arguments.size()}, input.options,
                   input.format, sink, &faults);
  Require(sink.Finish() == expected.filled.size(), "the size of a text");
  Require(buffer == expected.filled + '\0', "a text");
  Require(faults.all == expected.faults, "the faults of a text");
  Require(faults.isDescribed, "the description of a fault");
  const std::size_t size = expected.filled.size();
  const std::size_t step = size / 64 + 1;  // all capacities of short texts
  for (std::size_t capacity = 0; capacity <= size; capacity += step) {
    CheckCut(input, expected.filled, capacity);
  }
}
