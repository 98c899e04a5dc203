// The rule placeholder: the text has the placeholders of the base, and no others. They may stand in
// another order, and numbered and named ones may repeat.
#include <algorithm>
#include <string>
#include <utility>

#include "lang/rules/check.h"
#include "lang/rules/placeholder_cause.h"
#include "lang/rules/placeholder_syntax.h"
#include "lang/rules/plural_keys.h"

namespace KelmoLibs::Lang {
namespace {

enum class Difference : std::uint8_t { kNone, kMissing, kSurplus, kOther, kOrder };

// How the placeholders of a text differ from those of the base.
struct Comparison {
  Difference difference = Difference::kNone;
  const Placeholder* missing = nullptr;  // of kOther: what the base has
  const Placeholder* surplus = nullptr;  // of kOther: what stands in its place
};

bool Has(const Placeholders& placeholders, const Placeholder& wanted) noexcept {
  return std::any_of(placeholders.begin(), placeholders.end(), [&](const Placeholder& placeholder) {
    return IsSameValue(placeholder, wanted);
  });
}

std::ptrdiff_t CountLike(const Placeholders& placeholders, const Placeholder& wanted) noexcept {
  return std::count_if(placeholders.begin(), placeholders.end(), [&](const Placeholder& other) {
    return other.syntax == wanted.syntax && other.type == wanted.type && other.size == wanted.size;
  });
}

// The first placeholder of `left` that `right` has not. Of %s and the like the one of which `right`
// has fewer, if there is one: the program fills them by their order.
const Placeholder* FirstWithout(const Placeholders& left, const Placeholders& right) noexcept {
  const Placeholder* first = nullptr;
  for (const Placeholder& placeholder : left) {
    if (Has(right, placeholder)) {
      continue;
    }
    if (placeholder.syntax != PlaceholderSyntax::kPrintf ||
        CountLike(left, placeholder) > CountLike(right, placeholder)) {
      return &placeholder;
    }
    first = first != nullptr ? first : &placeholder;
  }
  return first;
}

// Whether the text is a pattern with letters of the program, such as "%o %d %f%m" or a date, whose
// order is free. No printf of the standard has %m.
bool IsPattern(std::string_view text) noexcept { return text.find("%m") != std::string_view::npos; }

Comparison Compare(const Placeholders& base, const Placeholders& text) noexcept {
  Comparison comparison;
  comparison.missing = FirstWithout(base, text);
  comparison.surplus = FirstWithout(text, base);
  const Placeholder* const missing = comparison.missing;
  const Placeholder* const surplus = comparison.surplus;
  if (missing == nullptr || surplus == nullptr) {
    comparison.difference = missing != nullptr   ? Difference::kMissing
                            : surplus != nullptr ? Difference::kSurplus
                                                 : Difference::kNone;
    return comparison;
  }
  const bool isOrder = missing->syntax == PlaceholderSyntax::kPrintf &&
                       surplus->syntax == PlaceholderSyntax::kPrintf &&
                       CountLike(base, *missing) == CountLike(text, *missing) &&
                       CountLike(base, *surplus) == CountLike(text, *surplus);
  comparison.difference = isOrder ? Difference::kOrder : Difference::kOther;
  return comparison;
}

// The number of the base's placeholders that the text lacks.
std::ptrdiff_t CountMissing(const Placeholders& base, const Placeholders& text) noexcept {
  return std::count_if(base.begin(), base.end(),
                       [&](const Placeholder& wanted) { return !Has(text, wanted); });
}

// Whether the text is the base's without one placeholder, of which the others may count on.
bool LacksOne(const Placeholders& base, const Placeholders& text) noexcept {
  const auto has = [&](const Placeholder& placeholder) { return CountLike(base, placeholder) > 0; };
  return text.end() - text.begin() < base.end() - base.begin() &&
         (Compare(base, text).difference == Difference::kMissing
              ? CountMissing(base, text) == 1
              : base.end() - base.begin() == text.end() - text.begin() + 1 &&
                    std::all_of(text.begin(), text.end(), has));
}

// Whether "%50" of the text is "50%" of the base: a percentage as Turkish and Basque write it. They
// may have decimals: "%2,5".
bool IsPercentage(std::string_view text, const Placeholder& placeholder, std::string_view base) {
  const std::string number(placeholder.name);
  const auto behind =
      static_cast<std::size_t>(placeholder.whole.data() + placeholder.whole.size() - text.data());
  const std::string_view rest = text.substr(behind);
  const bool hasDecimals =
      rest.size() > 1 && (rest[0] == ',' || rest[0] == '.') && rest[1] >= '0' && rest[1] <= '9';
  return hasDecimals || base.find(number + '%') != std::string_view::npos ||
         base.find(number + " %") != std::string_view::npos;
}

// What a text is compared with.
struct Reference {
  FoundEntry base;
  const Entry* other = nullptr;  // the form of the base that may stand for it too
  bool mayLackNumber = false;
  Severity severity = Severity::kError;  // of a number that is missing
  const PluralRules* rules = nullptr;    // of the language if the text is one of its plural forms
  PluralCategory form{};
};

Reference ReferenceOf(const TextCheck& check) {
  Reference reference;
  reference.base = check.base;
  const std::optional<PluralKey> form = SplitPluralKey(check.entry.key);
  if (!form) {
    return reference;
  }
  const FoundEntry set = FindPluralSet(check.file.AllFiles(), form->stem);
  if (!set) {
    return reference;
  }
  const Language& language = check.file.FileLanguage();
  const PluralRules* const rules = FindPluralRules(language.primary, language.region);
  const bool isFormOfLanguage = rules != nullptr && rules->Has(form->category);
  reference.rules = isFormOfLanguage ? rules : nullptr;
  reference.form = form->category;
  if (form->category >= PluralCategory::kFew) {
    reference.base = check.base ? check.base : set;
    return reference;
  }
  // "One file" needs no number. In Russian this form is also for 21 files.
  reference.mayLackNumber = !isFormOfLanguage || IsForOneNumber(*rules, form->category);
  reference.severity = reference.mayLackNumber ? Severity::kError : Severity::kWarning;
  reference.base = set;
  reference.other = check.base.entry;
  return reference;
}

// "%2$d" for a "%d" that is the second placeholder of the base.
std::string Numbered(const Placeholder& placeholder, const Placeholders& base) {
  for (const Placeholder& other : base) {
    if (other.type == placeholder.type && other.size == placeholder.size) {
      const std::size_t start = placeholder.isNumbered ? placeholder.whole.find('$') : 0;
      return '%' + std::to_string(other.argument) + '$' +
             std::string(placeholder.whole.substr(start + 1));
    }
  }
  return std::string(placeholder.whole);
}

void Report(const TextCheck& check, const Reference& reference, const Placeholders& base,
            const Placeholders& text, const Comparison& comparison) {
  const Placeholder* const missing = comparison.missing;
  const Placeholder* const surplus = comparison.surplus;
  const auto add = [&](std::string_view where, Severity severity, Sentence message) -> Finding& {
    Finding& finding = check.Add(RuleId::kPlaceholder, severity, where, std::move(message));
    finding.related = {check.file.RelatedBase(reference.base, reference.base.entry->text)};
    return finding;
  };
  switch (comparison.difference) {
    case Difference::kNone:
      return;
    case Difference::kSurplus:
      add(surplus->whole, Severity::kError, {"placeholder.unknown", {std::string(surplus->whole)}});
      return;
    case Difference::kOrder: {
      if (IsPattern(reference.base.entry->text)) {
        return;
      }
      Finding& finding =
          add(surplus->whole, Severity::kError,
              {"placeholder.order", {std::string(missing->whole), std::string(surplus->whole)}});
      finding.hint = {"placeholder.hint.order", {Numbered(*surplus, base)}};
      return;
    }
    case Difference::kOther:
    case Difference::kMissing:
      break;
  }
  const std::string wanted(missing->whole);
  const PlaceholderCause cause = CauseOfMissing(*missing, check.Text(), text, base);
  if (!cause.where.empty()) {
    add(cause.where, Severity::kError, {"placeholder.missing", {wanted}}).hint = {
        std::string(cause.hint), {wanted}};
  } else if (comparison.difference == Difference::kOther) {
    const bool isName = missing->syntax == surplus->syntax && !missing->name.empty();
    add(surplus->whole, Severity::kError,
        {"placeholder.other", {wanted, std::string(surplus->whole)}})
        .hint = {isName && missing->syntax != PlaceholderSyntax::kPercentNumber &&
                         missing->syntax != PlaceholderSyntax::kBraceNumber
                     ? "placeholder.hint.name"
                     : "placeholder.hint.other",
                 {wanted}};
  } else if (reference.rules != nullptr) {
    add(check.Text(), reference.severity,
        {"placeholder.plural", {wanted, SamplesOf(*reference.rules, reference.form)}});
  } else {
    add(check.Text(), Severity::kError, {"placeholder.missing", {wanted}});
  }
}

std::size_t CountOf(std::string_view text, std::string_view part) noexcept {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string_view::npos;
       at = text.find(part, at + part.size())) {
    ++count;
  }
  return count;
}

// Whether the text has a percent sign or brace that belongs to no placeholder.
bool HasSignAlone(std::string_view text, const Placeholders& placeholders,
                  std::string_view sign) noexcept {
  std::size_t inPlaceholders = 0;
  for (const Placeholder& placeholder : placeholders) {
    inPlaceholders += CountOf(placeholder.whole, sign);
  }
  return CountOf(text, sign) > inPlaceholders;
}

// Whether a placeholder that the base lacks may be a word or a percentage, as in the base.
bool IsLikeText(const TextCheck& check, const Placeholder& placeholder, std::string_view baseText,
                const Placeholders& base) {
  switch (placeholder.syntax) {
    case PlaceholderSyntax::kPercentNumber:
      return IsPercentage(check.Text(), placeholder, baseText);
    case PlaceholderSyntax::kPrintf:
      return HasSignAlone(baseText, base, "%");
    default:
      return HasSignAlone(baseText, base, "{");
  }
}

// Leaves out what is no difference: a syntax that the base never uses, and signs that only look like
// placeholders.
Comparison WithoutLookAlikes(const TextCheck& check, Comparison comparison,
                             std::string_view baseText, const Placeholders& base) {
  const PlaceholderUse& use = check.file.PlaceholdersOfBase();
  const Placeholder*& missing = comparison.missing;
  const Placeholder*& surplus = comparison.surplus;
  if (comparison.difference == Difference::kOrder) {
    return comparison;
  }
  if (missing != nullptr &&
      (!use.Uses(missing->syntax) ||
       // "%lu" in "%lubytes", which is read as a word, is there.
       (missing->syntax == PlaceholderSyntax::kPrintf &&
        CountOf(check.Text(), missing->whole) >= CountOf(baseText, missing->whole)))) {
    missing = nullptr;
  }
  if (surplus != nullptr && (!use.Uses(surplus->syntax) ||
                             (missing == nullptr && IsLikeText(check, *surplus, baseText, base)))) {
    surplus = nullptr;
  }
  if (missing == nullptr || surplus == nullptr) {
    comparison.difference = missing != nullptr   ? Difference::kMissing
                            : surplus != nullptr ? Difference::kSurplus
                                                 : Difference::kNone;
  }
  return comparison;
}

bool HasSyntax(const Placeholders& placeholders, PlaceholderSyntax syntax) noexcept {
  return std::any_of(placeholders.begin(), placeholders.end(),
                     [syntax](const Placeholder& other) { return other.syntax == syntax; });
}

// How "%5d" is read: as the base's text has it, else as most texts of the base have it.
PercentDigits DigitsOf(const TextCheck& check, std::string_view baseText) {
  const Placeholders base(baseText, PercentDigits::kAreNumber);
  const Placeholders text(check.Text(), PercentDigits::kAreNumber);
  if (!base.HasDoubtfulDigits() && !text.HasDoubtfulDigits()) {
    return PercentDigits::kAreNumber;
  }
  const bool hasNumber =
      HasSyntax(base, PlaceholderSyntax::kPercentNumber) && !base.HasDoubtfulDigits();
  if (hasNumber != HasSyntax(base, PlaceholderSyntax::kPrintf)) {
    return hasNumber ? PercentDigits::kAreNumber : PercentDigits::kAreWidth;
  }
  return check.file.PlaceholdersOfBase().digits;
}

// Whether a form of one number, such as "One file", says it in words or as another form does.
bool MaySayNumber(const Reference& reference, const Placeholders& base, const Placeholders& text,
                  PercentDigits digits) {
  if (!reference.mayLackNumber || LacksOne(base, text)) {
    return reference.mayLackNumber;
  }
  if (reference.other == nullptr) {
    return false;
  }
  const Placeholders other(reference.other->text, digits);
  return !other.AreAll() || Compare(other, text).difference == Difference::kNone;
}

void CheckBesideReference(const TextCheck& check, const Reference& reference) {
  const std::string_view baseText = reference.base.entry->text;
  const PercentDigits digits = DigitsOf(check, baseText);
  const Placeholders base(baseText, digits);
  const Placeholders text(check.Text(), digits);
  if (!base.AreAll() || !text.AreAll() || base.IsTimeFormat() || text.IsTimeFormat()) {
    return;
  }
  const Comparison comparison = Compare(base, text);
  if (comparison.difference != Difference::kNone && !MaySayNumber(reference, base, text, digits)) {
    Report(check, reference, base, text, WithoutLookAlikes(check, comparison, baseText, base));
  }
}

}  // namespace

void CheckPlaceholders(const TextCheck& check) {
  if (check.file.Base() == nullptr || check.Text().empty()) {
    return;
  }
  if (!HasPlaceholderMark(check.Text()) && check.base && !HasPlaceholderMark(check.BaseText()) &&
      !SplitPluralKey(check.entry.key)) {
    return;
  }
  const Reference reference = ReferenceOf(check);
  if (reference.base && reference.base.entry->text != check.Text()) {
    CheckBesideReference(check, reference);
  }
}

}  // namespace KelmoLibs::Lang
